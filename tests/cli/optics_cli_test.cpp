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

// Rows "wave,index" of N-BK7 from 365 to 2325 nm, the third replaced by row3 when given.
std::string Nbk7Csv(int count, const char* weight = nullptr, const char* row3 = nullptr) {
    std::string text = "wave_nm,index,weight\n";
    for (int i = 0; i < count; ++i) {
        const double nm = 365.0 + (2325.0 - 365.0) * i / (count - 1);
        char line[96];
        std::snprintf(line, sizeof line, "%.4f,%.8f%s%s\n", nm, Nbk7(nm), weight ? "," : "",
                      weight ? weight : "");
        text += i == 2 && row3 ? std::string(row3) + "\n" : line;
    }
    return text;
}

constexpr const char* kCurve =
    "wave_nm,absorption_per_mm\n300,0.460517\n350,0.0693147\n400,0.0105361\n500,0.001005\n";

class OpticsCli : public ::testing::Test {
  protected:
    void SetUp() override {
        std::vector<MaterialRecord> list = {NamedRecord("FIRST", "TEST"),
                                            NamedRecord("SECOND", "TEST")};
        for (int k = 0; k < 2; ++k) {
            list[k].General.Polytype = 1;
            list[k].General.PolyCoef[0] = k == 0 ? 2.25 : 4.0;
        }
        WriteFileBytes(dir / kCustomFileName, ListBytes(list));
        std::string visible;  // sixteen points from 400 to 700 nm to six decimals
        for (int i = 0; i < 16; ++i) {
            const double nm = 400.0 + 20.0 * i;
            visible += std::to_string(nm) + "," + std::to_string(Nbk7(nm)) + "\n";
        }
        const std::pair<const char*, std::string> files[] = {
            {"bk7.csv", Nbk7Csv(20)}, {"zero.csv", Nbk7Csv(8, "0")},
            {"visible.csv", visible}, {"heavy.csv", Nbk7Csv(10, nullptr, "500,1.5,2")},
            {"curve.csv", kCurve},    {"empty.csv", ""},
        };
        for (const auto& [name, text] : files) WriteFileBytes(dir / name, text);
    }
    std::string F(const char* name) const { return " \"" + (dir / name).string() + "\""; }
    TempDir dir;
};

// Index lines "wave, index, valid", a glass code, fits printed or refused with the reason on
// stderr, status 1 and nothing printed; rows go into the index grid as typed cells.
TEST_F(OpticsCli, PrintsAndRefuses) {
    const std::string misses = "The fit does not represent the data: average error 0.0";
    const std::string notKept = "fit: not kept: average Schott Plus polynomal fit error: 0.0";
    const CliRow rows[] = {
        // Published N-BK7: nd 1.51680 at the d line, 1.50750 at 1 um.
        {std::string("index --polytype 2 --coef ") + kNbk7Coef + " --wave 587.5618 1000",
         0,
         {"=587.5618\t1.5168000326\t-1\n1000\t1.5075022040\t-1\n"}},
        {"index --polytype 4 --coef 0.9 --wave 500", 0, {"=500\t0.0000000000\t0\n"}},
        {"index 2 --wave 700", 0, {"=700\t2.0000000000\t-1\n"}},
        {"glasscode 1.5168 64.17", 0, {"=517642\n"}},
        {"fit --polytype 2" + F("bk7.csv"),
         0,
         {"^Sellmeier Polynomial Constants\n\nB1:   ",
          "\naverage Sellmeier polynomal fit error: 0.000000"},
         {"="}},
        // Weights are read only when asked for: all zero here, out of range below.
        {"fit --polytype 4" + F("zero.csv"), 0},
        {"fit --polytype 2 --weights" + F("heavy.csv"),
         1,
         {"="},
         {"=Row 3, \"weight [0-1]\": 2 is refused: the column takes numbers from 0 to 1\n"}},
        // Schott Plus through sixteen visible points misses them by far: no refuses the fit.
        {"--answer no fit --polytype 3" + F("visible.csv"), 1, {"="}, {misses, notKept}},
    };
    for (const CliRow& row : rows) ExpectRow(dir, row);
}

// The fit's numbers and the table's are pinned by the core; here the fields reach the output.
TEST_F(OpticsCli, FitJsonAndTransTableCarryTheResults) {
    const auto j =
        nlohmann::json::parse(ExpectRow(dir, {"fit --polytype 1 --json" + F("bk7.csv")}).out);
    EXPECT_EQ(j["errorLabel"], "average Schott polynomal fit error: 0.0000203");
    // Rows given in ascending order are sorted first: 1 %, 50 %, 90 % and 99 % at 10 mm.
    const auto lines =
        SplitLines(ExpectRow(dir, {"transtable" + F("curve.csv") + " --width 10"}).out);
    ASSERT_EQ(lines.size(), 42u);
    EXPECT_EQ(std::tuple(lines[0], lines[5], lines[41]),
              std::tuple("250\t99", "300\t0.460517", "39/30"));
    EXPECT_EQ(SplitLines(ExpectRow(dir, {"transtable" + F("empty.csv")}).out).back(), "");
}

}  // namespace
}  // namespace ostrel::testing
