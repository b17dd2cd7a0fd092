#include <CLI/CLI.hpp>

#include "cli/cli_context.h"

namespace ostrel::cli {

// Commands over the optical calculations: index, fit, glasscode, transtable.
void RegisterOpticsCommands(CLI::App&, CliContext&) {}

}  // namespace ostrel::cli
