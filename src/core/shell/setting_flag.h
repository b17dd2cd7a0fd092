#pragma once
// Flags kept as text in the per-user settings: written "True" / "False"; read back from
// those words in any case or from a number (non-zero is true, as -1 has always been).
#include <string>

#include "core/platform/number_text.h"
#include "core/platform/text.h"

namespace ostrel {

inline bool SettingFlag(const std::string& text, bool defaultValue) {
    const std::string t = UpperAscii(VbTrimCopy(text));
    if (t == "TRUE") return true;
    if (t == "FALSE") return false;
    if (IsValidNumber(t)) return Val(t) != 0.0;
    return defaultValue;
}

inline std::string FlagText(bool value) {
    return value ? "True" : "False";
}

}  // namespace ostrel
