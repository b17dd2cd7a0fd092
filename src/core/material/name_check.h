#pragma once
// The rule for a typed name or source: it is stored exactly as typed or not at all. The
// glass files hold one byte per character in the Western European code page
// (Windows-1252) and 30 characters per field, so a character outside that code page, a
// control character or a text longer than the field is refused with its reason, never
// replaced by "?" or cut short.
#include <cstddef>
#include <string>
#include <string_view>

#include "core/platform/dialogs.h"

namespace ostrel {

inline constexpr size_t kNameWidth = 30;

// Why the UTF-8 text `typed` cannot be stored as typed in a field of `width` characters;
// empty when it can. Blanks at both ends are no part of a name (every field is trimmed
// on use) and are not counted. The first offending character is named by its position.
std::string NameRefusal(std::string_view typed, size_t width = kNameWidth);

// The box a window shows for a refused entry: titled "Invalid Name" or "Invalid Source",
// the typed text on its own line (control characters shown as "?"), then the reason.
void ShowNameRefusal(Dialogs& dialogs, bool isSource, std::string_view typed,
                     const std::string& reason);

}  // namespace ostrel
