#pragma once
// Conversion between UTF-8 and the single-byte Windows-1252 code page used by every
// fixed text field on file.
#include <string>
#include <string_view>

namespace ostrel {

// One byte of Windows-1252 as a Unicode code point. Undefined bytes map to the C1 control
// of the same value, so that every byte survives a round trip.
char32_t Cp1252ToCodePoint(unsigned char byte);

// The Windows-1252 byte of a code point; '?' when the code page has no such character.
unsigned char CodePointToCp1252(char32_t cp);

std::string Cp1252ToUtf8(std::string_view bytes);
std::string Utf8ToCp1252(std::string_view utf8);

// Decodes one UTF-8 sequence at pos, advancing pos; invalid bytes decode as themselves
// (Latin-1), which lets plain 8-bit text pass through unharmed.
char32_t DecodeUtf8(std::string_view s, size_t& pos);
void AppendUtf8(std::string& out, char32_t cp);

}  // namespace ostrel
