#include <cmath>
#include <tuple>

#include "melt_fixture.h"

namespace ostrel::testing {
namespace {

const std::vector<float> kSchottLines = {656.273f, 643.847f, 587.562f, 546.074f,
                                         486.133f, 479.991f, 435.834f};

// A difference that is exactly quadratic in the wavelength (nm).
double Quadratic(double w) {
    return 2e-4 + 3e-7 * w - 2e-10 * w * w;
}

// The second parent's 32-bit steps drop the last of the 21 grid points.
TEST_F(MeltFixture, AConstantOffsetIsCarriedAcrossTheBandAndAQuadraticMakesTheGrid) {
    const std::tuple<const char*, const char*, int16_t, int16_t> parents[] = {
        {"Schott", "N-BK7", 2, 21}, {"Hoya", "BSC7", 1, 20}};
    for (const auto& [maker, name, polytype, gridPoints] : parents) {
        SCOPED_TRACE(name);
        Start(maker, name, "m1");
        ASSERT_EQ(form->ParentRecord().General.Polytype, polytype);
        TypeOffsetPairs(kSchottLines, 0.0004);
        form->comIndexFitClick();
        const auto& melt = form->MeltRecord();
        const auto& parent = form->ParentRecord();
        ASSERT_EQ(std::tuple(melt.IndexState.Ready, melt.General.Polytype),
                  std::tuple(kTrue, polytype));
        // The typed pairs carry only what a 32-bit float keeps, about 1e-7: at the pairs that is
        // all, far out in the band the quadratic carries it further.
        for (size_t i = 0; i < kSchottLines.size(); ++i) {
            const float w = kSchottLines[i];
            EXPECT_NEAR(IndexOf(melt, w) - IndexOf(parent, w), 0.0004, 2e-6) << w;
            EXPECT_EQ(form->ssRefInd.Text(6, static_cast<int>(i) + 1), "0.000400") << w;
        }
        for (float w = parent.General.IndexWvMin; w <= parent.General.IndexWvMax; w += 50.0f)
            EXPECT_NEAR(IndexOf(melt, w) - IndexOf(parent, w), 0.0004, 3e-5) << w;
        EXPECT_EQ(
            (Texts{form->lblError.caption, form->pnlStatus.caption, form->lblGlassCode.caption}),
            (Texts{"Average error [user-fitted] indices at above wavelengths: 0.000400",
                   "Index: Ready", std::to_string(melt.General.GlassCode)}));
        EXPECT_FALSE(form->ssRefInd.Column(6).hidden);
        EXPECT_EQ(Enabled({&form->comIndexFit, &form->comShowDispConsts, &form->comShowIndex,
                           &form->comAdd}),
                  (std::vector<bool>{false, true, true, true}));
        // Everything else is the parent's.
        EXPECT_EQ(std::tie(melt.TransTable, melt.General.Density),
                  std::tie(parent.TransTable, parent.General.Density));

        // The synthetic points are the parent plus the quadratic; pairs across the whole band, so
        // that the 32-bit pairs are not carried far.
        form->comClearClick();
        const auto& pg = parent.General;
        std::vector<float> waves;
        for (int k = 4; k >= 0; --k)
            waves.push_back(pg.IndexWvMin + (pg.IndexWvMax - pg.IndexWvMin) * k / 4.0f);
        TypeOffsetPairs(waves, Quadratic);
        form->comIndexFitClick();
        const float step = static_cast<float>((pg.IndexWvMax - pg.IndexWvMin) / 20.0);
        ASSERT_EQ(melt.General.IndexPoints, gridPoints);
        float w = pg.IndexWvMax;
        for (int i = 0; i < gridPoints; ++i, w -= step) {
            EXPECT_EQ(melt.Measured.IndexWave[i], static_cast<double>(w));
            EXPECT_NEAR(melt.Measured.IndexValue[i],
                        IndexOf(form->ParentRecord(), w) + Quadratic(w), 1e-6)
                << w;
        }
        form->ForceUnload();
    }
}

TEST_F(MeltFixture, APairOutsideTheWavebandTakesPartInTheQuadratic) {
    Start("Hoya", "BSC7", "m1");  // 365 to 1014 nm
    TypeOffsetPairs(kMainLines, 0.0004);
    TypeOffsetPair(5, 1500.0f, 0.0010);  // beyond the band
    form->comIndexFitClick();
    const auto& melt = form->MeltRecord();
    ASSERT_EQ(
        std::tuple(melt.IndexState.Ready, melt.Measured.IndexWave[0], melt.Melt.MeltIndexWave[0]),
        std::tuple(kTrue, 1014.0, 1500.0f));
    // The far pair pulls the long end up.
    EXPECT_GT(IndexOf(melt, 1014.0f) - IndexOf(form->ParentRecord(), 1014.0f), 0.00045);
}

TEST_F(MeltFixture, RowTextsRefusalOfFewerThanFourPairsAndSort) {
    Start("Schott", "N-BK7", "m1");
    TypePair(1, "587.562", "1.5170");
    // Shown with the columns' decimals; N-BK7 has nd 1.51680.
    EXPECT_EQ(std::tuple(form->ssRefInd.ClipText({1, 1, 3, 1}),
                         form->ssRefInd.Text(4, 1).substr(0, 7), form->ssRefInd.Text(5, 1)),
              std::tuple("d \t587.5620\t1.5170000", "1.51680", "0.000200"));
    TypePair(2, "600", "");
    EXPECT_EQ((Texts{form->ssRefInd.Text(1, 2), form->ssRefInd.Text(5, 2)}), (Texts{"", "  "}));
    TypePair(3, "", "1.6");
    EXPECT_EQ(form->ssRefInd.ClipText({4, 3, 5, 3}), "  \t  ");
    TypePair(4, "486.133", "1.5224");
    TypePair(5, "100.00001", "1.8");
    dialogs.boxes.clear();
    form->comIndexFitClick();
    EXPECT_EQ(dialogs.boxes.size(), 1u);
    const auto& m = form->MeltRecord().Melt;
    EXPECT_EQ(
        std::tuple(m.MeltIndexPoints, form->MeltRecord().IndexState.Ready,
                   form->lblError.caption.get(), form->comAdd.enabled.get(), dialogs.busyDepth),
        std::tuple(3, kFalse, "", false, 0));
    // The three pairs were sorted and written back with the columns' decimals, except a
    // wavelength that four decimals would change.
    EXPECT_EQ(form->ssRefInd.ClipText({2, 1, 3, 4}),
              "587.5620\t1.5170000\n486.1330\t1.5224000\n100.00001\t1.8000000\n\t");
    TypePair(4, "656.273", "1.5144");
    TypePair(5, "486.133", "1.5225");
    // Descending, equal wavelengths in the order typed, every index through a 32-bit float.
    form->comIndexSortClick();
    ASSERT_EQ(m.MeltIndexPoints, 5);
    EXPECT_EQ(std::tuple(m.MeltIndexWave[0], m.MeltIndexValue[1], m.MeltIndexValue[2],
                         m.MeltIndexValue[3], form->ssRefInd.Text(1, 1), form->ssRefInd.Text(1, 3)),
              std::tuple(656.273f, static_cast<double>(1.5170f), static_cast<double>(1.5224f),
                         static_cast<double>(1.5225f), "C ", "F "));
}

TEST_F(MeltFixture, ReportsAndDifferencePlotOfAFit) {
    Start("Schott", "N-BK7", "m1");
    TypeOffsetPairs(kMainLines, 0.0004);
    EXPECT_TRUE(form->DeltaCurve(50).empty());  // no fit yet
    form->comIndexFitClick();
    const std::string consts = form->ConstantsReport();
    EXPECT_EQ(consts.rfind("Melt glass: Sellmeier Polynomial Constants\n\n", 0), 0u);
    EXPECT_NE(consts.find("\n\nParent glass: Sellmeier Polynomial Constants\n\n"),
              std::string::npos);
    EXPECT_TRUE(consts.ends_with("\n\nWaveLen Min:   300nm\nWaveLen Max:   2500nm"));

    const auto lines = SplitLines(form->ComparisonReport());
    ASSERT_GE(lines.size(), 24u);
    EXPECT_EQ(std::tuple(lines[0], lines[1], lines[2], lines[3].rfind("300.0\t   \t", 0),
                         lines[23].rfind("2500.0\t   \t", 0)),
              std::tuple("Index comparison over waveband [parent & melt glasses]", "",
                         "Wave\t\tParent\tMelt\t\tDifference", 0u, 0u));
    char expected[80];
    std::snprintf(expected, sizeof expected, "1.%06.0f  \t",
                  (IndexOf(form->ParentRecord(), 1180.0f) - 1) * 1e6);
    EXPECT_NE(lines[11].find(expected), std::string::npos) << lines[11];
    // 1180 nm lies beyond the pairs: the mark follows the difference.
    EXPECT_NEAR(std::stod(lines[11].substr(lines[11].find("\t\t", 8) + 2)), 0.0004, 2e-6)
        << lines[11];

    dialogs.boxes.clear();
    form->comShowIndexClick();
    form->comShowDispConstsClick();
    ASSERT_EQ(dialogs.boxes.size(), 2u);
    EXPECT_EQ((Texts{dialogs.boxes[0].title, dialogs.boxes[1].title}), (Texts{"Melt Maker", ""}));

    const auto points = form->DeltaPoints();
    const auto curve = form->DeltaCurve(12);
    ASSERT_EQ(std::tuple(points.size(), curve.size()), std::tuple(4u, 12u));
    EXPECT_NEAR(points[0].wave, 656.273, 1e-3);
    EXPECT_NEAR(points[0].delta, 0.0004, 1e-7);
    EXPECT_EQ(std::tuple(curve.front().wave, curve.back().wave), std::tuple(300.0, 2500.0));
    EXPECT_NEAR(curve[3].delta, 0.0004, 2e-6);
}

// Where the measured pairs stop and the quadratic goes on alone: the plot shades those parts
// of the parent's band and the comparison report marks their rows.
TEST_F(MeltFixture, PartsBeyondThePairsAreShadedAndMarked) {
    // Maker, parent, the pairs' wavelengths and the parts of the band shaded.
    const std::tuple<const char*, const char*, std::vector<float>, std::vector<WaveRange>> cases[] =
        {// Four visible lines of a parent known from 300 to 2500 nm: most of the band is the
         // quadratic alone.
         {"Schott", "N-BK7", kMainLines, {{300.0, 435.834f}, {656.273f, 2500.0}}},
         // A pair beyond the long end of the band leaves only the short end unmeasured.
         {"Hoya", "BSC7", {1500.0f, 656.273f, 587.562f, 435.834f}, {{365.0, 435.834f}}},
         {"Schott", "N-BK7", {2500.0f, 1500.0f, 700.0f, 300.0f}, {}}};
    for (const auto& [maker, parent, waves, shadedParts] : cases) {
        SCOPED_TRACE(waves.front());
        Start(maker, parent, "m1");
        // Within +-2e-5 of the parent, alternating.
        for (size_t i = 0; i < waves.size(); ++i)
            TypeOffsetPair(static_cast<int>(i) + 1, waves[i], i % 2 ? -2e-5 : 2e-5);
        EXPECT_TRUE(form->ExtrapolatedRanges().empty());  // nothing to shade before a fit
        form->comIndexFitClick();
        ASSERT_EQ(form->MeltRecord().IndexState.Ready, kTrue);
        EXPECT_EQ(form->ExtrapolatedRanges(), shadedParts);
        const std::string report = form->ComparisonReport();
        const auto lines = SplitLines(report);
        ASSERT_GE(lines.size(), 23u);
        for (size_t i = 3; i < lines.size() && !lines[i].empty(); ++i) {
            const double wave = std::stod(lines[i]);
            bool shaded = false;
            for (const auto& r : shadedParts) shaded = shaded || (wave >= r.from && wave <= r.to);
            EXPECT_EQ(lines[i].ends_with("  *"), shaded) << lines[i];
        }
        EXPECT_EQ(report.find("\n\n* extrapolated: outside the measured wavelengths, ") !=
                      std::string::npos,
                  !shadedParts.empty());
        form->ForceUnload();
    }
}

TEST(MeltReports, AnEmptyWavebandSaysSo) {
    MaterialRecord rec = ClearedMaterialRecord();
    rec.General.IndexWvMin = rec.General.IndexWvMax = 500;
    EXPECT_EQ(MeltComparisonReport(rec, rec),
              "No waveband specified.  Please enter maximum and minimum wavelengths [in nm].");
}

}  // namespace
}  // namespace ostrel::testing
