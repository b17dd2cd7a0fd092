#include "core/optics/matrix_calcs.h"

#include <array>
#include <cmath>
#include <utility>

namespace ostrel {

int16_t MatrixInvert(Matrix<double>& a, double& determinant, int n, InvertFault* fault) {
    auto fail = [&](InvertFault why) -> int16_t {
        if (fault) *fault = why;
        return 0;
    };
    if (fault) *fault = InvertFault::None;
    determinant = 1.0;
    // The bookkeeping of the fits' small systems stays on the stack.
    constexpr int kInPlace = 16;
    std::array<int16_t, kInPlace + 1> flagSmall{};
    std::array<int, kInPlace + 1> passRowSmall{}, passColSmall{};
    std::vector<int16_t> flagLarge;
    std::vector<int> passRowLarge, passColLarge;
    int16_t* flag = flagSmall.data();
    int* passRow = passRowSmall.data();
    int* passCol = passColSmall.data();
    if (n > kInPlace) {
        flagLarge.assign(size_t(n) + 1, 0);
        passRowLarge.assign(size_t(n) + 1, 0);
        passColLarge.assign(size_t(n) + 1, 0);
        flag = flagLarge.data();
        passRow = passRowLarge.data();
        passCol = passColLarge.data();
    }

    for (int i = 1; i <= n; ++i) {
        int row = 0;
        int col = 0;
        // No comparison of magnitudes: the last free row and column are taken.
        for (int j = 1; j <= n; ++j) {
            if (flag[j] == 1) continue;
            for (int k = 1; k <= n; ++k) {
                if (flag[k] == 0) {
                    row = j;
                    col = k;
                } else if (flag[k] > 1) {
                    return fail(InvertFault::Singular);
                }
            }
        }
        if (col == 0) return fail(InvertFault::Singular);
        ++flag[col];
        if (row != col) {
            determinant = -determinant;
            for (int l = 1; l <= n; ++l) std::swap(a(row, l), a(col, l));
        }
        passRow[i] = row;
        passCol[i] = col;

        const double pivot = a(col, col);
        determinant = -determinant * pivot;
        if (pivot == 0.0) return fail(InvertFault::ZeroPivot);
        a(col, col) = 1.0;
        for (int l = 1; l <= n; ++l) a(col, l) /= pivot;

        for (int r = 1; r <= n; ++r) {
            if (r == col) continue;
            const double t = a(r, col);
            a(r, col) = 0.0;
            for (int l = 1; l <= n; ++l) a(r, l) -= a(col, l) * t;
        }
        for (int r = 1; r <= n; ++r) {
            for (int l = 1; l <= n; ++l) {
                if (!std::isfinite(a(r, l))) return fail(InvertFault::Arithmetic);
            }
        }
    }

    for (int i = n; i >= 1; --i) {
        if (passRow[i] != passCol[i]) {
            for (int k = 1; k <= n; ++k) std::swap(a(k, passRow[i]), a(k, passCol[i]));
        }
    }
    return -1;
}

}  // namespace ostrel
