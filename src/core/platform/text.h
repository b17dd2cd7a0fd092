#pragma once
// Small text helpers with the program's rules: trimming removes blanks only.
#include <string>
#include <string_view>
#include <vector>

namespace ostrel {

// Removes blanks (and nothing else) from both ends.
std::string_view VbTrim(std::string_view s);
std::string VbTrimCopy(std::string_view s);
// Upper case of the ASCII letters and the Windows-1252 accented letters (bytes).
std::string UpperCp1252(std::string_view bytes);
// Upper case of ASCII letters in a UTF-8 text; other characters as they are.
std::string UpperAscii(std::string_view s);
std::vector<std::string> SplitLines(std::string_view s);

}  // namespace ostrel
