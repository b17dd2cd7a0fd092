#include "core/platform/data_folder.h"

#include <cstdlib>
#include <filesystem>

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

}  // namespace ostrel
