#include <CLI/CLI.hpp>

#include "cli/cli_context.h"

namespace ostrel::cli {

// list, show, delete, duplicate
void RegisterListCommands(CLI::App&, CliContext&) {}

}  // namespace ostrel::cli
