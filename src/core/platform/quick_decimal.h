#pragma once
// The quick reading of the common catalogue numbers, kept inline so that readers which take
// many numbers in a row need no call for each.
#include <bit>
#include <cstdint>
#include <cstring>
#include <string_view>

namespace ostrel {

namespace decimal_detail {

// Powers of ten that a double holds exactly.
inline constexpr double kExactTens[] = {1e0,  1e1,  1e2,  1e3,  1e4,  1e5,  1e6,  1e7,
                                        1e8,  1e9,  1e10, 1e11, 1e12, 1e13, 1e14, 1e15,
                                        1e16, 1e17, 1e18, 1e19, 1e20, 1e21, 1e22};

// 10^k for the counts of digits read at once.
inline constexpr uint64_t kTenPowers[] = {1,      10,      100,      1000,     10000,
                                          100000, 1000000, 10000000, 100000000};

// The value of eight decimal digits held as numbers 0-9 in the bytes of a word, the first
// digit in the lowest byte: pairs, then fours, then the eight are combined.
inline uint32_t EightDigitsValue(uint64_t d) {
    d = d * 10 + (d >> 8);
    d = ((d & 0x000000FF000000FFu) * (100 + (1000000ull << 32)) +
         ((d >> 16) & 0x000000FF000000FFu) * (1 + (10000ull << 32))) >>
        32;
    return static_cast<uint32_t>(d);
}

// The run of digits at the start of eight bytes of text held in a word (the first byte
// lowest): how many (0-8), and their bytes less '0'. A byte is no digit where taking '0'
// from it or adding 0x46 to it sets its top bit; borrows and carries can only disturb the
// bytes after the first such byte, and only the run before it is used.
struct DigitRun {
    int length;
    uint64_t values;
};
inline DigitRun DigitsAtStart(uint64_t chunk) {
    const uint64_t low = chunk - 0x3030303030303030u;
    const uint64_t notDigit = (low | (chunk + 0x4646464646464646u)) & 0x8080808080808080u;
    return {notDigit == 0 ? 8 : std::countr_zero(notDigit) / 8, low};
}
// The value of the run's digits.
inline uint64_t RunValue(const DigitRun& run) {
    if (run.length == 0) return 0;
    // Moved up so that zeros stand in front of the run.
    return EightDigitsValue(run.length == 8 ? run.values : run.values << (8 * (8 - run.length)));
}

// The value of a mantissa below 2^53 times 10^scale, |scale| <= 22: the mantissa and the
// power of ten are exact, so one multiplication or division rounds once, to the correctly
// rounded value.
inline double ExactDecimal(uint64_t mantissa, int scale) {
    const auto m = static_cast<double>(mantissa);
    return scale < 0 ? m / kExactTens[-scale] : m * kExactTens[scale];
}

// The common case of a catalogue number: at most 19 digits whose value stays below 2^53,
// and a small exponent. The digits then form an exact integer and one multiplication or
// division by an exact power of ten rounds once, which gives the correctly rounded value.
// False (nothing decided) for anything else, trailing bytes included. The digits and the
// point are taken in one pass, as most such numbers are short ("1.3000", "71.0").
inline bool GeneralDecimal(std::string_view t, double& v) {
    const char* p = t.data();
    const char* const end = p + t.size();
    uint64_t mantissa = 0;
    int digits = 0;
    const char* point = nullptr;
    for (; p != end; ++p) {
        const auto d = static_cast<unsigned>(*p - '0');
        if (d < 10) {
            mantissa = mantissa * 10 + d;
            ++digits;
        } else if (*p == '.' && point == nullptr) {
            point = p;
        } else {
            break;
        }
    }
    if (digits == 0 || digits > 19) return false;
    // The digits after the point scale the mantissa down.
    int scale = point == nullptr ? 0 : -static_cast<int>(p - point - 1);
    if (p != end) {
        if (*p != 'e' && *p != 'E') return false;
        ++p;
        bool negativeExp = false;
        if (p != end && (*p == '+' || *p == '-')) negativeExp = *p++ == '-';
        const char* const expDigits = p;
        int exp = 0;
        for (; p != end && static_cast<unsigned>(*p - '0') < 10u; ++p) {
            if (exp > 1000) return false;
            exp = exp * 10 + (*p - '0');
        }
        if (p == expDigits || p != end) return false;
        scale += negativeExp ? -exp : exp;
    }
    if (mantissa == 0) {
        v = 0.0;
        return true;
    }
    if (mantissa > (uint64_t{1} << 53) || scale < -22 || scale > 22) return false;
    v = ExactDecimal(mantissa, scale);
    return true;
}

// The value of mantissa * 10^(exponent - fraction), the exponent written at e: its letter,
// its sign, then expDigits digits. False when the power of ten is out of ExactDecimal's reach.
inline bool ScaledByExponent(uint64_t mantissa, int fraction, const char* e, int expDigits,
                             double& v) {
    int exp = 0;
    for (int k = 0; k < expDigits; ++k) exp = exp * 10 + (e[2 + k] - '0');
    const int scale = (e[1] == '-' ? -exp : exp) - fraction;
    if (scale < -22 || scale > 22) return false;
    v = ExactDecimal(mantissa, scale);
    return true;
}

// The most common catalogue number, "d.ddddE-dd": one digit, a point, one to fifteen digits
// and an exponent of one to three digits with its sign, whole in t and at most 18 bytes
// long. Its fraction is read eight digits at a time: the first eight bytes after the point,
// and where all eight are digits, the last eight bytes of t moved down to the ninth digit.
// The mantissa and power of ten are the ones GeneralDecimal finds.
inline bool ScientificWord(std::string_view t, double& v) {
    const char* const p = t.data();
    const auto size = static_cast<int>(t.size());
    if constexpr (std::endian::native != std::endian::little) return false;
    if (size < 10 || size > 18) return false;
    const auto lead = static_cast<unsigned>(p[0] - '0');
    if (lead > 9 || p[1] != '.') return false;
    uint64_t chunk = 0;
    std::memcpy(&chunk, p + 2, 8);
    const DigitRun first = DigitsAtStart(chunk);
    if (first.length == 0) return false;
    uint64_t mantissa = lead * kTenPowers[first.length] + RunValue(first);
    int fraction = first.length;
    if (first.length == 8) {
        if (size < 13) return false;  // no room for an exponent
        const int skip = 18 - size;   // bytes of the last eight before the ninth digit
        std::memcpy(&chunk, p + size - 8, 8);
        const DigitRun second = DigitsAtStart(skip == 0 ? chunk : chunk >> (8 * skip));
        mantissa = mantissa * kTenPowers[second.length] + RunValue(second);
        fraction += second.length;
    }
    // The exponent's digits; at least one means that its letter and sign lie in t.
    const int expDigits = size - 4 - fraction;
    if (expDigits < 1 || expDigits > 3) return false;
    const char* const e = p + 2 + fraction;
    if (!((e[0] == 'E' || e[0] == 'e') && (e[1] == '-' || e[1] == '+'))) return false;
    for (int k = 0; k < expDigits; ++k) {
        if (static_cast<unsigned>(e[2 + k] - '0') > 9) return false;
    }
    return ScaledByExponent(mantissa, fraction, e, expDigits, v);
}

}  // namespace decimal_detail

// Reads a number known to be of the form "d.ddddE-dd" with `fraction` digits after the point
// (1-7) and `expDigits` digits in its exponent (1-3), at p, with eight bytes readable from
// p + 2. The value is the one QuickDecimal gives; false when its power of ten is out of its
// reach.
inline bool ScientificOfShape(const char* p, int fraction, int expDigits, double& v) {
    uint64_t chunk = 0;
    std::memcpy(&chunk, p + 2, 8);
    const decimal_detail::DigitRun digits{fraction, chunk - 0x3030303030303030u};
    const uint64_t mantissa =
        static_cast<uint64_t>(p[0] - '0') * decimal_detail::kTenPowers[fraction] +
        decimal_detail::RunValue(digits);
    return decimal_detail::ScaledByExponent(mantissa, fraction, p + 2 + fraction, expDigits, v);
}

// Reads an unsigned decimal ("12", ".5", "3.2E-01") of the common catalogue form exactly,
// as the standard reader rounds it; false (nothing decided) for anything else.
inline bool QuickDecimal(std::string_view t, double& v) {
    // Words shorter than ten bytes have no room for the scientific form.
    return (t.size() >= 10 && decimal_detail::ScientificWord(t, v)) ||
           decimal_detail::GeneralDecimal(t, v);
}

}  // namespace ostrel
