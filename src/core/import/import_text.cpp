#include "core/import/import_text.h"

#include <algorithm>
#include <bit>
#include <charconv>
#include <cmath>
#include <cstdio>
#include <cstring>
#include <limits>

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

#include "core/platform/codepage.h"
#include "core/platform/number_text.h"

namespace ostrel {
namespace {

bool IsValidUtf8(std::string_view s) {
    size_t i = 0;
    const size_t n = s.size();
    while (i < n) {
        const auto c = static_cast<unsigned char>(s[i]);
        if (c < 0x80) {
            ++i;
            continue;
        }
        int extra = 0;
        if (c >= 0xC2 && c <= 0xDF) {
            extra = 1;
        } else if (c >= 0xE0 && c <= 0xEF) {
            extra = 2;
        } else if (c >= 0xF0 && c <= 0xF4) {
            extra = 3;
        } else {
            return false;
        }
        if (i + static_cast<size_t>(extra) >= n) return false;
        for (int k = 1; k <= extra; ++k) {
            if ((static_cast<unsigned char>(s[i + static_cast<size_t>(k)]) & 0xC0) != 0x80) {
                return false;
            }
        }
        i += static_cast<size_t>(extra) + 1;
    }
    return true;
}

std::string Utf16ToCp1252(std::string_view bytes, bool bigEndian) {
    const size_t n = bytes.size() / 2;
    std::string out(n, '\0');
    const auto* in = reinterpret_cast<const unsigned char*>(bytes.data());
    size_t o = 0;
    size_t i = 0;
    // One character; a surrogate pair stands for one the code page cannot hold.
    auto one = [&] {
        const unsigned b0 = in[2 * i];
        const unsigned b1 = in[2 * i + 1];
        const auto cp = static_cast<char32_t>(bigEndian ? (b0 << 8) | b1 : (b1 << 8) | b0);
        if (cp < 0x80) {
            out[o++] = static_cast<char>(cp);
        } else if (cp >= 0xD800 && cp <= 0xDBFF && i + 1 < n) {
            ++i;
            out[o++] = '?';
        } else {
            out[o++] = static_cast<char>(CodePointToCp1252(cp));
        }
        ++i;
    };
#if defined(__SSE2__)
    // Runs of plain ASCII, by far the most of a catalogue, eight characters at a time.
    const __m128i high = _mm_set1_epi16(static_cast<short>(0xFF80));
    while (i + 8 <= n) {
        __m128i v = _mm_loadu_si128(reinterpret_cast<const __m128i*>(in + 2 * i));
        if (bigEndian) v = _mm_or_si128(_mm_slli_epi16(v, 8), _mm_srli_epi16(v, 8));
        const __m128i ascii = _mm_cmpeq_epi16(_mm_and_si128(v, high), _mm_setzero_si128());
        if (_mm_movemask_epi8(ascii) != 0xFFFF) {
            one();
            continue;
        }
        _mm_storel_epi64(reinterpret_cast<__m128i*>(out.data() + o), _mm_packus_epi16(v, v));
        o += 8;
        i += 8;
    }
#endif
    while (i < n) one();
    out.resize(o);
    return out;
}

bool AllAscii(std::string_view s) {
    // Eight bytes at a time: any byte with its top bit set ends it.
    constexpr uint64_t kTopBits = 0x8080808080808080ull;
    size_t i = 0;
    const size_t n = s.size();
    for (; i + 8 <= n; i += 8) {
        uint64_t word = 0;
        std::memcpy(&word, s.data() + i, 8);
        if (word & kTopBits) return false;
    }
    for (; i < n; ++i) {
        if (static_cast<unsigned char>(s[i]) >= 0x80) return false;
    }
    return true;
}

// Only the forms that need a conversion; everything else is used as it is.
bool NeedsConversion(std::string_view bytes) {
    if (bytes.size() >= 2) {
        const auto b0 = static_cast<unsigned char>(bytes[0]);
        const auto b1 = static_cast<unsigned char>(bytes[1]);
        if ((b0 == 0xFF && b1 == 0xFE) || (b0 == 0xFE && b1 == 0xFF)) return true;
    }
    if (bytes.size() >= 3 && bytes.substr(0, 3) == "\xEF\xBB\xBF") return true;
    return !AllAscii(bytes) && IsValidUtf8(bytes);
}

}  // namespace

std::string DecodeTextFile(std::string_view bytes) {
    if (bytes.size() >= 2) {
        const auto b0 = static_cast<unsigned char>(bytes[0]);
        const auto b1 = static_cast<unsigned char>(bytes[1]);
        if (b0 == 0xFF && b1 == 0xFE) return Utf16ToCp1252(bytes.substr(2), false);
        if (b0 == 0xFE && b1 == 0xFF) return Utf16ToCp1252(bytes.substr(2), true);
    }
    if (bytes.size() >= 3 && bytes.substr(0, 3) == "\xEF\xBB\xBF") {
        return Utf8ToCp1252(bytes.substr(3));
    }
    if (AllAscii(bytes)) return std::string(bytes);
    if (IsValidUtf8(bytes)) return Utf8ToCp1252(bytes);
    return std::string(bytes);
}

std::string DecodeTextFile(std::string&& bytes) {
    if (NeedsConversion(bytes)) return DecodeTextFile(std::string_view(bytes));
    return std::move(bytes);
}

std::vector<std::string_view> SplitTextLines(std::string_view text) {
    std::vector<std::string_view> lines;
    for (size_t at = 0; at < text.size();) {
        const size_t end = LineEnd(text, at);
        lines.push_back(text.substr(at, end - at));
        at = NextLineStart(text, end);
    }
    return lines;
}

size_t LineEnd(std::string_view text, size_t from) {
    const char* const begin = text.data();
    const size_t n = text.size();
    size_t i = from;
#if defined(__SSE2__)
    const __m128i cr = _mm_set1_epi8('\r');
    const __m128i lf = _mm_set1_epi8('\n');
    for (; i + 16 <= n; i += 16) {
        const __m128i v = _mm_loadu_si128(reinterpret_cast<const __m128i*>(begin + i));
        const auto ends = static_cast<uint32_t>(
            _mm_movemask_epi8(_mm_or_si128(_mm_cmpeq_epi8(v, cr), _mm_cmpeq_epi8(v, lf))));
        if (ends != 0) return i + static_cast<size_t>(std::countr_zero(ends));
    }
#endif
    for (; i < n; ++i) {
        if (begin[i] == '\r' || begin[i] == '\n') return i;
    }
    return n;
}

bool ParseNumberInFull(std::string_view token, double& value) {
    auto blank = [](char c) { return c == ' ' || c == '\t'; };
    if (token.empty()) return false;
    std::string_view t = token;
    if (blank(t.front()) || blank(t.back())) {
        size_t b = 0, e = t.size();
        while (b < e && blank(t[b])) ++b;
        while (e > b && blank(t[e - 1])) --e;
        t = t.substr(b, e - b);
        if (t.empty()) return false;
    }
    bool negative = false;
    if (t[0] == '+' || t[0] == '-') {
        negative = t[0] == '-';
        t.remove_prefix(1);
    }
    if (double quick = 0; QuickDecimal(t, quick)) {
        value = negative ? -quick : quick;
        return true;
    }
    // Mantissa: digits, optionally one point; at least one digit.
    size_t i = 0;
    size_t digits = 0;
    while (i < t.size() && t[i] >= '0' && t[i] <= '9') ++i, ++digits;
    if (i < t.size() && t[i] == '.') {
        ++i;
        while (i < t.size() && t[i] >= '0' && t[i] <= '9') ++i, ++digits;
    }
    if (digits == 0) return false;
    if (i < t.size()) {
        if (t[i] != 'e' && t[i] != 'E') return false;
        size_t j = i + 1;
        if (j < t.size() && (t[j] == '+' || t[j] == '-')) ++j;
        const size_t expStart = j;
        while (j < t.size() && t[j] >= '0' && t[j] <= '9') ++j;
        if (j == expStart || j != t.size()) return false;
    }
    double v = 0;
    const auto res = std::from_chars(t.data(), t.data() + t.size(), v);
    if (res.ec == std::errc::result_out_of_range) {
        // Underflow reads as 0; overflow is no number we can use.
        if (std::fabs(v) > 1.0) return false;
    } else if (res.ec != std::errc() || res.ptr != t.data() + t.size()) {
        return false;
    }
    if (!std::isfinite(v)) return false;
    value = negative ? -v : v;
    return true;
}

bool ToInt16(double value, int16_t& out) {
    if (!std::isfinite(value)) return false;
    const double r = std::nearbyint(value);  // default rounding is to even
    if (r < std::numeric_limits<int16_t>::min() || r > std::numeric_limits<int16_t>::max()) {
        return false;
    }
    out = static_cast<int16_t>(r);
    return true;
}

bool ToInt32(double value, int32_t& out) {
    if (!std::isfinite(value)) return false;
    const double r = std::nearbyint(value);
    if (r < std::numeric_limits<int32_t>::min() || r > std::numeric_limits<int32_t>::max()) {
        return false;
    }
    out = static_cast<int32_t>(r);
    return true;
}

std::vector<std::string_view> SplitBlanks(std::string_view s) {
    std::vector<std::string_view> tokens;
    SplitBlanks(s, tokens);
    return tokens;
}

namespace {

#if defined(__SSE2__)
// One bit per byte of the sixteen at `at` that is a blank or a tab, the first byte lowest.
uint32_t BlankBits(const char* at) {
    const __m128i v = _mm_loadu_si128(reinterpret_cast<const __m128i*>(at));
    return static_cast<uint32_t>(_mm_movemask_epi8(_mm_or_si128(
        _mm_cmpeq_epi8(v, _mm_set1_epi8(' ')), _mm_cmpeq_epi8(v, _mm_set1_epi8('\t')))));
}
#endif

// Calls put(first byte, length) for each word of s in turn until it returns true (enough
// words) or the words run out.
template <class Put>
void EachWord(std::string_view s, Put put) {
    const char* const begin = s.data();
    const size_t n = s.size();
    size_t i = 0;
    size_t start = 0;     // where the word under way began
    bool inWord = false;  // the last byte looked at belongs to a word
#if defined(__SSE2__)
    // Sixteen bytes at a time: one bit per byte that is no blank. A word starts where such a
    // bit follows a blank and ends where a blank follows one; starts and ends alternate, so
    // each end pairs with the start before it (for the first end of a block, perhaps one
    // from an earlier block).
    auto block = [begin](size_t at) { return BlankBits(begin + at); };
    const size_t whole = n >= 16 ? n : 0;  // a line of 16 bytes or more ends in one more block
    for (; i < whole; i += 16) {
        uint32_t blanks = 0;
        if (i + 16 <= n) {
            blanks = block(i);
        } else {
            // The last sixteen bytes of the line, shifted so that bit 0 is byte i; the bytes
            // past the end read as blanks.
            const size_t back = i + 16 - n;
            blanks = (block(n - 16) >> back) | (0xFFFFu << (16 - back));
        }
        const uint32_t word = ~blanks & 0xFFFFu;
        const uint32_t before = (word << 1) | (inWord ? 1u : 0u);
        uint32_t starts = word & ~before;
        uint32_t ends = ~word & before & 0xFFFFu;
        if (inWord && ends != 0) {
            if (put(begin + start, i + std::countr_zero(ends) - start)) return;
            ends &= ends - 1;
        }
        while (ends != 0) {
            const size_t from = i + static_cast<size_t>(std::countr_zero(starts));
            starts &= starts - 1;
            if (put(begin + from, i + std::countr_zero(ends) - from)) return;
            ends &= ends - 1;
        }
        if (starts != 0) start = i + static_cast<size_t>(std::countr_zero(starts));
        inWord = (word >> 15) != 0;
    }
    if (whole != 0) i = n;
#endif
    for (; i < n; ++i) {
        const bool blank = begin[i] == ' ' || begin[i] == '\t';
        if (blank == inWord) {
            if (inWord) {
                if (put(begin + start, i - start)) return;
            } else {
                start = i;
            }
            inWord = !inWord;
        }
    }
    if (inWord) put(begin + start, n - start);
}

}  // namespace

void SplitBlanks(std::string_view s, std::vector<std::string_view>& tokens) {
    tokens.clear();
    EachWord(s, [&tokens](const char* first, size_t size) {
        tokens.emplace_back(first, size);
        return false;
    });
}

size_t FirstWords(std::string_view s, std::string_view* words, size_t most) {
    size_t count = 0;
    if (most == 0) return 0;
#if defined(__SSE2__)
    // A line of 16 to 63 bytes, as catalogue rows mostly are, in one 64-bit mask of its
    // blanks (the bytes past its end taken as blanks): each word is then a start bit and the
    // end bit after it.
    if (const size_t n = s.size(); n >= 16 && n < 64) {
        const char* const begin = s.data();
        uint64_t blanks = ~uint64_t{0} << n;
        size_t i = 0;
        for (; i + 16 <= n; i += 16) blanks |= uint64_t{BlankBits(begin + i)} << i;
        if (i < n) blanks |= uint64_t{BlankBits(begin + n - 16) >> (16 - (n - i))} << i;
        const uint64_t word = ~blanks;
        uint64_t starts = word & ~(word << 1);
        uint64_t ends = ~word & (word << 1);
        while (starts != 0 && count < most) {
            const int from = std::countr_zero(starts);
            const int to = std::countr_zero(ends);
            words[count++] = std::string_view(begin + from, static_cast<size_t>(to - from));
            starts &= starts - 1;
            ends &= ends - 1;
        }
        return count;
    }
#endif
    EachWord(s, [&](const char* first, size_t size) {
        words[count++] = std::string_view(first, size);
        return count == most;
    });
    return count;
}

std::string SqueezeBlanks(std::string_view s) {
    std::string out;
    out.reserve(s.size());
    bool blank = false;
    for (char c : s) {
        if (c == ' ' || c == '\t') {
            if (!blank) out.push_back(' ');
            blank = true;
        } else {
            out.push_back(c);
            blank = false;
        }
    }
    return out;
}

namespace {

// to_chars gives "5e-01" style exponents and no leading zero problems; make the exponent
// upper case and drop a "+" and leading zeros of it.
std::string TidyShortest(const char* first, const char* last) {
    std::string s(first, last);
    const auto e = s.find('e');
    if (e == std::string::npos) return s;
    std::string mant = s.substr(0, e);
    std::string exp = s.substr(e + 1);
    bool neg = false;
    if (!exp.empty() && (exp[0] == '+' || exp[0] == '-')) {
        neg = exp[0] == '-';
        exp.erase(0, 1);
    }
    while (exp.size() > 1 && exp[0] == '0') exp.erase(0, 1);
    return mant + (neg ? "E-" : "E+") + exp;
}

}  // namespace

std::string GlzNumber(double value) {
    if (value == 0.0) return "0";
    char buf[64];
    const auto res = std::to_chars(buf, buf + sizeof buf, value, std::chars_format::general);
    return TidyShortest(buf, res.ptr);
}

std::string GlzNumber(float value) {
    if (value == 0.0f) return "0";
    char buf[64];
    const auto res = std::to_chars(buf, buf + sizeof buf, value, std::chars_format::general);
    return TidyShortest(buf, res.ptr);
}

std::string GlzNumber(int16_t value) {
    return std::to_string(value);
}

std::string ShortNumberText(double value) {
    if (value == 0.0) return "0";
    // A value that is the nearest double to a decimal of at most 7 significant digits, at
    // least 0.0001 and below 10^7 (which "%.7G" writes without exponent), is written from
    // that decimal: its digits r and decimals d are the fewest for which r / 10^d gives the
    // value back. Every other value takes the general way below.
    if (const double size = std::fabs(value); size >= 1e-4 && size < 1e7) {
        static constexpr double kTens[] = {1, 10, 1e2, 1e3, 1e4, 1e5, 1e6, 1e7, 1e8, 1e9, 1e10};
        for (int d = 0; d <= 10; ++d) {
            const double r = std::nearbyint(size * kTens[d]);
            if (r >= 1e7) break;
            if (r / kTens[d] != size) continue;
            char digits[24];
            const auto end =
                std::to_chars(digits, digits + sizeof digits, static_cast<uint32_t>(r)).ptr;
            const auto count = static_cast<int>(end - digits);
            std::string out;
            out.reserve(static_cast<size_t>(count + d + 3));
            if (value < 0) out += '-';
            if (count <= d) {
                out += "0.";
                out.append(static_cast<size_t>(d - count), '0');
                out.append(digits, end);
            } else {
                out.append(digits, end - d);
                if (d > 0) {
                    out += '.';
                    out.append(end - d, end);
                }
            }
            return out;
        }
    }
    char buf[64];
    if (!std::isfinite(value)) {
        std::snprintf(buf, sizeof buf, "%.7G", value);
        return buf;
    }
    // The text of printf's "%.7G", without going through the formatted printing.
    const auto res = std::to_chars(buf, buf + sizeof buf, value, std::chars_format::general, 7);
    std::string out(buf, res.ptr);
    for (char& c : out) {
        if (c == 'e') c = 'E';
    }
    return out;
}

std::string NoNumberReason(std::string_view field) {
    constexpr size_t kShown = 30;
    std::string shown(field.substr(0, kShown));
    for (char& c : shown) {
        const auto u = static_cast<unsigned char>(c);
        if (u < 0x20 || u == 0x7F) c = '?';
    }
    if (field.size() > kShown) shown += "...";
    return "\"" + shown + "\" is no number";
}

}  // namespace ostrel
