#include "core/optics/non_linear_optimise.h"

#include <gtest/gtest.h>

#include <cmath>
#include <string>
#include <vector>

#include "core/optics/matrix_calcs.h"
#include "support/scripted_dialogs.h"

namespace ostrel {
namespace {

using testing::ScriptedDialogs;

TEST(MatrixInvert, PivotsFromTheLastDiagonalElementWithoutSearching) {
    // Invertible, but a(2,2) is the first pivot and it is zero: no row is ever exchanged.
    Matrix<double> a(2, 2);
    a(1, 1) = 0, a(1, 2) = 1, a(2, 1) = 1, a(2, 2) = 0;
    double det = 0;
    InvertFault fault = InvertFault::None;
    EXPECT_EQ(MatrixInvert(a, det, 2, &fault), 0);
    EXPECT_EQ(fault, InvertFault::ZeroPivot);

    // a(1,1) = 0 does no harm once a(2,2) has been used.
    Matrix<double> b(2, 2);
    b(1, 1) = 0, b(1, 2) = 1, b(2, 1) = 1, b(2, 2) = 1;
    ASSERT_EQ(MatrixInvert(b, det, 2, &fault), -1);
    EXPECT_EQ(fault, InvertFault::None);
    const double inverse[2][2] = {{-1.0, 1.0}, {1.0, 0.0}};
    for (int i = 0; i < 2; ++i)
        for (int j = 0; j < 2; ++j) EXPECT_DOUBLE_EQ(b(i + 1, j + 1), inverse[i][j]);
}

TEST(GaussJordan, SolvesWithFullPivotingAndReportsFailuresUnlessSilent) {
    // The same zero-diagonal matrix is no problem with a search for the largest element.
    Matrix<float> a(3, 3), b(3, 1);
    const float m[3][3] = {{0, 2, 1}, {1, 0, 3}, {4, 1, 0}};
    for (int i = 0; i < 3; ++i)
        for (int j = 0; j < 3; ++j) a(i + 1, j + 1) = m[i][j];
    // Solution (1, 2, 3).
    b(1, 1) = 7, b(2, 1) = 10, b(3, 1) = 6;
    ScriptedDialogs d;
    ASSERT_EQ(GaussJordan(a, 3, b, 1, -1, d), -1);
    for (int i = 1; i <= 3; ++i) EXPECT_NEAR(b(i, 1), float(i), 1e-6);
    EXPECT_TRUE(d.boxes.empty());

    // A singular matrix and a failed elimination are reported unless silent.
    for (int16_t show : {int16_t(-1), int16_t(0)}) {
        ScriptedDialogs d;
        Matrix<float> zero(2, 2), b(2, 1);
        EXPECT_EQ(GaussJordan(zero, 2, b, 1, show, d), 0);
        Matrix<float> bad(2, 2), b2(2, 1);
        bad(1, 1) = 1, bad(2, 2) = std::nanf("");
        EXPECT_EQ(GaussJordan(bad, 2, b2, 1, show, d), 0);
        Matrix<float> huge(2, 2), b3(2, 1);
        huge(1, 1) = 1e-30f, huge(2, 2) = 1.0f, b3(1, 1) = 1e30f;  // 1e30 / 1e-30 overflows
        EXPECT_EQ(GaussJordan(huge, 2, b3, 1, show, d), 0);
        const std::string failed =
            "Failure in Gauss Jordan elimination\nTry a different polynomial";
        std::vector<std::string> shown;
        for (const auto& box : d.boxes) shown.push_back(box.text);
        using Texts = std::vector<std::string>;
        EXPECT_EQ(shown, (show ? Texts{"GaussJ Singular Matrix-2", failed, failed} : Texts{}));
    }
}

}  // namespace
}  // namespace ostrel
