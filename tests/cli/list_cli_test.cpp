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
        melt.General.Polytype = 2;
        melt.General.IndexWvMin = 365;
        melt.General.IndexWvMax = 2325;
        melt.General.Density = 2.51f;
        melt.GeneralState.Ready = kTrue;
        melt.DateChanged = 46349.5;
        melt.Melt.MeltParentName.Zero();
        WriteFileBytes(dir / kCustomFileName,
                       ListBytes({NamedRecord("A", "S"), melt, NamedRecord("C", "S")}));
    }
    std::string FileBytes() const { return ReadFileBytes(dir / kCustomFileName); }
    TempDir dir;
};

// Every field of `want` is in `got` with that value, objects field by field.
void ExpectFields(const nlohmann::json& got, const std::string& want) {
    const auto fields = nlohmann::json::parse(want);
    for (const auto& [key, value] : fields.items()) {
        if (value.is_object()) {
            ExpectFields(got.at(key), value.dump());
        } else {
            EXPECT_EQ(got.at(key), value) << key;
        }
    }
}

constexpr const char* kListed = "1\tA\tS\n2\tMELT *M1\tLAB\n3\tC\tS\n";

TEST_F(ListCli, ListsAsTextAndAsJson) {
    CliResult r = RunCliIn(dir, "list");
    EXPECT_EQ(r.status, 0) << r.err;
    EXPECT_EQ(r.out, kListed);
    r = RunCliIn(dir, "list --json");
    ASSERT_EQ(r.status, 0) << r.err;
    auto j = nlohmann::json::parse(r.out);
    ASSERT_EQ(j.size(), 3u);
    ExpectFields(j[1], R"({"index": 2, "GlassName": "MELT *M1", "Polytype": 2, "IndexWvMin": 365,
        "IndexWvMax": 2325, "MeltFlag": -1, "DateChanged": 46349.5,
        "Ready": {"General": -1, "dndt": -1, "Index": 0}})");
}

TEST_F(ListCli, ShowGivesEveryFieldByName) {
    CliResult r = RunCliIn(dir, "show 2 --json");
    ASSERT_EQ(r.status, 0) << r.err;
    auto j = nlohmann::json::parse(r.out);
    ExpectFields(j, R"({"GlassName": "MELT *M1", "Density": 2.51, "TT6": "",
        "GeneralState": {"Ready": -1}, "ThermalState": {"Ready": -1}})");
    EXPECT_EQ(j["PolyCoef"].size(), 14u);
    EXPECT_EQ(j["TransTable"].size(), 41u);
    EXPECT_EQ(j["IndexWave"].size(), 150u);
    EXPECT_EQ(j["MeltTransPair"].size(), 2u);
    EXPECT_EQ(j["MeltParentName"], std::string(30, '\0'));
}

TEST_F(ListCli, DeleteAsksOnStderrAndFollowsTheAnswer) {
    const std::string before = FileBytes();
    CliResult no = RunCliIn(dir, "--answer no delete 1");
    EXPECT_EQ(no.status, 1);
    EXPECT_EQ(no.err, "Are you sure that you wish to delete A - S?\n");
    EXPECT_TRUE(FileBytes() == before);

    CliResult yes = RunCliIn(dir, "delete 1");
    EXPECT_EQ(yes.status, 0) << yes.err;
    EXPECT_EQ(RunCliIn(dir, "list").out, "1\tMELT *M1\tLAB\n2\tC\tS\n");
}

TEST_F(ListCli, DuplicatePutsTheCopyBehindTheOriginal) {
    CliResult r = RunCliIn(dir, "duplicate 1 'A copy'");
    EXPECT_EQ(r.status, 0) << r.err;
    EXPECT_EQ(RunCliIn(dir, "list").out, "1\tA\tS\n2\tA copy\tS\n3\tMELT *M1\tLAB\n4\tC\tS\n");
}

TEST_F(ListCli, DuplicateThatCannotBeSavedReportsTheSaveAlone) {
    // A folder where the backup must go makes the save fail as a full disk would.
    fs::create_directories(dir / kCustomBackupName / "x");
    CliResult r = RunCliIn(dir, "duplicate 1 Copy");
    EXPECT_EQ(r.status, 1);
    EXPECT_NE(r.err.find("The custom material list could not be saved"), std::string::npos);
    EXPECT_EQ(r.err.find("No copy was made"), std::string::npos) << r.err;
}

TEST_F(ListCli, DuplicateUnderACatalogueNameIsRefused) {
    // a lens design folder whose catalogue holds "NEW / S"
    fs::create_directory(dir / "lumbrak");
    std::string cat(495, '\0');
    std::string name = "NEW" + std::string(27, ' ');
    std::string source = "S" + std::string(29, ' ');
    cat.replace(0, 30, name);
    cat.replace(32, 30, source);
    WriteFileBytes(dir / "lumbrak" / kCatalogueFileName, cat);
    CliResult r = RunCliIn(dir, "--lumbrak \"" + (dir / "lumbrak").string() + "\" duplicate 1 new");
    EXPECT_EQ(r.status, 1);
    EXPECT_EQ(r.err,
              "No copy was made: new - S is already in the list of catalog materials, "
              "and cannot be overwritten!\n");
    EXPECT_EQ(RunCliIn(dir, "list").out, kListed);
}

TEST(ListCliStart, ConvertsAnOlderFileFirst) {
    TempDir dir;
    std::string v1(12098, '\0');
    v1.replace(6, 30, "OLD" + std::string(27, ' '));
    v1.replace(38, 30, "SRC" + std::string(27, ' '));
    WriteFileBytes(dir / kCustomFileV1Name, v1);
    CliResult r = RunCliIn(dir, "list");
    EXPECT_EQ(r.status, 0) << r.err;
    EXPECT_EQ(r.out, "1\tOLD\tSRC\n");
}

TEST(ListCliStart, MissingDataFolderIsAClearError) {
    TempDir dir;
    fs::path missing = dir / "nowhere";
    CliResult r = RunCliWithDataDir(dir, missing.string(), "list");
    EXPECT_EQ(r.status, 1);
    EXPECT_NE(r.err.find("The data folder does not exist"), std::string::npos);
    EXPECT_FALSE(fs::exists(missing));
}

}  // namespace
}  // namespace ostrel::testing
