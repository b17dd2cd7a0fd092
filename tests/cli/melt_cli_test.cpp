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
              "656.273\t1.5147223\t1.5143223\t0.000400\t0.000400\n"
              "587.562\t1.5172\t1.5168000\t0.000400\t0.000400\n"
              // the typed 1.5227763 as a 32-bit float
              "486.133\t1.5227762\t1.5223763\t0.000400\t0.000400\n"
              "435.834\t1.5270846\t1.5266846\t0.000400\t0.000400\n"
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
    EXPECT_EQ(j["grid"][2][0], "587.562");
    EXPECT_EQ(j["record"]["GlassName"], "BSC7 *s1");
    EXPECT_EQ(j["record"]["MeltCode"], "s1");
    EXPECT_EQ(RunCliIn(dir, "list").out, "");
}

TEST_F(MeltCliTest, RefusalsAndUsage) {
    const std::string melt = "melt --parent-source Schott --parent N-BK7 --code m1";
    const std::string sheetTail = ",1.5187,0.00805,0.00224,0.00581,0.00389,0.00455,0.00813,0.00437";
    WriteFileBytes(dir / "three.csv", "656.273,1.5147\n587.562,1.5172\n486.133,1.5228\n");
    auto r = RunCliIn(dir, melt + " --pairs \"" + (dir / "three.csv").string() + "\"");
    EXPECT_EQ(r.status, 1);
    EXPECT_NE(r.err.find("You need at least 4 full melt index/wavelength pairs to create a melt "
                         "glass"),
              std::string::npos);
    r = RunCliIn(dir,
                 "melt --parent-source Schott --parent NOPE --code m1 --sheet 1.5168" + sheetTail);
    EXPECT_EQ(r.status, 1);
    EXPECT_EQ(r.err, "No glass NOPE of Schott in the Kelmora database\n");
    EXPECT_EQ(RunCliIn(dir, melt).status, 2);
    EXPECT_EQ(RunCliIn(dir, melt + " --sheet 1,2").status, 2);
    r = RunCliIn(dir, melt + " --sheet 2.3" + sheetTail);
    EXPECT_EQ(r.status, 1);
    EXPECT_NE(r.err.find("Index value outside valid range!"), std::string::npos);
}

}  // namespace
}  // namespace ostrel::testing
