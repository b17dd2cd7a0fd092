#pragma once
// Weighted least-squares quadratic in x, used by the melt maker to smooth the index
// differences of a melt against its parent.
#include <array>
#include <cstdint>
#include <span>

#include "core/platform/dialogs.h"

namespace ostrel {

// Fits y = c0 + c1 x + c2 x^2 to the first pointCount points, each weighted once by its
// weight. Shows why on failure ("Insufficient Data Points" below three points, "Failed to
// fit Quadratic Polynomial" when the normal equations cannot be solved) and returns 0;
// returns -1 on success. averageError, when given, receives sqrt(sum of squared residuals of
// the weighted points / pointCount).
int16_t QuadraticFit(Dialogs& dialogs, int pointCount, std::span<const double> x,
                     std::span<const double> y, std::span<const double> weight,
                     std::array<double, 3>& coefficients, double* averageError = nullptr);

// Runs QuadraticFit and, on success, evaluates the quadratic at the first outCount
// entries of outX into outY. Returns the result of the fit.
int16_t QuadraticSmooth(Dialogs& dialogs, int pointCount, std::span<const double> x,
                        std::span<const double> y, std::span<const double> weight, int outCount,
                        std::span<const double> outX, std::span<double> outY);

}  // namespace ostrel
