#include "core/optics/index_fit.h"

#include <gtest/gtest.h>

#include <cmath>
#include <functional>
#include <numeric>
#include <tuple>
#include <vector>

#include "core/optics/crown.h"
#include "support/scripted_dialogs.h"

namespace ostrel {
namespace {

using testing::kNbk7Coef;
using testing::Nbk7;
using testing::ScriptedDialogs;

struct Point {
    double waveNm;
    double index;
    float weight = 1.0f;
};

// Points as the form leaves them: descending wavelength, micrometres and squares filled.
MeasuredData Measured(const std::vector<Point>& points) {
    MeasuredData m{};
    for (size_t i = 0; i < points.size(); ++i) {
        m.IndexWave[i] = points[i].waveNm;
        m.IndexWaveUm[i] = points[i].waveNm * 0.001;
        m.IndexValue[i] = points[i].index;
        m.IndexSquared[i] = std::pow(points[i].index, 2.0);
        m.IndexWeight[i] = points[i].weight;
    }
    return m;
}

std::vector<Point> Sample(double fromNm, double toNm, int count,
                          const std::function<double(double)>& indexAtUm) {
    std::vector<Point> pts;
    for (int i = 0; i < count; ++i) {
        const double w = toNm - (toNm - fromNm) * i / (count - 1);
        pts.push_back({w, indexAtUm(w * 0.001)});
    }
    return pts;
}

// A Schott polynomial of an ordinary crown.
const PolyCoefBlock kSchott{2.2718929,    -1.0108077e-2, 1.0592509e-2,
                            2.0816965e-4, -7.6472538e-6, 4.9240991e-7};
double SchottIndex(double um) {
    const double l2 = um * um;
    return std::sqrt(kSchott[0] + kSchott[1] * l2 + kSchott[2] / l2 + kSchott[3] / (l2 * l2) +
                     kSchott[4] / (l2 * l2 * l2) + kSchott[5] / (l2 * l2 * l2 * l2));
}

double Rms(const MeasuredData& m, int points) {
    return std::sqrt(m.FitError / points);
}

using LinearFit = int16_t (*)(int16_t&, int16_t, std::string&, PolyCoefBlock&, MeasuredData&,
                              Dialogs&);

constexpr const char* kTooFewPoints = "Insufficient Data Points\nAdd More Data";
const PolyCoefBlock kUntouched{3, 3, 3, 3, 3, 3, 3, 3, 3, 3, 3, 3, 3, 3};

// What a fit is handed besides its points, and what it shows. Coefficients and text start
// out filled, so that a fit that fails must be seen to leave them alone.
struct Fit {
    int16_t Linear(LinearFit fit, MeasuredData& m, int points) {
        return fit(k, static_cast<int16_t>(points), text, coef, m, d);
    }
    int16_t Sellmeier(MeasuredData& m, int points, int terms, const PolyCoefBlock& start = {},
                      int16_t useStart = 0, int16_t show = -1) {
        return FitSellmeier(static_cast<int16_t>(points), static_cast<int16_t>(terms), text, coef,
                            m, start, useStart, show, d);
    }
    // The fit failed after showing exactly these messages and changed nothing.
    void ExpectFailed(int16_t result, const std::vector<std::string>& messages,
                      MsgButtons buttons = MsgButtons::OK) const {
        EXPECT_EQ(result, 0);
        ASSERT_EQ(d.boxes.size(), messages.size());
        for (size_t i = 0; i < messages.size(); ++i) {
            EXPECT_EQ(d.boxes[i].text, messages[i]);
            EXPECT_EQ(d.boxes[i].buttons, buttons);
        }
        EXPECT_EQ(coef, kUntouched);
        EXPECT_EQ(text, "kept");
    }
    PolyCoefBlock coef = kUntouched;
    std::string text = "kept";
    int16_t k = 0;
    ScriptedDialogs d;
};

TEST(FitCauchy, PassesThroughThreePoints) {
    auto m = Measured({{700.0, 1.5130}, {550.0, 1.5190}, {400.0, 1.5310}});
    Fit f;
    ASSERT_EQ(f.Linear(FitCauchy, m, 3), -1);
    for (int i = 0; i < 3; ++i) EXPECT_NEAR(m.IndexCalc[i], m.IndexValue[i], 1e-12);
    // The stored polynomial gives the same indices through the one evaluation routine.
    int16_t ok = 0;
    EXPECT_NEAR(IndexFromPolynomial(f.coef, 550.0f, 4, ok), 1.5190, 1e-9);
    EXPECT_EQ(ok, -1);
}

TEST(FitSchottPlus, FollowsDataOnItsOwnForm) {
    // Stored order: x^-5 .. x^-1, constant, x .. x^4.
    const PolyCoefBlock truth{1e-9, -2e-8, 3e-7, 2e-5, 1.1e-2, 2.27, -9e-3, 2e-5, -1e-6, 3e-8};
    auto index = [&](double um) {
        double s = 0;
        for (int k = -5; k <= 4; ++k) s += truth[k + 5] * std::pow(um * um, k);
        return std::sqrt(s);
    };
    auto m = Measured(Sample(400.0, 1000.0, 14, index));
    Fit f;
    ASSERT_EQ(f.Linear(FitSchottPlus, m, 14), -1);
    // Normal equations in powers from x^-10 to x^8 are badly conditioned; the fit still
    // follows its data to catalogue accuracy.
    EXPECT_LT(Rms(m, 14), 1e-5);
}

TEST(Nbk7, SchottFitHasCatalogueAccuracy) {
    auto m = Measured(Sample(365.0, 2325.0, 20, Nbk7));
    Fit f;
    ASSERT_EQ(f.Linear(FitSchott, m, 20), -1);
    // The exact least-squares solution (worked out in rational arithmetic) leaves an RMS
    // error of 2.02646e-5 over this wide band.
    EXPECT_NEAR(Rms(m, 20), 2.02646e-5, 1e-9);
    EXPECT_NEAR(f.coef[0], 2.2739767924, 1e-8);
    EXPECT_NEAR(f.coef[5], 1.38988e-05, 1e-9);
    for (int i = 6; i < 14; ++i) EXPECT_EQ(f.coef[i], 0.0);
    EXPECT_TRUE(f.d.boxes.empty());
}

TEST(FitWeights, ZeroWeightNeitherPullsNorCountsButIsRecalculated) {
    auto pts = Sample(400.0, 1000.0, 8, SchottIndex);
    auto without = pts;
    without.erase(without.begin() + 3);
    pts[3].index += 0.01;  // a wild point...
    pts[3].weight = 0.0f;  // ...that is switched off
    auto m = Measured(pts);
    auto reference = Measured(without);
    m.IndexError[3] = 42.0;
    Fit a, b;
    ASSERT_EQ(a.Linear(FitSchott, reference, 7), -1);
    ASSERT_EQ(b.Linear(FitSchott, m, 8), -1);
    EXPECT_EQ(a.coef, b.coef);
    EXPECT_EQ(m.IndexError[3], 42.0);
    EXPECT_NEAR(m.IndexCalc[3], SchottIndex(pts[3].waveNm * 0.001), 1e-9);
    EXPECT_DOUBLE_EQ(m.FitError, reference.FitError);
}

TEST(FitWeights, WeightIsAPlainFactorNotSquared) {
    // A point of weight 2 acts as the same point entered twice.
    std::vector<Point> pts = {{700.0, 1.5130}, {600.0, 1.5165}, {500.0, 1.5220}, {400.0, 1.5310}};
    auto twice = pts;
    twice.insert(twice.begin() + 2, pts[2]);
    pts[2].weight = 2.0f;
    auto m1 = Measured(pts), m2 = Measured(twice);
    Fit a, b;
    ASSERT_EQ(a.Linear(FitCauchy, m1, 4), -1);
    ASSERT_EQ(b.Linear(FitCauchy, m2, 5), -1);
    for (int i = 0; i < 3; ++i) EXPECT_NEAR(a.coef[i], b.coef[i], 1e-12);
}

// Too few points, all weights zero, and indices that make the fitted n squared negative at the
// shortest wavelength: each form fails with its message and changes nothing.
TEST(LinearFits, FailuresChangeNothing) {
    const std::tuple<LinearFit, int, const char*> forms[] = {
        {&FitCauchy, 3, "Cauchy"},
        {&FitSchott, 6, "Schott"},
        {&FitSchottPlus, 10, "Extended Schott"}};
    for (const auto& [fit, n, name] : forms) {
        SCOPED_TRACE(name);
        const std::string failed = std::string("Failed to fit ") + name + " Polynomial\n";
        Fit few;
        auto m = Measured(Sample(400.0, 1000.0, n - 1, SchottIndex));
        const MeasuredData before = m;
        few.ExpectFailed(few.Linear(fit, m, n - 1), {kTooFewPoints});
        EXPECT_EQ(few.k, n);  // set before anything can fail
        EXPECT_EQ(m.IndexCalc, before.IndexCalc);

        Fit unweighted;
        auto pts = Sample(400.0, 1000.0, n + 2, SchottIndex);
        for (auto& p : pts) p.weight = 0.0f;
        m = Measured(pts);
        unweighted.ExpectFailed(unweighted.Linear(fit, m, n + 2),
                                {failed + "Division by zero: the data points give no solution"});

        Fit negative;
        pts.clear();
        for (int i = 0; i < n; ++i) pts.push_back({1000.0 - 50.0 * i, 1.0 + 0.5 * (i % 2)});
        pts.back().index = 0.0;
        m = Measured(pts);
        m.IndexSquared[n - 1] = -4.0;
        negative.ExpectFailed(negative.Linear(fit, m, n),
                              {failed + "Check data or try another polynomial form"});
    }
}

// --- Sellmeier forms ---

TEST(FitSellmeier, ReproducesThePublishedData) {
    // Six points are as many as the three-term form has unknowns.
    for (auto [count, fromNm, toNm] : {std::tuple{6, 400.0, 1000.0}, {20, 365.0, 2325.0}}) {
        SCOPED_TRACE(count);
        auto m = Measured(Sample(fromNm, toNm, count, Nbk7));
        Fit f;
        ASSERT_EQ(f.Sellmeier(m, count, 3), -1);
        EXPECT_TRUE(f.d.boxes.empty());
        for (int i = 0; i < count; ++i) EXPECT_NEAR(m.IndexError[i], 0.0, 2e-6);
        EXPECT_LT(Rms(m, count), 1e-6);
        int16_t ok = 0;
        EXPECT_NEAR(IndexFromPolynomial(f.coef, 587.5618f, 2, ok), 1.51680, 2e-6);
        EXPECT_EQ(f.text.rfind("keptSellmeier Polynomial Constants\n\nB1:   ", 0), 0u);
    }
}

TEST(FitSellmeier, WeightsDoNotMoveTheCoefficients) {
    auto pts = Sample(365.0, 2325.0, 12, Nbk7);
    auto m1 = Measured(pts);
    for (auto& p : pts) p.weight = 0.5f;
    pts[4].weight = 0.0f;
    auto m2 = Measured(pts);
    Fit a, b;
    ASSERT_EQ(a.Sellmeier(m1, 12, 3), -1);
    ASSERT_EQ(b.Sellmeier(m2, 12, 3), -1);
    EXPECT_EQ(a.coef, b.coef);
    EXPECT_EQ(m1.IndexCalc, m2.IndexCalc);
    EXPECT_DOUBLE_EQ(m2.FitError, m1.FitError - m1.IndexError[4] * m1.IndexError[4]);
}

// A smooth curve that the three-term form only settles on after more than 30 steps.
MeasuredData SlowData() {
    return Measured(Sample(365.0, 2325.0, 20, [](double um) {
        const double x = um * um;
        return 1.9 + 0.02 / x - 0.01 * x;
    }));
}

// After 30 steps the fit asks whether to stop: Yes stops it, No goes on, and a silent fit
// gives up without asking.
TEST(FitSellmeier, AsksAfterThirtyStepsAndShowsTooFewPointsUnlessSilent) {
    auto m = SlowData(), m2 = SlowData(), m3 = SlowData();
    Fit yes, no, silent;
    yes.d.answers = {MsgAnswer::Yes};
    ASSERT_NO_FATAL_FAILURE(
        yes.ExpectFailed(yes.Sellmeier(m, 20, 3),
                         {"Sellmeier seems to be failing to converge\ndo you stop searching now"},
                         MsgButtons::YesNo));
    EXPECT_EQ(yes.d.boxes[0].icon, MsgIcon::Information);
    no.d.answers = {MsgAnswer::No, MsgAnswer::No, MsgAnswer::No};
    EXPECT_EQ(no.Sellmeier(m2, 20, 3), -1);
    EXPECT_FALSE(no.d.boxes.empty());
    EXPECT_LT(Rms(m2, 20), 2e-3);
    silent.ExpectFailed(silent.Sellmeier(m3, 20, 3, {}, 0, 0), {});

    // Too few points are shown unless silent.
    auto few = Measured(Sample(400.0, 1000.0, 4, Nbk7));
    Fit shown, quiet;
    shown.ExpectFailed(shown.Sellmeier(few, 4, 5), {kTooFewPoints});
    quiet.ExpectFailed(quiet.Sellmeier(few, 4, 5, {}, 0, 0), {});
}

// For five terms the shared start values put C2 = C3 = 0.7307 um^2, two equal poles inside
// the band of the data: the first step cannot be solved. A reasonable start fits.
TEST(FitSellmeier, FiveTermsNeedAReasonableStart) {
    auto m = Measured(Sample(365.0, 2325.0, 20, Nbk7));
    Fit shared, given;
    shared.ExpectFailed(
        shared.Sellmeier(m, 20, 5),
        {"Failure in Gauss Jordan elimination\nTry a different polynomial",
         "Failed to fit Sellmeier Polynomial\nCheck data or try another polynomial form"});
    const PolyCoefBlock start{1.0, 0.2, 1.0, 0.001, 0.001, 0.006, 0.02, 100.0, 0.05, 200.0};
    ASSERT_EQ(given.Sellmeier(m, 20, 5, start, -1), -1);
    EXPECT_LT(Rms(m, 20), 1e-4);
    EXPECT_EQ(given.text.rfind("Extend Sellmeier Polynomial Constants\n\nB1:   ", 0), 0u);
}

// --- coefficients and their texts ---

// Zeroing the block and copying from values[1] on are seen in the Schott fit above.
TEST(StoreCoefficients, KeepsNoMoreThanTheBlockHolds) {
    std::vector<double> many(20);
    std::iota(many.begin(), many.end(), 0.0);
    PolyCoefBlock coef{}, expected;
    std::iota(expected.begin(), expected.end(), 1.0);
    StoreCoefficients(coef, many);
    EXPECT_EQ(coef, expected);
}

// Each form appends its constants to the text given; the extended Sellmeier replaces it.
TEST(ConstantsText, PerForm) {
    using Writer = void (*)(std::string&, const PolyCoefBlock&);
    const std::tuple<Writer, PolyCoefBlock, const char*, const char*> cases[] = {
        {SchottConstantsText, kSchott, "before\n",
         "before\nSchott Polynomial Constants\n\n"
         "A0:   +2.27189290e+00\nA1:   -1.01080770e-02\nA2:   +1.05925090e-02\n"
         "A3:   +2.08169650e-04\nA4:   -7.64725380e-06\nA5:   +4.92409910e-07"},
        {CauchyConstantsText,
         {2.25, 0.0, -0.5},
         "",
         "Cauchy Polynomial Constants\n\n"
         "A0:   +2.25000000e+00\nA1:   +0.00000000e+00\nA2:   -5.00000000e-01"},
        // Stored A9..A5, A0, A1..A4, listed by name with a wider first label.
        {SchottPlusConstantsText,
         {9, 8, 7, 6, 5, 0.5, 1, 2, 3, 4},
         "",
         "Extended Schott Polynomial Constants\n\n"
         "A0:    +5.00000000e-01\nA1:   +1.00000000e+00\nA2:   +2.00000000e+00\n"
         "A3:   +3.00000000e+00\nA4:   +4.00000000e+00\nA5:   +5.00000000e+00\n"
         "A6:   +6.00000000e+00\nA7:   +7.00000000e+00\nA8:   +8.00000000e+00\n"
         "A9:   +9.00000000e+00"},
        {SellmeierConstantsText, kNbk7Coef, "x",
         "xSellmeier Polynomial Constants\n\n"
         "B1:   +1.03961212e+00\nB2:   +2.31792344e-01\nB3:   +1.01046945e+00\n\n"
         "C1:   +6.00069867e-03\nC2:   +2.00179144e-02\nC3:   +1.03560653e+02"},
        {SellmeierPlusConstantsText,
         {1.5, -0.25, 0.001, 0, 12, 0.00001, 0.0125, 100, 123456.75, -3},
         "replaced",
         "Extend Sellmeier Polynomial Constants\n\n"
         "B1:   1.5\nB2:   -0.25\nB3:   0.001\nB4:   0\nB5:   12\n\n"
         "C1:   1E-05\nC2:   0.0125\nC3:   100\nC4:   123456.75\nC5:   -3"}};
    for (const auto& [write, coef, before, expected] : cases) {
        std::string text = before;
        write(text, coef);
        EXPECT_EQ(text, expected);
    }
}

// A 32-bit value shows the digits it was given, not the binary fraction it is stored as.
TEST(PlainNumber, SingleShowsItsOwnSevenDigits) {
    const std::pair<float, const char*> singles[] = {{2325.4f, "2325.4"},
                                                     {10.0f, "10"},
                                                     {-587.5618f, "-587.5618"},
                                                     {1e-5f, "1E-05"},
                                                     {12345678.0f, "1.234568E+07"}};
    for (const auto& [value, text] : singles) EXPECT_EQ(PlainNumberText(value), text) << text;
    EXPECT_EQ(std::tuple(PlainNumberText(static_cast<double>(2325.4f)),
                         PlainNumberText(123456789012345.0), PlainNumberText(1e15)),
              std::tuple("2325.39990234375", "123456789012345", "1E+15"));
}

TEST(AverageError, LabelsPerForm) {
    // sqrt(4e-10 / 4) = 1e-5
    EXPECT_EQ(std::tuple(AverageErrorLabel(4, 4e-10, 4), AverageErrorLabel(1, 4e-10, 4),
                         AverageErrorLabel(3, 4e-10, 4), AverageErrorLabel(2, 4e-10, 4),
                         AverageErrorLabel(6, 0.0, 4)),
              std::tuple("average Cauchy polynomal fit error 0.0000100",
                         "average Schott polynomal fit error: 0.0000100",
                         "average Schott Plus polynomal fit error: 0.0000100",
                         "average Sellmeier polynomal fit error: 0.0000100",
                         "average Sellmeier polynomal fit error: 0.0000000"));
}

}  // namespace
}  // namespace ostrel
