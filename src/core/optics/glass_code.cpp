#include "core/optics/glass_code.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdio>

#include "core/optics/index_from_polynomial.h"
#include "core/platform/number_text.h"

namespace ostrel {

namespace {

// A number as text the way the program passes it on: 15 significant digits for a 64-bit
// value, 7 for a 32-bit one.
std::string NumberText(double v, int digits) {
    char buf[40];
    if (!std::isfinite(v)) {
        std::snprintf(buf, sizeof buf, "%.*g", digits, v);
        return buf;
    }
    // The same text as printf's "%.*g", without the formatted printing.
    const auto res = std::to_chars(buf, buf + sizeof buf, v, std::chars_format::general, digits);
    return std::string(buf, res.ptr);
}

// The two parts joined as digits and read back as one whole number. With neither part below
// zero the text reads as a x 10^(digits of b, at least three) + b, which is worked out
// directly; a minus sign inside the text is left to the text route.
int32_t JoinParts(int16_t a, int16_t b) {
    if (a >= 0 && b >= 0) {
        int64_t scale = 1000;
        while (scale <= b) scale *= 10;
        return CLng(static_cast<double>(a * scale + b));
    }
    const std::string head = std::to_string(a);
    std::string tail = std::to_string(b);
    if (tail.size() < 3) tail.insert(0, 3 - tail.size(), '0');
    // The joined text is read back as a whole number; anything unreadable gives 0.
    return CLng(Val(head + tail));
}

// True when x lies within `margin` of a half, where rounding a value that is off by less than
// the margin may land on the other whole number.
bool NearHalf(double x, double margin) {
    return std::fabs(x - std::floor(x) - 0.5) <= margin;
}

}  // namespace

int32_t MakeGlassCode(const std::string& ndText, const std::string& vdText) {
    const double nd = Val(ndText);
    if (nd == 0.0) return 0;
    const double vd = Val(vdText);
    return JoinParts(CInt((nd - 1.0) * 1000.0), CInt(vd * 10.0));
}

int32_t GlassCodeOf(double nd, float vd) {
    // The code is made from nd as 15 digits of text and vd as 7, read back. Only a part that
    // lies next to a half can round differently for that; the others are taken as they are.
    const double a = (nd - 1.0) * 1000.0;
    const double b = static_cast<double>(vd) * 10.0;
    if (!std::isfinite(a) || !std::isfinite(b) || nd == 0.0 || NearHalf(a, 1e-6) ||
        NearHalf(b, 1e-6 * std::max(1.0, std::fabs(b)))) {
        return MakeGlassCode(NumberText(nd, 15), NumberText(vd, 7));
    }
    return JoinParts(CInt(a), CInt(b));
}

void UpdateGlassCode(MaterialRecord& rec) {
    const auto& coef = rec.General.PolyCoef;
    const int16_t type = rec.General.Polytype;
    int16_t ok = 0;
    const double nd = IndexFromPolynomial(coef, kWaveD, type, ok);
    const double nC = IndexFromPolynomial(coef, kWaveC, type, ok);
    const double nF = IndexFromPolynomial(coef, kWaveF, type, ok);
    float vd = 0.0f;
    if (nF != nC) vd = static_cast<float>((nd - 1.0) / (nF - nC));
    rec.General.GlassCode = GlassCodeOf(nd, vd);
}

}  // namespace ostrel
