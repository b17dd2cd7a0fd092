#include <gtest/gtest.h>

#include <string>

#include "core/platform/text.h"
#include "support/run_cli.h"
#include "support/temp_dir.h"

namespace ostrel::testing {
namespace {

struct GlassCodeCase {
    const char* args;
    int status;
    const char* printed;
};

class GlassCodeCli : public ::testing::TestWithParam<GlassCodeCase> {};

TEST_P(GlassCodeCli, PrintsTheCode) {
    TempDir dir;
    const CliResult run = RunCliIn(dir, std::string("glasscode ") + GetParam().args);
    EXPECT_EQ(run.status, GetParam().status) << run.err;
    EXPECT_EQ(run.out, GetParam().printed);
}

INSTANTIATE_TEST_SUITE_P(Cases, GlassCodeCli,
                         ::testing::Values(GlassCodeCase{"1.5168 64.17", 0, "517642\n"},
                                           GlassCodeCase{"0 50", 0, "0\n"},
                                           // no Abbe number: a usage error
                                           GlassCodeCase{"1.5168", 2, ""}));

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
}

TEST(TransTableCli, EmptyFileGivesNoData) {
    TempDir dir;
    WriteFileBytes(dir / "empty.csv", "");
    const CliResult run = RunCliIn(dir, "transtable \"" + (dir / "empty.csv").string() + "\"");
    ASSERT_EQ(run.status, 0) << run.err;
    const auto lines = SplitLines(run.out);
    ASSERT_EQ(lines.size(), 42u);
    for (size_t i = 0; i < 41; ++i) EXPECT_EQ(lines[i].substr(lines[i].find('\t')), "\t99");
    EXPECT_EQ(lines[41], "");
}

TEST(TransTableCli, MissingFileIsRefused) {
    TempDir dir;
    const std::string path = (dir / "none.csv").string();
    const CliResult run = RunCliIn(dir, "transtable \"" + path + "\"");
    EXPECT_EQ(run.status, 1);
    EXPECT_EQ(run.out, "");
    EXPECT_EQ(run.err, "Cannot read " + path + "\n");
}

}  // namespace
}  // namespace ostrel::testing
