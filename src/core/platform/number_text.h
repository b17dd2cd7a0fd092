#pragma once
// Numbers as text, the program's way: display formats with the patterns the forms use,
// the lenient reading of grid cells, the check of typed numbers, and rounding to whole
// numbers half to even.
#include <cstdint>
#include <string>
#include <string_view>

namespace ostrel {

// Formats a value with a pattern of the kind "0.0000000", "0.0###", "0.0%", "0.000e+00",
// "+0.00000000e+00;-0.00000000e+00" (positive;negative sections), "0.00;\\----" (a literal
// section for negatives) and "0". Digit places 0 and #, a decimal point, "," grouping, %,
// e+00 / E-00 exponents, up to three ;-separated sections (positive, negative, zero),
// backslash and quoted literals. The shown digits are taken from 15 significant digits of
// the value and rounded half away from zero. A negative value that shows only zeros with a
// one-section pattern gets no minus sign.
std::string FormatNumber(double value, std::string_view pattern);
// The shortest decimal text that reads back to the same 32-bit float.
std::string ShortestFloatText(float value);

// Reads a number the way a grid cell is read: leading blanks skipped, the longest numeric
// prefix taken, anything else (or nothing) reads 0.
double Val(std::string_view text);

// True when the whole text (blanks around it aside) is a valid real number.
bool IsValidNumber(std::string_view text);

// A number typed or pasted with a decimal comma ("1,5168", "-0,5e-3": one comma, no point)
// comes back with a decimal point; any other text comes back as it is. Entries by the user
// go through this wherever a number is expected, so that a spreadsheet of a European locale
// pastes as it shows. Files are never read this way: their formats fix the point.
std::string DecimalPointText(std::string_view text);
// True when the whole text is a valid whole number in the 16-bit (or 32-bit) range.
bool IsValidInteger(std::string_view text);
// True when the whole text is a valid whole number in the 32-bit range.
bool IsValidLong(std::string_view text);

// Rounding to whole numbers, half to even (2.5 -> 2, 3.5 -> 4).
double RoundHalfEven(double value);
int16_t CInt(double value);  // half to even, saturating at the 16-bit range
int32_t CLng(double value);  // half to even, saturating at the 32-bit range

}  // namespace ostrel
