#include "fuzz_support.h"

#include <unistd.h>

#include <cstdlib>
#include <fstream>
#include <stdexcept>

namespace ostrel::fuzz {
namespace fs = std::filesystem;

namespace {

fs::path MakeFolder() {
    const char* base = std::getenv("TMPDIR");
    std::string pattern = std::string(base && *base ? base : "/tmp") + "/ostrel-fuzz-XXXXXX";
    if (::mkdtemp(pattern.data()) == nullptr) throw std::runtime_error("no temporary folder");
    return pattern;
}

}  // namespace

const fs::path& Folder() {
    static const fs::path folder = [] {
        fs::path made = MakeFolder();
        std::atexit([] {
            std::error_code ec;
            fs::remove_all(Folder(), ec);
        });
        return made;
    }();
    return folder;
}

fs::path PutFile(const std::string& name, const uint8_t* data, size_t size) {
    const fs::path path = Folder() / name;
    std::error_code ec;
    fs::create_directories(path.parent_path(), ec);
    std::ofstream out(path, std::ios::binary | std::ios::trunc);
    out.write(reinterpret_cast<const char*>(data), static_cast<std::streamsize>(size));
    return path;
}

void ClearFolder() {
    std::error_code ec;
    for (const auto& entry : fs::directory_iterator(Folder(), ec)) fs::remove_all(entry, ec);
}

}  // namespace ostrel::fuzz
