#include "core/glassmap/glass_map_data.h"

#include <algorithm>
#include <cmath>
#include <map>

#include "core/external/kelmora_database.h"
#include "core/material/glasses_list.h"
#include "core/platform/text.h"

namespace ostrel {

namespace {

// A catalogue glass of that name, compared as the custom list compares names.
bool SameName(const std::string& name, const char* wanted) {
    return UpperCp1252(VbTrim(name)) == wanted;
}

double NumberOr0(const DbRow& row, const char* column) {
    bool ok = false;
    const double v = DbNumber(row.Field(column), ok);
    return ok ? v : 0.0;
}

}  // namespace

bool ValidMapValues(double nd, double vd) {
    return std::isfinite(nd) && std::isfinite(vd) && nd > 1.0 && nd < 4.0 && vd > 0.0 && vd < 200.0;
}

bool ValidPgF(double pgf) {
    return std::isfinite(pgf) && pgf > 0.0 && pgf < 2.0;
}

const char* KindName(GlassKind kind) {
    switch (kind) {
        case GlassKind::Catalogue:
            return "Catalogue";
        case GlassKind::Custom:
            return "Custom";
        case GlassKind::Melt:
            return "Melt";
    }
    return "";
}

void AddCustomPoints(const std::vector<MaterialRecord>& list, GlassMapData& data) {
    for (size_t i = 0; i < list.size(); ++i) {
        const MaterialRecord& r = list[i];
        const double nd = r.Derived.nd, vd = r.Derived.vd;
        if (!ValidMapValues(nd, vd)) {
            ++data.leftOutCustom;
            continue;
        }
        GlassPoint p;
        p.name = r.General.GlassName.Text();
        p.source = r.General.Source.Text();
        p.nd = nd;
        p.vd = vd;
        p.pgf = ValidPgF(r.Derived.PgF) ? r.Derived.PgF : 0.0;
        p.glassCode = r.General.GlassCode;
        p.listPosition = static_cast<int>(i) + 1;
        if (r.Melt.MeltFlag != 0) {
            p.kind = GlassKind::Melt;
            p.parentName = r.Melt.MeltParentName.Text();
            p.parentSource = r.Melt.MeltParentSource.Text();
        } else {
            p.kind = GlassKind::Custom;
        }
        data.points.push_back(std::move(p));
    }
}

bool AddCataloguePoints(Database& db, GlassMapData& data, DbError& error) {
    std::vector<DbRow> rows;
    if (!db.FindRows(kTableCurrent, {}, rows, error)) return false;
    std::vector<GlassPoint> found;
    std::map<std::string, int> sourceIds;
    for (const DbRow& row : rows) {
        bool ok = false;
        const double kind = DbNumber(row.Field("s1"), ok);
        if (ok && kind == kCustomRowKind) continue;
        bool okNd = false, okVd = false;
        const double nd = DbNumber(row.Field("nd"), okNd);
        const double vd = DbNumber(row.Field("vd"), okVd);
        if (!okNd || !okVd || !ValidMapValues(nd, vd)) {
            ++data.leftOutCatalogue;
            continue;
        }
        GlassPoint p;
        p.name = VbTrimCopy(DbText(row.Field("GlassName")));
        p.source = VbTrimCopy(DbText(row.Field("Source")));
        p.nd = nd;
        p.vd = vd;
        const double pgf = NumberOr0(row, "PgF");
        p.pgf = ValidPgF(pgf) ? pgf : 0.0;
        p.glassCode = static_cast<int32_t>(NumberOr0(row, "GlassCode"));
        sourceIds.emplace(p.source, 0);
        found.push_back(std::move(p));
    }
    // Sources sorted; a source already on the map keeps its place.
    for (auto& [name, id] : sourceIds) {
        auto it = std::find(data.sources.begin(), data.sources.end(), name);
        if (it == data.sources.end()) {
            data.sources.push_back(name);
        }
    }
    std::sort(data.sources.begin(), data.sources.end());
    for (auto& p : data.points) {
        if (p.kind == GlassKind::Catalogue) {
            p.sourceIndex =
                static_cast<int>(std::find(data.sources.begin(), data.sources.end(), p.source) -
                                 data.sources.begin());
        }
    }
    for (auto& p : found) {
        p.sourceIndex = static_cast<int>(
            std::find(data.sources.begin(), data.sources.end(), p.source) - data.sources.begin());
        data.points.push_back(std::move(p));
    }
    data.catalogueRead = true;
    return true;
}

void LinkMeltParents(GlassMapData& data) {
    std::map<std::string, int> custom, catalogue;
    for (size_t i = 0; i < data.points.size(); ++i) {
        const GlassPoint& p = data.points[i];
        auto& index = p.kind == GlassKind::Catalogue ? catalogue : custom;
        index.emplace(MaterialKeyOf(p.name, p.source), static_cast<int>(i));
    }
    for (size_t i = 0; i < data.points.size(); ++i) {
        GlassPoint& p = data.points[i];
        if (p.kind != GlassKind::Melt) continue;
        const std::string key = MaterialKeyOf(p.parentName, p.parentSource);
        p.parent = -1;
        if (auto it = custom.find(key); it != custom.end() && it->second != static_cast<int>(i)) {
            p.parent = it->second;
        } else if (auto jt = catalogue.find(key); jt != catalogue.end()) {
            p.parent = jt->second;
        }
    }
}

std::optional<NormalLine> FindNormalLine(const GlassMapData& data) {
    const GlassPoint* k7 = nullptr;
    const GlassPoint* f2 = nullptr;
    for (const GlassPoint& p : data.points) {
        if (p.kind != GlassKind::Catalogue) continue;
        if (!k7 && SameName(p.name, "K7")) k7 = &p;
        if (!f2 && SameName(p.name, "F2")) f2 = &p;
    }
    if (!k7 || !f2 || k7->pgf == 0.0 || f2->pgf == 0.0 || k7->vd == f2->vd) return std::nullopt;
    NormalLine line;
    line.b = (k7->pgf - f2->pgf) / (k7->vd - f2->vd);
    line.a = k7->pgf - line.b * k7->vd;
    return line;
}

double MapDistance(double nd1, double vd1, double nd2, double vd2, double ndScale) {
    const double dn = (nd1 - nd2) * ndScale;
    const double dv = vd1 - vd2;
    return std::sqrt(dn * dn + dv * dv);
}

std::vector<NearGlass> NearestGlasses(const GlassMapData& data, double nd, double vd, int count,
                                      double ndScale, const std::vector<bool>* sourceOn) {
    std::vector<NearGlass> all;
    if (count <= 0) return all;
    all.reserve(data.points.size());
    for (size_t i = 0; i < data.points.size(); ++i) {
        const GlassPoint& p = data.points[i];
        if (p.kind != GlassKind::Catalogue) continue;
        if (sourceOn && p.sourceIndex >= 0 &&
            static_cast<size_t>(p.sourceIndex) < sourceOn->size() && !(*sourceOn)[p.sourceIndex])
            continue;
        all.push_back({static_cast<int>(i), MapDistance(nd, vd, p.nd, p.vd, ndScale)});
    }
    const auto before = [](const NearGlass& x, const NearGlass& y) {
        return x.distance < y.distance || (x.distance == y.distance && x.point < y.point);
    };
    const size_t k = std::min(all.size(), static_cast<size_t>(count));
    std::partial_sort(all.begin(), all.begin() + static_cast<std::ptrdiff_t>(k), all.end(), before);
    all.resize(k);
    return all;
}

}  // namespace ostrel
