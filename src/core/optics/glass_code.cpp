#include "core/optics/glass_code.h"

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

}  // namespace

int32_t MakeGlassCode(const std::string& ndText, const std::string& vdText) {
    const double nd = Val(ndText);
    if (nd == 0.0) return 0;
    const double vd = Val(vdText);
    const std::string a = std::to_string(CInt((nd - 1.0) * 1000.0));
    std::string b = std::to_string(CInt(vd * 10.0));
    if (b.size() < 3) b.insert(0, 3 - b.size(), '0');
    // The joined text is read back as a whole number; anything unreadable gives 0.
    const double code = Val(a + b);
    return CLng(code);
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
    rec.General.GlassCode = MakeGlassCode(NumberText(nd, 15), NumberText(vd, 7));
}

}  // namespace ostrel
