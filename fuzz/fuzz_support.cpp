#include "fuzz_support.h"

#include <unistd.h>

#include <cstdio>
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

void Expect(bool holds, const char* what) {
    if (holds) return;
    std::fprintf(stderr, "broken rule: %s\n", what);
    std::abort();
}

void CheckRecords(const std::vector<MaterialRecord>& records) {
    for (const MaterialRecord& rec : records) {
        const int16_t index = rec.General.IndexPoints;
        const int16_t trans = rec.Measured.TransPoints;
        Expect(index >= 0 && index <= kMaxIndexPoints, "index points fit their table");
        Expect(trans >= 0 && trans <= kMaxTransPoints, "transmission points fit their table");
        Expect(rec.Melt.MeltIndexPoints >= 0 && rec.Melt.MeltIndexPoints <= kMaxMeltPoints,
               "melt index points fit their table");
        Expect(rec.Melt.MeltTransPoints >= 0 && rec.Melt.MeltTransPoints <= kMaxMeltPoints,
               "melt transmission points fit their table");
    }
}

}  // namespace ostrel::fuzz
