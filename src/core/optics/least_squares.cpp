#include "core/optics/least_squares.h"

#include <algorithm>
#include <cmath>

#include "core/optics/matrix_calcs.h"

namespace ostrel {

namespace {

void ShowFitFailure(Dialogs& dialogs) {
    dialogs.MsgBox("Failed to fit Quadratic Polynomial\nCheck data or try another polynomial form",
                   MsgButtons::OK);
}

}  // namespace

int16_t QuadraticFit(Dialogs& dialogs, int pointCount, std::span<const double> x,
                     std::span<const double> y, std::span<const double> weight,
                     std::array<double, 3>& coefficients, double* averageError) {
    if (pointCount < 3) {
        dialogs.MsgBox("Insufficient Data Points\nAdd More Data", MsgButtons::OK);
        return 0;
    }
    // A count beyond the arrays is held to what is there.
    const size_t count =
        std::min({static_cast<size_t>(pointCount), x.size(), y.size(), weight.size()});

    std::array<double, 5> s{};
    std::array<double, 3> r{};
    for (size_t p = 0; p < count; ++p) {
        double power = 1.0;
        for (int k = 0; k <= 4; ++k) {
            s[k] += weight[p] * power;
            if (k <= 2) r[k] += weight[p] * power * y[p];
            power *= x[p];
        }
    }

    Matrix<double> m(3, 3);
    for (int i = 1; i <= 3; ++i) {
        for (int j = 1; j <= 3; ++j) m(i, j) = s[i + j - 2];
    }
    double determinant = 0.0;
    if (MatrixInvert(m, determinant, 3) == 0) {
        ShowFitFailure(dialogs);
        return 0;
    }

    std::array<double, 3> c{};
    for (int i = 1; i <= 3; ++i) {
        for (int j = 1; j <= 3; ++j) c[i - 1] += m(i, j) * r[j - 1];
    }

    double sumSquares = 0.0;
    for (size_t p = 0; p < count; ++p) {
        const double fitted = c[0] + c[1] * x[p] + c[2] * x[p] * x[p];
        if (weight[p] != 0.0) {
            const double residual = y[p] - fitted;
            sumSquares += residual * residual;
        }
    }
    const bool finite = std::all_of(c.begin(), c.end(), [](double v) { return std::isfinite(v); });
    if (!finite || !std::isfinite(sumSquares)) {
        ShowFitFailure(dialogs);
        return 0;
    }

    coefficients = c;
    if (averageError) *averageError = std::sqrt(sumSquares / pointCount);
    return -1;
}

int16_t QuadraticSmooth(Dialogs& dialogs, int pointCount, std::span<const double> x,
                        std::span<const double> y, std::span<const double> weight, int outCount,
                        std::span<const double> outX, std::span<double> outY) {
    std::array<double, 3> c{};
    const int16_t ok = QuadraticFit(dialogs, pointCount, x, y, weight, c);
    if (ok == 0) return ok;
    const size_t count =
        std::min({static_cast<size_t>(std::max(outCount, 0)), outX.size(), outY.size()});
    for (size_t i = 0; i < count; ++i) {
        double sum = 0.0;
        for (int k = 0; k <= 2; ++k) sum += c[k] * std::pow(outX[i], static_cast<double>(k));
        outY[i] = sum;
    }
    return ok;
}

}  // namespace ostrel
