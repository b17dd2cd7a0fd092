// index, fit, glasscode and transtable: what they print, and refusals with their reasons.
#include <gtest/gtest.h>

#include <cmath>
#include <cstdio>
#include <nlohmann/json.hpp>
#include <string>

#include "cli_fixture.h"
#include "core/material/glasses_list.h"
#include "core/platform/text.h"

namespace ostrel::testing {
namespace {

const char* kNbk7Coef = "1.03961212,0.231792344,1.01046945,0.00600069867,0.0200179144,103.560653";

// N-BK7 from its published Sellmeier coefficients.
double Nbk7(double nm) {
    const double x = nm * nm * 1e-6;
    return std::sqrt(1.0 + 1.03961212 * x / (x - 0.00600069867) +
                     0.231792344 * x / (x - 0.0200179144) + 1.01046945 * x / (x - 103.560653));
}

// Rows "wave,index" of N-BK7 from 365 to 2325 nm.
std::string Nbk7Csv(int count, const char* weight = nullptr) {
    std::string text = "wave_nm,index,weight\n";
    for (int i = 0; i < count; ++i) {
        const double nm = 365.0 + (2325.0 - 365.0) * i / (count - 1);
        char line[96];
        std::snprintf(line, sizeof line, "%.4f,%.8f%s%s\n", nm, Nbk7(nm), weight ? "," : "",
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

// What a command prints: index lines "wave, index, valid", a glass code.
struct PrintCase {
    const char* name;
    std::string args;
    std::string printed;
};

class PrintsCli : public ::testing::TestWithParam<PrintCase> {};

TEST_P(PrintsCli, PrintsOneLineEach) {
    TempDir dir;
    std::vector<MaterialRecord> list = {NamedRecord("FIRST", "TEST"),
                                        NamedRecord("SECOND", "TEST")};
    for (int k = 0; k < 2; ++k) {
        list[k].General.Polytype = 1;
        list[k].General.PolyCoef[0] = k == 0 ? 2.25 : 4.0;
    }
    WriteFileBytes(dir / kCustomFileName, ListBytes(list));
    EXPECT_EQ(RunOk(dir, GetParam().args).out, GetParam().printed);
}

INSTANTIATE_TEST_SUITE_P(
    Cases, PrintsCli,
    ::testing::Values(
        // Published N-BK7: nd 1.51680 at the d line, 1.50750 at 1 um.
        PrintCase{"Sellmeier",
                  std::string("index --polytype 2 --coef ") + kNbk7Coef + " --wave 587.5618 1000",
                  "587.5618\t1.5168000326\t-1\n1000\t1.5075022040\t-1\n"},
        PrintCase{"CauchyBelowOne", "index --polytype 4 --coef 0.9 --wave 500",
                  "500\t0.0000000000\t0\n"},
        PrintCase{"MaterialOfTheList", "index 2 --wave 700", "700\t2.0000000000\t-1\n"},
        PrintCase{"GlassCode", "glasscode 1.5168 64.17", "517642\n"}),
    [](const auto& info) { return info.param.name; });

TEST(FitCli, SellmeierOnPublishedData) {
    TempDir dir;
    const CliResult run = Fit(dir, "--polytype 2", 20);
    ASSERT_EQ(run.status, 0) << run.err;
    EXPECT_EQ(run.out.rfind("Sellmeier Polynomial Constants\n\nB1:   ", 0), 0u);
    EXPECT_NE(run.out.find("\naverage Sellmeier polynomal fit error: 0.000000"), std::string::npos);
    EXPECT_TRUE(run.err.empty());
    // Weights are read only when asked for: all zero, they leave nothing to fit.
    EXPECT_EQ(Fit(dir, "--polytype 4", 8, "0").status, 0);
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

// Schott Plus through sixteen N-BK7 points from 400 to 700 nm misses them by far: the question
// is answered by --answer; no refuses the fit with its error and exit status 1.
TEST(FitCli, FitThatMissesItsDataIsKeptOnlyOnYes) {
    TempDir dir;
    std::string text;  // to six decimals
    for (int i = 0; i < 16; ++i) {
        const double nm = 400.0 + 20.0 * i;
        text += std::to_string(nm) + "," + std::to_string(Nbk7(nm)) + "\n";
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

// A fit refused stops the command with the reason on stderr, status 1 and nothing printed.
// Rows go into the index grid as typed cells: one the grid refuses stops with its reason.
struct FitRefusalCase {
    const char* name;
    const char* options;
    const char* row3;  // the third of the N-BK7 rows replaced by this, or none
    const char* err;
    int count = 10;
    const char* weight = nullptr;
};

class FitRefusal : public ::testing::TestWithParam<FitRefusalCase> {};

TEST_P(FitRefusal, StopsWithTheReason) {
    const FitRefusalCase& c = GetParam();
    TempDir dir;
    std::string text = Nbk7Csv(c.count, c.weight);
    size_t at = 0;
    for (int line = 0; line < 3; ++line) at = text.find('\n', at) + 1;
    if (c.row3) text.replace(at, text.find('\n', at) - at, c.row3);
    WriteFileBytes(dir / "rows.csv", text);
    const CliResult run =
        RunCliIn(dir, std::string("fit ") + c.options + " \"" + (dir / "rows.csv").string() + "\"");
    EXPECT_EQ(run.status, 1);
    EXPECT_EQ(run.err, c.err);
    EXPECT_TRUE(run.out.empty());
}

INSTANTIATE_TEST_SUITE_P(
    Cases, FitRefusal,
    ::testing::Values(
        FitRefusalCase{"TooFewPoints", "--polytype 1", nullptr,
                       "You need at least 6 full data points to fit a Schott polynomial.\n", 5},
        FitRefusalCase{"ZeroWeights", "--polytype 4 --weights", nullptr,
                       "Failed to fit Cauchy Polynomial Division by zero: the data points give "
                       "no solution\n",
                       8, "0"},
        FitRefusalCase{"NegativeWave", "--polytype 2", "-500,1.5",
                       "Row 3, \"wave [nm]\": -500 is refused: the column takes numbers from 10 "
                       "to 30000\n"},
        FitRefusalCase{"IndexBelowOne", "--polytype 2", "500,0.5",
                       "Row 3, \"index\": 0.5 is refused: the column takes numbers from 1 to 9\n"},
        FitRefusalCase{"NotANumber", "--polytype 2", "500,n/a",
                       "Row 3, \"index\": \"n/a\" is refused: the column takes numbers from 1 "
                       "to 9\n"},
        FitRefusalCase{"WeightAboveOne", "--polytype 2 --weights", "500,1.5,2",
                       "Row 3, \"weight [0-1]\": 2 is refused: the column takes numbers from 0 "
                       "to 1\n"}),
    [](const auto& info) { return std::string(info.param.name); });

// Internal transmissions at 10 mm of 1 %, 50 %, 90 % and 99 % at 300, 350, 400 and 500 nm,
// given in ascending order to show that the rows are sorted first.
constexpr const char* kCurve =
    "wave_nm,absorption_per_mm\n"
    "300,0.460517\n"
    "350,0.0693147\n"
    "400,0.0105361\n"
    "500,0.001005\n";

TEST(TransTableCli, TableAndColourCodeAtTenMillimetres) {
    TempDir dir;
    WriteFileBytes(dir / "curve.csv", kCurve);
    const CliResult run =
        RunCliIn(dir, "transtable \"" + (dir / "curve.csv").string() + "\" --width 10");
    ASSERT_EQ(run.status, 0) << run.err;
    const auto lines = SplitLines(run.out);
    ASSERT_EQ(lines.size(), 42u) << run.out;
    EXPECT_EQ(lines[0], "250\t99");          // below the curve
    EXPECT_EQ(lines[5], "300\t0.460517");    // at a point
    EXPECT_EQ(lines[17], "400\t0.0105361");  // at a point
    EXPECT_EQ(lines[24], "500\t0.001005");   // the long-wave end
    EXPECT_EQ(lines[25], "546.1\t99");       // beyond it
    EXPECT_EQ(lines[9].substr(0, 6), "334.1\t");
    // 440 nm: t = 0.9 + 40 x 0.09 / 100 = 0.936, alpha = -ln(0.936) / 10 = 0.00661398.
    ASSERT_EQ(lines[21].substr(0, 4), "440\t");
    EXPECT_NEAR(std::stod(lines[21].substr(4)), 0.00661398, 2e-8);
    // l80 = 387.5 nm, l5 = 304.1 nm.
    EXPECT_EQ(lines[41], "39/30");
    // An empty curve gives no data on every row and no colour code.
    WriteFileBytes(dir / "empty.csv", "");
    const auto none =
        SplitLines(RunOk(dir, "transtable \"" + (dir / "empty.csv").string() + "\"").out);
    ASSERT_EQ(none.size(), 42u);
    for (size_t i = 0; i < 41; ++i) EXPECT_EQ(none[i].substr(none[i].find('\t')), "\t99");
    EXPECT_EQ(none[41], "");
}

}  // namespace
}  // namespace ostrel::testing
