#include <CLI/CLI.hpp>

#include "cli/cli_context.h"

namespace ostrel::cli {

// melt
void RegisterMeltCommands(CLI::App&, CliContext&) {}

}  // namespace ostrel::cli
