#include "core/optics/least_squares.h"

#include <gtest/gtest.h>

#include <tuple>
#include <vector>

#include "support/scripted_dialogs.h"

namespace ostrel {
namespace {

using testing::ScriptedDialogs;

TEST(QuadraticFit, CoefficientsAverageErrorAndTheSmoothedCurve) {
    // x, y, weights, coefficients, average error.
    using V = std::vector<double>;
    const std::tuple<V, V, V, std::array<double, 3>, double> cases[] = {
        // Best line 0.8 - 0.2x with no curvature; residuals 0.2, -0.6, 0.6, -0.2, sum of
        // squares 0.8, average error sqrt(0.8 / 4).
        {{0, 1, 2, 3}, {1, 0, 1, 0}, {1, 1, 1, 1}, {0.8, -0.2, 0}, 0.4472135955},
        // y = 3 - 2x + x^2 through (1,2), (2,3), (3,6); a stray point of weight 0 neither
        // pulls the curve nor adds to the error sum.
        {{1, 2, 3, 4}, {2, 3, 6, 100}, {1, 1, 1, 0}, {3, -2, 1}, 0}};
    for (const auto& [x, y, w, expected, averageError] : cases) {
        SCOPED_TRACE(averageError);
        ScriptedDialogs dialogs;
        std::array<double, 3> coef{};
        double error = -1;
        ASSERT_EQ(QuadraticFit(dialogs, static_cast<int>(x.size()), x, y, w, coef, &error), -1);
        for (int i = 0; i < 3; ++i) EXPECT_NEAR(coef[i], expected[i], 1e-9) << i;
        EXPECT_NEAR(error, averageError, 1e-9);
        EXPECT_TRUE(dialogs.boxes.empty());
    }

    // Three points, the fewest a fit takes, on y = 3 - 2x + x^2; nothing is written past outCount.
    ScriptedDialogs dialogs;
    std::vector<double> x{1, 2, 3}, y{2, 3, 6}, w{1, 1, 1}, outX{0, 4, 10}, outY{-1, -1, -1};
    EXPECT_EQ(QuadraticSmooth(dialogs, 3, x, y, w, 2, outX, outY), -1);
    EXPECT_NEAR(outY[0], 3.0, 1e-9);
    EXPECT_NEAR(outY[1], 11.0, 1e-9);
    EXPECT_EQ(outY[2], -1);
}

// Too few points; all weights 0 make a zero matrix; three points at one x a singular one.
TEST(QuadraticFit, FailureShowsTheMessageAndKeepsTheCoefficients) {
    const char* failed =
        "Failed to fit Quadratic Polynomial\nCheck data or try another polynomial form";
    const std::tuple<std::vector<double>, std::vector<double>, const char*> cases[] = {
        {{1, 2}, {1, 1}, "Insufficient Data Points\nAdd More Data"},
        {{1, 1, 1}, {0, 0, 0}, failed},
        {{1, 1, 1}, {1, 1, 1}, failed}};
    for (const auto& [x, w, message] : cases) {
        SCOPED_TRACE(w[0]);
        ScriptedDialogs dialogs;
        const std::vector<double> y{1, 2, 3};
        std::array<double, 3> coef{7, 8, 9};
        EXPECT_EQ(QuadraticFit(dialogs, static_cast<int>(x.size()), x, y, w, coef), 0);
        EXPECT_EQ(dialogs.boxes,
                  (std::vector<testing::ShownBox>{{message, MsgButtons::OK, MsgIcon::None, ""}}));
        EXPECT_EQ(coef, (std::array<double, 3>{7, 8, 9}));
    }
}

}  // namespace
}  // namespace ostrel
