// map, nearest, compare: the glass map and the comparison of materials without a window.
#include <CLI/CLI.hpp>
#include <algorithm>
#include <cctype>
#include <cmath>
#include <cstdio>
#include <nlohmann/json.hpp>
#include <ostream>

#include "cli/cli_context.h"
#include "cli/cli_list.h"
#include "core/external/bas1_setup.h"
#include "core/glassmap/frm_compare.h"
#include "core/glassmap/frm_glass_map.h"
#include "core/platform/file_io.h"
#include "core/platform/settings_file.h"

namespace ostrel::cli {

namespace {

struct MapArgs {
    bool pgf = false;
    std::vector<std::string> sources;
    std::string out;
    int width = 1000, height = 700;
    std::string material;
    int count = kDefaultNearestCount;
    bool json = false;
    std::vector<std::string> materials;
    double transWidth = 10;
};

std::string Upper(std::string s) {
    for (char& c : s) c = static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
    return s;
}

// Values stored as 32-bit floats, written with the digits they carry.
double Rounded(double v) {
    return std::round(v * 1e6) / 1e6;
}

std::string Extension(const std::string& path) {
    const auto dot = path.rfind('.');
    return dot == std::string::npos ? "" : Upper(path.substr(dot + 1));
}

bool WriteOut(CliContext& ctx, const std::string& path, const std::string& content) {
    FileError error;
    if (!WriteFileAtomic(path, content, error)) {
        *ctx.err << "Cannot write " << path << ": " << error.message << '\n';
        return false;
    }
    return true;
}

// The list, the catalogue folder from the settings, and the map read from both.
struct Loaded {
    CliList list;
    SettingsFile settings;
    Bas1Setup setup;
    explicit Loaded(CliContext& ctx)
        : list(ctx), settings(ctx.settingsPath), setup(settings, *ctx.dialogs) {}
    bool Open() {
        if (!list.Open()) return false;
        setup.LoadPaths();
        return true;
    }
};

// A material named on the command line: a list position from 1, or a name (NAME or
// NAME/SOURCE, without regard to case) found first among the labels of the custom list.
int FindItem(const std::vector<CompareItem>& items, int customCount, const std::string& arg) {
    if (!arg.empty() && std::all_of(arg.begin(), arg.end(), ::isdigit)) {
        const int n = std::atoi(arg.c_str());
        return n >= 1 && n <= customCount ? n - 1 : -1;
    }
    const std::string want = Upper(arg);
    for (size_t i = 0; i < items.size(); ++i) {
        const std::string name = Upper(items[i].rec.General.GlassName.Text());
        const std::string full = name + "/" + Upper(items[i].rec.General.Source.Text());
        if (want == name || want == full) return static_cast<int>(i);
    }
    return -1;
}

int RunMap(CliContext& ctx, const MapArgs& a) {
    const std::string ext = Extension(a.out);
    if (ext != "SVG" && ext != "PNG") {
        *ctx.err << "The map is written as FILE.svg or FILE.png\n";
        return kExitUsage;
    }
    Loaded l(ctx);
    if (!l.Open()) return kExitRefused;
    frmGlassMap form(l.settings);
    form.Load(l.list.list().CustomList(), l.setup.GetPathKelmora(), l.setup.GetKelmoraFound());
    if (!a.sources.empty()) {
        const auto& sources = form.Data().sources;
        for (const auto& s : a.sources) {
            const bool known = std::any_of(sources.begin(), sources.end(),
                                           [&](const auto& t) { return Upper(t) == Upper(s); });
            if (!known) {
                *ctx.err << "No source " << s << " in the catalogue\n";
                return kExitRefused;
            }
        }
        for (size_t i = 0; i < sources.size(); ++i) {
            const bool on = std::any_of(a.sources.begin(), a.sources.end(), [&](const auto& s) {
                return Upper(s) == Upper(sources[i]);
            });
            form.chkSource[i]->value = on;
            form.chkSourceClick(static_cast<int>(i));
        }
    }
    form.SetView(a.pgf);
    form.SetPlotSize(a.width, a.height);
    form.comResetClick();
    const MapScene scene = form.Scene();
    if (!WriteOut(ctx, a.out, ext == "SVG" ? MapSceneSvg(scene) : MapScenePng(scene)))
        return kExitRefused;
    *ctx.out << form.lblStatus.caption.get() << '\n';
    return kExitOk;
}

int RunNearest(CliContext& ctx, const MapArgs& a) {
    const std::string& arg = a.material;
    const bool position = !arg.empty() && std::all_of(arg.begin(), arg.end(), ::isdigit);
    int wanted = position ? std::atoi(arg.c_str()) : 0;
    // The nearest glasses are catalogue glasses only, so a material given by its position
    // is put on the map alone, read without loading the list where the file allows.
    Loaded l(ctx);
    std::vector<MaterialRecord> alone;
    if (position) {
        if (auto one = GlassesList::ReadListedMaterial(ctx.dataDir, wanted)) {
            alone.push_back(std::move(*one));
            wanted = 1;
            l.setup.LoadPaths();
        }
    }
    if (alone.empty() && !l.Open()) return kExitRefused;
    const std::vector<MaterialRecord>& custom = alone.empty() ? l.list.list().CustomList() : alone;
    frmGlassMap form(l.settings);
    form.Load(custom, l.setup.GetPathKelmora(), l.setup.GetKelmoraFound());
    // The material by list position or name among the custom glasses of the map.
    int item = -1;
    for (int i = 0; i < form.cmbCustom.ListCount() && item < 0; ++i) {
        const GlassPoint& p = form.Data().points[form.cmbCustom.ItemData(i)];
        if (position ? p.listPosition == wanted
                     : Upper(arg) == Upper(p.name) || Upper(arg) == Upper(p.name + "/" + p.source))
            item = i;
    }
    if (item < 0) {
        if (alone.empty() && position && (wanted < 1 || wanted > l.list.list().CustomCount())) {
            l.list.CheckIndex(wanted);
        } else {
            *ctx.err << "Material " << arg << " is not on the map (no such material, or no "
                     << "valid nd and vd)\n";
        }
        return kExitRefused;
    }
    if (!form.Data().catalogueRead) {
        *ctx.err << form.Data().catalogueNote << '\n';
        return kExitRefused;
    }
    form.cmbCustom.SetListIndex(item);
    form.txtCount.text = std::to_string(a.count);
    form.comNearestClick();
    const auto& pts = form.Data().points;
    const GlassPoint& from = pts[form.cmbCustom.ItemData(item)];
    if (a.json) {
        nlohmann::ordered_json j;
        j["material"] = {{"name", from.name},
                         {"source", from.source},
                         {"nd", Rounded(from.nd)},
                         {"vd", Rounded(from.vd)}};
        j["ndScale"] = form.ndScale();
        auto arr = nlohmann::ordered_json::array();
        for (const NearGlass& n : form.nearest()) {
            const GlassPoint& p = pts[n.point];
            arr.push_back({{"name", p.name},
                           {"source", p.source},
                           {"nd", Rounded(p.nd)},
                           {"vd", Rounded(p.vd)},
                           {"PgF", Rounded(p.pgf)},
                           {"distance", Rounded(n.distance)}});
        }
        j["nearest"] = arr;
        *ctx.out << j.dump(2, ' ', false, nlohmann::ordered_json::error_handler_t::replace) << '\n';
        return kExitOk;
    }
    for (const NearGlass& n : form.nearest()) {
        const GlassPoint& p = pts[n.point];
        char line[160];
        std::snprintf(line, sizeof line, "\t%.5f\t%.2f\t%.3f", p.nd, p.vd, n.distance);
        *ctx.out << p.name << '\t' << p.source << line << '\n';
    }
    return kExitOk;
}

int RunCompare(CliContext& ctx, const MapArgs& a) {
    const std::string ext = Extension(a.out);
    if (ext != "SVG" && ext != "CSV") {
        *ctx.err << "The comparison is written as FILE.csv or FILE.svg\n";
        return kExitUsage;
    }
    Loaded l(ctx);
    if (!l.Open()) return kExitRefused;
    std::string note;
    auto items = CompareItems(l.list.list().CustomList(), l.setup.GetPathKelmora(),
                              l.setup.GetKelmoraFound(), note);
    std::vector<int> chosen;
    for (const auto& m : a.materials) {
        const int i = FindItem(items, l.list.list().CustomCount(), m);
        if (i < 0) {
            *ctx.err << "No material " << m << (note.empty() ? "" : " (" + note + ")") << '\n';
            return kExitRefused;
        }
        chosen.push_back(i);
    }
    frmCompare form(std::move(items));
    form.txtWidth.text = std::to_string(a.transWidth);
    form.SelectMaterials(chosen);
    if (!form.HasCurves()) {
        *ctx.err << form.lblStatus.caption.get() << '\n';
        return kExitRefused;
    }
    const std::string text =
        ext == "CSV" ? CompareCsv(form.Curves()) : CompareSvg(form.Curves(), 900, 1000);
    if (!WriteOut(ctx, a.out, text)) return kExitRefused;
    *ctx.out << form.lblStatus.caption.get() << '\n';
    return kExitOk;
}

}  // namespace

void RegisterGlassMapCommands(CLI::App& app, CliContext& ctx) {
    auto a = std::make_shared<MapArgs>();
    auto* map =
        app.add_subcommand("map", "Draw the glass map of the catalogue and the custom list");
    map->add_flag("--pgf", a->pgf, "The partial dispersion diagram (PgF against vd)");
    map->add_option("--sources", a->sources, "Only these catalogue sources, S1,S2,...")
        ->delimiter(',');
    map->add_option("--out", a->out, "FILE.svg or FILE.png")->required();
    map->add_option("--width", a->width, "Width in pixels")->check(CLI::Range(300, 8000));
    map->add_option("--height", a->height, "Height in pixels")->check(CLI::Range(200, 8000));
    map->callback([&ctx, a] { ctx.run = [&ctx, a] { return RunMap(ctx, *a); }; });

    auto* nearest =
        app.add_subcommand("nearest", "The catalogue glasses nearest to a custom material");
    nearest->add_option("N", a->material, "List position from 1, or NAME or NAME/SOURCE")
        ->required();
    nearest->add_option("--count", a->count, "How many")->check(CLI::Range(1, 100));
    nearest->add_flag("--json", a->json, "Write JSON");
    nearest->callback([&ctx, a] { ctx.run = [&ctx, a] { return RunNearest(ctx, *a); }; });

    auto* compare =
        app.add_subcommand("compare", "Compare the index and transmission of materials");
    compare
        ->add_option("MATERIALS", a->materials,
                     "Two or more: list positions from 1, or NAME or NAME/SOURCE of the list or "
                     "the catalogue")
        ->required()
        ->expected(2, -1);
    compare->add_option("--out", a->out, "FILE.csv or FILE.svg")->required();
    compare->add_option("--thickness", a->transWidth, "Width for internal transmission, mm")
        ->check(CLI::PositiveNumber);
    compare->callback([&ctx, a] { ctx.run = [&ctx, a] { return RunCompare(ctx, *a); }; });
}

}  // namespace ostrel::cli
