#include "core/material/name_check.h"

#include <cstdio>

#include "core/platform/codepage.h"
#include "core/platform/text.h"

namespace ostrel {
namespace {

bool IsControl(char32_t cp) {
    return cp < 0x20 || (cp >= 0x7F && cp <= 0x9F);
}

std::string ControlName(char32_t cp) {
    switch (cp) {
        case 0:
            return "NUL";
        case '\t':
            return "tab";
        case '\n':
            return "line break";
        case '\r':
            return "carriage return";
        default:
            break;
    }
    char buf[16];
    std::snprintf(buf, sizeof buf, "U+%04X", static_cast<unsigned>(cp));
    return buf;
}

// True when the sequence decoded at [from, to) is the UTF-8 form of cp; a byte that is
// no UTF-8 decodes as itself and fails this test.
bool WellFormed(std::string_view s, size_t from, size_t to, char32_t cp) {
    std::string again;
    AppendUtf8(again, cp);
    return s.substr(from, to - from) == again;
}

}  // namespace

std::string NameRefusal(std::string_view typed, size_t width) {
    const std::string_view text = VbTrim(typed);
    size_t count = 0;
    for (size_t pos = 0; pos < text.size();) {
        const size_t from = pos;
        const char32_t cp = DecodeUtf8(text, pos);
        ++count;
        const std::string at = "Character " + std::to_string(count);
        if (!WellFormed(text, from, pos, cp)) {
            char buf[8];
            std::snprintf(buf, sizeof buf, "0x%02X", static_cast<unsigned char>(text[from]));
            return at + " (byte " + buf + ") is no UTF-8 text";
        }
        if (IsControl(cp)) {
            return at + " is a control character (" + ControlName(cp) +
                   "), which a name or source cannot hold";
        }
        if (CodePointToCp1252(cp) == '?' && cp != '?') {
            char code[16];
            std::snprintf(code, sizeof code, "U+%04X", static_cast<unsigned>(cp));
            return at + ", \"" + std::string(text.substr(from, pos - from)) + "\" (" + code +
                   "), is not one of the Western European (Windows-1252) characters that the "
                   "glass files hold";
        }
    }
    if (count > width) {
        return "It has " + std::to_string(count) + " characters, " + std::to_string(count - width) +
               " more than the " + std::to_string(width) + " a name or source can hold";
    }
    return {};
}

void ShowNameRefusal(Dialogs& dialogs, bool isSource, std::string_view typed,
                     const std::string& reason) {
    std::string shown;
    for (size_t pos = 0; pos < typed.size();) {
        const size_t from = pos;
        const char32_t cp = DecodeUtf8(typed, pos);
        if (IsControl(cp) || !WellFormed(typed, from, pos, cp)) {
            shown += '?';
        } else {
            shown.append(typed.substr(from, pos - from));
        }
    }
    dialogs.MsgBox("    '" + shown + "\n" + reason + ": try again.", MsgButtons::OK,
                   MsgIcon::Exclamation, isSource ? "Invalid Source" : "Invalid Name");
}

}  // namespace ostrel
