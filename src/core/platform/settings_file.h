#pragma once
// The per-user settings as an INI file, for the front ends without the toolkit. It is the
// same file, in the same format, that the desktop program's store keeps:
// $XDG_CONFIG_HOME/Ostrel/OstrelTD.ini (else ~/.config/Ostrel/OstrelTD.ini), with
// [Section] headings and key=value lines, so both front ends share the stored paths. With a
// data folder given, the file in that folder instead (PathIn).
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "core/platform/settings_store.h"

namespace ostrel {

class SettingsFile : public SettingsStore {
  public:
    explicit SettingsFile(std::string path);
    // The file the desktop program uses for this user.
    static std::string DefaultPath();
    // The file of a data folder given on the command line (both front ends): such a folder
    // holds its own settings, and the per-user file is left alone.
    static std::string PathIn(const std::string& dataFolder);
    static constexpr const char* kFileInDataFolder = "Settings.ini";

    std::string GetSetting(const std::string& section, const std::string& key,
                           const std::string& defaultValue) const override;
    // Stores the value and rewrites the file at once (failures are passed over: a setting
    // that cannot be kept is no reason to stop a command).
    void SaveSetting(const std::string& section, const std::string& key,
                     const std::string& value) override;

    const std::string& path() const { return path_; }

  private:
    void Read();
    bool Write() const;

    std::string path_;
    // Sections and their keys in file order.
    std::vector<std::pair<std::string, std::vector<std::pair<std::string, std::string>>>> data_;
};

// A value as the INI file holds it, and back: text with blanks at its ends, or with
// ',', ';', '=', '"' or a backslash is quoted and escaped.
std::string IniEscapeValue(const std::string& value);
std::string IniUnescapeValue(const std::string& text);

}  // namespace ostrel
