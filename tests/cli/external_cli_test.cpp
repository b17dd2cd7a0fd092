#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <string>

#include "core/external/external_file.h"
#include "core/external/external_fixture.h"
#include "core/material/glasses_list.h"
#include "core/material/material_record_codec.h"
#include "core/platform/sqlite_database.h"
#include "support/run_cli.h"

namespace ostrel::testing {
namespace {

namespace fs = std::filesystem;

// The child's per-user folders lie in the test's folder (see RunCliIn); with a data folder
// given they must stay empty.
class ExternalCliTest : public ::testing::Test {
  protected:
    // The files under a folder of the test's, "" for none.
    std::string FilesUnder(const std::string& name) {
        std::string out;
        std::error_code ec;
        for (fs::recursive_directory_iterator it(dir / name, ec), end; !ec && it != end;
             it.increment(ec)) {
            if (it->is_regular_file()) out += it->path().string() + " ";
        }
        return out;
    }
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
    // The data folder holds its own settings; the person's own are not touched.
    EXPECT_EQ(ReadFileBytes(dir / "Settings.ini"),
              "[B1SetupPathsTD]\nKelmoraTD=" + Demo() + "/Kelmora/\nLumbrakPlusTD=" + Demo() +
                  "/Lumbrak/\nLumbrakSextaneTD=" + Demo() + "/Sextane/\nFirstLoad1TD=False\n");
    EXPECT_EQ(FilesUnder(kCliHome), "");
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
    r = RunCliIn(dir, "db archive ALL");
    ASSERT_EQ(r.status, 0);
    EXPECT_EQ(r.err.substr(r.err.rfind('\n', r.err.size() - 2) + 1), "KelmoraTD: 37 archived.\n");
    EXPECT_EQ(RunCliIn(dir, "db list").out,
              "2\tK7\tSchott\t511604\tR\t1\n3\tF2\tSchott\t620364\tR\t1\n");
    r = RunCliIn(dir, "db restore 1 39");
    ASSERT_EQ(r.status, 0);
    EXPECT_EQ(r.err, "KelmoraTD: 2 restored.\n");
    EXPECT_EQ(
        RunCliIn(dir, "db list").out,
        "2\tK7\tSchott\t511604\tR\t1\n3\tF2\tSchott\t620364\tR\t1\n1\tN-BK7\tSchott\t517642\tR\t1\n"
        "39\tH-ZF52\tCDGM\t847238\tA\t1\n");
}

// An update says what it did on stderr; while another program holds the database it
// changes nothing, neither the database nor the files, and says which store was busy.
TEST_F(ExternalCliTest, UpdateSaysWhatItDidAndABusyDatabaseChangesNothing) {
    ASSERT_EQ(RunCliIn(dir, "demo \"" + Demo() + "\"" + Catalogue()).status, 0);
    std::string list;
    for (const char* name : {"GLASS A", "GLASS B"}) {
        const auto image = ToBytes(ReadyMaterial(name, "Lab"));
        list.append(reinterpret_cast<const char*>(image.data()), image.size());
    }
    WriteFileBytes(dir / kCustomFileName, list);
    const std::string file = Demo() + "/Lumbrak/" + kExternalFileName;
    const struct {
        bool held;
        int status;
        std::string lastLine;
        bool fileMade;
    } cases[] = {
        {true, 1, "Lumbrak3D: nothing changed. KelmoraTD: in use by another program.", false},
        {false, 0, "Lumbrak3D: 2 added. KelmoraTD: 2 added.", true},
    };
    for (const auto& c : cases) {
        const auto before = RunCliIn(dir, "db list").out;
        DbError error;
        auto other = OpenSqliteDatabase(Demo() + "/Kelmora/" + kGlassDatabaseName, false, error);
        ASSERT_TRUE(other);
        if (c.held) {
            ASSERT_TRUE(other->BeginTrans(error));  // another program writing
        }
        const auto r = RunCliIn(dir, "update --all --target both");
        other.reset();
        EXPECT_EQ(r.status, c.status) << r.err;
        EXPECT_EQ(r.err.find(kMsgDatabaseBusy) != std::string::npos, c.held) << r.err;
        EXPECT_EQ(r.err.substr(r.err.rfind('\n', r.err.size() - 2) + 1), c.lastLine + "\n");
        EXPECT_EQ(fs::exists(file), c.fileMade);
        EXPECT_EQ(RunCliIn(dir, "db list").out == before, c.held);
    }
}

// Without a data folder the program keeps the per-user folders, as the desktop does.
TEST_F(ExternalCliTest, WithoutADataFolderThePerUserSettingsAreUsed) {
    const std::string home = (dir / "home").string();
    const std::string command = "HOME=\"" + home + "\" XDG_CONFIG_HOME=\"" + home +
                                "/config\" XDG_DATA_HOME=\"" + home + "/data\" \"" +
                                OSTREL_CLI_PATH + "\" demo \"" + Demo() + "\"" + Catalogue() +
                                " >/dev/null 2>&1";
    ASSERT_EQ(std::system(command.c_str()), 0);
    EXPECT_NE(ReadFileBytes(dir / "home/config/Ostrel/OstrelTD.ini").find("KelmoraTD=" + Demo()),
              std::string::npos);
    EXPECT_FALSE(fs::exists(dir / "Settings.ini"));
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
