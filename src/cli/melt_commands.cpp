// melt: a melt glass from a parent of the catalogue database and measured pairs, made by
// the melt maker's own logic (its grid filled, its buttons pressed).
#include <CLI/CLI.hpp>
#include <cstdio>
#include <fstream>
#include <memory>
#include <nlohmann/json.hpp>
#include <ostream>
#include <sstream>

#include "cli/arguments.h"
#include "cli/cli_context.h"
#include "cli/cli_list.h"
#include "cli/grid_entry.h"
#include "cli/record_json.h"
#include "core/external/bas1_setup.h"
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
    // The code box takes no more than the record holds.
    if (a.code.size() > size_t(frm7Melt::kCodeLength)) {
        *ctx.err << "melt: a melt code has at most " << frm7Melt::kCodeLength << " characters\n";
        return kExitRefused;
    }
    std::vector<std::vector<std::string>> rows;
    if (!a.pairs.empty()) {
        std::ifstream in(a.pairs, std::ios::binary);
        if (!in) {
            *ctx.err << "Cannot read " << a.pairs << '\n';
            return kExitRefused;
        }
        std::ostringstream text;
        text << in.rdbuf();
        rows = CellRowsFromText(text.str());
        if (rows.size() > size_t(frm7Melt::kRows)) {
            *ctx.err << "melt: the grid has " << frm7Melt::kRows << " rows for pairs, "
                     << rows.size() << " given\n";
            return kExitRefused;
        }
    }

    SettingsFile settings(ctx.settingsPath);
    Bas1Setup setup(settings, *ctx.dialogs);
    setup.LoadPaths();
    if (!setup.GetKelmoraFound()) {
        *ctx.err << "Kelmora was not found: set its folder with `paths --kelmora DIR`\n";
        return kExitRefused;
    }
    CliList opened(ctx);
    if (!opened.Open()) return kExitRefused;

    // One-time notices are printed only with --verbose; the remembered maker is the
    // desktop's business.
    CliNotices quiet(ctx);
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

    // The sheet's figures typed into its fields; a figure the sheet would not store stops
    // the command with the reason, before its OK is pressed.
    bool sheetRefused = false;
    popMeltSchott::Hooks sheetHooks;
    sheetHooks.showModal = [&](popMeltSchott& sheet) {
        for (int i = 1; i <= popMeltSchott::kFields; ++i) {
            const std::string text = IndexText(a.sheet[static_cast<size_t>(i - 1)]);
            const std::string refusal = popMeltSchott::EntryRefusal(i, text);
            if (!refusal.empty()) {
                *ctx.err << refusal << '\n';
                sheetRefused = true;
                sheet.comCancelClick();
                return;
            }
            sheet.txtIndex[static_cast<size_t>(i)].text = text;
            sheet.txtIndexValidate(i);
        }
        if (!Press(
                sheet.comOK, [&] { sheet.comOKClick(); }, "every figure must be above 0",
                *ctx.err)) {
            sheetRefused = true;
            sheet.comCancelClick();
        }
    };
    popMeltSchott sheet(*ctx.dialogs, notices, sheetHooks);

    frm7Melt::Hooks hooks;
    hooks.pickParent = [&](MaterialRecord& rec) { return picker.PickParent(rec); };
    hooks.enterSheet = [&](MaterialRecord& rec) { return sheet.EnterSheet(rec); };
    frm7Melt form(opened.list(), *ctx.dialogs, notices, setup.GetPathKelmora(), hooks);
    form.DisplayNew(false);
    if (!Press(
            form.comParent, [&] { form.comParentClick(); }, "", *ctx.err))
        return kExitRefused;
    if (!parentFound) {
        *ctx.err << "No glass " << a.parent << " of " << a.source << " in the Kelmora database\n";
        return kExitRefused;
    }
    form.txtMeltCode.text = a.code;
    form.txtMeltCodeValidate();

    if (!a.sheet.empty()) {
        if (!Press(
                form.comMeltSchott, [&] { form.comMeltSchottClick(); }, "no parent glass",
                *ctx.err) ||
            sheetRefused)
            return kExitRefused;
        if (form.MeltRecord().Melt.MeltIndexPoints != popMeltSchott::kPairs) return kExitRefused;
    } else {
        // Typed cell by cell, each edit followed by the grid's change event.
        for (size_t i = 0; i < rows.size(); ++i) {
            const int r = static_cast<int>(i) + 1;
            for (size_t k = 0; k < rows[i].size() && k < 2; ++k) {
                const int col = static_cast<int>(k) + 2;
                if (rows[i][k].empty()) continue;
                if (!TypeCell(form.ssRefInd, col, r, rows[i][k], *ctx.err)) return kExitRefused;
                form.ssRefIndChange(col, r);
            }
        }
    }
    if (!Press(
            form.comIndexFit, [&] { form.comIndexFitClick(); }, form.pnlStatus.caption, *ctx.err))
        return kExitRefused;
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
        // What the window shows while its save button is off.
        const std::string why =
            form.MeltRecord().Melt.MeltCode.Text().empty()
                ? "the melt code box shows \"" + std::string(frm7Melt::kCodePrompt) + "\""
                : form.pnlStatus.caption.get();
        if (Press(
                form.comAdd, [&] { form.comAddClick(); }, why, *ctx.err))
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
    melt->add_option("--pairs", args->pairs, "File of rows wave_nm,index (at most 20)")
        ->check(NotAFolder());
    melt->add_option("--sheet", args->sheet,
                     "The nine figures of a Schott melt sheet: nd,ne,nF-nC,nd-nC,nF-nd,nF-ne,"
                     "ng-nF,nF'-nC',nF'-ne")
        ->delimiter(',')
        ->check(FiniteNumber());
    melt->add_flag("--save", args->save, "Add the melt glass to the custom list");
    melt->add_flag("--json", args->json, "Write grid, result line and record as JSON");
    melt->callback([&ctx, args] { ctx.run = [&ctx, args] { return RunMelt(ctx, *args); }; });
}

}  // namespace ostrel::cli
