#include "core/external/bas1_setup.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <filesystem>
#include <string>
#include <vector>

#include "external_fixture.h"

namespace ostrel::testing {
namespace {

namespace fs = std::filesystem;

class Bas1SetupTest : public ::testing::Test {
  protected:
    TempDir tmp;
    ScriptedDialogs dialogs;
    MemorySettingsStore settings;
    Bas1Setup setup{settings, dialogs};

    // A walk from root for the program, with fresh counts.
    int64_t Find(const fs::path& root, const std::string& program, bool stopAtFirst = true) {
        found = dirs = 0;
        list.clear();
        return setup.FindFile(root.string(), program, found, dirs, list, stopAtFirst, 0);
    }

    int found = 0, dirs = 0;
    std::vector<std::string> list;
};

TEST_F(Bas1SetupTest, ProgramInFolderMatchesAnyCase) {
    Program(tmp / "k", "kelmoratd.exe");
    EXPECT_TRUE(Bas1Setup::ProgramInFolder((tmp / "k").string(), "KelmoraTD.EXE"));
    EXPECT_TRUE(Bas1Setup::ProgramInFolder(Dir(tmp / "k"), "KelmoraTD.EXE"));
    EXPECT_FALSE(Bas1Setup::ProgramInFolder(Dir(tmp / "k"), "Lumbrak3D.EXE"));
    EXPECT_FALSE(Bas1Setup::ProgramInFolder(Dir(tmp / "missing"), "KelmoraTD.EXE"));
    EXPECT_FALSE(Bas1Setup::ProgramInFolder("", "KelmoraTD.EXE"));
    fs::create_directories(tmp / "d" / "KelmoraTD.EXE");  // a folder of that name is no program
    EXPECT_FALSE(Bas1Setup::ProgramInFolder(Dir(tmp / "d"), "KelmoraTD.EXE"));
}

TEST_F(Bas1SetupTest, ParentFolder) {
    const std::pair<const char*, const char*> cases[] = {{"/opt/apps/Ostrel/", "/opt/apps/"},
                                                         {"/opt/apps/Ostrel", "/opt/apps/"},
                                                         {"/Ostrel/", "/"},
                                                         {"/", ""}};
    for (const auto& [folder, parent] : cases) EXPECT_EQ(Bas1Setup::ParentFolder(folder), parent);
}

TEST_F(Bas1SetupTest, WalkIsDepthFirstInNameOrderAndStopsAtTheFirst) {
    // a/b/c is deeper than z but comes first depth first.
    Program(tmp / "drive" / "a" / "b" / "c", "Lumbrak3D.exe", 123);
    Program(tmp / "drive" / "z", "LUMBRAK3D.EXE", 7);
    fs::create_directories(tmp / "drive" / "m");
    EXPECT_EQ(std::tuple(Find(tmp / "drive", "Lumbrak3D.EXE"), found), std::tuple(123, 1));
    EXPECT_EQ(list, std::vector<std::string>{Dir(tmp / "drive" / "a" / "b" / "c")});

    EXPECT_EQ(std::tuple(Find(tmp / "drive", "Lumbrak3D.EXE", false), found, dirs),
              std::tuple(130, 2, 5));  // a, m, z, b, c
    EXPECT_EQ(list, (std::vector<std::string>{Dir(tmp / "drive" / "a" / "b" / "c"),
                                              Dir(tmp / "drive" / "z")}));
}

TEST_F(Bas1SetupTest, ProgressIsShownForTheTopThreeLevelsOnly) {
    fs::create_directories(tmp / "r" / "one" / "two" / "three" / "four");
    Find(tmp / "r", "KelmoraTD.EXE");
    const std::string note =
        "First time search for Lumbrak3D, SextaneTD and KelmoraTD.  Looking in: ";
    EXPECT_EQ(dialogs.helpNotes,
              (std::vector<std::string>{note + Dir(tmp / "r"), note + Dir(tmp / "r" / "one"),
                                        note + Dir(tmp / "r" / "one" / "two")}));
    EXPECT_EQ(found, 0);
}

TEST_F(Bas1SetupTest, SymbolicLinksToFoldersAreNotFollowed) {
    fs::create_directories(tmp / "r" / "a");
    fs::create_directory_symlink(tmp / "r", tmp / "r" / "a" / "loop");
    Program(tmp / "elsewhere", "KelmoraTD.EXE");
    fs::create_directory_symlink(tmp / "elsewhere", tmp / "r" / "link");
    Find(tmp / "r", "KelmoraTD.EXE");
    EXPECT_EQ(std::tuple(found, dirs), std::tuple(0, 1));
}

TEST_F(Bas1SetupTest, UnreadableFolderIsPassedOver) {
    if (geteuid() == 0) GTEST_SKIP() << "permissions do not bind the superuser";
    Program(tmp / "r" / "a", "KelmoraTD.EXE");
    Program(tmp / "r" / "b", "KelmoraTD.EXE");
    fs::permissions(tmp / "r" / "a", fs::perms::none);
    Find(tmp / "r", "KelmoraTD.EXE");
    fs::permissions(tmp / "r" / "a", fs::perms::owner_all);
    EXPECT_EQ(list, std::vector<std::string>{Dir(tmp / "r" / "b")});
}

TEST_F(Bas1SetupTest, StoredPathsAreReadAndCheckedAfterTheFirstRun) {
    Program(tmp / "k", "KelmoraTD.EXE");
    setup.LoadPaths();
    EXPECT_EQ(std::tuple(setup.GetFirstLoad(), setup.GetKelmoraFound()), std::tuple(true, false));

    settings.SaveSetting("B1SetupPathsTD", "FirstLoad1TD", "False");
    settings.SaveSetting("B1SetupPathsTD", "KelmoraTD", Dir(tmp / "k"));
    settings.SaveSetting("B1SetupPathsTD", "LumbrakPlusTD", Dir(tmp / "gone"));
    Bas1Setup later(settings, dialogs);
    later.LoadPaths();
    EXPECT_EQ(std::tuple(later.GetFirstLoad(), later.GetKelmoraFound(), later.GetLumbrakFound()),
              std::tuple(false, true, false));
    later.SavePaths();  // a folder not found is not written over
    EXPECT_EQ(settings.GetSetting("B1SetupPathsTD", "LumbrakPlusTD", ""), Dir(tmp / "gone"));
}

TEST_F(Bas1SetupTest, AFailedSetPathKeepsTheOldFolder) {
    Program(tmp / "k", "KelmoraTD.EXE");
    ASSERT_TRUE(setup.SetPathKelmora((tmp / "k").string()));
    EXPECT_FALSE(setup.SetPathKelmora((tmp / "none").string()));
    EXPECT_FALSE(setup.GetKelmoraFound());
    EXPECT_EQ(setup.GetPathKelmora(), Dir(tmp / "k"));
}

}  // namespace
}  // namespace ostrel::testing
