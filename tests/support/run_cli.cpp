#include "support/run_cli.h"

#include <sys/wait.h>

#include <cstdlib>

namespace ostrel::testing {

CliResult RunCliIn(const TempDir& dir, const std::string& args) {
    return RunCliWithDataDir(dir, dir.path().string(), args);
}

CliResult RunCliWithDataDir(const TempDir& dir, const std::string& dataDir,
                            const std::string& args) {
    const auto out = dir / ".cli-stdout";
    const auto err = dir / ".cli-stderr";
    // The child's per-user folders lie in the test's folder: whatever a command does, the
    // settings and data of the person running the tests stay untouched.
    const std::string home = (dir / kCliHome).string();
    const std::string command = "HOME=\"" + home + "\" XDG_CONFIG_HOME=\"" + home +
                                "/.config\" XDG_DATA_HOME=\"" + home + "/.local/share\" \"" +
                                OSTREL_CLI_PATH + "\" --data-dir \"" + dataDir + "\" " + args +
                                " >\"" + out.string() + "\" 2>\"" + err.string() + "\" </dev/null";
    CliResult r;
    const int raw = std::system(command.c_str());
    r.status = WIFEXITED(raw) ? WEXITSTATUS(raw) : -1;
    r.out = ReadFileBytes(out);
    r.err = ReadFileBytes(err);
    std::error_code ec;
    std::filesystem::remove(out, ec);
    std::filesystem::remove(err, ec);
    return r;
}

}  // namespace ostrel::testing
