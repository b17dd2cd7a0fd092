#include "core/platform/settings_file.h"

#include <algorithm>
#include <cstdlib>
#include <filesystem>

#include "core/platform/file_io.h"
#include "core/platform/maker.h"
#include "core/platform/text.h"

namespace ostrel {

SettingsFile::SettingsFile(std::string path) : path_(std::move(path)) {
    Read();
}

std::string SettingsFile::DefaultPath() {
    std::string base;
    if (const char* xdg = std::getenv("XDG_CONFIG_HOME"); xdg && *xdg) {
        base = xdg;
    } else if (const char* home = std::getenv("HOME"); home && *home) {
        base = std::string(home) + "/.config";
    } else {
        base = ".";
    }
    return base + "/Ostrel/" + maker::kProgramTitle + ".ini";
}

std::string SettingsFile::PathIn(const std::string& dataFolder) {
    return (std::filesystem::path(dataFolder) / kFileInDataFolder).string();
}

std::string IniEscapeValue(const std::string& value) {
    bool quote = !value.empty() && (value.front() == ' ' || value.back() == ' ');
    std::string body;
    for (char c : value) {
        if (c == '\\' || c == '"') {
            body += '\\';
            quote = true;
        } else if (c == ',' || c == ';' || c == '=') {
            quote = true;
        }
        if (c == '\n') {
            body += "\\n";
            quote = true;
            continue;
        }
        body += c;
    }
    return quote ? "\"" + body + "\"" : body;
}

std::string IniUnescapeValue(const std::string& text) {
    std::string t = VbTrimCopy(text);
    std::string out;
    bool inQuotes = false;
    for (size_t i = 0; i < t.size(); ++i) {
        const char c = t[i];
        if (c == '"') {
            inQuotes = !inQuotes;
        } else if (c == '\\' && i + 1 < t.size()) {
            const char n = t[++i];
            out += n == 'n' ? '\n' : n == 't' ? '\t' : n;
        } else if (c == ';' && !inQuotes) {
            break;
        } else {
            out += c;
        }
    }
    return out;
}

void SettingsFile::Read() {
    data_.clear();
    std::string content;
    FileError error;
    if (!ReadWholeFile(path_, content, error)) return;
    for (const std::string& raw : SplitLines(content)) {
        const std::string line = VbTrimCopy(raw);
        if (line.empty() || line[0] == ';' || line[0] == '#') continue;
        // A line that opens with a bracket is a section or nothing: as a key it would be
        // written back as a line that reads as a section, and move the keys after it.
        if (line.front() == '[') {
            if (line.back() == ']') data_.push_back({line.substr(1, line.size() - 2), {}});
            continue;
        }
        const auto eq = line.find('=');
        if (eq == std::string::npos) continue;
        if (data_.empty()) data_.push_back({"General", {}});
        data_.back().second.emplace_back(VbTrimCopy(line.substr(0, eq)),
                                         IniUnescapeValue(line.substr(eq + 1)));
    }
}

bool SettingsFile::Write() const {
    std::string out;
    for (const auto& [section, keys] : data_) {
        if (!out.empty()) out += "\n";
        out += "[" + section + "]\n";
        for (const auto& [key, value] : keys) out += key + "=" + IniEscapeValue(value) + "\n";
    }
    std::error_code ec;
    std::filesystem::create_directories(std::filesystem::path(path_).parent_path(), ec);
    FileError error;
    return WriteFileAtomic(path_, out, error);
}

std::string SettingsFile::GetSetting(const std::string& section, const std::string& key,
                                     const std::string& defaultValue) const {
    for (const auto& [s, keys] : data_) {
        if (s != section) continue;
        for (const auto& [k, v] : keys) {
            if (k == key) return v;
        }
    }
    return defaultValue;
}

void SettingsFile::SaveSetting(const std::string& section, const std::string& key,
                               const std::string& value) {
    Read();  // another front end may have written meanwhile
    auto it = std::find_if(data_.begin(), data_.end(), [&](auto& s) { return s.first == section; });
    if (it == data_.end()) {
        data_.push_back({section, {}});
        it = std::prev(data_.end());
    }
    auto kit = std::find_if(it->second.begin(), it->second.end(),
                            [&](auto& kv) { return kv.first == key; });
    if (kit == it->second.end()) {
        it->second.emplace_back(key, value);
    } else {
        kit->second = value;
    }
    Write();
}

}  // namespace ostrel
