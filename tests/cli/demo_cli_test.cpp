// Commands over the demonstration installation: its settings and database, updates of the
// sibling programs, melts of its glasses and the glass map.
#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <string>

#include "cli_fixture.h"
#include "core/external/external_file.h"
#include "core/external/external_fixture.h"
#include "core/material/glasses_list.h"
#include "core/platform/sqlite_database.h"

namespace ostrel::testing {
namespace {

namespace fs = std::filesystem;

// The child's per-user folders lie in the test's folder (see RunCliIn); with a data folder
// given they must stay empty.
class DemoCli : public ::testing::Test {
  protected:
    void SetUp() override {
        installed = InstallDemo(dir, dir.path().string(), Demo());
        ASSERT_EQ(installed.status, 0) << installed.err;
    }
    std::string Demo() { return (dir / "demo").string(); }
    std::string Out(const std::string& name) { return (dir / name).string(); }
    TempDir dir;
    CliResult installed;
};

TEST_F(DemoCli, InstallationStoresThePathsAndFillsTheDatabase) {
    EXPECT_EQ(installed.out, "Demo installation of 39 glasses in " + Demo() + "\n");
    EXPECT_EQ(RunCliIn(dir, "paths").out.rfind("KelmoraTD\t" + Demo() + "/Kelmora/\n", 0), 0u);
    // The data folder holds its own settings; the person's own are not touched.
    EXPECT_EQ(ReadFileBytes(dir / "Settings.ini"),
              "[B1SetupPathsTD]\nKelmoraTD=" + Demo() + "/Kelmora/\nLumbrakPlusTD=" + Demo() +
                  "/Lumbrak/\nLumbrakSextaneTD=" + Demo() + "/Sextane/\nFirstLoad1TD=False\n");
    std::error_code ec;
    for (fs::recursive_directory_iterator it(dir / kCliHome, ec), end; !ec && it != end;
         it.increment(ec)) {
        EXPECT_FALSE(it->is_regular_file()) << it->path();
    }
    EXPECT_EQ(RunCliIn(dir, "db list")
                  .out.rfind("1\tN-BK7\tSchott\t517642\tR\t1\n2\tK7\tSchott\t511604\tR\t1\n", 0),
              0u);
    // A second demo in the same folder is refused.
    EXPECT_EQ(InstallDemo(dir, dir.path().string(), Demo()).status, 1);
}

// While another program holds the database an update says which store was busy, on stderr,
// and ends with status 1.
TEST_F(DemoCli, UpdateWithABusyDatabaseSaysSo) {
    WriteFileBytes(dir / kCustomFileName,
                   ListBytes({ReadyMaterial("GLASS A", "Lab"), ReadyMaterial("GLASS B", "Lab")}));
    DbError error;
    auto other = OpenSqliteDatabase(Demo() + "/Kelmora/" + kGlassDatabaseName, false, error);
    ASSERT_TRUE(other && other->BeginTrans(error));  // another program writing
    ExpectRow(dir, {"update --all --target both",
                    1,
                    {},
                    {kMsgDatabaseBusy,
                     "\nLumbrak3D: nothing changed. KelmoraTD: in use by another program.\n"}});
}

// Without a data folder the program keeps the per-user folders, as the desktop does.
TEST(DemoCliAlone, WithoutADataFolderThePerUserSettingsAreUsed) {
    TempDir dir;
    const std::string home = (dir / "home").string(), demo = (dir / "demo").string();
    const std::string command = "HOME=\"" + home + "\" XDG_CONFIG_HOME=\"" + home +
                                "/config\" XDG_DATA_HOME=\"" + home + "/data\" \"" +
                                OSTREL_CLI_PATH + "\" demo \"" + demo + "\" --catalogue \"" +
                                DemoCatalogue() + "\" >/dev/null 2>&1";
    ASSERT_EQ(std::system(command.c_str()), 0);
    EXPECT_NE(ReadFileBytes(dir / "home/config/Ostrel/OstrelTD.ini").find("KelmoraTD=" + demo),
              std::string::npos);
    EXPECT_FALSE(fs::exists(dir / "Settings.ini"));
}

// Melts take only what the windows take: a refusal names its reason, ends with status 1 and
// saves nothing. The map and its neighbours then show the melt saved; archive all asks first,
// leaves the protected pair and says what it did.
TEST_F(DemoCli, MeltMapNeighboursAndArchive) {
    const std::string melt = "melt --parent-source Schott --code m1 ";
    const std::string sheet = ",1.5187,0.00805,0.00224,0.00581,0.00389,0.00455,0.00813,0.00437";
    const std::string svg = Out("a.svg");
    // N-BK7 at C, d, F, g plus 0.0004.
    WriteFileBytes(dir / "pairs.csv",
                   "656.273,1.5147223\n587.562,1.5172000\n486.133,1.5227763\n435.834,1.5270846\n");
    const CliRow rows[] = {
        {melt + "--parent NOPE --sheet 1.5168" + sheet,
         1,
         {},
         {"=No glass NOPE of Schott in the Kelmora database\n"}},
        // A sheet field does not keep 2.5: the command stops before the sheet's OK.
        {melt + "--parent N-BK7 --sheet 2.5" + sheet,
         1,
         {},
         {"=nd: 2.5 is refused: a figure of the sheet lies above 0 and below 2.5\n"}},
        // 2.3 is kept by the field and refused by the sheet's check of the indices.
        {melt + "--parent N-BK7 --sheet 2.3" + sheet, 1, {}, {"Index value outside valid range!"}},
        {"melt --parent-source Hoya --parent BSC7 --code s1 --json --sheet 1.5168" + sheet,
         0,
         {"\"ok\": true", "\"saved\": false", "\"GlassName\": \"BSC7 *s1\"", "\"MeltCode\": \"s1\"",
          "\"587.5620\""}},
        {"list", 0, {"="}},
        {"melt --parent-source Schott --parent N-BK7 --code M1 --save --sheet "
         "1.5172,1.5193,0.00806,0.00242,0.00564,0.00467,0.00432,0.00822,0.00472",
         0},
        {"melt --parent-source Schott --parent N-BK7 --code m7 --save --pairs \"" +
             Out("pairs.csv") + "\"",
         0,
         {"^656.2730\t1.5147223\t1.5143223\t0.000400\t0.000400\n",
          "\nAverage error [user-fitted] indices at above wavelengths: 0.000400\n"}},
        {"list", 0, {"=1\tN-BK7 *M1\tSchott\n2\tN-BK7 *m7\tSchott\n"}},
        // The demonstration catalogue holds 39 glasses, 12 of Schott and 9 of Hoya.
        {"map --out " + svg,
         0,
         {"=39 catalogue and 2 custom glasses shown\n"},
         {},
         "a.svg",
         {"<path class=\"melt\"", "!stroke-dasharray"}},
        {"map --pgf --out " + svg, 0, {"^39 catalogue and 2"}, {}, "a.svg", {"stroke-dasharray"}},
        {"map --sources Schott,hoya --out " + svg,
         0,
         {"=21 catalogue and 2 custom glasses shown\n"}},
        {"map --out " + Out("a.png"), 0, {}, {}, "a.png", {"^\x89PNG"}},
        {"nearest 1 --count 2",
         0,
         {"=N-BK7\tSchott\t1.51680\t64.17\t0.117\nS-BSL7\tOhara\t1.51633\t64.14\t0.129\n"}},
        {"compare 1 N-BK7/Schott F2 --out " + Out("c.csv"),
         0,
         {},
         {},
         "c.csv",
         {"^Wavelength (nm),n N-BK7 *M1 (Schott),n N-BK7 (Schott),n F2 (Schott),"
          "dn N-BK7 (Schott),dn F2 (Schott)\n"}},
        {"compare 1 NO-SUCH --out " + Out("c.csv"), 1, {}, {"=No material NO-SUCH\n"}},
        {"--answer no db archive ALL", 1, {}, {"archive ALL the glasses in Kelmora?"}},
        {"db list --archive", 0, {"="}},
        {"db archive ALL", 0, {}, {"\nKelmoraTD: 37 archived.\n"}},
        {"db restore 1 39", 0, {}, {"=KelmoraTD: 2 restored.\n"}},
    };
    for (const CliRow& row : rows) ExpectRow(dir, row);
}

}  // namespace
}  // namespace ostrel::testing
