// ostrel-cli: the program's operations without a window, for scripting and batch work.
#include <CLI/CLI.hpp>
#include <iostream>

#include "cli/cli_context.h"
#include "core/platform/data_folder.h"
#include "core/platform/install_paths.h"
#include "core/platform/settings_file.h"

int main(int argc, char** argv) {
    using namespace ostrel::cli;
    CLI::App app{"Ostrel: custom optical materials from the command line", "ostrel-cli"};
    app.require_subcommand(1);
    CliDialogs dialogs(std::cerr);
    CliContext ctx;
    ctx.dialogs = &dialogs;
    ctx.out = &std::cout;
    ctx.err = &std::cerr;
    app.add_option("--data-dir", ctx.dataDir,
                   "Folder of the custom material list; it keeps its own settings too");
    app.add_option("--lumbrak", ctx.lumbrakDir,
                   "Folder holding STFenmarkExA.dat and SPFenmark.dat (name rules)");
    app.add_option("--answer", ctx.answer, "How every question box is answered")
        ->check(CLI::IsMember({"yes", "no"}));
    app.add_flag("--verbose", ctx.verbose, "Also print the one-time notices of the windows");
    app.set_version_flag("--version", std::string("ostrel-cli ") + ostrel::ProgramVersion(),
                         "Print the version and end");

    RegisterListCommands(app, ctx);
    RegisterOpticsCommands(app, ctx);
    RegisterImportCommands(app, ctx);
    RegisterExternalCommands(app, ctx);
    RegisterMeltCommands(app, ctx);
    RegisterGlassMapCommands(app, ctx);
    RegisterAboutCommand(app, ctx);

    try {
        app.parse(argc, argv);
    } catch (const CLI::ParseError& e) {
        int rc = app.exit(e);
        return rc == 0 ? kExitOk : kExitUsage;
    }
    // A data folder given is a whole installation of its own: its settings live in it too.
    ctx.settingsPath = ctx.dataDir.empty() ? ostrel::SettingsFile::DefaultPath()
                                           : ostrel::SettingsFile::PathIn(ctx.dataDir);
    if (ctx.dataDir.empty()) ctx.dataDir = ostrel::DefaultDataFolder();
    ostrel::SweepStaleTemporaries(ctx.dataDir, ctx.settingsPath);
    dialogs.answerYes = ctx.answer == "yes";
    if (!ctx.run) return kExitUsage;
    try {
        return ctx.run();
    } catch (const std::exception& e) {
        std::cerr << "Error: " << e.what() << '\n';
        return kExitRefused;
    }
}
