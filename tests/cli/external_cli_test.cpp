#include <gtest/gtest.h>

#include <cstdlib>
#include <string>

#include "support/run_cli.h"

namespace ostrel::testing {
namespace {

// The settings of these runs live in the test's own folder.
class ExternalCliTest : public ::testing::Test {
  protected:
    void SetUp() override { setenv("XDG_CONFIG_HOME", (dir / "config").c_str(), 1); }
    void TearDown() override { unsetenv("XDG_CONFIG_HOME"); }
    std::string Demo() { return (dir / "demo").string(); }
    std::string Catalogue() {
        return std::string(" --catalogue \"") + OSTREL_TEST_DATA +
               "/../../data/demo/demo_glasses.csv\"";
    }
    TempDir dir;
};

TEST_F(ExternalCliTest, DemoInstallationStoresThePathsAndFillsTheDatabase) {
    auto r = RunCliIn(dir, "demo \"" + Demo() + "\"" + Catalogue());
    ASSERT_EQ(r.status, 0) << r.err;
    EXPECT_EQ(r.out, "Demo installation of 39 glasses in " + Demo() + "\n");
    r = RunCliIn(dir, "paths");
    EXPECT_EQ(r.out, "KelmoraTD\t" + Demo() + "/Kelmora/\nLumbrak3D\t" + Demo() +
                         "/Lumbrak/\nLumbrakSextaneTD\t" + Demo() + "/Sextane/\n");
    EXPECT_EQ(ReadFileBytes(dir / "config/Ostrel/OstrelTD.ini"),
              "[B1SetupPathsTD]\nKelmoraTD=" + Demo() + "/Kelmora/\nLumbrakPlusTD=" + Demo() +
                  "/Lumbrak/\nLumbrakSextaneTD=" + Demo() + "/Sextane/\nFirstLoad1TD=False\n");
    r = RunCliIn(dir, "db list");
    EXPECT_EQ(r.out.rfind("1\tN-BK7\tSchott\t517642\tR\t1\n2\tK7\tSchott\t511604\tR\t1\n", 0), 0u);
    // A second demo in the same folder is refused.
    EXPECT_EQ(RunCliIn(dir, "demo \"" + Demo() + "\"" + Catalogue()).status, 1);
}

TEST_F(ExternalCliTest, ArchiveAllButTheProtectedPairAndRestore) {
    ASSERT_EQ(RunCliIn(dir, "demo \"" + Demo() + "\"" + Catalogue()).status, 0);
    auto r = RunCliIn(dir, "--answer no db archive ALL");
    EXPECT_EQ(r.status, 1);
    EXPECT_NE(
        r.err.find("Are you really sure that you want to archive ALL the glasses in Kelmora?"),
        std::string::npos);
    EXPECT_EQ(RunCliIn(dir, "db list --archive").out, "");
    ASSERT_EQ(RunCliIn(dir, "db archive ALL").status, 0);
    EXPECT_EQ(RunCliIn(dir, "db list").out,
              "2\tK7\tSchott\t511604\tR\t1\n3\tF2\tSchott\t620364\tR\t1\n");
    ASSERT_EQ(RunCliIn(dir, "db restore 1 39").status, 0);
    EXPECT_EQ(
        RunCliIn(dir, "db list").out,
        "2\tK7\tSchott\t511604\tR\t1\n3\tF2\tSchott\t620364\tR\t1\n1\tN-BK7\tSchott\t517642\tR\t1\n"
        "39\tH-ZF52\tCDGM\t847238\tA\t1\n");
}

TEST_F(ExternalCliTest, UsageAndRefusals) {
    EXPECT_EQ(RunCliIn(dir, "update").status, 2);
    EXPECT_EQ(RunCliIn(dir, "remove --target both X/Y").status, 2);
    auto r = RunCliIn(dir, "paths --kelmora \"" + dir.path().string() + "\"");
    EXPECT_EQ(r.status, 1);
    EXPECT_EQ(r.err, "No KelmoraTD.EXE in " + dir.path().string() + "\n");
    EXPECT_EQ(RunCliIn(dir, "db list").status, 1);
}

}  // namespace
}  // namespace ostrel::testing
