#include "core/platform/file_io.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "support/temp_dir.h"

namespace ostrel {
namespace {

struct PieceCase {
    size_t length;
    size_t piece;
    std::vector<size_t> pieces;  // the lengths handed on, in order
};

class ReadFileInPiecesTest : public ::testing::TestWithParam<PieceCase> {};

TEST_P(ReadFileInPiecesTest, HandsOnFullPiecesThenTheRest) {
    const PieceCase& c = GetParam();
    testing::TempDir dir;
    std::string bytes;
    for (size_t i = 0; i < c.length; ++i) bytes.push_back(static_cast<char>('a' + i % 26));
    testing::WriteFileBytes(dir / "f.bin", bytes);

    std::vector<size_t> lengths;
    std::string joined;
    FileError error;
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

TEST(ReadFileInPieces, MissingFileIsAnErrorWithItsName) {
    testing::TempDir dir;
    FileError error;
    bool called = false;
    EXPECT_FALSE(ReadFileInPieces(
        dir / "none.bin", 16, [&](std::string_view) { called = true; }, error));
    EXPECT_FALSE(called);
    EXPECT_NE(error.code, 0);
    EXPECT_NE(error.message.find("none.bin"), std::string::npos);
}

}  // namespace
}  // namespace ostrel
