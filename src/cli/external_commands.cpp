#include <CLI/CLI.hpp>

#include "cli/cli_context.h"

namespace ostrel::cli {

// paths, update, remove, db, demo
void RegisterExternalCommands(CLI::App&, CliContext&) {}

}  // namespace ostrel::cli
