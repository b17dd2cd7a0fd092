#include "core/optics/non_linear_optimise.h"

#include <cmath>
#include <utility>

namespace ostrel {

void SellmeierModel(float x, const std::vector<double>& a, float& y, std::vector<float>& dyda,
                    int p) {
    const int m = p / 2;
    y = 0.0f;
    for (int i = 1; i <= m; ++i) {
        const double xd = x;
        const double denom = xd - a[i + m];
        y = static_cast<float>(y + a[i] * xd / denom);
        dyda[i] = static_cast<float>(xd / denom);
        dyda[i + m] = static_cast<float>(a[i] * xd / std::pow(denom, 2.0));
    }
}

bool MarquardtCurvature(const std::vector<double>& x, const std::vector<double>& y,
                        const std::vector<float>& sig, int pointCount, const std::vector<double>& a,
                        const std::vector<int16_t>& lista, int p, Matrix<float>& alpha,
                        std::vector<float>& beta, float& chiSquare) {
    int freeCount = 0;
    for (int j = 1; j <= p; ++j) {
        if (lista[j] != 0) ++freeCount;
    }
    for (int j = 1; j <= freeCount; ++j) {
        for (int k = 1; k <= j; ++k) alpha(j, k) = 0.0f;
        beta[j] = 0.0f;
    }
    chiSquare = 0.0f;
    std::vector<float> dyda(size_t(p) + 1, 0.0f);
    for (int i = 1; i <= pointCount; ++i) {
        float ymod = 0.0f;
        SellmeierModel(static_cast<float>(x[i]), a, ymod, dyda, p);
        const float s = 1.0f / (sig[i] * sig[i]);
        const float dy = static_cast<float>(y[i] - ymod);
        int j = 0;
        for (int l = 1; l <= p; ++l) {
            if (lista[l] == 0) continue;
            const float wt = dyda[l] * s;
            ++j;
            int k = 0;
            for (int mm = 1; mm <= l; ++mm) {
                if (lista[mm] == 0) continue;
                ++k;
                alpha(j, k) += wt * dyda[mm];
            }
            beta[j] += dy * wt;
        }
        chiSquare += dy * dy * s;
    }
    for (int j = 2; j <= freeCount; ++j) {
        for (int k = 1; k < j; ++k) alpha(k, j) = alpha(j, k);
    }
    if (!std::isfinite(chiSquare)) return false;
    for (int j = 1; j <= freeCount; ++j) {
        if (!std::isfinite(beta[j])) return false;
        for (int k = 1; k <= freeCount; ++k) {
            if (!std::isfinite(alpha(j, k))) return false;
        }
    }
    return true;
}

int16_t GaussJordan(Matrix<float>& a, int n, Matrix<float>& b, int columns, int16_t showMessages,
                    Dialogs& dialogs) {
    auto report = [&](const char* text) -> int16_t {
        if (showMessages != 0) dialogs.MsgBox(text, MsgButtons::OK);
        return 0;
    };
    std::vector<int16_t> flag(size_t(n) + 1, 0);
    std::vector<int> passRow(size_t(n) + 1, 0);
    std::vector<int> passCol(size_t(n) + 1, 0);

    for (int i = 1; i <= n; ++i) {
        float largest = 0.0f;
        int row = 0;
        int col = 0;
        for (int j = 1; j <= n; ++j) {
            if (flag[j] == 1) continue;
            for (int k = 1; k <= n; ++k) {
                if (flag[k] == 0) {
                    if (std::fabs(a(j, k)) >= largest) {
                        largest = std::fabs(a(j, k));
                        row = j;
                        col = k;
                    }
                } else if (flag[k] > 1) {
                    return report(kGaussJordanSingular1Msg);
                }
            }
        }
        // Only a value that is not a number escapes the search.
        if (col == 0) return report(kGaussJordanFailureMsg);
        ++flag[col];
        if (row != col) {
            for (int l = 1; l <= n; ++l) std::swap(a(row, l), a(col, l));
            for (int l = 1; l <= columns; ++l) std::swap(b(row, l), b(col, l));
        }
        passRow[i] = row;
        passCol[i] = col;
        if (a(col, col) == 0.0f) return report(kGaussJordanSingular2Msg);

        const float inverse = 1.0f / a(col, col);
        a(col, col) = 1.0f;
        for (int l = 1; l <= n; ++l) a(col, l) *= inverse;
        for (int l = 1; l <= columns; ++l) b(col, l) *= inverse;
        for (int r = 1; r <= n; ++r) {
            if (r == col) continue;
            const float t = a(r, col);
            a(r, col) = 0.0f;
            for (int l = 1; l <= n; ++l) a(r, l) -= a(col, l) * t;
            for (int l = 1; l <= columns; ++l) b(r, l) -= b(col, l) * t;
        }
        bool finite = std::isfinite(inverse);
        for (int r = 1; r <= n && finite; ++r) {
            for (int l = 1; l <= n; ++l) finite = finite && std::isfinite(a(r, l));
            for (int l = 1; l <= columns; ++l) finite = finite && std::isfinite(b(r, l));
        }
        if (!finite) return report(kGaussJordanFailureMsg);
    }
    for (int l = n; l >= 1; --l) {
        if (passRow[l] != passCol[l]) {
            for (int k = 1; k <= n; ++k) std::swap(a(k, passRow[l]), a(k, passCol[l]));
        }
    }
    return -1;
}

int16_t MarquardtFit::MarquardtStep(const std::vector<double>& x, const std::vector<double>& y,
                                    const std::vector<float>& sig, int pointCount,
                                    std::vector<double>& a, const std::vector<int16_t>& lista,
                                    int p, Matrix<float>& covar, Matrix<float>& alpha,
                                    float& chiSquare, float& lambda) {
    if (lambda < 0.0f) {
        lambda = 0.001f;
        freeCount_ = 0;
        for (int j = 1; j <= p; ++j) {
            if (lista[j] != 0) ++freeCount_;
        }
        beta_.assign(size_t(p) + 1, 0.0f);
        da_.assign(size_t(p) + 1, 0.0f);
        if (!MarquardtCurvature(x, y, sig, pointCount, a, lista, p, alpha, beta_, chiSquare)) {
            return 0;
        }
        keptChiSquare_ = chiSquare;
        candidate_ = a;
    }

    Matrix<float> rightSide(freeCount_, 1);
    for (int j = 1; j <= freeCount_; ++j) {
        for (int k = 1; k <= freeCount_; ++k) covar(j, k) = alpha(j, k);
        covar(j, j) = alpha(j, j) * (1.0f + lambda);
        rightSide(j, 1) = beta_[j];
    }
    if (GaussJordan(covar, freeCount_, rightSide, 1, showMessages_, dialogs_) == 0) return 0;
    for (int j = 1; j <= freeCount_; ++j) da_[j] = rightSide(j, 1);
    // (A lambda of exactly 0 would end the iteration by sorting the covariance; the fit
    // never asks for that.)

    int j = 0;
    for (int l = 1; l <= p; ++l) {
        if (lista[l] != 0) candidate_[l] = a[l] + da_[++j];
    }
    if (!MarquardtCurvature(x, y, sig, pointCount, candidate_, lista, p, covar, da_, chiSquare)) {
        return 0;
    }
    if (chiSquare < keptChiSquare_) {
        lambda *= 0.1f;
        keptChiSquare_ = chiSquare;
        for (int jj = 1; jj <= freeCount_; ++jj) {
            for (int k = 1; k <= freeCount_; ++k) alpha(jj, k) = covar(jj, k);
            beta_[jj] = da_[jj];
        }
        a = candidate_;
    } else {
        lambda *= 10.0f;
        chiSquare = keptChiSquare_;
    }
    return -1;
}

}  // namespace ostrel
