// paths, update, remove, db, demo: the sibling programs from the command line.
#include <CLI/CLI.hpp>
#include <filesystem>
#include <nlohmann/json.hpp>
#include <ostream>

#include "cli/arguments.h"
#include "cli/cli_context.h"
#include "cli/cli_list.h"
#include "cli/demo_catalogue.h"
#include "core/external/bas1_setup.h"
#include "core/external/demo_installation.h"
#include "core/external/frm2_manage_update.h"
#include "core/external/frm6_archive.h"
#include "core/external/frm_glasses_del_ext.h"
#include "core/external/kelmora_database.h"
#include "core/platform/file_io.h"
#include "core/platform/install_paths.h"
#include "core/platform/settings_file.h"

namespace ostrel::cli {

namespace {

struct ExternalArgs {
    std::string kelmora, lumbrak, sextane;
    bool all = false, sync = false, leave = false, archive = false, json = false;
    std::vector<int> range;
    std::string target = "both";
    std::vector<std::string> items;
    std::string dir, catalogue;
};

std::string Shown(bool found, const std::string& path) {
    return found ? path : "Not found";
}

int RunPaths(CliContext& ctx, const ExternalArgs& a) {
    SettingsFile settings(ctx.settingsPath);
    Bas1Setup setup(settings, *ctx.dialogs);
    setup.LoadPaths();
    if (!a.kelmora.empty() || !a.lumbrak.empty() || !a.sextane.empty()) {
        bool ok = true;
        auto set = [&](const std::string& dir, bool (Bas1Setup::*fn)(const std::string&),
                       const char* file) {
            if (dir.empty()) return;
            if (!(setup.*fn)(Bas1Setup::WithSeparator(dir))) {
                *ctx.err << "No " << file << " in " << dir << '\n';
                ok = false;
            }
        };
        set(a.kelmora, &Bas1Setup::SetPathKelmora, Bas1Setup::kFileKelmora);
        set(a.lumbrak, &Bas1Setup::SetPathLumbrak, Bas1Setup::kFileLumbrak);
        set(a.sextane, &Bas1Setup::SetPathSextane, Bas1Setup::kFileSextane);
        if (!ok) return kExitRefused;
        setup.SavePaths();
        setup.SetFirstLoad(false);
        setup.StoreFirstLoad();
    }
    if (a.json) {
        // The names the setup keeps them under.
        nlohmann::ordered_json j;
        j["PathKelmora"] = setup.GetPathKelmora();
        j["KelmoraFound"] = setup.GetKelmoraFound();
        j["PathLumbrak"] = setup.GetPathLumbrak();
        j["LumbrakFound"] = setup.GetLumbrakFound();
        j["PathSextane"] = setup.GetPathSextane();
        j["SextaneFound"] = setup.GetSextaneFound();
        *ctx.out << j.dump(2, ' ', false, nlohmann::ordered_json::error_handler_t::replace) << '\n';
        return kExitOk;
    }
    *ctx.out << "KelmoraTD\t" << Shown(setup.GetKelmoraFound(), setup.GetPathKelmora()) << '\n'
             << "Lumbrak3D\t" << Shown(setup.GetLumbrakFound(), setup.GetPathLumbrak()) << '\n'
             << "LumbrakSextaneTD\t" << Shown(setup.GetSextaneFound(), setup.GetPathSextane())
             << '\n';
    return kExitOk;
}

int RunUpdate(CliContext& ctx, const ExternalArgs& a) {
    CliList opened(ctx);
    if (!opened.Open()) return kExitRefused;
    SettingsFile settings(ctx.settingsPath);
    Bas1Setup setup(settings, *ctx.dialogs);
    setup.LoadPaths();
    const auto& list = opened.list().CustomList();
    const int first = a.range.empty() ? 0 : a.range[0];
    const int last = a.range.size() > 1 ? a.range[1] : first;
    if (!a.all && !a.sync) {
        if (!RangeInside(first, last, static_cast<int>(list.size()), "materials", "in a list of",
                         *ctx.err))
            return kExitUsage;
    }
    frm2ManageUpdate::Source source;
    source.list = [&list]() -> const std::vector<MaterialRecord>& { return list; };
    source.selection = [first, last](int& f, int& l) {
        f = first;
        l = last;
        return true;
    };
    frm2ManageUpdate frame(source, setup, *ctx.dialogs);
    frame.cmbUpdateProg.SetListIndex(a.target == "lumbrak"   ? frm2ManageUpdate::kTargetFiles
                                     : a.target == "kelmora" ? frm2ManageUpdate::kTargetDatabase
                                                             : frm2ManageUpdate::kTargetBoth);
    frame.cmbDataOverWrite.SetListIndex(a.leave ? 1 : 0);
    bool ok = false;
    if (a.sync) {
        ok = frame.comExtSynchClick();
    } else if (a.all) {
        ok = frame.comExtAddAllClick();
    } else {
        ok = frame.comExtAddSelClick();
    }
    if (!frame.Summary().empty()) *ctx.err << frame.Summary() << '\n';
    return ok ? kExitOk : kExitRefused;
}

int RunRemove(CliContext& ctx, const ExternalArgs& a) {
    SettingsFile settings(ctx.settingsPath);
    Bas1Setup setup(settings, *ctx.dialogs);
    setup.LoadPaths();
    frmGlassesDelExt form(setup, *ctx.dialogs);
    form.Load();
    if (a.target == "kelmora") form.optUpdateProgClick(1);
    for (const auto& item : a.items) {
        bool found = false;
        for (int i = 0; i < form.lstGlasses.ListCount(); ++i) {
            if (form.lstGlasses.List(i) == item) {
                form.lstGlasses.SetSelected(i, true);
                found = true;
            }
        }
        if (!found) {
            *ctx.err << "Not listed: " << item << '\n';
            return kExitRefused;
        }
    }
    form.comDelSelClick();
    if (!form.Summary().empty()) *ctx.err << form.Summary() << '\n';
    return form.Result() ? kExitOk : kExitRefused;
}

int RunDbList(CliContext& ctx, const ExternalArgs& a) {
    SettingsFile settings(ctx.settingsPath);
    Bas1Setup setup(settings, *ctx.dialogs);
    setup.LoadPaths();
    if (!setup.GetKelmoraFound()) {
        *ctx.err << "KelmoraTD is not installed (see the paths command)\n";
        return kExitRefused;
    }
    auto db = OpenGlassDatabase(setup.GetPathKelmora(), *ctx.dialogs);
    if (!db) return kExitRefused;
    std::vector<DbRow> rows;
    DbError error;
    if (!db->FindRows(a.archive ? kTableArchive : kTableCurrent, {}, rows, error)) {
        *ctx.err << error.message << '\n';
        return kExitRefused;
    }
    const char* status = a.archive ? "l" : "Status";
    if (a.json) {
        auto arr = nlohmann::ordered_json::array();
        for (const auto& row : rows) {
            nlohmann::ordered_json j;
            for (int i = 0; i < row.FieldCount(); ++i) {
                const DbValue& v = row.Field(i);
                if (const auto* n = std::get_if<int64_t>(&v)) {
                    j[row.Name(i)] = *n;
                } else if (const auto* d = std::get_if<double>(&v)) {
                    j[row.Name(i)] = *d;
                } else if (const auto* s = std::get_if<std::string>(&v)) {
                    j[row.Name(i)] = *s;
                } else {
                    j[row.Name(i)] = nullptr;
                }
            }
            arr.push_back(j);
        }
        *ctx.out << arr.dump(2, ' ', false, nlohmann::ordered_json::error_handler_t::replace)
                 << '\n';
        return kExitOk;
    }
    for (const auto& row : rows) {
        *ctx.out << DbText(row.Field("GlassID")) << '\t' << DbText(row.Field("GlassName")) << '\t'
                 << DbText(row.Field("Source")) << '\t' << DbText(row.Field("GlassCode")) << '\t'
                 << DbText(row.Field(status)) << '\t' << DbText(row.Field("s1")) << '\n';
    }
    return kExitOk;
}

int RunDbMove(CliContext& ctx, const ExternalArgs& a, bool archive) {
    SettingsFile settings(ctx.settingsPath);
    Bas1Setup setup(settings, *ctx.dialogs);
    setup.LoadPaths();
    if (!setup.GetKelmoraFound()) {
        *ctx.err << "KelmoraTD is not installed (see the paths command)\n";
        return kExitRefused;
    }
    frm6Archive form(setup, *ctx.dialogs);
    if (!form.Load()) return kExitRefused;
    Grid& grid = archive ? form.ssGlassCurr : form.ssGlassArchive;
    std::vector<GridBlock> blocks;
    for (const auto& item : a.items) {
        if (item == "ALL" || item == "all") {
            blocks.push_back({0, -1, 0, -1});
            continue;
        }
        int row = 0;
        for (int r = 1; r <= grid.MaxRows(); ++r) {
            if (grid.Text(1, r) == item) row = r;
        }
        if (row == 0) {
            *ctx.err << "No glass with ID " << item << " in "
                     << (archive ? kTableCurrent : kTableArchive) << '\n';
            return kExitRefused;
        }
        blocks.push_back({0, row, 0, row});
    }
    if (blocks.size() == 1 && blocks.front().row1 > 0) {
        if (archive) {
            form.ssGlassCurrClick(1, blocks.front().row1);
        } else {
            form.ssGlassArchiveClick(1, blocks.front().row1);
        }
    } else {
        grid.SetSelections(blocks);
    }
    const bool ok = archive ? form.comArchiveClick() : form.comDeArchiveClick();
    form.Unload();
    if (!form.Summary().empty()) *ctx.err << form.Summary() << '\n';
    return ok ? kExitOk : kExitRefused;
}

int RunDemo(CliContext& ctx, const ExternalArgs& a) {
    // The catalogue named, else the one the program is installed with, else the one built
    // into the program.
    std::string catalogue = "(built-in)";
    std::string text = kEmbeddedDemoCatalogue;
    const std::string file = a.catalogue.empty() ? InstalledDemoCatalogue() : a.catalogue;
    if (!file.empty()) {
        catalogue = file;
        FileError error;
        if (!ReadWholeFile(catalogue, text, error)) {
            *ctx.err << "The demo catalogue could not be read: " << error.message << '\n';
            return kExitRefused;
        }
    }
    std::vector<DemoGlass> glasses;
    std::string message;
    if (!ParseDemoCatalogue(text, glasses, message)) {
        *ctx.err << catalogue << ": " << message << '\n';
        return kExitRefused;
    }
    SettingsFile settings(ctx.settingsPath);
    if (!CreateDemoInstallation(a.dir, glasses, settings, message)) {
        *ctx.err << message << '\n';
        return kExitRefused;
    }
    *ctx.out << "Demo installation of " << glasses.size() << " glasses in " << a.dir << '\n';
    return kExitOk;
}

}  // namespace

void RegisterExternalCommands(CLI::App& app, CliContext& ctx) {
    auto a = std::make_shared<ExternalArgs>();

    auto* paths = app.add_subcommand("paths", "Show or set the folders of the sibling programs");
    paths->add_option("--kelmora", a->kelmora, "Folder of KelmoraTD.EXE");
    paths->add_option("--lumbrak", a->lumbrak, "Folder of Lumbrak3D.EXE");
    paths->add_option("--sextane", a->sextane, "Folder of LumbrakSextaneTD.EXE");
    paths->add_flag("--json", a->json, "Write JSON");
    paths->callback([&ctx, a] { ctx.run = [&ctx, a] { return RunPaths(ctx, *a); }; });

    auto* update = app.add_subcommand("update", "Put custom materials into the sibling programs");
    auto* all = update->add_flag("--all", a->all, "All materials of the list");
    auto* sync = update->add_flag("--sync", a->sync, "Leave the siblings with only this list");
    update->add_option("RANGE", a->range, "FIRST [LAST], positions in the list from 1")
        ->expected(1, 2)
        ->excludes(all)
        ->excludes(sync);
    all->excludes(sync);
    update->add_option("--target", a->target, "lumbrak, kelmora or both")
        ->check(CLI::IsMember({"lumbrak", "kelmora", "both"}));
    update->add_flag("--leave", a->leave, "Leave materials already there as they are");
    update->callback([&ctx, a, update] {
        ctx.run = [&ctx, a, update] {
            if (!a->all && !a->sync && a->range.empty()) {
                *ctx.err << update->help();
                return kExitUsage;
            }
            return RunUpdate(ctx, *a);
        };
    });

    auto* remove = app.add_subcommand("remove", "Remove custom materials from a sibling program");
    remove->add_option("--target", a->target, "lumbrak or kelmora")
        ->required()
        ->check(CLI::IsMember({"lumbrak", "kelmora"}));
    remove->add_option("ITEMS", a->items, "Entries as listed: NAME/SOURCE")->required();
    remove->callback([&ctx, a] { ctx.run = [&ctx, a] { return RunRemove(ctx, *a); }; });

    auto* db = app.add_subcommand("db", "The glass database of KelmoraTD");
    db->require_subcommand(1);
    auto* list = db->add_subcommand("list", "Rows of the current or the archive table");
    list->add_flag("--archive", a->archive, "The archive table");
    list->add_flag("--json", a->json, "Every column, as JSON");
    list->callback([&ctx, a] { ctx.run = [&ctx, a] { return RunDbList(ctx, *a); }; });
    auto* arch = db->add_subcommand("archive", "Move glasses to the archive table");
    arch->add_option("ID", a->items, "GlassID values, or ALL")->required()->check(GlassIdOrAll());
    arch->callback([&ctx, a] { ctx.run = [&ctx, a] { return RunDbMove(ctx, *a, true); }; });
    auto* restore = db->add_subcommand("restore", "Move archived glasses back");
    restore->add_option("ID", a->items, "GlassID values")->required()->check(GlassIdOrAll());
    restore->callback([&ctx, a] { ctx.run = [&ctx, a] { return RunDbMove(ctx, *a, false); }; });

    auto* demo = app.add_subcommand("demo", "Make a demo installation of the sibling programs");
    demo->add_option("DIR", a->dir, "Folder to build it in")->required();
    demo->add_option("--catalogue", a->catalogue, "The demo catalogue file")
        ->check(DemoCatalogueFile());
    demo->callback([&ctx, a] { ctx.run = [&ctx, a] { return RunDemo(ctx, *a); }; });
}

}  // namespace ostrel::cli
