#include "core/shell/ini_file.h"

#include <cstdlib>
#include <vector>

#include "core/platform/file_io.h"
#include "core/platform/text.h"

namespace ostrel {

namespace {

constexpr std::size_t kMaxText = 200;

std::string TrimSpace(std::string_view s) {
    std::size_t a = s.find_first_not_of(" \t");
    if (a == std::string_view::npos) return {};
    std::size_t b = s.find_last_not_of(" \t");
    return std::string(s.substr(a, b - a + 1));
}

bool SameName(std::string_view a, std::string_view b) {
    return UpperAscii(a) == UpperAscii(b);
}

// The section name of a "[name]" line, or false.
bool SectionLine(const std::string& line, std::string& name) {
    std::string t = TrimSpace(line);
    if (t.size() < 2 || t.front() != '[') return false;
    std::size_t close = t.find(']');
    if (close == std::string::npos) return false;
    name = TrimSpace(std::string_view(t).substr(1, close - 1));
    return true;
}

// Key and value of a "key=value" line, or false.
bool KeyLine(const std::string& line, std::string& key, std::string& value) {
    std::size_t eq = line.find('=');
    if (eq == std::string::npos) return false;
    key = TrimSpace(std::string_view(line).substr(0, eq));
    value = TrimSpace(std::string_view(line).substr(eq + 1));
    return !key.empty();
}

std::vector<std::string> ReadLines(const std::filesystem::path& path) {
    std::string content;
    FileError error;
    std::vector<std::string> lines;
    if (!ReadWholeFile(path, content, error)) return lines;
    std::string line;
    for (char c : content) {
        if (c == '\n') {
            if (!line.empty() && line.back() == '\r') line.pop_back();
            lines.push_back(line);
            line.clear();
        } else {
            line.push_back(c);
        }
    }
    if (!line.empty()) lines.push_back(line);
    return lines;
}

}  // namespace

bool IniFile::Find(const std::string& section, const std::string& key, std::string& value) const {
    bool inSection = false;
    for (const std::string& line : ReadLines(path_)) {
        std::string name, k, v;
        if (SectionLine(line, name)) {
            inSection = SameName(name, section);
        } else if (inSection && KeyLine(line, k, v) && SameName(k, key)) {
            // A value in quotes is taken without them.
            if (v.size() >= 2 && v.front() == '"' && v.back() == '"') v = v.substr(1, v.size() - 2);
            value = v;
            return true;
        }
    }
    return false;
}

int32_t IniFile::IniGetInt(const std::string& section, const std::string& key) const {
    std::string value;
    if (!Find(section, key, value)) return 0;
    const char* p = value.c_str();
    bool neg = false;
    if (*p == '+' || *p == '-') neg = *p++ == '-';
    int64_t v = 0;
    for (; *p >= '0' && *p <= '9'; ++p) {
        v = v * 10 + (*p - '0');
        if (v > 0x7fffffffLL) break;
    }
    if (neg) v = -v;
    return static_cast<int32_t>(v);
}

std::string IniFile::IniGetText(const std::string& section, const std::string& key) const {
    std::string value;
    if (!Find(section, key, value)) return {};
    if (value.size() > kMaxText) value.resize(kMaxText);
    for (char& c : value)
        if (c == '\0') c = ' ';
    return VbTrimCopy(value);
}

bool IniFile::IniPutText(const std::string& section, const std::string& key,
                         const std::string& value) {
    std::vector<std::string> lines = ReadLines(path_);
    bool inSection = false;
    bool sectionSeen = false;
    std::size_t insertAt = lines.size();  // behind the last line of the section
    bool done = false;
    for (std::size_t i = 0; i < lines.size() && !done; ++i) {
        std::string name, k, v;
        if (SectionLine(lines[i], name)) {
            if (inSection) break;
            inSection = SameName(name, section);
            if (inSection) {
                sectionSeen = true;
                insertAt = i + 1;
            }
        } else if (inSection) {
            if (KeyLine(lines[i], k, v) && SameName(k, key)) {
                lines[i] = k + "=" + value;
                done = true;
            } else if (!TrimSpace(lines[i]).empty()) {
                insertAt = i + 1;
            }
        }
    }
    if (!done) {
        if (sectionSeen) {
            lines.insert(lines.begin() + static_cast<std::ptrdiff_t>(insertAt), key + "=" + value);
        } else {
            if (!lines.empty() && !TrimSpace(lines.back()).empty()) lines.emplace_back();
            lines.push_back("[" + section + "]");
            lines.push_back(key + "=" + value);
        }
    }
    std::string content;
    for (const std::string& line : lines) content += line + "\r\n";
    FileError error;
    return WriteFileAtomic(path_, content, error);
}

}  // namespace ostrel
