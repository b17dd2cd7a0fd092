#pragma once
// Runs the command-line program over a data folder and collects what it printed.
#include <string>

#include "support/temp_dir.h"

namespace ostrel::testing {

struct CliResult {
    int status = -1;
    std::string out;
    std::string err;
};

// The child's home folder, inside the test's folder (HOME, and the XDG folders under it).
inline constexpr const char* kCliHome = ".cli-home";

// args are appended after "--data-dir <dir>"; they go through the shell as written.
CliResult RunCliIn(const TempDir& dir, const std::string& args);
// The same with another data folder; output still goes through dir.
CliResult RunCliWithDataDir(const TempDir& dir, const std::string& dataDir,
                            const std::string& args);

}  // namespace ostrel::testing
