#include "core/import/row_layout.h"

#include <algorithm>

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

#include "core/import/import_text.h"
#include "core/platform/number_text.h"

namespace ostrel {
namespace {

bool IsDigit(char c) {
    return c >= '0' && c <= '9';
}

// A row's byte as its layout sees it.
char ShapeOf(char c) {
    if (IsDigit(c)) return '0';
    return c == '-' ? '+' : c;
}

// The fraction and exponent digit counts of a word "d.ddddE-dd" with 1-7 fraction digits
// and 1-3 exponent digits; false for any other word.
bool ScientificShape(std::string_view w, int& fraction, int& expDigits) {
    if (w.size() < 6 || !IsDigit(w[0]) || w[1] != '.') return false;
    size_t i = 2;
    while (i < w.size() && IsDigit(w[i])) ++i;
    fraction = static_cast<int>(i) - 2;
    if (fraction < 1 || fraction > 7 || i + 2 >= w.size()) return false;
    if ((w[i] != 'E' && w[i] != 'e') || (w[i + 1] != '+' && w[i + 1] != '-')) return false;
    expDigits = static_cast<int>(w.size() - i - 2);
    if (expDigits > 3) return false;
    return std::all_of(w.begin() + static_cast<std::ptrdiff_t>(i) + 2, w.end(), IsDigit);
}

}  // namespace

bool RowLayout::Learn(std::string_view line, const std::string_view* words, size_t count) {
    if (line.size() < 16 || line.size() >= shape_.size() || count < 3) return false;
    RowPlaces places;
    for (size_t k = 0; k < 2; ++k) {
        const std::string_view w = words[k + 1];
        int fraction = 0, expDigits = 0;
        if (!ScientificShape(w, fraction, expDigits)) return false;
        const auto at = static_cast<size_t>(w.data() - line.data());
        // Eight bytes from the first fraction digit are read at once.
        if (at + 10 > line.size()) return false;
        places.numbers[k] = {static_cast<uint8_t>(at), static_cast<uint8_t>(fraction),
                             static_cast<uint8_t>(expDigits)};
    }
    count_ = std::min<size_t>(count - 1, 3);
    for (size_t k = 0; k < count_; ++k) {
        wordAt_[k] = static_cast<uint8_t>(words[k + 1].data() - line.data());
        wordSize_[k] = static_cast<uint8_t>(words[k + 1].size());
    }
    std::transform(line.begin(), line.end(), shape_.begin(), ShapeOf);
    places_ = places;
    size_ = line.size();
    return true;
}

bool ReadRowValues(const char* row, const RowPlaces& places, double (&values)[2]) {
    double read[2];
    for (size_t k = 0; k < 2; ++k) {
        const RowPlaces::Number& n = places.numbers[k];
        if (ScientificOfShape(row + n.at, n.fraction, n.expDigits, read[k])) continue;
        const std::string_view word(row + n.at, static_cast<size_t>(4 + n.fraction + n.expDigits));
        if (!ParseNumber(word, read[k])) return false;
    }
    values[0] = read[0];
    values[1] = read[1];
    return true;
}

bool RowValuesSurelyRead(const char* row, const RowPlaces& places) {
    // Exponents of up to two digits, or of three with a leading zero, are below 100, and
    // any such number is read.
    for (const RowPlaces::Number& n : places.numbers) {
        if (n.expDigits == 3 && row[n.at + n.fraction + 4] != '0') return false;
    }
    return true;
}

bool RowLayout::Matches(std::string_view line, std::string_view (&words)[3], size_t& count) const {
    if (size_ == 0 || line.size() != size_) return false;
    const char* const p = line.data();
#if defined(__SSE2__)
    // Sixteen bytes at a time, the last block ending with the line: digits to '0', '-' to
    // '+', then compared with the layout.
    const __m128i belowZero = _mm_set1_epi8('0' - 1);
    const __m128i aboveNine = _mm_set1_epi8('9' + 1);
    const __m128i zero = _mm_set1_epi8('0');
    const __m128i minus = _mm_set1_epi8('-');
    const __m128i plus = _mm_set1_epi8('+');
    auto same = [&](size_t at) {
        const __m128i v = _mm_loadu_si128(reinterpret_cast<const __m128i*>(p + at));
        const __m128i digit =
            _mm_and_si128(_mm_cmpgt_epi8(v, belowZero), _mm_cmplt_epi8(v, aboveNine));
        const __m128i sign = _mm_cmpeq_epi8(v, minus);
        __m128i shape =
            _mm_or_si128(_mm_andnot_si128(_mm_or_si128(digit, sign), v),
                         _mm_or_si128(_mm_and_si128(digit, zero), _mm_and_si128(sign, plus)));
        const __m128i want = _mm_loadu_si128(reinterpret_cast<const __m128i*>(&shape_[at]));
        return _mm_movemask_epi8(_mm_cmpeq_epi8(shape, want)) == 0xFFFF;
    };
    size_t at = 0;
    for (; at + 16 <= size_; at += 16) {
        if (!same(at)) return false;
    }
    if (at < size_ && !same(size_ - 16)) return false;
#else
    for (size_t i = 0; i < size_; ++i) {
        if (ShapeOf(p[i]) != shape_[i]) return false;
    }
#endif
    count = count_;
    for (size_t k = 0; k < count_; ++k) words[k] = std::string_view(p + wordAt_[k], wordSize_[k]);
    return true;
}

}  // namespace ostrel
