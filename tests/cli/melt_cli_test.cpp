#include <gtest/gtest.h>

#include <cstdlib>
#include <nlohmann/json.hpp>
#include <string>

#include "support/run_cli.h"

namespace ostrel::testing {
namespace {

class MeltCliTest : public ::testing::Test {
  protected:
    void SetUp() override {
        setenv("XDG_CONFIG_HOME", (dir / "config").c_str(), 1);
        const auto r = RunCliIn(dir, "demo \"" + (dir / "demo").string() + "\" --catalogue \"" +
                                         OSTREL_TEST_DATA + "/../../data/demo/demo_glasses.csv\"");
        ASSERT_EQ(r.status, 0) << r.err;
    }
    void TearDown() override { unsetenv("XDG_CONFIG_HOME"); }
    TempDir dir;
};

// N-BK7 at C, d, F, g plus 0.0004 (catalogue indices 1.5143223, 1.5168000, 1.5223763,
// 1.5266846).
constexpr const char* kPairs =
    "656.273,1.5147223\n587.562,1.5172000\n486.133,1.5227763\n435.834,1.5270846\n";

TEST_F(MeltCliTest, PairsFromAFileAndSave) {
    WriteFileBytes(dir / "pairs.csv", kPairs);
    auto r = RunCliIn(dir, "melt --parent-source Schott --parent N-BK7 --code m7 --pairs \"" +
                               (dir / "pairs.csv").string() + "\" --save");
    ASSERT_EQ(r.status, 0) << r.err;
    EXPECT_EQ(r.out,
              "656.2730\t1.5147223\t1.5143223\t0.000400\t0.000400\n"
              "587.5620\t1.5172000\t1.5168000\t0.000400\t0.000400\n"
              // the typed 1.5227763 as a 32-bit float
              "486.1330\t1.5227762\t1.5223763\t0.000400\t0.000400\n"
              "435.8340\t1.5270846\t1.5266846\t0.000400\t0.000400\n"
              "Average error [user-fitted] indices at above wavelengths: 0.000400\n");
    r = RunCliIn(dir, "list");
    EXPECT_EQ(r.out, "1\tN-BK7 *m7\tSchott\n");
    EXPECT_EQ(nlohmann::json::parse(RunCliIn(dir, "show 1").out)["MeltFlag"], -1);
}

TEST_F(MeltCliTest, SchottSheetAsJson) {
    auto r = RunCliIn(dir,
                      "melt --parent-source Hoya --parent BSC7 --code s1 --json --sheet "
                      "1.5168,1.5187,0.00805,0.00224,0.00581,0.00389,0.00455,0.00813,0.00437");
    ASSERT_EQ(r.status, 0) << r.err;
    const auto j = nlohmann::json::parse(r.out);
    EXPECT_TRUE(j["ok"].get<bool>());
    EXPECT_FALSE(j["saved"].get<bool>());
    ASSERT_EQ(j["grid"].size(), 7u);
    EXPECT_EQ(j["grid"][2][0], "587.5620");
    EXPECT_EQ(j["record"]["GlassName"], "BSC7 *s1");
    EXPECT_EQ(j["record"]["MeltCode"], "s1");
    EXPECT_EQ(RunCliIn(dir, "list").out, "");
}

// The command takes only what the windows take: a refusal names its reason and ends with
// status 1, a malformed command with 2.
struct MeltRefusal {
    const char* name;
    std::string args;   // after the parent and its code
    const char* pairs;  // text of the pairs file, when there is one
    int status;
    const char* err;  // printed, in part
};

class MeltCliRefusal : public MeltCliTest, public ::testing::WithParamInterface<MeltRefusal> {};

constexpr const char* kSheetTail =
    ",1.5187,0.00805,0.00224,0.00581,0.00389,0.00455,0.00813,0.00437";

TEST_P(MeltCliRefusal, NamesTheReason) {
    const MeltRefusal& c = GetParam();
    std::string args = c.args;
    if (c.pairs) {
        WriteFileBytes(dir / "pairs.csv", c.pairs);
        args += " --pairs \"" + (dir / "pairs.csv").string() + "\"";
    }
    const auto r = RunCliIn(dir, "melt --parent-source Schott " + args);
    EXPECT_EQ(r.status, c.status) << r.err;
    EXPECT_NE(r.err.find(c.err), std::string::npos) << r.err;
    EXPECT_EQ(RunCliIn(dir, "list").out, "");
}

INSTANTIATE_TEST_SUITE_P(
    Cases, MeltCliRefusal,
    ::testing::Values(
        MeltRefusal{"ThreePairs", "--parent N-BK7 --code m1",
                    "656.273,1.5147\n587.562,1.5172\n486.133,1.5228\n", 1,
                    "You need at least 4 full melt index/wavelength pairs to create a melt glass"},
        // The grid's wavelength column takes 10 to 30000 nm.
        MeltRefusal{"WaveBelowTheColumn", "--parent N-BK7 --code m1", "656.273,1.5147\n5,1.5172\n",
                    1,
                    "Row 2, \"wave [nm]\": 5 is refused: the column takes numbers from 10 to "
                    "30000\n"},
        MeltRefusal{"NoParent", "--parent NOPE --code m1 --sheet 1.5168" + std::string(kSheetTail),
                    nullptr, 1, "No glass NOPE of Schott in the Kelmora database\n"},
        // A sheet field does not keep 2.5: the command stops before the sheet's OK.
        MeltRefusal{"SheetFigureTooLarge",
                    "--parent N-BK7 --code m1 --sheet 2.5" + std::string(kSheetTail), nullptr, 1,
                    "nd: 2.5 is refused: a figure of the sheet lies above 0 and below 2.5\n"},
        // 2.3 is kept by the field and refused by the sheet's check of the indices.
        MeltRefusal{"SheetIndexOutOfRange",
                    "--parent N-BK7 --code m1 --sheet 2.3" + std::string(kSheetTail), nullptr, 1,
                    "Index value outside valid range!"},
        MeltRefusal{"NeitherPairsNorSheet", "--parent N-BK7 --code m1", nullptr, 2, ""},
        MeltRefusal{"ShortSheet", "--parent N-BK7 --code m1 --sheet 1,2", nullptr, 2, ""}),
    [](const auto& info) { return std::string(info.param.name); });

}  // namespace
}  // namespace ostrel::testing
