#pragma once
// Levenberg-Marquardt fitting of the Sellmeier model. Curvature, gradient and chi-square
// are held in 32-bit floats, the parameters in 64-bit; all arrays are indexed from 1
// (element 0 is unused). This is a different solver from the inversion of the linear fits
// on purpose: it pivots by magnitude and reports its own failures.
#include <cstdint>
#include <vector>

#include "core/optics/matrix_calcs.h"
#include "core/platform/dialogs.h"

namespace ostrel {

inline constexpr const char* kGaussJordanSingular1Msg = "Gauss Jordan Singular Matrix 1";
inline constexpr const char* kGaussJordanSingular2Msg = "GaussJ Singular Matrix-2";
inline constexpr const char* kGaussJordanFailureMsg =
    "Failure in Gauss Jordan elimination\nTry a different polynomial";

// y = sum over i of a(i) x / (x - a(i+m)), m = p / 2, accumulated term by term in a 32-bit
// float, with the derivatives by every parameter in dyda(1..p).
void SellmeierModel(float x, const std::vector<double>& a, float& y, std::vector<float>& dyda,
                    int p);

// Curvature matrix alpha (free parameters only, compacted), gradient beta and chi-square of
// the model at parameters a. Returns false when the model could not be evaluated (a pole
// hit exactly, an overflow).
bool MarquardtCurvature(const std::vector<double>& x, const std::vector<double>& y,
                        const std::vector<float>& sig, int pointCount, const std::vector<double>& a,
                        const std::vector<int16_t>& lista, int p, Matrix<float>& alpha,
                        std::vector<float>& beta, float& chiSquare);

// Solves a x = b in place (a becomes its inverse, b the solutions) by full pivoting in
// 32-bit floats. Returns -1, or 0 after the message (when showMessages is not 0).
int16_t GaussJordan(Matrix<float>& a, int n, Matrix<float>& b, int columns, int16_t showMessages,
                    Dialogs& dialogs);

// One fit's iteration state: what the step keeps from one call to the next. A fresh object
// per fit, so fits do not share anything.
class MarquardtFit {
  public:
    MarquardtFit(Dialogs& dialogs, int16_t showMessages)
        : dialogs_(dialogs), showMessages_(showMessages) {}

    // One step; lambda below 0 starts the iteration. A step that lowers chi-square is taken
    // (a, alpha, chiSquare updated, lambda divided by 10); otherwise lambda is multiplied
    // by 10 and chiSquare restored. Returns 0 when the linear system could not be solved or
    // the model could not be evaluated.
    int16_t MarquardtStep(const std::vector<double>& x, const std::vector<double>& y,
                          const std::vector<float>& sig, int pointCount, std::vector<double>& a,
                          const std::vector<int16_t>& lista, int p, Matrix<float>& covar,
                          Matrix<float>& alpha, float& chiSquare, float& lambda);

  private:
    Dialogs& dialogs_;
    int16_t showMessages_;
    int freeCount_ = 0;
    float keptChiSquare_ = 0.0f;
    std::vector<float> beta_;
    std::vector<float> da_;
    std::vector<double> candidate_;
};

}  // namespace ostrel
