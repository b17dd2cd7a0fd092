#include "core/platform/data_folder.h"

#include <cstdlib>
#include <filesystem>

#include "core/platform/file_io.h"
#include "core/platform/settings_file.h"

namespace ostrel {

std::string DefaultDataFolder() {
    std::filesystem::path base;
    if (const char* xdg = std::getenv("XDG_DATA_HOME"); xdg && *xdg) {
        base = xdg;
    } else if (const char* home = std::getenv("HOME"); home && *home) {
        base = std::filesystem::path(home) / ".local" / "share";
    } else {
        base = std::filesystem::temp_directory_path();
    }
    return (base / "Ostrel").string();
}

int SweepStaleTemporaries(const std::string& dataFolder, const std::string& settingsPath) {
    const std::filesystem::path settings(settingsPath.empty() ? SettingsFile::DefaultPath()
                                                              : settingsPath);
    int removed = RemoveStaleTemporaries(dataFolder);
    if (settings.parent_path() != std::filesystem::path(dataFolder)) {
        removed += RemoveStaleTemporaries(settings.parent_path());
    }
    return removed;
}

}  // namespace ostrel
