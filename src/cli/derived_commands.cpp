#include <CLI/CLI.hpp>

#include "cli/cli_context.h"

namespace ostrel::cli {

// glasscode, transtable
void RegisterDerivedCommands(CLI::App&, CliContext&) {}

}  // namespace ostrel::cli
