#include "core/platform/install_paths.h"

#include <filesystem>

#include "ostrel_version.h"

namespace ostrel {

namespace fs = std::filesystem;

const char* ProgramVersion() {
    return OSTREL_VERSION;
}

std::string RunningProgramPath() {
    std::error_code ec;
    const fs::path self = fs::read_symlink("/proc/self/exe", ec);
    return ec ? std::string() : self.string();
}

std::string InstalledDataFolder(InstalledData kind, const std::string& programPath) {
    if (programPath.empty()) return {};
    const fs::path below =
        kind == InstalledData::Guide ? fs::path("share/doc/ostrel") : fs::path("share/ostrel");
    std::error_code ec;
    fs::path dir = fs::absolute(fs::path(programPath), ec).parent_path();
    for (int level = 0; level <= 4 && !ec; ++level) {
        const fs::path candidate = dir / below;
        std::error_code missing;
        if (fs::is_directory(candidate, missing)) return candidate.string();
        if (!dir.has_parent_path() || dir.parent_path() == dir) break;
        dir = dir.parent_path();
    }
    return {};
}

std::string InstalledDemoCatalogue(const std::string& programPath) {
    const std::string folder = InstalledDataFolder(InstalledData::DemoCatalogue, programPath);
    if (folder.empty()) return {};
    // The catalogue's name as the demonstration installation knows it.
    const fs::path file = fs::path(folder) / "demo_glasses.csv";
    std::error_code ec;
    return fs::is_regular_file(file, ec) ? file.string() : std::string();
}

}  // namespace ostrel
