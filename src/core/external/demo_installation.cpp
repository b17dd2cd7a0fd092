#include "core/external/demo_installation.h"

#include <cmath>
#include <filesystem>
#include <sstream>

#include "core/external/bas1_setup.h"
#include "core/external/kelmora_database.h"
#include "core/material/catalogue_record.h"
#include "core/material/glasses_list.h"
#include "core/optics/glass_code.h"
#include "core/optics/trans_calcs.h"
#include "core/platform/dialogs.h"
#include "core/platform/file_io.h"
#include "core/platform/number_text.h"
#include "core/platform/ole_date.h"
#include "core/platform/text.h"

namespace ostrel {

namespace fs = std::filesystem;

namespace {

std::vector<std::string> SplitOn(const std::string& s, char sep) {
    std::vector<std::string> out;
    std::string cur;
    std::istringstream in(s);
    while (std::getline(in, cur, sep)) out.push_back(cur);
    if (!s.empty() && s.back() == sep) out.emplace_back();
    return out;
}

bool WriteImage(const fs::path& path, const std::string& bytes, std::string& message) {
    FileError error;
    if (WriteFileAtomic(path, bytes, error)) return true;
    message = "Unable to write " + path.string() + ": " + error.message;
    return false;
}

}  // namespace

bool ParseDemoCatalogue(const std::string& text, std::vector<DemoGlass>& glasses,
                        std::string& message) {
    glasses.clear();
    int lineNo = 0;
    for (const std::string& raw : SplitLines(text)) {
        ++lineNo;
        const std::string line = VbTrimCopy(raw);
        if (line.empty() || line[0] == '#') continue;
        const auto f = SplitOn(line, ',');
        if (f.size() != 16) {
            message = "Line " + std::to_string(lineNo) + ": 16 fields expected";
            return false;
        }
        DemoGlass g;
        g.maker = f[0];
        g.name = f[1];
        g.polytype = CInt(Val(f[2]));
        for (size_t i = 0; i < 6; ++i) g.coef[i] = std::strtod(f[3 + i].c_str(), nullptr);
        g.nd = f[9];
        g.vd = f[10];
        g.density = static_cast<float>(Val(f[11]));
        g.wvMin = CInt(Val(f[12]));
        g.wvMax = CInt(Val(f[13]));
        g.status = f[14];
        for (const auto& item : SplitOn(f[15], ' ')) {
            const auto p = SplitOn(item, '/');
            if (p.size() != 3) continue;
            g.trans.push_back({static_cast<float>(Val(p[0])), static_cast<float>(Val(p[1])),
                               static_cast<float>(Val(p[2]))});
        }
        if (g.name.empty() || g.maker.empty() || (g.polytype != 1 && g.polytype != 2)) {
            message = "Line " + std::to_string(lineNo) + ": name, maker or formula missing";
            return false;
        }
        glasses.push_back(std::move(g));
    }
    return true;
}

MaterialRecord DemoGlassRecord(const DemoGlass& glass) {
    MaterialRecord rec = ClearedMaterialRecord();
    auto& g = rec.General;
    g.GlassName.Set(glass.name);
    g.Source.Set(glass.maker);
    g.GlassKind = 8;
    g.Polytype = glass.polytype;
    for (size_t i = 0; i < 6; ++i) g.PolyCoef[i] = glass.coef[i];
    g.Density = glass.density;
    g.IndexWvMin = glass.wvMin;
    g.IndexWvMax = glass.wvMax;
    g.GlassCode = MakeGlassCode(glass.nd, glass.vd);
    rec.Other.Status.Set(glass.status);
    rec.Status.DataDate = OleDateFromCivil({2020, 1, 1, 0, 0, 0});
    // Transmission as absorption coefficients per mm, longest wavelength first, resampled
    // on the fixed table.
    std::vector<float> waves, absorbs;
    for (auto it = glass.trans.rbegin(); it != glass.trans.rend(); ++it) {
        const auto& [wave, t, thick] = *it;
        waves.push_back(wave);
        absorbs.push_back(t > 0 && thick > 0 ? static_cast<float>(-std::log(t) / thick) : 10.0f);
    }
    rec.TransTable.fill(kNoTransData);
    if (!waves.empty()) FillTransTable(rec.TransTable, 10.0f, waves, absorbs);
    return rec;
}

bool CreateDemoInstallation(const std::string& dirText, const std::vector<DemoGlass>& glasses,
                            SettingsStore& settings, std::string& message) {
    std::error_code ec;
    const fs::path dir = fs::absolute(dirText, ec);
    const fs::path lumbrak = dir / "Lumbrak", sextane = dir / "Sextane", kelmora = dir / "Kelmora";
    if (fs::exists(kelmora / kGlassDatabaseName, ec)) {
        message = "The folder " + dir.string() + " already holds a demo installation";
        return false;
    }
    for (const auto& d : {lumbrak, sextane, kelmora}) {
        fs::create_directories(d, ec);
        if (ec) {
            message = "Unable to create " + d.string() + ": " + ec.message();
            return false;
        }
    }
    if (!WriteImage(lumbrak / Bas1Setup::kFileLumbrak, "", message) ||
        !WriteImage(sextane / Bas1Setup::kFileSextane, "", message) ||
        !WriteImage(kelmora / Bas1Setup::kFileKelmora, "", message)) {
        return false;
    }

    std::string catalogue(glasses.size() * kCatalogueRecordSize, '\0');
    std::string generic(glasses.size() * kExternalRecordSize, '\0');
    for (size_t i = 0; i < glasses.size(); ++i) {
        const MaterialRecord rec = DemoGlassRecord(glasses[i]);
        CatalogueRecord cat;
        ClearCatalogueRecord(cat);
        cat.GlassName = rec.General.GlassName;
        cat.Source = rec.General.Source;
        ToBytes(cat, reinterpret_cast<unsigned char*>(catalogue.data()) + i * kCatalogueRecordSize);
        ExternalRecord ext;
        ToExternalRecord(rec.General, ext);
        ToBytes(ext, reinterpret_cast<unsigned char*>(generic.data()) + i * kExternalRecordSize);
    }
    if (!WriteImage(lumbrak / kCatalogueFileName, catalogue, message) ||
        !WriteImage(lumbrak / kGenericFileName, generic, message)) {
        return false;
    }

    // The database is built under a temporary name and put in place when complete.
    const fs::path dbPath = kelmora / kGlassDatabaseName;
    const fs::path tmpPath = kelmora / (std::string(kGlassDatabaseName) + ".new");
    fs::remove(tmpPath, ec);
    {
        DbError error;
        auto db = CreateGlassDatabase(tmpPath.string(), error);
        bool ok = db && db->BeginTrans(error);
        for (size_t i = 0; ok && i < glasses.size(); ++i) {
            DbNewRow row = WriteGlassRow(static_cast<int16_t>(i + 1), DemoGlassRecord(glasses[i]));
            for (auto& [name, value] : row) {
                if (name == "s1") value = DbValue{int64_t{kDemoRowKind}};
            }
            ok = db->AddRow(kTableCurrent, row, error);
        }
        if (ok) ok = db->CommitTrans(error);
        if (!ok) {
            message = "Unable to build the demo database: " + error.message;
            db.reset();
            fs::remove(tmpPath, ec);
            return false;
        }
    }
    fs::rename(tmpPath, dbPath, ec);
    if (ec) {
        message = "Unable to place " + dbPath.string() + ": " + ec.message();
        return false;
    }

    QuietDialogs quiet;
    Bas1Setup setup(settings, quiet);
    setup.SetPathKelmora(kelmora.string() + "/");
    setup.SetPathLumbrak(lumbrak.string() + "/");
    setup.SetPathSextane(sextane.string() + "/");
    setup.SavePaths();
    setup.SetFirstLoad(false);
    setup.StoreFirstLoad();
    return true;
}

}  // namespace ostrel
