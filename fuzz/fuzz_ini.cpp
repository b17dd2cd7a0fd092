// The INI files: the window positions file of the data folder and the settings file. The
// input's first two lines name the section and the key looked up; the rest is the file.
// The value is also written back, which reads the file again and rebuilds it; for a plain
// section, key and value, reading the file once more must give the new value.
#include <cctype>
#include <string_view>

#include "core/platform/settings_file.h"
#include "core/shell/ini_file.h"
#include "fuzz_support.h"

using namespace ostrel;

namespace {

std::string TakeLine(std::string_view& text) {
    const size_t end = text.find('\n');
    std::string line(text.substr(0, end));
    text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
    return line;
}

// Letters and digits only, as the program's own sections and keys are.
bool Plain(const std::string& text) {
    if (text.empty() || text.size() > 40) return false;
    for (const char c : text) {
        if (!std::isalnum(static_cast<unsigned char>(c))) return false;
    }
    return true;
}

// Printable ASCII, short enough to be kept whole.
bool PlainValue(const std::string& text) {
    if (text.size() > 150) return false;
    for (const char c : text) {
        if (c < 0x20 || c > 0x7e) return false;
    }
    return true;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    std::string_view text(reinterpret_cast<const char*>(data), size);
    const std::string section = TakeLine(text);
    const std::string key = TakeLine(text);
    const auto* rest = reinterpret_cast<const uint8_t*>(text.data());

    fuzz::PutFile(IniFile::kFileName, rest, text.size());
    IniFile ini(fuzz::Folder());
    ini.IniGetInt(section, key);
    const std::string value = ini.IniGetText(section, key);
    const bool plain = Plain(section) && Plain(key);
    if (ini.IniPutText(section, key, value + "1") && plain && PlainValue(value)) {
        fuzz::Expect(ini.IniGetText(section, key) == value + "1", "a written value reads back");
    }

    const auto settingsPath = fuzz::PutFile("settings.ini", rest, text.size());
    SettingsFile settings(settingsPath.string());
    const std::string setting = settings.GetSetting(section, key, "none");
    settings.SaveSetting(section, key, setting + "1");
    if (plain && PlainValue(setting)) {
        const SettingsFile again(settingsPath.string());
        fuzz::Expect(again.GetSetting(section, key, "none") == setting + "1",
                     "a saved setting reads back");
    }
    return 0;
}
