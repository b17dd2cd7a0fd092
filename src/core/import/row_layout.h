#pragma once
// The layout of a catalogue row whose first two words after its keyword are numbers of the
// form "d.ddddE-dd" ("IT 1.00000E+00 8.62979E-01 1.00000E+01"). The rows of one file mostly
// share one layout byte for byte, but for their digits and the signs of their exponents; a
// row that has the layout learned is read by the places of its digits alone, to the values
// and words the general reading gives.
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
// them; false when one is out of the range of a double.
bool ReadRowValues(const char* row, const RowPlaces& places, double (&values)[2]);
// Whether ReadRowValues surely reads the row: its exponents are below 100.
bool RowValuesSurelyRead(const char* row, const RowPlaces& places);

class RowLayout {
  public:
    // Takes the layout of line, whose first words (the keyword first) are words[0..count),
    // when it has one this reads; otherwise the layout learned before stays. Returns whether
    // it took it.
    bool Learn(std::string_view line, const std::string_view* words, size_t count);
    // Whether line has the learned layout; if so, up to three words after the keyword and
    // their count. Its two numbers are read by ReadRowValues from places().
    bool Matches(std::string_view line, std::string_view (&words)[3], size_t& count) const;
    const RowPlaces& places() const { return places_; }
    size_t size() const { return size_; }  // 0 when nothing is learned
    void Forget() { size_ = 0; }

  private:
    // The bytes a row of this layout has: digits read as '0', signs as '+'. Lines of 16 to
    // 63 bytes.
    std::array<char, 64> shape_{};
    size_t size_ = 0;  // 0: nothing learned
    RowPlaces places_;
    uint8_t wordAt_[3] = {0, 0, 0};
    uint8_t wordSize_[3] = {0, 0, 0};
    size_t count_ = 0;
};

}  // namespace ostrel
