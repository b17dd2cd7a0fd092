#include "core/platform/number_text.h"

#include <algorithm>
#include <bit>
#include <charconv>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <vector>

#include "core/platform/quick_decimal.h"

namespace ostrel {

namespace {

// ---------------------------------------------------------------------------------------------
// Decimal digits of a value, the way display formats see them: 15 significant digits, then
// rounded half away from zero at the place the pattern asks for.

struct Decimal {
    std::string digits;  // significant digits, no leading zero (empty for zero)
    int exp10 = 0;       // value = 0.d1d2d3... * 10^exp10
};

Decimal ToDecimal(double v) {
    Decimal d;
    if (v == 0.0) return d;
    char buf[40];
    // The digits printf's "%.14e" gives: d.dddddddddddddde[+-]xx
    const auto res = std::to_chars(buf, buf + sizeof buf, v, std::chars_format::scientific, 14);
    const char* e = std::find(buf, res.ptr, 'e');
    for (const char* c = buf; c != e; ++c) {
        if (*c >= '0' && *c <= '9') d.digits.push_back(*c);
    }
    while (!d.digits.empty() && d.digits.back() == '0') d.digits.pop_back();
    int ex = 0;
    const char* digits = e + 1 + (e[1] == '+' ? 1 : 0);
    std::from_chars(digits, res.ptr, ex);
    d.exp10 = ex + 1;
    return d;
}

// Keeps `keep` significant digits (keep may be <= 0), rounding half away from zero. A carry
// into a new leading digit raises exp10.
void RoundSignificant(Decimal& d, int keep) {
    if (static_cast<int>(d.digits.size()) <= keep) return;
    if (keep < 0) {
        d.digits.clear();
        d.exp10 = 0;
        return;
    }
    bool up = d.digits[keep] >= '5';
    d.digits.resize(keep);
    if (up) {
        int i = keep - 1;
        while (i >= 0 && d.digits[i] == '9') {
            d.digits[i] = '0';
            --i;
        }
        if (i >= 0) {
            ++d.digits[i];
        } else {
            d.digits.insert(d.digits.begin(), '1');
            d.digits.pop_back();
            if (keep == 0) d.digits = "1";
            ++d.exp10;
        }
    }
    while (!d.digits.empty() && d.digits.back() == '0') d.digits.pop_back();
    if (d.digits.empty()) d.exp10 = 0;
}

// Digit at decimal position p (p = 0 units, 1 tens, -1 tenths...).
char DigitAt(const Decimal& d, int p) {
    int idx = d.exp10 - 1 - p;
    if (idx < 0 || idx >= static_cast<int>(d.digits.size())) return '0';
    return d.digits[idx];
}

// ---------------------------------------------------------------------------------------------
// One section of a pattern.

struct Section {
    std::string prefix;      // literal text before the first digit placeholder
    std::string suffix;      // literal text after the number
    std::string intPlaces;   // '0' / '#' before the decimal point
    std::string fracPlaces;  // '0' / '#' after it
    bool point = false;
    bool grouping = false;
    bool percent = false;
    bool exponent = false;
    char expChar = 'e';
    bool expPlus = false;  // "e+": sign always shown
    int expDigits = 0;
    bool hasDigits = false;
};

Section ParseSection(std::string_view p) {
    Section s;
    bool started = false;  // a digit placeholder has been seen
    bool afterExp = false;
    std::string* lit = &s.prefix;
    for (std::size_t i = 0; i < p.size(); ++i) {
        char c = p[i];
        if (c == '\\') {
            if (i + 1 < p.size()) lit->push_back(p[++i]);
            continue;
        }
        if (c == '"') {
            std::size_t j = p.find('"', i + 1);
            if (j == std::string_view::npos) j = p.size();
            lit->append(p.substr(i + 1, j - i - 1));
            i = j;
            continue;
        }
        if (!afterExp && (c == '0' || c == '#')) {
            started = true;
            s.hasDigits = true;
            (s.point ? s.fracPlaces : s.intPlaces).push_back(c);
            lit = &s.suffix;
            continue;
        }
        if (!afterExp && c == '.' && !s.point) {
            s.point = true;
            started = true;
            lit = &s.suffix;
            continue;
        }
        if (!afterExp && c == ',' && started && !s.point) {
            s.grouping = true;
            continue;
        }
        if (c == '%') {
            s.percent = true;
            lit->push_back(c);
            continue;
        }
        if (!afterExp && started && (c == 'e' || c == 'E') && i + 1 < p.size() &&
            (p[i + 1] == '+' || p[i + 1] == '-')) {
            s.exponent = true;
            s.expChar = c;
            s.expPlus = p[i + 1] == '+';
            i += 1;
            while (i + 1 < p.size() && (p[i + 1] == '0' || p[i + 1] == '#')) {
                if (p[i + 1] == '0') ++s.expDigits;
                ++i;
            }
            afterExp = true;
            continue;
        }
        lit->push_back(c);
    }
    return s;
}

std::vector<std::string> SplitSections(std::string_view pattern) {
    std::vector<std::string> out(1);
    for (std::size_t i = 0; i < pattern.size(); ++i) {
        char c = pattern[i];
        if (c == '\\' && i + 1 < pattern.size()) {
            out.back().push_back(c);
            out.back().push_back(pattern[++i]);
        } else if (c == '"') {
            std::size_t j = pattern.find('"', i + 1);
            if (j == std::string_view::npos) j = pattern.size() - 1;
            out.back().append(pattern.substr(i, j - i + 1));
            i = j;
        } else if (c == ';') {
            out.emplace_back();
        } else {
            out.back().push_back(c);
        }
    }
    return out;
}

std::string GroupThousands(const std::string& digits) {
    std::string out;
    int n = static_cast<int>(digits.size());
    for (int i = 0; i < n; ++i) {
        out.push_back(digits[i]);
        int rest = n - 1 - i;
        if (rest > 0 && rest % 3 == 0) out.push_back(',');
    }
    return out;
}

int CountZeros(const std::string& places) {
    int n = 0;
    for (char c : places)
        if (c == '0') ++n;
    return n;
}

// Drops trailing zeros that stand on '#' places.
void TrimOptionalFraction(std::string& frac, const std::string& places) {
    while (!frac.empty() && frac.size() <= places.size() && places[frac.size() - 1] == '#' &&
           frac.back() == '0')
        frac.pop_back();
}

std::string IntegerText(const std::string& intDigits, const Section& s) {
    std::string digits = intDigits;
    int minInt = CountZeros(s.intPlaces);
    if (digits == "0" && minInt == 0) digits.clear();
    while (static_cast<int>(digits.size()) < minInt) digits.insert(digits.begin(), '0');
    return s.grouping ? GroupThousands(digits) : digits;
}

// Formats a non-negative value with one section; the sign is handled by the caller.
std::string FormatSection(double v, const Section& s) {
    if (s.percent) v *= 100.0;
    const int fracCount = static_cast<int>(s.fracPlaces.size());
    Decimal d = ToDecimal(v);
    std::string number;
    if (s.exponent) {
        int intCount = std::max<int>(1, static_cast<int>(s.intPlaces.size()));
        int shown = 0;  // exponent shown
        std::string intDigits, frac;
        if (!d.digits.empty()) {
            RoundSignificant(d, intCount + fracCount);
            shown = d.exp10 - intCount;
        }
        if (d.digits.empty()) {
            intDigits = "0";
            frac.assign(fracCount, '0');
        } else {
            for (int i = 0; i < intCount; ++i)
                intDigits.push_back(i < static_cast<int>(d.digits.size()) ? d.digits[i] : '0');
            std::size_t start = intDigits.find_first_not_of('0');
            intDigits = start == std::string::npos ? "0" : intDigits.substr(start);
            for (int i = 0; i < fracCount; ++i) {
                int idx = intCount + i;
                frac.push_back(idx < static_cast<int>(d.digits.size()) ? d.digits[idx] : '0');
            }
        }
        TrimOptionalFraction(frac, s.fracPlaces);
        number = IntegerText(intDigits, s);
        if (s.point) number += "." + frac;
        number.push_back(s.expChar);
        if (shown < 0)
            number.push_back('-');
        else if (s.expPlus)
            number.push_back('+');
        std::string ed = std::to_string(std::abs(shown));
        while (static_cast<int>(ed.size()) < s.expDigits) ed.insert(ed.begin(), '0');
        number += ed;
    } else {
        // Keep the digits down to 10^-fracCount.
        if (!d.digits.empty()) RoundSignificant(d, d.exp10 + fracCount);
        std::string intDigits;
        for (int p = std::max(d.exp10, 1) - 1; p >= 0; --p) intDigits.push_back(DigitAt(d, p));
        std::string frac;
        for (int i = 1; i <= fracCount; ++i) frac.push_back(DigitAt(d, -i));
        TrimOptionalFraction(frac, s.fracPlaces);
        number = IntegerText(intDigits, s);
        if (s.point) number += "." + frac;
    }
    return s.prefix + number + s.suffix;
}

// True when the value shows as zero with this section (so no minus sign belongs to it).
bool ShowsAsZero(double v, const Section& s) {
    std::string t = FormatSection(v, s);
    for (char c : t)
        if (c >= '1' && c <= '9') return false;
    return true;
}

}  // namespace

std::string FormatNumber(double value, std::string_view pattern) {
    if (std::isnan(value)) return "NaN";
    if (std::isinf(value)) return value > 0 ? "Inf" : "-Inf";
    std::vector<std::string> parts = SplitSections(pattern);
    const bool negative = value < 0;
    const double magnitude = std::fabs(value);

    if (parts.size() >= 3 && value == 0.0 && !parts[2].empty())
        return FormatSection(0.0, ParseSection(parts[2]));
    if (negative && parts.size() >= 2 && !parts[1].empty()) {
        Section neg = ParseSection(parts[1]);
        if (!neg.hasDigits) return neg.prefix + neg.suffix;
        return FormatSection(magnitude, neg);
    }
    Section pos = ParseSection(parts[0]);
    if (!pos.hasDigits) return pos.prefix + pos.suffix;
    std::string text = FormatSection(magnitude, pos);
    if (negative && !ShowsAsZero(magnitude, pos)) text.insert(text.begin(), '-');
    return text;
}

// -------------------------------------------------------------------------------------------------
// Reading numbers.

namespace {

bool IsDigit(char c) {
    return c >= '0' && c <= '9';
}

// Length of the longest numeric prefix of s (sign, digits, point, exponent); 0 if none.
std::size_t NumericPrefix(std::string_view s) {
    std::size_t i = 0;
    if (i < s.size() && (s[i] == '+' || s[i] == '-')) ++i;
    std::size_t digits = 0;
    while (i < s.size() && IsDigit(s[i])) ++i, ++digits;
    if (i < s.size() && s[i] == '.') {
        ++i;
        while (i < s.size() && IsDigit(s[i])) ++i, ++digits;
    }
    if (digits == 0) return 0;
    std::size_t mantissaEnd = i;
    if (i < s.size() && (s[i] == 'e' || s[i] == 'E' || s[i] == 'd' || s[i] == 'D')) {
        std::size_t j = i + 1;
        if (j < s.size() && (s[j] == '+' || s[j] == '-')) ++j;
        std::size_t expDigits = 0;
        while (j < s.size() && IsDigit(s[j])) ++j, ++expDigits;
        if (expDigits > 0) return j;
    }
    return mantissaEnd;
}

double ParsePrefix(std::string_view s, std::size_t len) {
    std::string_view body = s.substr(0, len);
    bool negative = false;
    if (!body.empty() && (body[0] == '+' || body[0] == '-')) {
        negative = body[0] == '-';
        body.remove_prefix(1);
    }
    if (double v = 0; QuickDecimal(body, v)) return negative ? -v : v;

    std::string t(s.substr(0, len));
    for (char& c : t)
        if (c == 'd' || c == 'D') c = 'e';
    return std::strtod(t.c_str(), nullptr);
}

std::string_view TrimBlanks(std::string_view s) {
    std::size_t a = s.find_first_not_of(" \t");
    if (a == std::string_view::npos) return {};
    std::size_t b = s.find_last_not_of(" \t");
    return s.substr(a, b - a + 1);
}

}  // namespace

std::string ShortestFloatText(float value) {
    char buf[32];
    const auto r = std::to_chars(buf, buf + sizeof buf, value);
    return std::string(buf, r.ptr);
}

double Val(std::string_view text) {
    std::size_t a = text.find_first_not_of(" \t\r\n");
    if (a == std::string_view::npos) return 0.0;
    std::string_view s = text.substr(a);
    std::size_t len = NumericPrefix(s);
    if (len == 0) return 0.0;
    double v = ParsePrefix(s, len);
    return std::isfinite(v) ? v : 0.0;
}

bool IsValidNumber(std::string_view text) {
    std::string_view s = TrimBlanks(text);
    if (s.empty()) return false;
    std::size_t len = NumericPrefix(s);
    if (len != s.size()) return false;
    return std::isfinite(ParsePrefix(s, len));
}

std::string DecimalPointText(std::string_view text) {
    std::string out(text);
    const std::size_t comma = out.find(',');
    if (comma == std::string::npos || out.find(',', comma + 1) != std::string::npos ||
        out.find('.') != std::string::npos) {
        return out;
    }
    // The comma must sit between digits' places: "1,5" and ",5" are numbers, "1," is not.
    if (comma + 1 >= out.size() || !IsDigit(out[comma + 1])) return out;
    std::string point = out;
    point[comma] = '.';
    return IsValidNumber(point) ? point : out;
}

namespace {
bool WholeInRange(std::string_view text, long long lo, long long hi) {
    std::string_view s = TrimBlanks(text);
    std::size_t i = 0;
    bool neg = false;
    if (i < s.size() && (s[i] == '+' || s[i] == '-')) neg = s[i++] == '-';
    if (i == s.size()) return false;
    long long v = 0;
    for (; i < s.size(); ++i) {
        if (!IsDigit(s[i])) return false;
        v = v * 10 + (s[i] - '0');
        if (v > hi + 1) return false;
    }
    if (neg) v = -v;
    return v >= lo && v <= hi;
}
}  // namespace

bool IsValidInteger(std::string_view text) {
    return WholeInRange(text, -32768, 32767);
}

bool IsValidLong(std::string_view text) {
    return WholeInRange(text, std::numeric_limits<int32_t>::min(),
                        std::numeric_limits<int32_t>::max());
}

double RoundHalfEven(double value) {
    if (!std::isfinite(value)) return value;
    double f = std::floor(value);
    double diff = value - f;
    if (diff > 0.5) return f + 1.0;
    if (diff < 0.5) return f;
    return std::fmod(f, 2.0) == 0.0 ? f : f + 1.0;
}

int16_t CInt(double value) {
    if (std::isnan(value)) return 0;
    double r = RoundHalfEven(value);
    if (r <= -32768.0) return -32768;
    if (r >= 32767.0) return 32767;
    return static_cast<int16_t>(r);
}

int32_t CLng(double value) {
    if (std::isnan(value)) return 0;
    double r = RoundHalfEven(value);
    if (r <= -2147483648.0) return std::numeric_limits<int32_t>::min();
    if (r >= 2147483647.0) return std::numeric_limits<int32_t>::max();
    return static_cast<int32_t>(r);
}

}  // namespace ostrel
