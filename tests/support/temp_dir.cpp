#include "support/temp_dir.h"

#include <cstdlib>
#include <fstream>
#include <sstream>
#include <stdexcept>

namespace ostrel::testing {

TempDir::TempDir() {
    std::string pattern = (std::filesystem::temp_directory_path() / "ostrel-test-XXXXXX").string();
    if (!mkdtemp(pattern.data())) throw std::runtime_error("cannot make a temporary folder");
    path_ = pattern;
}

TempDir::~TempDir() {
    std::error_code ec;
    std::filesystem::permissions(path_, std::filesystem::perms::owner_all,
                                 std::filesystem::perm_options::add, ec);
    std::filesystem::remove_all(path_, ec);
}

std::string ReadFileBytes(const std::filesystem::path& p) {
    std::ifstream in(p, std::ios::binary);
    std::ostringstream ss;
    ss << in.rdbuf();
    return ss.str();
}

void WriteFileBytes(const std::filesystem::path& p, const std::string& bytes) {
    std::ofstream out(p, std::ios::binary | std::ios::trunc);
    out.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
}

}  // namespace ostrel::testing
