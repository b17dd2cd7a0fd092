#pragma once
// The per-user settings kept with QSettings (the program's title as application name), or
// in the given INI file: the settings file of a data folder given on the command line.
#include <string>
#include <utility>

#include "core/platform/settings_store.h"

namespace ostrel::gui {

class QtSettingsStore : public SettingsStore {
  public:
    // An empty path keeps the per-user settings.
    explicit QtSettingsStore(std::string path = {}) : path_(std::move(path)) {}

    std::string GetSetting(const std::string& section, const std::string& key,
                           const std::string& defaultValue) const override;
    void SaveSetting(const std::string& section, const std::string& key,
                     const std::string& value) override;

  private:
    std::string path_;
};

}  // namespace ostrel::gui
