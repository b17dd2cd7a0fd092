#include "core/import/row_layout.h"

#include <algorithm>

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

#include "core/import/import_text.h"
#include "core/platform/quick_decimal.h"

namespace ostrel {
namespace {

bool IsDigit(char c) {
    return c >= '0' && c <= '9';
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
    if (line.size() < 16 || line.size() >= want_.size() || count < 3) return false;
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
    std::array<uint8_t, 64> want{}, limit{}, odd{};
    for (size_t i = 0; i < line.size(); ++i) {
        const char c = line[i];
        if (IsDigit(c)) {
            want[i] = '0';
            limit[i] = 9;
        } else if (c == '+' || c == '-') {
            want[i] = '+';
            limit[i] = 2;
            odd[i] = 1;
        } else {
            want[i] = static_cast<uint8_t>(c);
        }
    }
    for (const RowPlaces::Number& n : places.numbers) {
        if (n.expDigits < 3) continue;
        const size_t lead = n.at + n.fraction + 4u;
        if (line[lead] != '0') return false;
        limit[lead] = 0;
    }
    want_ = want;
    limit_ = limit;
    odd_ = odd;
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

bool RowLayout::Fits(const char* row) const {
    if (size_ == 0) return false;
#if defined(__SSE2__)
    // Sixteen bytes at a time, the last block ending with the row; a byte that does not fit
    // leaves a bit in `bad`.
    __m128i bad = _mm_setzero_si128();
    auto add = [&](size_t at) {
        auto load = [](const void* p) { return _mm_loadu_si128(static_cast<const __m128i*>(p)); };
        const __m128i d = _mm_sub_epi8(load(row + at), load(&want_[at]));
        bad = _mm_or_si128(bad, _mm_or_si128(_mm_subs_epu8(d, load(&limit_[at])),
                                             _mm_and_si128(d, load(&odd_[at]))));
    };
    size_t at = 0;
    for (; at + 16 <= size_; at += 16) add(at);
    if (at < size_) add(size_ - 16);
    return _mm_movemask_epi8(_mm_cmpeq_epi8(bad, _mm_setzero_si128())) == 0xFFFF;
#else
    for (size_t i = 0; i < size_; ++i) {
        const auto d = static_cast<uint8_t>(static_cast<uint8_t>(row[i]) - want_[i]);
        if (d > limit_[i] || (d & odd_[i]) != 0) return false;
    }
    return true;
#endif
}

bool RowLayout::Matches(std::string_view line, std::string_view (&words)[3], size_t& count) const {
    if (size_ == 0 || line.size() != size_ || !Fits(line.data())) return false;
    const char* const p = line.data();
    count = count_;
    for (size_t k = 0; k < count_; ++k) words[k] = std::string_view(p + wordAt_[k], wordSize_[k]);
    return true;
}

}  // namespace ostrel
