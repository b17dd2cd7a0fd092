#include "core/platform/file_io.h"
#include "core/platform/install_paths.h"
#include "core/platform/settings_file.h"

#include <gtest/gtest.h>

#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <fstream>
#include <memory>
#include <string>
#include <vector>

#include "support/temp_dir.h"

namespace ostrel {
namespace {

namespace fs = std::filesystem;

using testing::ReadFileBytes;
using testing::WriteFileBytes;

class FileIo : public ::testing::Test {
  protected:
    testing::TempDir dir;
    FileError error;
};

TEST_F(FileIo, ReadInPiecesHandsOnFullPiecesThenTheRest) {
    // Length, piece size, the lengths handed on in order.
    // clang-format off
    const std::tuple<size_t, size_t, std::vector<size_t>> cases[] = {
        {0, 4, {}}, {3, 4, {3}}, {8, 4, {4, 4}}, {10, 4, {4, 4, 2}},
        {100000, 65536, {65536, 34464}}};
    // clang-format on
    for (const auto& [length, piece, pieces] : cases) {
        std::string bytes;
        for (size_t i = 0; i < length; ++i) bytes.push_back(static_cast<char>('a' + i % 26));
        WriteFileBytes(dir / "f.bin", bytes);
        std::vector<size_t> lengths;
        std::string joined;
        ASSERT_TRUE(ReadFileInPieces(
            dir / "f.bin", piece,
            [&](std::string_view piece) {
                lengths.push_back(piece.size());
                joined += piece;
            },
            error));
        EXPECT_EQ(lengths, pieces) << length;
        EXPECT_EQ(joined, bytes);
    }
}

// The names in a folder, sorted.
std::vector<std::string> Names(const std::filesystem::path& folder) {
    std::vector<std::string> names;
    for (const auto& e : std::filesystem::directory_iterator(folder)) {
        names.push_back(e.path().filename().string());
    }
    std::sort(names.begin(), names.end());
    return names;
}

// A source handing on the given pieces one by one.
PieceSource Pieces(const std::vector<std::string>& pieces) {
    auto at = std::make_shared<size_t>(0);
    return [pieces, at](std::string_view& piece) {
        if (*at == pieces.size()) return false;
        piece = pieces[(*at)++];
        return true;
    };
}

// The pieces go in order over the old file, an empty one among them.
TEST_F(FileIo, AtomicWriteFromPieces) {
    WriteFileBytes(dir / "f.bin", "old");
    ASSERT_TRUE(WriteFileAtomicFrom(dir / "f.bin", Pieces({"ab", "", "cde"}), error));
    EXPECT_EQ(ReadFileBytes(dir / "f.bin"), "abcde");
}

// The id of a process that has ended.
long DeadPid() {
    const pid_t child = ::fork();
    if (child == 0) ::_exit(0);
    ::waitpid(child, nullptr, 0);
    return child;
}

TEST_F(FileIo, StaleTemporariesOfGoneProcessesAreRemovedOthersKept) {
    const std::string dead = std::to_string(DeadPid());
    const std::string live = std::to_string(::getpid());
    // Kept besides the file: a write going on now, a name this program does not make, and
    // names whose process id is no number or too large, or without a counter or a target.
    // clang-format off
    const std::vector<std::pair<std::string, bool>> files = {
        {"list.dat.ostrel-tmp." + dead + ".12", false}, {"list.dat", true},
        {"other.ini.ostrel-tmp." + dead + ".3", false}, {"list.dat.tmp123", true},
        {"list.dat.ostrel-tmp." + dead + ".link7", false}, {"list.dat.ostrel-tmp.x.1", true},
        {"list.dat.ostrel-tmp." + live + ".4", true}, {".ostrel-tmp." + dead + ".1", true},
        {"list.dat.ostrel-tmp." + dead + ".", true}, {"list.dat.ostrel-tmp.99999999999.1", true},
    };
    // clang-format on
    std::vector<std::string> kept;
    for (const auto& [name, stays] : files) {
        WriteFileBytes(dir / name, "x");
        if (stays) kept.push_back(name);
    }
    std::sort(kept.begin(), kept.end());
    EXPECT_EQ(RemoveStaleTemporaries(dir.path(), "list.dat"), 2);
    EXPECT_EQ(RemoveStaleTemporaries(dir.path()), 1);
    EXPECT_EQ(Names(dir.path()), kept);
    // A write removes the stale temporaries of its file and leaves none of its own.
    testing::TempDir other;
    WriteFileBytes(other / ("f.bin.ostrel-tmp." + dead + ".1"), std::string(1000, 'x'));
    ASSERT_TRUE(WriteFileAtomic(other / "f.bin", "new", error));
    ASSERT_TRUE(SnapshotFile(other / "f.bin", other / "g.bin", error));
    EXPECT_EQ(Names(other.path()), (std::vector<std::string>{"f.bin", "g.bin"}));
}

// A missing file, and anything but a regular file, is an error with the reason and the name.
TEST_F(FileIo, OnlyRegularFilesAreRead) {
    ASSERT_EQ(::mkfifo((dir / "fifo").c_str(), 0600), 0);
    std::filesystem::create_directory(dir / "folder");
    // A file just over the limit, made sparse so that it takes no room.
    std::ofstream(dir / "big.txt").close();
    std::filesystem::resize_file(dir / "big.txt", kMaxWholeFileSize + 1);
    const std::tuple<std::filesystem::path, const char*> refused[] = {
        {"/dev/zero", "no regular file"},
        {dir / "fifo", "no regular file"},
        {dir / "folder", "a folder"},
        {dir / "none.bin", "No such file"},
        {dir / "big.txt", "larger than 256 MB"}};
    for (const auto& [path, reason] : refused) {
        SCOPED_TRACE(path);
        std::string content = "old";
        error = {};
        EXPECT_FALSE(ReadWholeFile(path, content, error));
        EXPECT_NE(error.message.find(reason), std::string::npos) << error.message;
        EXPECT_NE(error.message.find(path.string()), std::string::npos);
        EXPECT_NE(error.code, 0);
        EXPECT_TRUE(content.empty() || content == "old");
        if (path.filename() == "big.txt") continue;  // read in pieces, a list has no limit
        bool called = false;
        error = {};
        EXPECT_FALSE(ReadFileInPieces(
            path, 16, [&](std::string_view) { called = true; }, error));
        EXPECT_FALSE(called);
        EXPECT_NE(error.message.find(reason), std::string::npos) << error.message;
    }
    // A file that says it is empty but is not, as the kernel's files do, is read whole.
    std::string status;
    ASSERT_TRUE(ReadWholeFile("/proc/self/status", status, error));
    EXPECT_EQ(status.substr(0, 5), "Name:");
}

// A setting saved into a hand-edited or damaged file reads back from the same section, and
// the sections around it keep their keys.
TEST(SettingsFileTest, SavedSettingReadsBackWhateverLinesTheFileHolds) {
    using Case = std::tuple<const char*, const char*>;
    const Case cases[] = {
        {"plain", "[Paths]\nLumbrak=/a/\n[Other]\nx=1\n"},
        {"bracketed key", "[Paths]\nLumbrak=/a/\n[][fm=^ew];\nop=1\n[Other]\nx=1\n"},
        {"open bracket", "[Paths\nLumbrak=/a/\n[Paths]\n[x=y\nLumbrak=/a/\n[Other]\nx=1\n"},
        {"carriage returns", "[Paths]\r\nLumbrak=/a/\r\nT\r=ew!]\r\n[Other]\r\nx=1\r\n"},
    };
    for (const auto& [name, file] : cases) {
        testing::TempDir dir;
        const std::string path = (dir.path() / "Settings.ini").string();
        WriteFileBytes(path, file);
        SettingsFile settings(path);
        ASSERT_EQ(settings.GetSetting("Paths", "Lumbrak", "none"), "/a/") << name;
        settings.SaveSetting("Paths", "Kelmora", "/k/");
        const SettingsFile again(path);
        EXPECT_EQ(again.GetSetting("Paths", "Kelmora", "none"), "/k/") << name;
        EXPECT_EQ(again.GetSetting("Paths", "Lumbrak", "none"), "/a/") << name;
        EXPECT_EQ(again.GetSetting("Other", "x", "none"), "1") << name;
    }
}

// The installed data is found beside the program under an install prefix and in a build
// folder, and nowhere else.
TEST(InstallPaths, DataIsFoundBesideTheProgramOrAFewLevelsAbove) {
    // The program below the test's folder, the data folder made there (blank for none), the
    // data sought, whether it is found.
    const std::tuple<const char*, const char*, InstalledData, bool> cases[] = {
        {"usr/bin/ostrel", "usr/share/ostrel", InstalledData::DemoCatalogue, true},
        {"usr/bin/ostrel", "usr/share/doc/ostrel", InstalledData::Guide, true},
        {"build/src/cli/ostrel-cli", "build/share/ostrel", InstalledData::DemoCatalogue, true},
        {"build/tests/gui/x/test_gui", "build/share/doc/ostrel", InstalledData::Guide, true},
        {"usr/bin/ostrel", "usr/share/ostrel", InstalledData::Guide, false},
        {"a/b/c/d/e/f/ostrel", "a/share/ostrel", InstalledData::DemoCatalogue, false},
        {"usr/bin/ostrel", "", InstalledData::DemoCatalogue, false},
    };
    for (const auto& [below, data, kind, exists] : cases) {
        SCOPED_TRACE(std::string(below) + " " + data);
        testing::TempDir dir;
        const fs::path program = dir / below;
        fs::create_directories(program.parent_path());
        WriteFileBytes(program, "");
        if (*data) fs::create_directories(dir / data);
        const std::string found = InstalledDataFolder(kind, program.string());
        EXPECT_EQ(found, exists ? (dir / data).string() : std::string());
        if (!exists || kind != InstalledData::DemoCatalogue) continue;
        // The catalogue is a file in that folder.
        EXPECT_EQ(InstalledDemoCatalogue(program.string()), "");
        WriteFileBytes(dir / data / "demo_glasses.csv", "# glasses\n");
        EXPECT_EQ(InstalledDemoCatalogue(program.string()), found + "/demo_glasses.csv");
    }
    EXPECT_EQ(InstalledDataFolder(InstalledData::Guide, ""), "");
}

}  // namespace
}  // namespace ostrel
