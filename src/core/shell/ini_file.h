#pragma once
// OstrelTD.INI in the data folder: form positions, one [section] per form with key=value
// lines. Sections and keys match regardless of case. Every call reads the file afresh;
// a change rewrites the whole file through a temporary file, so that a failure leaves the
// old file as it was.
#include <cstdint>
#include <filesystem>
#include <string>

namespace ostrel {

class IniFile {
  public:
    static constexpr const char* kFileName = "OstrelTD.INI";

    explicit IniFile(std::filesystem::path folder) : path_(std::move(folder) / kFileName) {}

    // The whole number at the start of the value (after blanks, with an optional sign);
    // 0 when the key is absent or the value does not start with a number.
    int32_t IniGetInt(const std::string& section, const std::string& key) const;
    // At most 200 characters of the value, every NUL turned into a blank, trimmed;
    // "" when the key is absent.
    std::string IniGetText(const std::string& section, const std::string& key) const;
    // Writes the value, adding the section and key if needed. False when the file could
    // not be written.
    bool IniPutText(const std::string& section, const std::string& key, const std::string& value);

    const std::filesystem::path& path() const { return path_; }

  private:
    bool Find(const std::string& section, const std::string& key, std::string& value) const;

    std::filesystem::path path_;
};

}  // namespace ostrel
