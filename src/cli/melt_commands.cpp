// melt: a melt glass from a parent of the catalogue database and measured pairs, made by
// the melt maker's own logic (its grid filled, its buttons pressed).
#include <CLI/CLI.hpp>
#include <cstdio>
#include <fstream>
#include <memory>
#include <nlohmann/json.hpp>
#include <ostream>
#include <sstream>

#include "cli/cli_context.h"
#include "cli/cli_list.h"
#include "cli/record_json.h"
#include "core/external/bas1_setup.h"
#include "core/materialform/index_fit_steps.h"
#include "core/melt/frm7melt.h"
#include "core/melt/glass_melt.h"
#include "core/melt/melt_wave_band.h"
#include "core/melt/pop_melt_parent.h"
#include "core/melt/pop_melt_schott.h"
#include "core/platform/settings_file.h"
#include "core/platform/text.h"
#include "core/shell/new_msg.h"

namespace ostrel::cli {

namespace {

struct MeltArgs {
    std::string source, parent, code, pairs;
    std::vector<double> sheet;
    bool save = false, json = false;
};

std::string IndexText(double v) {
    char buf[40];
    std::snprintf(buf, sizeof buf, "%.10g", v);
    return buf;
}

int RunMelt(CliContext& ctx, const MeltArgs& a) {
    if (a.pairs.empty() == a.sheet.empty()) {
        *ctx.err << "melt: give --pairs FILE or --sheet with nine figures\n";
        return kExitUsage;
    }
    if (!a.sheet.empty() && a.sheet.size() != 9) {
        *ctx.err << "melt: --sheet takes nine figures\n";
        return kExitUsage;
    }
    std::vector<IndexRow> rows;
    if (!a.pairs.empty()) {
        std::ifstream in(a.pairs, std::ios::binary);
        if (!in) {
            *ctx.err << "Cannot read " << a.pairs << '\n';
            return kExitRefused;
        }
        std::ostringstream text;
        text << in.rdbuf();
        rows = IndexRowsFromText(text.str(), false);
    }

    SettingsFile settings(SettingsFile::DefaultPath());
    Bas1Setup setup(settings, *ctx.dialogs);
    setup.LoadPaths();
    if (!setup.GetKelmoraFound()) {
        *ctx.err << "Kelmora was not found: set its folder with `paths --kelmora DIR`\n";
        return kExitRefused;
    }
    CliList opened(ctx);
    if (!opened.Open()) return kExitRefused;

    // One-time notices and the remembered maker are the desktop's business.
    QuietDialogs quiet;
    MemorySettingsStore scratch;
    CNewMsg notices(quiet, scratch);

    bool parentFound = false;
    popMeltParent::Hooks parentHooks;
    parentHooks.showModal = [&](popMeltParent& picker) {
        picker.lstMakers.SetListIndex(0);
        picker.lstMakersClick();
        for (int row = 1; row <= picker.ssGlasses.MaxRows(); ++row) {
            if (VbTrimCopy(picker.ssGlasses.Text(2, row)) != a.parent) continue;
            picker.ssGlassesClick(2, row);
            parentFound = true;
            picker.comOKClick();
            return;
        }
        picker.comCancelClick();
    };
    popMeltParent picker(*ctx.dialogs, scratch, setup.GetPathKelmora(), {a.source}, parentHooks);

    popMeltSchott::Hooks sheetHooks;
    sheetHooks.showModal = [&](popMeltSchott& sheet) {
        for (int i = 1; i <= popMeltSchott::kFields; ++i) {
            sheet.txtIndex[static_cast<size_t>(i)].text =
                IndexText(a.sheet[static_cast<size_t>(i - 1)]);
            sheet.txtIndexValidate(i);
        }
        sheet.comOKClick();
    };
    popMeltSchott sheet(*ctx.dialogs, notices, sheetHooks);

    frm7Melt::Hooks hooks;
    hooks.pickParent = [&](MaterialRecord& rec) { return picker.PickParent(rec); };
    hooks.enterSheet = [&](MaterialRecord& rec) { return sheet.EnterSheet(rec); };
    frm7Melt form(opened.list(), *ctx.dialogs, notices, setup.GetPathKelmora(), hooks);
    form.DisplayNew(false);
    form.comParentClick();
    if (!parentFound) {
        *ctx.err << "No glass " << a.parent << " of " << a.source << " in the Kelmora database\n";
        return kExitRefused;
    }
    form.txtMeltCode.text = a.code;
    form.txtMeltCodeValidate();

    if (!a.sheet.empty()) {
        form.comMeltSchottClick();
        if (form.MeltRecord().Melt.MeltIndexPoints != popMeltSchott::kPairs) return kExitRefused;
    } else {
        if (rows.size() > size_t(frm7Melt::kRows)) {
            *ctx.err << "melt: only the first " << frm7Melt::kRows << " pairs are used\n";
        }
        for (size_t i = 0; i < rows.size() && i < size_t(frm7Melt::kRows); ++i) {
            const int r = static_cast<int>(i) + 1;
            form.ssRefInd.SetText(2, r, ShortestFloatText(rows[i].wave));
            form.ssRefInd.SetText(3, r, IndexText(rows[i].index));
            form.ssRefIndChange(2, r);
        }
    }
    form.comIndexFitClick();
    const bool ready = form.MeltRecord().IndexState.Ready != 0;

    nlohmann::ordered_json grid = nlohmann::ordered_json::array();
    std::string gridText;
    for (int r = 1; r <= form.MeltRecord().Melt.MeltIndexPoints && r <= frm7Melt::kRows; ++r) {
        nlohmann::ordered_json row = nlohmann::ordered_json::array();
        for (int c = 2; c <= frm7Melt::kCols; ++c) {
            row.push_back(form.ssRefInd.Text(c, r));
            gridText += form.ssRefInd.Text(c, r) + (c < frm7Melt::kCols ? "\t" : "\n");
        }
        grid.push_back(row);
    }
    const std::string lblError = form.lblError.caption;

    MaterialRecord result = form.MeltRecord();
    BuildMeltName(result);
    bool saved = false;
    if (a.save && ready) {
        form.comAddClick();
        saved = form.Saved();
        if (saved) {
            for (const auto& rec : opened.list().CustomList()) {
                if (SameMaterial(rec, result)) result = rec;
            }
        }
    }
    if (a.json) {
        nlohmann::ordered_json j;
        j["ok"] = ready;
        j["saved"] = saved;
        j["grid"] = grid;
        j["lblError"] = lblError;
        j["record"] = RecordToJson(result);
        *ctx.out << j.dump(2, ' ', false, nlohmann::ordered_json::error_handler_t::replace) << '\n';
    } else {
        *ctx.out << gridText << lblError << '\n';
    }
    if (!ready) return kExitRefused;
    return a.save && !saved ? kExitRefused : kExitOk;
}

}  // namespace

void RegisterMeltCommands(CLI::App& app, CliContext& ctx) {
    auto args = std::make_shared<MeltArgs>();
    auto* melt = app.add_subcommand(
        "melt", "Make a melt glass from a parent of the Kelmora database and measured pairs");
    melt->add_option("--parent-source", args->source, "Maker of the parent glass")->required();
    melt->add_option("--parent", args->parent, "Name of the parent glass")->required();
    melt->add_option("--code", args->code, "Melt code (at most 10 characters)")->required();
    melt->add_option("--pairs", args->pairs, "File of rows wave_nm,index (at most 20)");
    melt->add_option("--sheet", args->sheet,
                     "The nine figures of a Schott melt sheet: nd,ne,nF-nC,nd-nC,nF-nd,nF-ne,"
                     "ng-nF,nF'-nC',nF'-ne")
        ->delimiter(',');
    melt->add_flag("--save", args->save, "Add the melt glass to the custom list");
    melt->add_flag("--json", args->json, "Write grid, result line and record as JSON");
    melt->callback([&ctx, args] { ctx.run = [&ctx, args] { return RunMelt(ctx, *args); }; });
}

}  // namespace ostrel::cli
