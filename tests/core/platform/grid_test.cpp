#include "core/platform/grid.h"

#include <gtest/gtest.h>

namespace ostrel {
namespace {

// Rows of (name, source, number) for the sort and clip tests.
void Fill(Grid& g, const std::vector<std::vector<std::string>>& rows) {
    g.SetMaxCols(static_cast<int>(rows.front().size()));
    g.SetMaxRows(static_cast<int>(rows.size()));
    for (size_t r = 0; r < rows.size(); ++r) {
        for (size_t c = 0; c < rows[r].size(); ++c) {
            g.SetText(static_cast<int>(c) + 1, static_cast<int>(r) + 1, rows[r][c]);
        }
    }
}

std::vector<std::string> Column(const Grid& g, int col) {
    std::vector<std::string> out;
    for (int r = 1; r <= g.MaxRows(); ++r) out.push_back(g.Text(col, r));
    return out;
}

TEST(Grid, CellsOutsideNumbersAndRefusedEntries) {
    Grid g(2, 2);
    g.SetText(3, 1, "x");
    g.SetText(0, 1, "x");
    EXPECT_EQ(g.Text(3, 1) + g.Text(1, 0), "");
    g.SetText(2, 2, "abc");
    g.SetMaxRows(1);
    g.SetMaxRows(2);
    EXPECT_EQ(g.Text(2, 2), "") << "shrinking drops the cells outside";

    // A cell that is no number reads zero; a float column keeps the number given, not the
    // decimals it shows.
    Grid f(1, 3);
    f.SetColumnFloat(1, 3);
    f.SetText(1, 1, "abc");
    f.SetValue(1, 2, 1.51680123);
    EXPECT_EQ(std::tuple(f.Value(1, 1), f.Value(1, 2), f.Value(1, 3)),
              std::tuple(0.0, 1.51680123, 0.0));

    // Locked and hidden columns refuse entries.
    Grid h(3, 1);
    h.SetColumnLocked(1, true);
    h.SetColumnHidden(3, true);
    EXPECT_EQ(std::tuple(h.EditText(1, 1, "a"), h.EditText(2, 1, "a"), h.EditText(3, 1, "a")),
              std::tuple(false, true, false));
}

TEST(Grid, FloatEntryLimitsNumbersAndTakesADecimalComma) {
    // Entry, accepted, the cell's text afterwards, marked as an entry that is no number.
    const std::tuple<std::string, bool, std::string, bool> cases[] = {
        {"587.56", true, "587.56", false},  {"200", true, "200", false},
        {"2500", true, "2500", false},      {"199.9", false, "old", false},
        {"3000", false, "old", false},      {"587,56", true, "587.56", false},
        {"1,500.5", true, "1,500.5", true}, {"199,9", false, "old", false},
        {"abc", true, "abc", true},         {"", true, "", false}};
    for (const auto& [text, accepted, kept, ignored] : cases) {
        Grid g(2, 1);
        g.SetColumnFloat(1, 1, 200.0, 2500.0);
        g.SetText(1, 1, "old");
        EXPECT_EQ(g.EditText(1, 1, text), accepted) << text;
        EXPECT_EQ(g.Text(1, 1), kept) << text;
        EXPECT_EQ(g.IsIgnoredEntry(1, 1), ignored) << text;
    }
}

TEST(Grid, IgnoredEntryMarkEndsWithTheNextWrite) {
    Grid g(2, 2);
    g.SetColumnFloat(1, 4);
    g.SetColumnFloat(2, 4);
    g.SetColumnLocked(2, true);
    ASSERT_TRUE(g.EditText(1, 1, "n/a"));
    g.SetText(1, 2, "5");
    g.Sort(1, 2, {{1, false}});
    EXPECT_TRUE(g.IsIgnoredEntry(1, 2)) << "the mark moves with its row";
    g.SetText(1, 2, "n/a");
    EXPECT_FALSE(g.IsIgnoredEntry(1, 2)) << "the logic's own text is no entry";
    g.SetActiveCell(1, 1);
    EXPECT_EQ((std::tuple{g.Paste("Index\tdn\n1,5168\t2\n"), g.IsIgnoredEntry(1, 1), g.Text(1, 2)}),
              std::tuple(2, true, "1.5168"));
    g.ClearAll();
    EXPECT_FALSE(g.IsIgnoredEntry(1, 1));
}

TEST(Grid, ClipTextRoundTrip) {
    Grid g;
    Fill(g, {{"BK7", "SCHOTT"}, {"F2", "SCHOTT"}, {"N-SF11", "SCHOTT"}});
    EXPECT_EQ(g.ClipText({1, 1, 2, 2}), "BK7\tSCHOTT\nF2\tSCHOTT");
    EXPECT_EQ(g.ClipText({2, 2, 2, 3}), "SCHOTT\nSCHOTT");
    EXPECT_EQ(g.ClipText({0, 3, 0, 3}), "N-SF11\tSCHOTT") << "whole-row block";

    Grid h(2, 3);
    EXPECT_EQ(h.SetClip(1, 1, g.ClipText({1, 1, 2, 3})), 3);
    EXPECT_EQ(h.ClipText({1, 1, 2, 3}), g.ClipText({1, 1, 2, 3}));
    // What falls outside is dropped; any line break ends a row.
    Grid s(2, 2);
    EXPECT_EQ(s.SetClip(2, 1, "a\tb\nc\td\re\tf\n"), 2);
    EXPECT_EQ(s.ClipText({1, 1, 2, 2}), "\ta\n\tc");
    EXPECT_TRUE(SplitClipText("").empty());
    EXPECT_EQ(SplitClipText("1\t2\r\n\r\n3\n"),
              (std::vector<std::vector<std::string>>{{"1", "2"}, {""}, {"3"}}));
}

TEST(Grid, PasteAtActiveCellSkipsLockedColumnsAndBadNumbers) {
    Grid g(4, 3);
    g.SetColumnFloat(1, 1, 100, 5000);
    g.SetColumnLocked(2, true);
    g.SetColumnFloat(3, 6);
    g.SetText(2, 2, "calc");
    g.SetActiveCell(1, 2);
    EXPECT_EQ(g.Paste("587.6\t1.5168\r\n50\t1.5\r\n656.3\t1.514\r\n"), 2);
    // 50 nm lies below the limit of the first column.
    EXPECT_EQ(g.ClipText({1, 2, 3, 3}), "587.6\tcalc\t1.5168\n\t\t1.5");
}

// Text sorts case-blind and stable, a second key breaks ties, a float column sorts by number.
TEST(Grid, SortByKeys) {
    using Rows = std::vector<std::vector<std::string>>;
    using Col = std::vector<std::string>;
    // Rows, a float first column, the keys, a column shown and its texts after the sort.
    // clang-format off
    const std::tuple<Rows, bool, std::vector<SortKey>, int, Col> cases[] = {
        {{{"f2", "B", "1"}, {"BK7", "A", "2"}, {"F2", "A", "3"}, {"baf10", "C", "4"}}, false,
         {{1, true}}, 3, {"4", "2", "1", "3"}},
        {{{"F2", "SCHOTT"}, {"BK7", "SCHOTT"}, {"ZK1", "OHARA"}, {"AB", "SCHOTT"}}, false,
         {{2, true}, {1, true}}, 1, {"ZK1", "AB", "BK7", "F2"}},
        {{{"10"}, {"9"}, {"100"}, {"x"}}, true, {{1, false}}, 1, {"100", "10", "9", "x"}},
    };
    // clang-format on
    for (const auto& [rows, floatColumn, keys, shownColumn, expected] : cases) {
        Grid g;
        Fill(g, rows);
        if (floatColumn) g.SetColumnFloat(1, 0);
        g.Sort(1, g.MaxRows(), keys);
        EXPECT_EQ(Column(g, shownColumn), expected);
        g.Sort(1, g.MaxRows(), keys);
        EXPECT_EQ(Column(g, shownColumn), expected) << "sorting again changes nothing";
    }
}

TEST(Grid, SortMovesColoursWithTheRowsAndKeepsOtherRows) {
    Grid g;
    Fill(g, {{"head", ""}, {"C", ""}, {"A", ""}, {"B", ""}});
    g.SetRowColour(2, kMeltRowColour);
    g.SetCellColour(2, 2, kStatusRed);
    g.SetCellColour(1, 3, kStatusGreen);
    g.Sort(2, 4, {{1, true}});
    EXPECT_EQ(Column(g, 1), (std::vector<std::string>{"head", "A", "B", "C"}));
    // A cell shows its row's colour unless it has its own.
    EXPECT_EQ(
        std::tuple(g.RowColour(4), g.CellColour(1, 4), g.CellColour(2, 4), g.CellColour(1, 2)),
        std::tuple(kMeltRowColour, kMeltRowColour, kStatusRed, kStatusGreen));
    EXPECT_EQ(g.RowColour(2), std::nullopt);
}

TEST(Grid, MultiBlockSelection) {
    Grid g(3, 10);
    EXPECT_FALSE(g.IsBlockMode());
    g.SetSelection({1, 5, 3, 3});  // corners given either way round
    g.AddSelection({0, 8, 0, 9});
    EXPECT_EQ(std::tuple(g.IsBlockMode(), g.IsSelected(2, 9), g.IsSelected(2, 7)),
              std::tuple(true, true, false));
    EXPECT_EQ(g.SelBlock(), (GridBlock{1, 3, 3, 5}));
    EXPECT_EQ(g.SelectedRows(), (std::vector<int>{3, 4, 5, 8, 9}));
    g.SetMaxRows(8);
    EXPECT_EQ(g.SelectedRows(), (std::vector<int>{3, 4, 5, 8}));
    g.ClearSelection();
    EXPECT_FALSE(g.IsBlockMode());
}

TEST(Grid, ObserversHearChangesAndRedrawOffGathersThem) {
    Grid g(2, 2);
    std::vector<GridChange> seen;
    auto sub = g.Observe([&](const GridChange& c) { seen.push_back(c); });
    g.SetText(2, 1, "a");
    g.SetText(2, 1, "a");  // no change
    ASSERT_EQ(seen.size(), 1u);
    EXPECT_EQ(std::tuple(seen[0].kind, seen[0].area),
              std::tuple(GridChange::Kind::Cells, GridBlock{2, 1, 2, 1}));

    seen.clear();
    g.SetRedraw(false);
    g.SetMaxRows(5);
    g.SetClip(1, 1, "x\ty\r\nz");
    g.SetRowColour(3, kMeltRowColour);
    EXPECT_TRUE(seen.empty());
    g.SetRedraw(true);
    ASSERT_EQ(seen.size(), 1u);
    EXPECT_EQ(seen[0].kind, GridChange::Kind::Layout);

    seen.clear();
    g.SetActiveCell(2, 2);
    ASSERT_EQ(seen.size(), 1u);
    EXPECT_EQ(seen[0].kind, GridChange::Kind::Selection);
}

}  // namespace
}  // namespace ostrel
