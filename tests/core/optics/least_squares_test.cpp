#include "core/optics/least_squares.h"

#include <gtest/gtest.h>

#include <vector>

#include "support/scripted_dialogs.h"

namespace ostrel {
namespace {

using testing::ScriptedDialogs;

constexpr const char* kInsufficient = "Insufficient Data Points\nAdd More Data";
constexpr const char* kFailed =
    "Failed to fit Quadratic Polynomial\nCheck data or try another polynomial form";

TEST(QuadraticFit, ThreePointsAreReproduced) {
    // y = 3 - 2x + x^2 through (1,2), (2,3), (3,6).
    ScriptedDialogs dialogs;
    std::vector<double> x{1, 2, 3}, y{2, 3, 6}, w{1, 1, 1};
    std::array<double, 3> c{};
    double error = -1;
    EXPECT_EQ(QuadraticFit(dialogs, 3, x, y, w, c, &error), -1);
    EXPECT_NEAR(c[0], 3.0, 1e-9);
    EXPECT_NEAR(c[1], -2.0, 1e-9);
    EXPECT_NEAR(c[2], 1.0, 1e-9);
    EXPECT_NEAR(error, 0.0, 1e-9);
    EXPECT_TRUE(dialogs.boxes.empty());
}

TEST(QuadraticFit, LeastSquaresAndAverageError) {
    // (0,1), (1,0), (2,1), (3,0): best line 0.8 - 0.2x with no curvature; residuals 0.2,
    // -0.6, 0.6, -0.2, sum of squares 0.8, average error sqrt(0.8 / 4).
    ScriptedDialogs dialogs;
    std::vector<double> x{0, 1, 2, 3}, y{1, 0, 1, 0}, w{1, 1, 1, 1};
    std::array<double, 3> c{};
    double error = 0;
    ASSERT_EQ(QuadraticFit(dialogs, 4, x, y, w, c, &error), -1);
    EXPECT_NEAR(c[0], 0.8, 1e-12);
    EXPECT_NEAR(c[1], -0.2, 1e-12);
    EXPECT_NEAR(c[2], 0.0, 1e-12);
    EXPECT_NEAR(error, 0.4472135955, 1e-9);
}

TEST(QuadraticFit, ZeroWeightPointIsIgnoredButCounted) {
    // Three points on y = 3 - 2x + x^2 and a stray point of weight 0: the curve is exact,
    // and the stray point adds nothing to the error sum.
    ScriptedDialogs dialogs;
    std::vector<double> x{1, 2, 3, 4}, y{2, 3, 6, 100}, w{1, 1, 1, 0};
    std::array<double, 3> c{};
    double error = -1;
    ASSERT_EQ(QuadraticFit(dialogs, 4, x, y, w, c, &error), -1);
    EXPECT_NEAR(c[0], 3.0, 1e-9);
    EXPECT_NEAR(c[1], -2.0, 1e-9);
    EXPECT_NEAR(c[2], 1.0, 1e-9);
    EXPECT_NEAR(error, 0.0, 1e-9);
}

TEST(QuadraticFit, ConstantDataAtMeltWavelengths) {
    ScriptedDialogs dialogs;
    std::vector<double> x{1014.0, 852.1, 656.3, 587.6, 486.1, 435.8, 404.7};
    std::vector<double> y(x.size(), 2.5e-4), w(x.size(), 1.0);
    std::array<double, 3> c{};
    ASSERT_EQ(QuadraticFit(dialogs, static_cast<int>(x.size()), x, y, w, c), -1);
    EXPECT_NEAR(c[0], 2.5e-4, 1e-9);
    EXPECT_NEAR(c[1], 0.0, 1e-11);
    EXPECT_NEAR(c[2], 0.0, 1e-14);
}

TEST(QuadraticFit, TwoPointsAreTooFew) {
    ScriptedDialogs dialogs;
    std::vector<double> x{1, 2}, y{1, 2}, w{1, 1};
    std::array<double, 3> c{7, 8, 9};
    EXPECT_EQ(QuadraticFit(dialogs, 2, x, y, w, c), 0);
    ASSERT_EQ(dialogs.boxes.size(), 1u);
    EXPECT_EQ(dialogs.boxes[0].text, kInsufficient);
    EXPECT_EQ(dialogs.boxes[0].buttons, MsgButtons::OK);
    EXPECT_EQ(c, (std::array<double, 3>{7, 8, 9}));
}

class QuadraticFitFailure : public ::testing::TestWithParam<std::vector<double>> {};

TEST_P(QuadraticFitFailure, ShowsTheFailureMessage) {
    ScriptedDialogs dialogs;
    std::vector<double> x{1, 1, 1}, y{1, 2, 3};
    const std::vector<double>& w = GetParam();
    std::array<double, 3> c{7, 8, 9};
    EXPECT_EQ(QuadraticFit(dialogs, 3, x, y, w, c), 0);
    ASSERT_EQ(dialogs.boxes.size(), 1u);
    EXPECT_EQ(dialogs.boxes[0].text, kFailed);
    EXPECT_EQ(dialogs.boxes[0].buttons, MsgButtons::OK);
    EXPECT_EQ(c, (std::array<double, 3>{7, 8, 9}));
}

// All weights 0 make a zero matrix; three points at one x make a singular one.
INSTANTIATE_TEST_SUITE_P(Singular, QuadraticFitFailure,
                         ::testing::Values(std::vector<double>{0, 0, 0},
                                           std::vector<double>{1, 1, 1}));

TEST(QuadraticSmooth, EvaluatesTheFit) {
    ScriptedDialogs dialogs;
    std::vector<double> x{1, 2, 3}, y{2, 3, 6}, w{1, 1, 1};
    std::vector<double> outX{0, 4, 10}, outY{-1, -1, -1};
    EXPECT_EQ(QuadraticSmooth(dialogs, 3, x, y, w, 2, outX, outY), -1);
    EXPECT_NEAR(outY[0], 3.0, 1e-9);
    EXPECT_NEAR(outY[1], 11.0, 1e-9);
    EXPECT_EQ(outY[2], -1);  // beyond outCount
}

}  // namespace
}  // namespace ostrel
