#pragma once
// The diagnostic trace Lumbrak.Log in the data folder. Off by default: while it is off,
// LogOpen, LogWrite and LogClose do nothing. Each call opens the file, writes and closes it.
#include <filesystem>
#include <string>

#include "core/platform/clock.h"

namespace ostrel {

class cLog {
  public:
    static constexpr const char* kFileName = "Lumbrak.Log";

    cLog(std::filesystem::path folder, const Clock& clock)
        : path_(std::move(folder) / kFileName), clock_(clock) {}

    void SetEnabled(bool on) { enabled_ = on; }
    bool IsEnabled() const { return enabled_; }

    // Deletes the old file (a failure is passed over) and starts a new one with
    // "Log Opened " and the time.
    void LogOpen();
    // Writes "Log Closed " and the time.
    void LogClose();
    // Writes one line.
    void LogWrite(const std::string& szMsg);

    const std::filesystem::path& path() const { return path_; }

  private:
    void Append(const std::string& line);
    std::string TimeText() const;

    std::filesystem::path path_;
    const Clock& clock_;
    bool enabled_ = false;
};

}  // namespace ostrel
