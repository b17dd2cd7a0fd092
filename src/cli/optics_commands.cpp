#include <CLI/CLI.hpp>

#include "cli/cli_context.h"

namespace ostrel::cli {

void RegisterIndexFitCommands(CLI::App& app, CliContext& ctx);
void RegisterDerivedCommands(CLI::App& app, CliContext& ctx);

void RegisterOpticsCommands(CLI::App& app, CliContext& ctx) {
    RegisterIndexFitCommands(app, ctx);
    RegisterDerivedCommands(app, ctx);
}

}  // namespace ostrel::cli
