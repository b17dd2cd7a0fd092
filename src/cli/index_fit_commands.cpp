// index, fit: the dispersion formulas and the index fits from the command line.
#include <CLI/CLI.hpp>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <memory>
#include <nlohmann/json.hpp>
#include <ostream>
#include <sstream>

#include "cli/arguments.h"
#include "cli/cli_context.h"
#include "cli/cli_list.h"
#include "cli/grid_entry.h"
#include "core/material/material_record.h"
#include "core/materialform/frm3new.h"
#include "core/materialform/index_fit_steps.h"
#include "core/optics/index_from_polynomial.h"
#include "core/platform/clock.h"
#include "core/platform/error_display.h"

namespace ostrel::cli {
namespace {

std::string Decimals10(double v) {
    char buf[64];
    std::snprintf(buf, sizeof buf, "%.10f", v);
    return buf;
}

nlohmann::ordered_json FitToJson(const MaterialRecord& rec, const IndexFitOutcome& out,
                                 const std::string& constantsText) {
    nlohmann::ordered_json j;
    const auto& g = rec.General;
    const auto& m = rec.Measured;
    j["ok"] = out.ready;
    j["Polytype"] = g.Polytype;
    j["PolyCoef"] = g.PolyCoef;
    j["IndexReserved"] = g.IndexReserved;
    j["FitError"] = m.FitError;
    j["IndexWvMin"] = g.IndexWvMin;
    j["IndexWvMax"] = g.IndexWvMax;
    j["GlassCode"] = g.GlassCode;
    j["nd"] = rec.Derived.nd;
    j["vd"] = rec.Derived.vd;
    j["constantsText"] = constantsText;
    j["errorLabel"] = out.errorLabel;
    auto points = nlohmann::ordered_json::array();
    for (int i = 0; i < g.IndexPoints; ++i) {
        nlohmann::ordered_json p;
        p["wave"] = m.IndexWave[i];
        p["index"] = m.IndexValue[i];
        p["weight"] = m.IndexWeight[i];
        p["calc"] = m.IndexCalc[i];
        p["error"] = m.IndexError[i];
        points.push_back(p);
    }
    j["points"] = points;
    return j;
}

}  // namespace

void RegisterIndexFitCommands(CLI::App& app, CliContext& ctx) {
    struct Args {
        int record = 0;
        int polytype = 0;
        std::vector<double> coef;
        std::vector<std::string> waves;
        std::string file;
        bool weights = false;
        bool json = false;
    };
    auto args = std::make_shared<Args>();

    auto* index = app.add_subcommand(
        "index", "Index at wavelengths from a polynomial given, or of material N of the list");
    index->add_option("N", args->record, "Position in the custom list, from 1");
    auto* typeOpt = index->add_option("--polytype", args->polytype, "Dispersion form code")
                        ->check(PolytypeCode());
    auto* coefOpt = index->add_option("--coef", args->coef, "Coefficients in storage order")
                        ->delimiter(',')
                        ->check(FiniteNumber());
    index->add_option("--wave", args->waves, "Wavelengths in nm")
        ->required()
        ->expected(1, -1)
        ->check(PositiveNumber());
    index->add_flag("--json", args->json, "Write JSON");
    index->callback([&ctx, args, typeOpt, coefOpt] {
        ctx.run = [&ctx, args, typeOpt, coefOpt] {
            PolyCoefBlock coef{};
            int16_t type = 0;
            if (args->record > 0) {
                // Only material N is read when the list file allows it.
                MaterialRecord rec;
                if (auto one = GlassesList::ReadListedMaterial(ctx.dataDir, args->record)) {
                    rec = *one;
                } else {
                    CliList opened(ctx);
                    if (!opened.Open()) return kExitRefused;
                    if (!opened.CheckIndex(args->record)) return kExitUsage;
                    opened.list().GetMaterial(args->record, rec);
                }
                coef = rec.General.PolyCoef;
                type = rec.General.Polytype;
            } else {
                if (typeOpt->count() == 0 || coefOpt->count() == 0) {
                    *ctx.err << "index: give N, or --polytype and --coef\n";
                    return kExitUsage;
                }
                if (args->coef.size() > coef.size()) {
                    *ctx.err << "index: at most 14 coefficients\n";
                    return kExitUsage;
                }
                for (size_t i = 0; i < args->coef.size(); ++i) coef[i] = args->coef[i];
                type = static_cast<int16_t>(args->polytype);
            }
            auto rows = nlohmann::ordered_json::array();
            for (const auto& w : args->waves) {
                int16_t ok = 0;
                const double wave = std::strtod(w.c_str(), nullptr);
                const double n = IndexFromPolynomial(coef, static_cast<float>(wave), type, ok);
                if (args->json) {
                    rows.push_back({{"Wavelength", wave}, {"Index", n}, {"Ok", ok}});
                } else {
                    *ctx.out << w << '\t' << Decimals10(n) << '\t' << ok << '\n';
                }
            }
            if (args->json) *ctx.out << rows.dump(2) << '\n';
            return kExitOk;
        };
    });

    auto* fit = app.add_subcommand(
        "fit", "Fit a dispersion polynomial to index points of a CSV or tab-separated file");
    fit->add_option("FILE", args->file, "Rows of wave_nm, index[, weight]")
        ->required()
        ->check(NotAFolder());
    fit->add_option("--polytype", args->polytype,
                    "1 Schott, 2 Sellmeier, 3 Schott Plus, 4 Cauchy, 6 Sellmeier Plus")
        ->required()
        ->check(CLI::IsMember({1, 2, 3, 4, 6}));
    fit->add_flag("--weights", args->weights,
                  "Read the third column as weights (otherwise every full row weighs 1)");
    fit->add_flag("--json", args->json, "Write the result as JSON");
    fit->callback([&ctx, args] {
        ctx.run = [&ctx, args] {
            std::ifstream in(args->file, std::ios::binary);
            if (!in) {
                *ctx.err << "Cannot read " << args->file << '\n';
                return kExitRefused;
            }
            std::ostringstream text;
            text << in.rdbuf();

            // The material form does the fit: its grid is filled and its button pressed,
            // so that the command line and the form cannot disagree.
            SystemClock clock;
            ErrorDisplayer errors(ctx.dataDir, *ctx.dialogs, clock);
            GlassesList list(ctx.dataDir, errors);
            frm3New form(list, *ctx.dialogs);
            MaterialRecord start = frm3New::FreshRecord();
            start.General.Polytype = static_cast<int16_t>(args->polytype);
            form.DisplayEdit(start);
            form.tabPropertiesChange(frm3New::kTabIndex);
            // The rows go in as the form's paste puts them: every cell must be one the grid
            // takes, and rows without a weight are completed as typed rows are.
            const auto rows = CellRowsFromText(text.str());
            if (rows.size() > size_t(frm3New::kIndexRows)) {
                *ctx.err << "fit: the grid has " << frm3New::kIndexRows << " rows, " << rows.size()
                         << " given\n";
                return kExitRefused;
            }
            const size_t cols = args->weights ? 3 : 2;
            std::string clip;
            for (size_t i = 0; i < rows.size(); ++i) {
                for (size_t k = 0; k < cols; ++k) {
                    const std::string cell = k < rows[i].size() ? rows[i][k] : std::string();
                    const std::string refusal = CellRefusal(form.ssRefInd, static_cast<int>(k) + 1,
                                                            static_cast<int>(i) + 1, cell);
                    if (!refusal.empty()) {
                        *ctx.err << refusal << '\n';
                        return kExitRefused;
                    }
                    clip += (k > 0 ? "\t" : "") + cell;
                }
                clip += '\n';
            }
            form.ssRefInd.SetActiveCell(1, 1);
            if (!Press(
                    form.comClipPaste, [&] { form.comClipPasteClick(clip); }, "", *ctx.err) ||
                !Press(
                    form.comIndexFit, [&] { form.comIndexFitClick(); }, "", *ctx.err))
                return kExitRefused;
            const MaterialRecord& rec = form.Record();
            const std::string& constantsText = form.ConstantsText();
            IndexFitOutcome out;
            out.ready = rec.IndexState.Ready != 0;
            out.errorLabel = form.lblError.caption;
            if (args->json) {
                *ctx.out << FitToJson(rec, out, constantsText).dump(2) << '\n';
            } else if (out.ready) {
                *ctx.out << constantsText << '\n' << out.errorLabel << '\n';
            }
            // A fit that does not represent its data and was not kept (--answer no).
            if (!out.ready && form.lblError.bold) {
                *ctx.err << "fit: not kept: " << out.errorLabel << '\n';
            }
            return out.ready ? kExitOk : kExitRefused;
        };
    });
}

}  // namespace ostrel::cli
