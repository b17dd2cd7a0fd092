#include "core/platform/codepage.h"

#include <array>

namespace ostrel {
namespace {

// 0x80..0x9F of Windows-1252; zero marks a byte the code page leaves undefined.
constexpr std::array<char32_t, 32> kHigh = {
    0x20AC, 0,      0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0,      0x017D, 0,      0,      0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0,      0x017E, 0x0178};

}  // namespace

char32_t Cp1252ToCodePoint(unsigned char byte) {
    if (byte >= 0x80 && byte <= 0x9F) {
        char32_t cp = kHigh[byte - 0x80];
        return cp ? cp : byte;
    }
    return byte;
}

unsigned char CodePointToCp1252(char32_t cp) {
    if (cp < 0x80 || (cp >= 0xA0 && cp <= 0xFF)) return static_cast<unsigned char>(cp);
    for (size_t i = 0; i < kHigh.size(); ++i) {
        if (kHigh[i] == cp) return static_cast<unsigned char>(0x80 + i);
    }
    if (cp >= 0x80 && cp <= 0x9F && kHigh[cp - 0x80] == 0) return static_cast<unsigned char>(cp);
    return '?';
}

char32_t DecodeUtf8(std::string_view s, size_t& pos) {
    auto b0 = static_cast<unsigned char>(s[pos]);
    int len = b0 < 0x80 ? 1 : (b0 >> 5) == 6 ? 2 : (b0 >> 4) == 14 ? 3 : (b0 >> 3) == 30 ? 4 : 0;
    if (len == 1 || len == 0 || pos + len > s.size()) {
        ++pos;
        return b0;
    }
    char32_t cp = b0 & (0x7F >> len);
    for (int i = 1; i < len; ++i) {
        auto b = static_cast<unsigned char>(s[pos + i]);
        if ((b >> 6) != 2) {
            ++pos;
            return b0;
        }
        cp = (cp << 6) | (b & 0x3F);
    }
    pos += len;
    return cp;
}

void AppendUtf8(std::string& out, char32_t cp) {
    if (cp < 0x80) {
        out += static_cast<char>(cp);
    } else if (cp < 0x800) {
        out += static_cast<char>(0xC0 | (cp >> 6));
        out += static_cast<char>(0x80 | (cp & 0x3F));
    } else if (cp < 0x10000) {
        out += static_cast<char>(0xE0 | (cp >> 12));
        out += static_cast<char>(0x80 | ((cp >> 6) & 0x3F));
        out += static_cast<char>(0x80 | (cp & 0x3F));
    } else {
        out += static_cast<char>(0xF0 | (cp >> 18));
        out += static_cast<char>(0x80 | ((cp >> 12) & 0x3F));
        out += static_cast<char>(0x80 | ((cp >> 6) & 0x3F));
        out += static_cast<char>(0x80 | (cp & 0x3F));
    }
}

std::string Cp1252ToUtf8(std::string_view bytes) {
    std::string out;
    out.reserve(bytes.size());
    for (char c : bytes) AppendUtf8(out, Cp1252ToCodePoint(static_cast<unsigned char>(c)));
    return out;
}

std::string Utf8ToCp1252(std::string_view utf8) {
    std::string out;
    out.reserve(utf8.size());
    for (size_t pos = 0; pos < utf8.size();) {
        // Plain ASCII, most of any text, is the same in both and is taken a run at a time.
        size_t end = pos;
        while (end < utf8.size() && static_cast<unsigned char>(utf8[end]) < 0x80) ++end;
        out.append(utf8.substr(pos, end - pos));
        pos = end;
        if (pos < utf8.size()) out += static_cast<char>(CodePointToCp1252(DecodeUtf8(utf8, pos)));
    }
    return out;
}

}  // namespace ostrel
