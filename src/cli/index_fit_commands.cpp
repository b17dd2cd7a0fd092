#include <CLI/CLI.hpp>

#include "cli/cli_context.h"

namespace ostrel::cli {

// index, fit
void RegisterIndexFitCommands(CLI::App&, CliContext&) {}

}  // namespace ostrel::cli
