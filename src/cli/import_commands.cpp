#include <CLI/CLI.hpp>

#include "cli/cli_context.h"

namespace ostrel::cli {

// import, export
void RegisterImportCommands(CLI::App&, CliContext&) {}

}  // namespace ostrel::cli
