#include "core/platform/file_io.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <iterator>
#include <memory>
#include <string>
#include <vector>

#include "support/temp_dir.h"

namespace ostrel {
namespace {

using testing::ReadFileBytes;
using testing::WriteFileBytes;

class FileIo : public ::testing::Test {
  protected:
    testing::TempDir dir;
    FileError error;
};

struct PieceCase {
    size_t length;
    size_t piece;
    std::vector<size_t> pieces;  // the lengths handed on, in order
};

class ReadFileInPiecesTest : public FileIo, public ::testing::WithParamInterface<PieceCase> {};

TEST_P(ReadFileInPiecesTest, HandsOnFullPiecesThenTheRest) {
    const PieceCase& c = GetParam();
    std::string bytes;
    for (size_t i = 0; i < c.length; ++i) bytes.push_back(static_cast<char>('a' + i % 26));
    WriteFileBytes(dir / "f.bin", bytes);

    std::vector<size_t> lengths;
    std::string joined;
    ASSERT_TRUE(ReadFileInPieces(
        dir / "f.bin", c.piece,
        [&](std::string_view piece) {
            lengths.push_back(piece.size());
            joined += piece;
        },
        error));
    EXPECT_EQ(lengths, c.pieces);
    EXPECT_EQ(joined, bytes);
}

INSTANTIATE_TEST_SUITE_P(Lengths, ReadFileInPiecesTest,
                         ::testing::Values(PieceCase{0, 4, {}}, PieceCase{3, 4, {3}},
                                           PieceCase{8, 4, {4, 4}}, PieceCase{10, 4, {4, 4, 2}},
                                           PieceCase{100000, 65536, {65536, 34464}}));

TEST_F(FileIo, ReadingAMissingFileIsAnErrorWithItsName) {
    bool called = false;
    EXPECT_FALSE(ReadFileInPieces(
        dir / "none.bin", 16, [&](std::string_view) { called = true; }, error));
    EXPECT_FALSE(called);
    EXPECT_NE(error.code, 0);
    EXPECT_NE(error.message.find("none.bin"), std::string::npos);
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

TEST_F(FileIo, AtomicWriteWritesThePiecesInOrderOverTheOldFile) {
    WriteFileBytes(dir / "f.bin", "old");
    ASSERT_TRUE(WriteFileAtomicFrom(dir / "f.bin", Pieces({"ab", "", "cde"}), error));
    EXPECT_EQ(ReadFileBytes(dir / "f.bin"), "abcde");
}

TEST_F(FileIo, AFailedAtomicWriteLeavesTheOldFileAndNoTemporaryOne) {
    WriteFileBytes(dir / "f.bin", "old");
    int writes = 0;
    SetWriteFaultHook([&](const std::filesystem::path&) { return ++writes < 2; });
    EXPECT_FALSE(WriteFileAtomicFrom(dir / "f.bin", Pieces({"ab", "cd", "ef"}), error));
    SetWriteFaultHook(nullptr);
    EXPECT_EQ(error.code, ENOSPC);
    EXPECT_EQ(ReadFileBytes(dir / "f.bin"), "old");
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(dir.path()),
                            std::filesystem::directory_iterator()),
              1);
}

}  // namespace
}  // namespace ostrel
