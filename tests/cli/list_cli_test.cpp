#include <gtest/gtest.h>

#include <filesystem>
#include <nlohmann/json.hpp>

#include "cli_fixture.h"
#include "core/material/glasses_list.h"

namespace ostrel::testing {
namespace {

namespace fs = std::filesystem;

class ListCli : public ::testing::Test {
  protected:
    void SetUp() override {
        MaterialRecord melt = NamedRecord("MELT *M1", "LAB");
        melt.Melt.MeltFlag = kTrue;
        melt.General.Density = 2.51f;
        melt.GeneralState.Ready = kTrue;
        melt.Melt.MeltParentName.Zero();
        WriteFileBytes(dir / kCustomFileName,
                       ListBytes({NamedRecord("A", "S"), melt, NamedRecord("C", "S")}));
    }
    std::string FileBytes() const { return ReadFileBytes(dir / kCustomFileName); }
    TempDir dir;
};

TEST_F(ListCli, ShowGivesEveryFieldByName) {
    auto j = nlohmann::json::parse(ExpectRow(dir, {"show 2 --json"}).out);
    EXPECT_EQ(std::tuple(j["GlassName"], j["Density"], j["TT6"], j["GeneralState"]["Ready"],
                         j["ThermalState"]["Ready"]),
              std::tuple("MELT *M1", 2.51, "", -1, -1));
    EXPECT_EQ(std::tuple(j["PolyCoef"].size(), j["TransTable"].size(), j["IndexWave"].size(),
                         j["MeltTransPair"].size()),
              std::tuple(14u, 41u, 150u, 2u));
    EXPECT_EQ(j["MeltParentName"], std::string(30, '\0'));
}

// Delete asks on stderr and follows the answer; a copy goes behind its original, never
// under a name of the lens design program's catalogue, and a save that fails is reported
// alone.
TEST_F(ListCli, DeleteAndDuplicate) {
    // a lens design folder whose catalogue holds "NEW / S"
    fs::create_directory(dir / "lumbrak");
    std::string cat(495, '\0');
    cat.replace(0, 30, "NEW" + std::string(27, ' '));
    cat.replace(32, 30, "S" + std::string(29, ' '));
    WriteFileBytes(dir / "lumbrak" / kCatalogueFileName, cat);
    const std::string before = FileBytes();
    const CliRow rows[] = {
        {"--answer no delete 1", 1, {}, {"=Are you sure that you wish to delete A - S?\n"}},
        {"--lumbrak \"" + (dir / "lumbrak").string() + "\" duplicate 1 new",
         1,
         {},
         {"=No copy was made: new - S is already in the list of catalog materials, and cannot "
          "be overwritten!\n"}},
        {"duplicate 1 'A copy'", 0},
        {"delete 1", 0},  // the copy went behind its original
        {"list", 0, {"=1\tA copy\tS\n2\tMELT *M1\tLAB\n3\tC\tS\n"}},
    };
    for (size_t i = 0; i < std::size(rows); ++i) {
        ExpectRow(dir, rows[i]);
        if (i < 2) {
            EXPECT_TRUE(FileBytes() == before);
        }
    }
    // A folder where the backup must go makes the save fail as a full disk would.
    fs::remove(dir / kCustomBackupName);
    fs::create_directories(dir / kCustomBackupName / "x");
    ExpectRow(dir, {"duplicate 1 Copy",
                    1,
                    {},
                    {"The custom material list could not be saved", "!No copy was made"}});
}

// An older list is converted before the command runs; a missing data folder is a clear
// error and is not made.
TEST(ListCliStart, ConvertsAnOlderFileFirstAndNeedsTheDataFolder) {
    TempDir dir;
    std::string v1(12098, '\0');
    v1.replace(6, 30, "OLD" + std::string(27, ' '));
    v1.replace(38, 30, "SRC" + std::string(27, ' '));
    WriteFileBytes(dir / kCustomFileV1Name, v1);
    ExpectRow(dir, {"list", 0, {"=1\tOLD\tSRC\n"}});
    const fs::path missing = dir / "nowhere";
    ExpectRow(dir, {"list", 1, {}, {"The data folder does not exist"}}, missing.string());
    EXPECT_FALSE(fs::exists(missing));
}

}  // namespace
}  // namespace ostrel::testing
