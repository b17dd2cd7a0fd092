#pragma once
// Text helpers shared by the importers and the GLZ writer: decoding a whole file to the
// single-byte code page, splitting lines, strict number reading, blank-separated tokens,
// and the number text of the GLZ format.
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "core/platform/quick_decimal.h"

namespace ostrel {

// Progress of a long read: parts (lines or bytes) done of the whole. Called now and then,
// last with done == total.
using ImportProgress = std::function<void(size_t done, size_t total)>;

// Decodes file bytes to Windows-1252: UTF-16LE / UTF-16BE by their byte-order mark, UTF-8
// (with or without its mark) when the bytes are valid UTF-8, otherwise the bytes as they
// are (8-bit Latin-1 / Windows-1252 files).
std::string DecodeTextFile(std::string_view bytes);
// The same, taking over the bytes when they need no conversion.
std::string DecodeTextFile(std::string&& bytes);

// Splits at CR LF, a bare CR or a bare LF. A final line end does not start another line.
// The views point into text.
std::vector<std::string_view> SplitTextLines(std::string_view text);
// Where the line starting at `from` ends: its first CR or LF, or the end of the text.
size_t LineEnd(std::string_view text, size_t from);
// Where the line ending at `end` (LineEnd) is followed by the next: past CR LF, CR or LF.
inline size_t NextLineStart(std::string_view text, size_t end) {
    if (end >= text.size()) return text.size();
    return end + (text[end] == '\r' && end + 1 < text.size() && text[end + 1] == '\n' ? 2 : 1);
}

// Reads a whole token (blanks around it allowed) as a number: optional sign, digits with an
// optional decimal point (".5", "5.", "0.5"), optional exponent of any width ("1.5E-10",
// "1.5e-010"). False for anything else, the empty text included. ParseNumber is the same.
bool ParseNumberInFull(std::string_view token, double& value);
// The common case inline: a word of a split line (no blanks at its ends) of the quick form.
inline bool ParseNumber(std::string_view token, double& value) {
    if (!token.empty() && token.front() != ' ' && token.front() != '\t' && token.back() != ' ' &&
        token.back() != '\t') {
        const bool negative = token.front() == '-';
        const std::string_view t = negative || token.front() == '+' ? token.substr(1) : token;
        if (double quick = 0; QuickDecimal(t, quick)) {
            value = negative ? -quick : quick;
            return true;
        }
    }
    return ParseNumberInFull(token, value);
}

// A number rounded half to even into a 16-bit or 32-bit integer; false when it lies out of
// range.
bool ToInt16(double value, int16_t& out);
bool ToInt32(double value, int32_t& out);

// Tokens separated by runs of blanks or tabs; no empty tokens.
std::vector<std::string_view> SplitBlanks(std::string_view s);
// The same into `tokens` (cleared first), so that a reader can reuse one vector per line.
void SplitBlanks(std::string_view s, std::vector<std::string_view>& tokens);
// The first `most` words of s (fewer when it has fewer) into words; returns how many. The
// rest of the line is not looked at.
size_t FirstWords(std::string_view s, std::string_view* words, size_t most);

// Runs of blanks (and tabs) reduced to one blank.
std::string SqueezeBlanks(std::string_view s);

// Number texts of the GLZ format: the shortest text that reads back to the same value,
// with a leading zero and an upper-case exponent ("0.5", "1.5E-10").
std::string GlzNumber(double value);
std::string GlzNumber(float value);
std::string GlzNumber(int16_t value);

// A value as text the way the importers store numbers in text fields: up to 7 significant
// digits, no trailing zeros ("8.2", "15", "0.0027").
std::string ShortNumberText(double value);

// The reason given when a field that must be a number is not: the field in quotes, cut to
// its first 30 characters and with control characters shown as "?", so that a damaged
// file cannot fill a message box.
std::string NoNumberReason(std::string_view field);

}  // namespace ostrel
