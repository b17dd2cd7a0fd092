#pragma once
// A fresh folder for one test, removed again afterwards.
#include <filesystem>
#include <string>

namespace ostrel::testing {

class TempDir {
  public:
    TempDir();
    ~TempDir();
    TempDir(const TempDir&) = delete;
    TempDir& operator=(const TempDir&) = delete;

    const std::filesystem::path& path() const { return path_; }
    std::filesystem::path operator/(const std::string& name) const { return path_ / name; }

  private:
    std::filesystem::path path_;
};

std::string ReadFileBytes(const std::filesystem::path& p);
void WriteFileBytes(const std::filesystem::path& p, const std::string& bytes);

}  // namespace ostrel::testing
