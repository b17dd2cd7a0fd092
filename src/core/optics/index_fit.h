#pragma once
// Fits of the dispersion forms to measured index points: the linear forms (Cauchy, Schott,
// Schott Plus) by weighted least squares on normal equations, and the Sellmeier forms by a
// Levenberg-Marquardt iteration. Each fit writes the calculated index and the residual of
// every point into the measured-data block, replaces the coefficients on success and
// appends the printed constants to constantsText.
#include <cstdint>
#include <string>
#include <vector>

#include "core/material/material_record.h"
#include "core/optics/index_from_polynomial.h"
#include "core/platform/dialogs.h"

namespace ostrel {

// Messages of the fits.
inline constexpr const char* kInsufficientPointsMsg = "Insufficient Data Points\nAdd More Data";
inline constexpr const char* kCheckDataLine = "Check data or try another polynomial form";
// A singular system (coinciding wavelengths, all weights zero) gives a zero pivot.
inline constexpr const char* kZeroPivotLine = "Division by zero: the data points give no solution";

// The format of every coefficient in the constants texts.
inline constexpr const char* kCoefficientFormat = "+0.00000000e+00;-0.00000000e+00";

// Linear fits. coefficientCount receives 3, 6 or 10; pointCount is the number of points of
// measured in use. Return -1 on success, 0 on failure (the message has been shown).
int16_t FitCauchy(int16_t& coefficientCount, int16_t pointCount, std::string& constantsText,
                  PolyCoefBlock& coef, MeasuredData& measured, Dialogs& dialogs);
int16_t FitSchott(int16_t& coefficientCount, int16_t pointCount, std::string& constantsText,
                  PolyCoefBlock& coef, MeasuredData& measured, Dialogs& dialogs);
// The Schott fit without its constants text, for a refit that only keeps the coefficients.
int16_t FitSchottCoefficients(int16_t pointCount, PolyCoefBlock& coef, MeasuredData& measured,
                              Dialogs& dialogs);
int16_t FitSchottPlus(int16_t& coefficientCount, int16_t pointCount, std::string& constantsText,
                      PolyCoefBlock& coef, MeasuredData& measured, Dialogs& dialogs);

// Sellmeier fit with 3 or 5 terms. With useStart not 0 the iteration starts from the first
// ten coefficients of startBlock. With showMessages 0 nothing is shown and the fit gives up
// at the first check of the iteration count.
int16_t FitSellmeier(int16_t pointCount, int16_t terms, std::string& constantsText,
                     PolyCoefBlock& coef, MeasuredData& measured, const PolyCoefBlock& startBlock,
                     int16_t useStart, int16_t showMessages, Dialogs& dialogs);

// Zeroes all 14 coefficients, then copies values(1..) to the first entries (at most 14).
// values is indexed from 1: values[0] is not used.
void StoreCoefficients(PolyCoefBlock& coef, const std::vector<double>& values);

// Append the title and one line per coefficient to text.
void CauchyConstantsText(std::string& text, const PolyCoefBlock& coef);
void SchottConstantsText(std::string& text, const PolyCoefBlock& coef);
void SchottPlusConstantsText(std::string& text, const PolyCoefBlock& coef);
void SellmeierConstantsText(std::string& text, const PolyCoefBlock& coef);
// Replaces text by the five-term constants, printed as plain number text.
void SellmeierPlusConstantsText(std::string& text, const PolyCoefBlock& coef);

// The words before the average error of a fit of the given type ("" for other codes), and
// the whole label: the words and sqrt(fitError / pointCount) as "0.0000000".
std::string AverageErrorCaption(int16_t polytype);
std::string AverageErrorLabel(int16_t polytype, double fitError, int pointCount);

// A number as plain text: up to 15 significant digits, exponent form ("1.5E-05") for very
// small and very large magnitudes.
std::string PlainNumberText(double value);
// A 32-bit value as plain text: up to the 7 significant digits it holds, so that 2325.4 typed
// in reads back as 2325.4 and not as the 2325.39990234375 the float stores.
std::string PlainNumberText(float value);

}  // namespace ostrel
