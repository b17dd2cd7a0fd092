#pragma once
// The per-user settings kept with QSettings (the program's title as application name).
#include "core/platform/settings_store.h"

namespace ostrel::gui {

class QtSettingsStore : public SettingsStore {
  public:
    std::string GetSetting(const std::string& section, const std::string& key,
                           const std::string& defaultValue) const override;
    void SaveSetting(const std::string& section, const std::string& key,
                     const std::string& value) override;
};

}  // namespace ostrel::gui
