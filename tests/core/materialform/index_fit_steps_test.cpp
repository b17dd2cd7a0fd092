#include "core/materialform/index_fit_steps.h"

#include <gtest/gtest.h>

#include <cmath>
#include <tuple>

#include "core/optics/crown.h"
#include "support/scripted_dialogs.h"

namespace ostrel {
namespace {

using testing::Nbk7;
using testing::ScriptedDialogs;

// Ascending, as a user would type them.
std::vector<IndexRow> Nbk7Rows(int count) {
    std::vector<IndexRow> rows;
    for (int i = 0; i < count; ++i) {
        const float nm = static_cast<float>(365.0 + (2325.0 - 365.0) * i / (count - 1));
        rows.push_back({nm, Nbk7(nm * 0.001), 1.0f});
    }
    return rows;
}

// One press of the fit button over a cleared record of the given polynomial type.
struct FitRun {
    explicit FitRun(int16_t polytype) { rec.General.Polytype = polytype; }
    IndexFitOutcome Fit(const std::vector<IndexRow>& rows) {
        return IndexFitSteps(rows, rec, constants, d);
    }
    MaterialRecord rec = ClearedMaterialRecord();
    std::string constants;
    ScriptedDialogs d;
};

TEST(ReadIndexRows, KeepsFullRowsSortedDescendingAndStableAndNothingUsableLeavesTheRecord) {
    std::vector<IndexRow> rows = {{500.5f, 1.52, 1.0f},  {1013.5f, 1.50, 0.5f}, {700.0f, 0.0, 1.0f},
                                  {600.0f, 1.515, 1.0f}, {600.0f, 1.516, 0.0f}, {0.0f, 1.6, 1.0f}};
    MaterialRecord rec = ClearedMaterialRecord();
    ASSERT_EQ(ReadIndexRows(rows, rec), 4);
    const auto& m = rec.Measured;
    EXPECT_EQ(rec.General.IndexPoints, 4);
    EXPECT_EQ(m.IndexWave[0], 1013.5);
    EXPECT_EQ(m.IndexValue[1], 1.515);  // equal waves keep the order they had
    EXPECT_EQ(std::tuple(m.IndexValue[2], m.IndexWeight[2], m.IndexWave[3]),
              std::tuple(1.516, 0.0f, 500.5));
    EXPECT_DOUBLE_EQ(m.IndexSquared[3], 1.52 * 1.52);
    EXPECT_EQ(rec.General.IndexWvMax, 1014);  // half to even
    EXPECT_EQ(rec.General.IndexWvMin, 500);

    // Nothing usable leaves the record.
    const int read = ReadIndexRows({{0.0f, 1.5, 1.0f}, {500.0f, 0.0, 1.0f}}, rec);
    EXPECT_EQ(std::tuple(read, rec.General.IndexPoints, rec.Measured.IndexWave[0]),
              std::tuple(0, 4, 1013.5));
}

// A row with a wave and an index above 1 but no positive weight gets weight 1.
TEST(CompleteWeight, OnlyFullRowsWithoutAWeight) {
    const std::pair<IndexRow, float> cases[] = {{{587.6f, 1.5168, 0.0f}, 1.0f},
                                                {{587.6f, 1.5168, 0.5f}, 0.5f},
                                                {{587.6f, 1.0, 0.0f}, 0.0f},
                                                {{0.0f, 1.6, 0.0f}, 0.0f}};
    for (auto [row, weight] : cases) {
        CompleteWeight(row);
        EXPECT_EQ(row.weight, weight) << row.wave << " " << row.index;
    }
}

TEST(IndexFitSteps, TooFewPointsNamesTheMinimum) {
    const std::tuple<int16_t, int, const char*> cases[] = {
        {1, 5, "You need at least 6 full data points to fit a Schott polynomial."},
        {2, 5, "You need at least 6 full data points to fit a Sellmeier polynomial."},
        {3, 11, "You need at least 12 full data points to fit a Schott Plus polynomial."},
        {6, 11, "You need at least 12 full data points to fit a Sellmeier Plus polynomial."},
        {4, 2, "You need at least 3 full data points to fit a Cauchy polynomial."}};
    for (const auto& [type, rows, text] : cases) {
        FitRun run(type);
        const auto out = run.Fit(Nbk7Rows(rows));
        EXPECT_EQ(std::tuple(out.fitted, out.errorLabel, run.rec.IndexState.Ready, run.d.everBusy),
                  std::tuple(false, "", kFalse, false));
        EXPECT_EQ(
            run.d.boxes,
            (std::vector<testing::ShownBox>{{text, MsgButtons::OK, MsgIcon::Exclamation, ""}}));
    }
}

TEST(IndexFitSteps, SellmeierSetsDerivedNumbersAndGlassCode) {
    FitRun run(2);
    const auto out = run.Fit(Nbk7Rows(20));
    const MaterialRecord& rec = run.rec;
    ASSERT_TRUE(out.ready);
    // The Sellmeier fits leave no count; N-BK7 has nd 1.5168, vd 64.17.
    EXPECT_EQ(std::tuple(rec.General.IndexReserved, rec.General.GlassCode, run.d.everBusy,
                         run.d.busyDepth),
              std::tuple(0, 517642, true, 0));
    EXPECT_NEAR(rec.Derived.nd, 1.5168f, 1e-5);
    EXPECT_EQ(out.errorLabel.rfind("average Sellmeier polynomal fit error: 0.000000", 0), 0u);
}

TEST(IndexFitSteps, FailedFitClearsTheLabelButShowsTheColumns) {
    auto rows = Nbk7Rows(8);
    for (auto& r : rows) r.weight = 0.0f;
    FitRun run(1);
    MaterialRecord& rec = run.rec;
    rec.IndexState.Ready = kTrue;
    const auto out = run.Fit(rows);
    EXPECT_EQ(std::tuple(out.fitted, out.ready, out.errorLabel), std::tuple(true, false, ""));
    EXPECT_EQ(std::tuple(out.calcTexts.size(), rec.IndexState.Ready, rec.General.IndexReserved,
                         rec.General.GlassCode),
              std::tuple(8u, kFalse, 6, 0));
    EXPECT_EQ(run.d.boxes.size(), 1u);
}

}  // namespace
}  // namespace ostrel
