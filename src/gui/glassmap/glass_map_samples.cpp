#include "gui/glassmap/glass_map_samples.h"

#include "core/external/kelmora_database.h"
#include "core/optics/derived_data.h"
#include "core/platform/sqlite_database.h"

namespace ostrel::gui {

namespace {

struct Sample {
    const char* parent;
    const char* name;
    const char* source;
    double scale;  // on the first Sellmeier term: moves nd, and vd with it
    double shift;  // on the second Sellmeier term: moves the dispersion
    bool melt;
};

}  // namespace

std::vector<MaterialRecord> GlassMapSampleMaterials(const std::string& kelmoraFolder) {
    const Sample samples[] = {
        {"N-BK7", "N-BK7 *M1", "Schott", 1.0008, 1.0, true},
        {"F2", "F2 *M7", "Schott", 1.0015, 0.995, true},
        {"N-BAK4", "LAB-CROWN 1", "MYLAB", 1.03, 0.90, false},
        {"N-SF11", "LAB-FLINT 2", "MYLAB", 0.97, 1.12, false},
        {"N-LAK9", "LAB-LANTH 3", "MYLAB", 1.01, 1.05, false},
    };
    std::vector<MaterialRecord> out;
    DbError error;
    auto db = OpenSqliteDatabase(GlassDatabasePath(kelmoraFolder), false, error);
    if (!db) return out;
    for (const Sample& s : samples) {
        std::vector<DbRow> rows;
        if (!db->FindRows(kTableCurrent, {{"GlassName", std::string(s.parent)}}, rows, error) ||
            rows.empty())
            continue;
        MaterialRecord rec = ClearedMaterialRecord();
        if (!ReadGlassRow(rows.front(), rec, error) || rec.General.Polytype != 2) continue;
        const std::string parentSource = rec.General.Source.Text();
        rec.General.GlassName.Set(s.name);
        rec.General.Source.Set(s.source);
        rec.General.PolyCoef[0] *= s.scale;
        rec.General.PolyCoef[1] *= s.shift;
        if (s.melt) {
            rec.Melt.MeltFlag = -1;
            rec.Melt.MeltParentName.Set(s.parent);
            rec.Melt.MeltParentSource.Set(parentSource);
        }
        UpdateDerivedData(rec);
        out.push_back(rec);
    }
    return out;
}

}  // namespace ostrel::gui
