#include "core/platform/text.h"

namespace ostrel {

std::string_view VbTrim(std::string_view s) {
    size_t b = s.find_first_not_of(' ');
    if (b == std::string_view::npos) return {};
    size_t e = s.find_last_not_of(' ');
    return s.substr(b, e - b + 1);
}

std::string VbTrimCopy(std::string_view s) {
    return std::string(VbTrim(s));
}

std::string UpperCp1252(std::string_view bytes) {
    std::string out(bytes);
    for (char& c : out) {
        auto b = static_cast<unsigned char>(c);
        if (b >= 'a' && b <= 'z') {
            c = static_cast<char>(b - 32);
        } else if ((b >= 0xE0 && b <= 0xFE && b != 0xF7)) {
            c = static_cast<char>(b - 32);
        } else if (b == 0x9A || b == 0x9C || b == 0x9E) {
            c = static_cast<char>(b - 16);  // š œ ž
        } else if (b == 0xFF) {
            c = static_cast<char>(0x9F);  // ÿ
        }
    }
    return out;
}

std::string UpperAscii(std::string_view s) {
    std::string out(s);
    for (char& c : out) {
        if (c >= 'a' && c <= 'z') c = static_cast<char>(c - 32);
    }
    return out;
}

std::vector<std::string> SplitLines(std::string_view s) {
    std::vector<std::string> lines;
    size_t start = 0;
    while (start <= s.size()) {
        size_t nl = s.find('\n', start);
        size_t end = nl == std::string_view::npos ? s.size() : nl;
        size_t len = end - start;
        if (len > 0 && s[start + len - 1] == '\r') --len;
        if (nl == std::string_view::npos) {
            if (len > 0) lines.emplace_back(s.substr(start, len));
            break;
        }
        lines.emplace_back(s.substr(start, len));
        start = nl + 1;
    }
    return lines;
}

}  // namespace ostrel
