#pragma once
// The layout of a catalogue row whose first two words after its keyword are numbers of the
// form "d.ddddE-dd" ("IT 1.00000E+00 8.62979E-01 1.00000E+01"). The rows of one file mostly
// share one layout byte for byte, but for their digits and the signs of their exponents; a
// row that has the layout learned is read by the places of its digits alone, to the values
// and words the general reading gives. Exponents of three digits start with 0 in a layout,
// so that its rows always read as numbers.
#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

namespace ostrel {

// Where the two numbers of a row of one layout stand, enough to read them again from the
// row's text.
struct RowPlaces {
    struct Number {
        uint8_t at = 0;  // its first digit
        uint8_t fraction = 0;
        uint8_t expDigits = 0;
    };
    Number numbers[2];
};

// The two numbers of a row whose layout has these places, as the general reading gives
// them. A row of a learned layout always reads.
bool ReadRowValues(const char* row, const RowPlaces& places, double (&values)[2]);

class RowLayout {
  public:
    // Takes the layout of line, whose first words (the keyword first) are words[0..count),
    // when it has one this reads; otherwise the layout learned before stays. Returns whether
    // it took it.
    bool Learn(std::string_view line, const std::string_view* words, size_t count);
    // Whether line has the learned layout; if so, up to three words after the keyword and
    // their count. Its two numbers are read by ReadRowValues from places().
    bool Matches(std::string_view line, std::string_view (&words)[3], size_t& count) const;
    // Whether the size() bytes at row have the learned layout.
    bool Fits(const char* row) const;
    const RowPlaces& places() const { return places_; }
    size_t size() const { return size_; }  // 0 when nothing is learned
    void Forget() { size_ = 0; }

  private:
    // A byte of a row fits where, taken less want_, it is at most limit_ and even where odd_
    // is 1: the byte itself (limit 0), a digit (want '0', limit 9) or a sign (want '+',
    // limit 2, odd 1). Lines of 16 to 63 bytes.
    std::array<uint8_t, 64> want_{}, limit_{}, odd_{};
    size_t size_ = 0;  // 0: nothing learned
    RowPlaces places_;
    uint8_t wordAt_[3] = {0, 0, 0};
    uint8_t wordSize_[3] = {0, 0, 0};
    size_t count_ = 0;
};

}  // namespace ostrel
