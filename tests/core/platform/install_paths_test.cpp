// The installed data is found beside the program under an install prefix and in a build
// folder, and nowhere else.
#include "core/platform/install_paths.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "support/temp_dir.h"

namespace ostrel::testing {
namespace {

namespace fs = std::filesystem;

TEST(InstallPaths, DataIsFoundBesideTheProgramOrAFewLevelsAbove) {
    const struct {
        const char* program;  // below the test's folder
        const char* data;     // the folder that exists, blank for none
        InstalledData kind;
        bool found;
    } cases[] = {
        {"usr/bin/ostrel", "usr/share/ostrel", InstalledData::DemoCatalogue, true},
        {"usr/bin/ostrel", "usr/share/doc/ostrel", InstalledData::Guide, true},
        {"build/src/cli/ostrel-cli", "build/share/ostrel", InstalledData::DemoCatalogue, true},
        {"build/tests/gui/x/test_gui", "build/share/doc/ostrel", InstalledData::Guide, true},
        {"usr/bin/ostrel", "usr/share/ostrel", InstalledData::Guide, false},
        {"a/b/c/d/e/f/ostrel", "a/share/ostrel", InstalledData::DemoCatalogue, false},
        {"usr/bin/ostrel", "", InstalledData::DemoCatalogue, false},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(std::string(c.program) + " " + c.data);
        TempDir dir;
        const fs::path program = dir / c.program;
        fs::create_directories(program.parent_path());
        WriteFileBytes(program, "");
        if (*c.data) fs::create_directories(dir / c.data);
        const std::string found = InstalledDataFolder(c.kind, program.string());
        EXPECT_EQ(found, c.found ? (dir / c.data).string() : std::string());
    }
    EXPECT_EQ(InstalledDataFolder(InstalledData::Guide, ""), "");
}

TEST(InstallPaths, TheCatalogueIsAFileInItsFolder) {
    TempDir dir;
    const fs::path program = dir / "bin/ostrel-cli";
    fs::create_directories(dir / "bin");
    fs::create_directories(dir / "share/ostrel");
    EXPECT_EQ(InstalledDemoCatalogue(program.string()), "");
    WriteFileBytes(dir / "share/ostrel/demo_glasses.csv", "# glasses\n");
    EXPECT_EQ(InstalledDemoCatalogue(program.string()),
              (dir / "share/ostrel/demo_glasses.csv").string());
}

}  // namespace
}  // namespace ostrel::testing
