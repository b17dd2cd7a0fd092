#include "core/platform/settings_file.h"

#include <gtest/gtest.h>

#include <string>

#include "support/temp_dir.h"

namespace ostrel {
namespace {

// A setting saved into a hand-edited or damaged file reads back from the same section, and
// the sections around it keep their keys.
TEST(SettingsFileTest, SavedSettingReadsBackWhateverLinesTheFileHolds) {
    struct Case {
        const char* name;
        const char* file;
    };
    const Case cases[] = {
        {"plain", "[Paths]\nLumbrak=/a/\n[Other]\nx=1\n"},
        {"bracketed key", "[Paths]\nLumbrak=/a/\n[][fm=^ew];\nop=1\n[Other]\nx=1\n"},
        {"open bracket", "[Paths\nLumbrak=/a/\n[Paths]\n[x=y\nLumbrak=/a/\n[Other]\nx=1\n"},
        {"carriage returns", "[Paths]\r\nLumbrak=/a/\r\nT\r=ew!]\r\n[Other]\r\nx=1\r\n"},
    };
    for (const Case& c : cases) {
        testing::TempDir dir;
        const std::string path = (dir.path() / "Settings.ini").string();
        testing::WriteFileBytes(path, c.file);
        SettingsFile settings(path);
        ASSERT_EQ(settings.GetSetting("Paths", "Lumbrak", "none"), "/a/") << c.name;
        settings.SaveSetting("Paths", "Kelmora", "/k/");
        const SettingsFile again(path);
        EXPECT_EQ(again.GetSetting("Paths", "Kelmora", "none"), "/k/") << c.name;
        EXPECT_EQ(again.GetSetting("Paths", "Lumbrak", "none"), "/a/") << c.name;
        EXPECT_EQ(again.GetSetting("Other", "x", "none"), "1") << c.name;
    }
}

}  // namespace
}  // namespace ostrel
