#pragma once
// Per-user settings (application, section, key). The desktop program keeps them with the
// toolkit's per-user store; tests use the in-memory store.
#include <map>
#include <string>
#include <tuple>

namespace ostrel {

class SettingsStore {
  public:
    virtual ~SettingsStore() = default;
    virtual std::string GetSetting(const std::string& section, const std::string& key,
                                   const std::string& defaultValue) const = 0;
    virtual void SaveSetting(const std::string& section, const std::string& key,
                             const std::string& value) = 0;
};

class MemorySettingsStore : public SettingsStore {
  public:
    std::string GetSetting(const std::string& section, const std::string& key,
                           const std::string& defaultValue) const override {
        auto it = values_.find({section, key});
        return it == values_.end() ? defaultValue : it->second;
    }
    void SaveSetting(const std::string& section, const std::string& key,
                     const std::string& value) override {
        values_[{section, key}] = value;
    }
    const std::map<std::pair<std::string, std::string>, std::string>& values() const {
        return values_;
    }

  private:
    std::map<std::pair<std::string, std::string>, std::string> values_;
};

}  // namespace ostrel
