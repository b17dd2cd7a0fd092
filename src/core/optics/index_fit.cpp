#include "core/optics/index_fit.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <span>

#include "core/optics/matrix_calcs.h"
#include "core/optics/non_linear_optimise.h"
#include "core/optics/whole_power.h"
#include "core/platform/number_text.h"

namespace ostrel {

namespace {

struct LinearForm {
    const char* failedName;         // as in "Failed to fit <name> Polynomial"
    int count;                      // basis functions
    std::array<int, 10> exponents;  // power of x of each basis function, in storage order
    void (*constantsText)(std::string&, const PolyCoefBlock&);
};

constexpr LinearForm kCauchyForm{"Cauchy", 3, {0, -1, -2}, &CauchyConstantsText};
constexpr LinearForm kSchottForm{"Schott", 6, {0, 1, -1, -2, -3, -4}, &SchottConstantsText};
constexpr LinearForm kSchottPlusForm{
    "Extended Schott", 10, {-5, -4, -3, -2, -1, 0, 1, 2, 3, 4}, &SchottPlusConstantsText};

std::string FailedFitMessage(const std::string& name) {
    return "Failed to fit " + name + " Polynomial\n" + kCheckDataLine;
}

// constantsText may be null where no one reads the text.
int16_t FitLinear(const LinearForm& form, int16_t& coefficientCount, int16_t pointCount,
                  std::string* constantsText, PolyCoefBlock& coef, MeasuredData& measured,
                  Dialogs& dialogs) {
    const int m = form.count;
    const std::span<const int> exponents(form.exponents.data(), static_cast<size_t>(m));
    coefficientCount = static_cast<int16_t>(m);
    if (pointCount < m) {
        dialogs.MsgBox(kInsufficientPointsMsg, MsgButtons::OK);
        return 0;
    }
    const int points = std::min<int>(pointCount, kMaxIndexPoints);

    // Every power of x from the lowest to the highest sum of two exponents is summed once, the
    // weight entering as a plain factor; the right-hand sums reuse the same powers (every form
    // holds the constant, so its exponents lie within those sums).
    const int lowest = *std::min_element(exponents.begin(), exponents.end());
    const int highest = *std::max_element(exponents.begin(), exponents.end());
    const int span = highest - lowest + 1;
    const int sumCount = 2 * span - 1;
    std::array<double, 19> powerSum{};
    std::array<double, 10> rightSum{};
    std::array<double, kMaxIndexPoints> x{};
    for (int p = 0; p < points; ++p) x[p] = std::pow(measured.IndexWaveUm[p], 2.0);
    // Row k holds the power 2 * lowest + k of every point.
    std::array<double, 19 * kMaxIndexPoints> xPower;
    const auto n = static_cast<size_t>(points);
    WholePowers(std::span<const double>(x.data(), n), 2 * lowest, sumCount, xPower);
    for (int p = 0; p < points; ++p) {
        const double w = measured.IndexWeight[p];
        const double y = measured.IndexSquared[p];
        for (int k = 0; k < sumCount; ++k) powerSum[k] += w * xPower[size_t(k) * n + size_t(p)];
        for (int k = 0; k < span; ++k) {
            rightSum[k] += w * xPower[size_t(k - lowest) * n + size_t(p)] * y;
        }
    }

    Matrix<double> normal(m, m);
    std::array<double, 11> right{};
    for (int i = 1; i <= m; ++i) {
        for (int j = 1; j <= m; ++j) {
            normal(i, j) = powerSum[exponents[i - 1] + exponents[j - 1] - 2 * lowest];
        }
        right[i] = rightSum[exponents[i - 1] - lowest];
    }

    double determinant = 0.0;
    InvertFault fault = InvertFault::None;
    if (MatrixInvert(normal, determinant, m, &fault) == 0) {
        if (fault == InvertFault::Singular) {
            dialogs.MsgBox(FailedFitMessage(form.failedName), MsgButtons::OK);
        } else {
            dialogs.MsgBox(
                "Failed to fit " + std::string(form.failedName) + " Polynomial\n" + kZeroPivotLine,
                MsgButtons::OK, MsgIcon::Exclamation);
        }
        return 0;
    }

    std::array<double, 10> a{};
    for (int i = 1; i <= m; ++i) {
        double sum = 0.0;
        for (int j = 1; j <= m; ++j) sum += normal(i, j) * right[j];
        a[i - 1] = sum;
    }

    // Residuals. A negative n squared (or an overflow) abandons the fit; the points reached
    // so far keep what was written to them.
    // Row e holds lambda^(2 * (lowest + e)) of every point.
    std::array<double, 10 * kMaxIndexPoints> lambdaPower;
    EvenPowers(std::span<const double>(measured.IndexWaveUm.data(), n), lowest, span, lambdaPower);
    measured.FitError = 0.0;
    for (int p = 0; p < points; ++p) {
        double nSquared = 0.0;
        for (int i = 0; i < m; ++i) {
            nSquared += a[i] * lambdaPower[size_t(exponents[i] - lowest) * n + size_t(p)];
        }
        if (!std::isfinite(nSquared) || nSquared < 0.0) {
            dialogs.MsgBox(FailedFitMessage(form.failedName), MsgButtons::OK);
            return 0;
        }
        measured.IndexCalc[p] = std::sqrt(nSquared);
        if (measured.IndexWeight[p] != 0.0f) {
            measured.IndexError[p] = measured.IndexValue[p] - measured.IndexCalc[p];
            measured.FitError += measured.IndexError[p] * measured.IndexError[p];
        }
    }
    if (!std::isfinite(measured.FitError)) {
        dialogs.MsgBox(FailedFitMessage(form.failedName), MsgButtons::OK);
        return 0;
    }

    coef.fill(0.0);
    std::copy_n(a.begin(), m, coef.begin());
    if (constantsText != nullptr) form.constantsText(*constantsText, coef);
    return -1;
}

std::string Coefficient(double v) {
    return FormatNumber(v, kCoefficientFormat);
}

// "A3:   " and the like.
std::string Label(char letter, int number, const char* gap = ":   ") {
    std::string label(1, letter);
    label += std::to_string(number);
    label += gap;
    return label;
}

// Title, a blank line, then "label value" lines without a break after the last.
void AppendLines(std::string& text, const char* title,
                 const std::vector<std::pair<std::string, std::string>>& lines) {
    text += title;
    text += "\n\n";
    for (size_t i = 0; i < lines.size(); ++i) {
        if (i > 0) text += "\n";
        text += lines[i].first + lines[i].second;
    }
}

}  // namespace

int16_t FitCauchy(int16_t& coefficientCount, int16_t pointCount, std::string& constantsText,
                  PolyCoefBlock& coef, MeasuredData& measured, Dialogs& dialogs) {
    return FitLinear(kCauchyForm, coefficientCount, pointCount, &constantsText, coef, measured,
                     dialogs);
}

int16_t FitSchott(int16_t& coefficientCount, int16_t pointCount, std::string& constantsText,
                  PolyCoefBlock& coef, MeasuredData& measured, Dialogs& dialogs) {
    return FitLinear(kSchottForm, coefficientCount, pointCount, &constantsText, coef, measured,
                     dialogs);
}

int16_t FitSchottCoefficients(int16_t pointCount, PolyCoefBlock& coef, MeasuredData& measured,
                              Dialogs& dialogs) {
    int16_t coefficientCount = 0;
    return FitLinear(kSchottForm, coefficientCount, pointCount, nullptr, coef, measured, dialogs);
}

int16_t FitSchottPlus(int16_t& coefficientCount, int16_t pointCount, std::string& constantsText,
                      PolyCoefBlock& coef, MeasuredData& measured, Dialogs& dialogs) {
    return FitLinear(kSchottPlusForm, coefficientCount, pointCount, &constantsText, coef, measured,
                     dialogs);
}

int16_t FitSellmeier(int16_t pointCount, int16_t terms, std::string& constantsText,
                     PolyCoefBlock& coef, MeasuredData& measured, const PolyCoefBlock& startBlock,
                     int16_t useStart, int16_t showMessages, Dialogs& dialogs) {
    if (pointCount < terms) {
        if (showMessages != 0) dialogs.MsgBox(kInsufficientPointsMsg, MsgButtons::OK);
        return 0;
    }
    const int m = terms;
    const int p = 2 * m;
    const int n = std::min<int>(pointCount, kMaxIndexPoints);
    const std::string failed = FailedFitMessage("Sellmeier");

    // Every point enters alike: the weights only decide which residuals are counted.
    std::vector<double> x(size_t(n) + 1, 0.0);
    std::vector<double> y(size_t(n) + 1, 0.0);
    std::vector<float> sig(size_t(n) + 1, 1.0f);
    for (int i = 1; i <= n; ++i) {
        x[i] = std::pow(measured.IndexWaveUm[i - 1], 2.0);
        y[i] = measured.IndexSquared[i - 1] - 1.0;
    }
    std::vector<int16_t> lista(size_t(p) + 1, 1);

    float chiSquare = 100000.0f;
    float previous = 1.0e7f;
    float lambda = -1.0f;

    // Start values by position, shared by both forms; those beyond p are skipped.
    static constexpr double kStart[10] = {0.730713411,   0.636951703, 0.856177259, 0.00314818243,
                                          0.0129910178,  143.604779,  0.730713411, 0.730713411,
                                          0.00314818243, 1000.0};
    std::vector<double> a(size_t(p) + 1, 0.0);
    for (int i = 1; i <= 10; ++i) {
        if (i > p) continue;
        a[i] = useStart != 0 ? startBlock[i - 1] : kStart[i - 1];
    }

    MarquardtFit fit(dialogs, showMessages);
    Matrix<float> covar(p, p);
    Matrix<float> alpha(p, p);
    for (int count = 1;; ++count) {
        if (fit.MarquardtStep(x, y, sig, n, a, lista, p, covar, alpha, chiSquare, lambda) == 0) {
            if (showMessages != 0) dialogs.MsgBox(failed, MsgButtons::OK);
            return 0;
        }
        const float change = std::fabs(chiSquare - previous);
        if (change < 1.0e-7f && chiSquare < previous) break;
        previous = chiSquare;
        if (count % 30 == 0) {
            if (showMessages == 0) return 0;
            const MsgAnswer answer = dialogs.MsgBox(
                "Sellmeier seems to be failing to converge\ndo you stop searching now",
                MsgButtons::YesNo, MsgIcon::Information);
            if (answer == MsgAnswer::Yes) return 0;
        }
    }

    // Residuals in 64-bit floats.
    std::vector<double> calc(size_t(n), 0.0);
    for (int i = 1; i <= n; ++i) {
        double sum = 0.0;
        for (int t = 1; t <= m; ++t) sum += a[t] * x[i] / (x[i] - a[t + m]);
        if (!std::isfinite(sum) || sum + 1.0 < 0.0) {
            if (showMessages != 0) dialogs.MsgBox(failed, MsgButtons::OK);
            return 0;
        }
        calc[size_t(i - 1)] = std::sqrt(sum + 1.0);
    }
    measured.FitError = 0.0;
    for (int i = 0; i < n; ++i) {
        measured.IndexCalc[i] = calc[size_t(i)];
        if (measured.IndexWeight[i] != 0.0f) {
            measured.IndexError[i] = measured.IndexValue[i] - measured.IndexCalc[i];
            measured.FitError += measured.IndexError[i] * measured.IndexError[i];
        }
    }

    StoreCoefficients(coef, a);
    if (m == 3) {
        SellmeierConstantsText(constantsText, coef);
    } else {
        SellmeierPlusConstantsText(constantsText, coef);
    }
    return -1;
}

void StoreCoefficients(PolyCoefBlock& coef, const std::vector<double>& values) {
    coef.fill(0.0);
    for (size_t i = 1; i < values.size() && i <= coef.size(); ++i) coef[i - 1] = values[i];
}

void CauchyConstantsText(std::string& text, const PolyCoefBlock& c) {
    AppendLines(text, "Cauchy Polynomial Constants",
                {{"A0:   ", Coefficient(c[0])},
                 {"A1:   ", Coefficient(c[1])},
                 {"A2:   ", Coefficient(c[2])}});
}

void SchottConstantsText(std::string& text, const PolyCoefBlock& c) {
    std::vector<std::pair<std::string, std::string>> lines;
    for (int i = 0; i < 6; ++i) lines.push_back({Label('A', i), Coefficient(c[i])});
    AppendLines(text, "Schott Polynomial Constants", lines);
}

void SchottPlusConstantsText(std::string& text, const PolyCoefBlock& c) {
    // Names A0..A4 are the constant and the positive powers (stored 6th to 10th), A5..A9
    // the inverse powers (stored 5th down to 1st).
    std::vector<std::pair<std::string, std::string>> lines;
    lines.push_back({"A0:    ", Coefficient(c[5])});
    for (int i = 1; i <= 4; ++i) lines.push_back({Label('A', i), Coefficient(c[5 + i])});
    for (int i = 5; i <= 9; ++i) lines.push_back({Label('A', i), Coefficient(c[9 - i])});
    AppendLines(text, "Extended Schott Polynomial Constants", lines);
}

void SellmeierConstantsText(std::string& text, const PolyCoefBlock& c) {
    text += "Sellmeier Polynomial Constants\n\n";
    for (int i = 0; i < 3; ++i) text += Label('B', i + 1) + Coefficient(c[i]) + "\n";
    text += "\n";
    for (int i = 0; i < 3; ++i) {
        if (i > 0) text += "\n";
        text += Label('C', i + 1) + Coefficient(c[3 + i]);
    }
}

void SellmeierPlusConstantsText(std::string& text, const PolyCoefBlock& c) {
    text = "Extend Sellmeier Polynomial Constants\n\n";
    for (int i = 0; i < 5; ++i) text += Label('B', i + 1) + PlainNumberText(c[i]) + "\n";
    text += "\n";
    for (int i = 0; i < 5; ++i) {
        if (i > 0) text += "\n";
        text += Label('C', i + 1) + PlainNumberText(c[5 + i]);
    }
}

std::string AverageErrorCaption(int16_t polytype) {
    switch (polytype) {
        case 4:
            return "average Cauchy polynomal fit error ";
        case 1:
            return "average Schott polynomal fit error: ";
        case 3:
            return "average Schott Plus polynomal fit error: ";
        case 2:
        case 6:
            return "average Sellmeier polynomal fit error: ";
        default:
            return {};
    }
}

std::string AverageErrorLabel(int16_t polytype, double fitError, int pointCount) {
    const double average = pointCount > 0 ? std::sqrt(fitError / pointCount) : 0.0;
    return AverageErrorCaption(polytype) + FormatNumber(average, "0.0000000");
}

namespace {

// Up to `digits` significant digits; the exponent form from 10^digits up and below 10^-4.
std::string PlainDigitsText(double value, int digits) {
    if (value == 0.0) return "0";
    if (!std::isfinite(value)) return std::isnan(value) ? "NaN" : (value > 0 ? "Inf" : "-Inf");
    char buf[64];
    std::snprintf(buf, sizeof buf, "%.*e", digits - 1, value);
    // Split mantissa and exponent, then drop trailing zeros of the mantissa.
    std::string s(buf);
    const size_t e = s.find('e');
    std::string mantissa = s.substr(0, e);
    const int exponent = std::atoi(s.c_str() + e + 1);
    std::string kept;
    for (char ch : mantissa) {
        if (ch >= '0' && ch <= '9') kept += ch;
    }
    while (kept.size() > 1 && kept.back() == '0') kept.pop_back();
    const bool negative = value < 0;
    std::string out = negative ? "-" : "";
    if (exponent < -4 || exponent >= digits) {
        // d.dddE-05
        out += kept.substr(0, 1);
        if (kept.size() > 1) {
            out += '.';
            out += kept.substr(1);
        }
        char ex[16];
        std::snprintf(ex, sizeof ex, "E%c%02d", exponent < 0 ? '-' : '+', std::abs(exponent));
        return out + ex;
    }
    if (exponent < 0) {
        out += "0.";
        out.append(size_t(-exponent - 1), '0');
        out += kept;
    } else if (static_cast<int>(kept.size()) <= exponent + 1) {
        out += kept + std::string(size_t(exponent + 1 - kept.size()), '0');
    } else {
        out += kept.substr(0, size_t(exponent) + 1) + "." + kept.substr(size_t(exponent) + 1);
    }
    return out;
}

}  // namespace

std::string PlainNumberText(double value) {
    return PlainDigitsText(value, 15);
}

std::string PlainNumberText(float value) {
    return PlainDigitsText(value, 7);
}

}  // namespace ostrel
