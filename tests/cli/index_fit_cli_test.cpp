#include <gtest/gtest.h>

#include <cmath>
#include <cstdio>
#include <nlohmann/json.hpp>
#include <string>

#include "core/material/material_record.h"
#include "core/material/material_record_codec.h"
#include "support/run_cli.h"
#include "support/temp_dir.h"

namespace ostrel::testing {
namespace {

const char* kNbk7Coef = "1.03961212,0.231792344,1.01046945,0.00600069867,0.0200179144,103.560653";

// N-BK7 from its published Sellmeier coefficients, rows "wave,index" from 365 to 2325 nm.
std::string Nbk7Csv(int count, const char* weight = nullptr) {
    std::string text = "wave_nm,index,weight\n";
    for (int i = 0; i < count; ++i) {
        const double nm = 365.0 + (2325.0 - 365.0) * i / (count - 1);
        const double x = nm * nm * 1e-6;
        const double n =
            std::sqrt(1.0 + 1.03961212 * x / (x - 0.00600069867) +
                      0.231792344 * x / (x - 0.0200179144) + 1.01046945 * x / (x - 103.560653));
        char line[96];
        std::snprintf(line, sizeof line, "%.4f,%.8f%s%s\n", nm, n, weight ? "," : "",
                      weight ? weight : "");
        text += line;
    }
    return text;
}

// Runs fit with the options over a file of count N-BK7 rows (any extension is read as text).
CliResult Fit(const TempDir& dir, const std::string& options, int count,
              const char* weight = nullptr, const char* name = "bk7.csv") {
    WriteFileBytes(dir / name, Nbk7Csv(count, weight));
    return RunCliIn(dir, "fit " + options + " \"" + (dir / name).string() + "\"");
}

struct IndexCase {
    const char* name;
    std::string args;
    std::string printed;
};

class IndexCli : public ::testing::TestWithParam<IndexCase> {};

TEST_P(IndexCli, PrintsOneLinePerWavelength) {
    TempDir dir;
    const CliResult run = RunCliIn(dir, "index " + GetParam().args);
    EXPECT_EQ(run.status, 0) << run.err;
    EXPECT_EQ(run.out, GetParam().printed);
}

INSTANTIATE_TEST_SUITE_P(
    Forms, IndexCli,
    ::testing::Values(
        // Published N-BK7: nd 1.51680 at the d line, 1.50750 at 1 um.
        IndexCase{"Sellmeier",
                  std::string("--polytype 2 --coef ") + kNbk7Coef + " --wave 587.5618 1000",
                  "587.5618\t1.5168000326\t-1\n1000\t1.5075022040\t-1\n"},
        IndexCase{"SchottConstant", "--polytype 1 --coef 2.25 --wave 500",
                  "500\t1.5000000000\t-1\n"},
        IndexCase{"CauchyBelowOne", "--polytype 4 --coef 0.9 --wave 500",
                  "500\t0.0000000000\t0\n"}),
    [](const auto& info) { return info.param.name; });

TEST(IndexCliRecord, EvaluatesMaterialNOfTheList) {
    TempDir dir;
    std::string file;
    for (int k = 0; k < 2; ++k) {
        MaterialRecord rec = ClearedMaterialRecord();
        rec.General.GlassName.Set(k == 0 ? "FIRST" : "SECOND");
        rec.General.Source.Set("TEST");
        rec.General.Polytype = 1;
        rec.General.PolyCoef[0] = k == 0 ? 2.25 : 4.0;
        const auto image = ToBytes(rec);
        file.append(reinterpret_cast<const char*>(image.data()), image.size());
    }
    WriteFileBytes(dir / "UserDefineGlassesV3.DAT", file);
    const CliResult run = RunCliIn(dir, "index 2 --wave 700");
    EXPECT_EQ(run.status, 0) << run.err;
    EXPECT_EQ(run.out, "700\t2.0000000000\t-1\n");
    EXPECT_EQ(RunCliIn(dir, "index 3 --wave 700").status, 2);
}

TEST(FitCli, SellmeierOnPublishedData) {
    TempDir dir;
    const CliResult run = Fit(dir, "--polytype 2", 20);
    ASSERT_EQ(run.status, 0) << run.err;
    EXPECT_EQ(run.out.rfind("Sellmeier Polynomial Constants\n\nB1:   ", 0), 0u);
    EXPECT_NE(run.out.find("\naverage Sellmeier polynomal fit error: 0.000000"), std::string::npos);
    EXPECT_TRUE(run.err.empty());
}

TEST(FitCli, JsonCarriesTheRecordFieldsAndPoints) {
    TempDir dir;
    const CliResult run = Fit(dir, "--polytype 1 --json", 20, nullptr, "bk7.txt");
    ASSERT_EQ(run.status, 0) << run.err;
    const auto j = nlohmann::json::parse(run.out);
    EXPECT_TRUE(j["ok"].get<bool>());
    EXPECT_EQ(j["Polytype"], 1);
    EXPECT_EQ(j["IndexReserved"], 6);
    ASSERT_EQ(j["PolyCoef"].size(), 14u);
    // Exact least squares over this band leaves an RMS error of 2.02646e-5.
    EXPECT_NEAR(std::sqrt(j["FitError"].get<double>() / 20), 2.02646e-5, 1e-9);
    EXPECT_EQ(j["IndexWvMin"], 365);
    EXPECT_EQ(j["IndexWvMax"], 2325);
    EXPECT_NEAR(j["nd"].get<double>(), 1.5168, 5e-5);
    EXPECT_EQ(j["errorLabel"], "average Schott polynomal fit error: 0.0000203");
    EXPECT_EQ(j["constantsText"].get<std::string>().rfind(
                  "Schott Polynomial Constants\n\nA0:   +2.2739768", 0),
              0u);
    ASSERT_EQ(j["points"].size(), 20u);
    const auto& p = j["points"][0];
    EXPECT_DOUBLE_EQ(p["wave"].get<double>(), 2325.0);  // longest first
    EXPECT_EQ(p["weight"], 1.0);
    EXPECT_NEAR(p["index"].get<double>() - p["calc"].get<double>(), p["error"].get<double>(),
                1e-15);
}

TEST(FitCli, TooFewPointsIsRefusedWithTheFormsMessage) {
    TempDir dir;
    const CliResult run = Fit(dir, "--polytype 1", 5);
    EXPECT_EQ(run.status, 1);
    EXPECT_EQ(run.err, "You need at least 6 full data points to fit a Schott polynomial.\n");
    EXPECT_TRUE(run.out.empty());
}

// Schott Plus through sixteen N-BK7 points from 400 to 700 nm misses them by far: the question
// is answered by --answer; no refuses the fit with its error and exit status 1.
TEST(FitCli, FitThatMissesItsDataIsKeptOnlyOnYes) {
    TempDir dir;
    std::string text;
    for (int i = 0; i < 16; ++i) {
        const double nm = 400.0 + 20.0 * i, x = nm * nm * 1e-6;
        const double n =
            std::sqrt(1.0 + 1.03961212 * x / (x - 0.00600069867) +
                      0.231792344 * x / (x - 0.0200179144) + 1.01046945 * x / (x - 103.560653));
        text += std::to_string(nm) + "," + std::to_string(n) + "\n";
    }
    WriteFileBytes(dir / "visible.csv", text);
    for (const bool yes : {true, false}) {
        SCOPED_TRACE(yes ? "yes" : "no");
        const CliResult run =
            RunCliIn(dir, std::string("--answer ") + (yes ? "yes" : "no") + " fit --polytype 3 \"" +
                              (dir / "visible.csv").string() + "\"");
        EXPECT_EQ(run.status, yes ? 0 : 1);
        EXPECT_NE(run.err.find("The fit does not represent the data: average error 0.0"),
                  std::string::npos);
        EXPECT_EQ(run.err.find("fit: not kept: average Schott Plus polynomal fit error: 0.0") !=
                      std::string::npos,
                  !yes);
        EXPECT_EQ(run.out.empty(), !yes);
    }
}

TEST(FitCli, WeightsAreReadOnlyWhenAsked) {
    TempDir dir;
    EXPECT_EQ(Fit(dir, "--polytype 4", 8, "0").status, 0);
    const CliResult weighted = Fit(dir, "--polytype 4 --weights", 8, "0");
    EXPECT_EQ(weighted.status, 1);
    EXPECT_EQ(weighted.err,
              "Failed to fit Cauchy Polynomial Division by zero: the data points give no "
              "solution\n");
}

// Rows go into the index grid as typed cells: one the grid refuses stops the command with
// the grid's reason, and nothing is fitted.
struct CellRefusalCase {
    const char* name;
    const char* options;
    const char* row3;  // the third of ten N-BK7 rows replaced by this
    const char* err;
};

class FitCellRefusal : public ::testing::TestWithParam<CellRefusalCase> {};

TEST_P(FitCellRefusal, StopsWithTheGridsReason) {
    const CellRefusalCase& c = GetParam();
    TempDir dir;
    std::string text = Nbk7Csv(10);
    size_t at = 0;
    for (int line = 0; line < 3; ++line) at = text.find('\n', at) + 1;
    text.replace(at, text.find('\n', at) - at, c.row3);
    WriteFileBytes(dir / "rows.csv", text);
    const CliResult run = RunCliIn(dir, std::string("fit --polytype 2 ") + c.options + " \"" +
                                            (dir / "rows.csv").string() + "\"");
    EXPECT_EQ(run.status, 1);
    EXPECT_EQ(run.err, c.err);
    EXPECT_TRUE(run.out.empty());
}

INSTANTIATE_TEST_SUITE_P(
    Cells, FitCellRefusal,
    ::testing::Values(
        CellRefusalCase{"NegativeWave", "", "-500,1.5",
                        "Row 3, \"wave [nm]\": -500 is refused: the column takes numbers from 10 "
                        "to 30000\n"},
        CellRefusalCase{"IndexBelowOne", "", "500,0.5",
                        "Row 3, \"index\": 0.5 is refused: the column takes numbers from 1 to 9\n"},
        CellRefusalCase{"NotANumber", "", "500,n/a",
                        "Row 3, \"index\": \"n/a\" is refused: the column takes numbers from 1 "
                        "to 9\n"},
        CellRefusalCase{"WeightAboveOne", "--weights", "500,1.5,2",
                        "Row 3, \"weight [0-1]\": 2 is refused: the column takes numbers from 0 "
                        "to 1\n"}),
    [](const auto& info) { return std::string(info.param.name); });

TEST(IndexFitCli, UsageErrorsAndMissingFile) {
    TempDir dir;
    EXPECT_EQ(Fit(dir, "--polytype 7", 20).status, 2);
    EXPECT_EQ(Fit(dir, "", 20).status, 2);  // no formula
    EXPECT_EQ(RunCliIn(dir, "fit --polytype 1 \"" + (dir / "none.csv").string() + "\"").status, 1);
    EXPECT_EQ(RunCliIn(dir, "index --wave 500").status, 2);  // neither a record nor a polynomial
    EXPECT_EQ(RunCliIn(dir, "index --polytype 1 --coef 2.25").status, 2);
    EXPECT_EQ(RunCliIn(dir, "index --polytype 1 --coef 2.25 --wave abc").status, 2);
}

}  // namespace
}  // namespace ostrel::testing
