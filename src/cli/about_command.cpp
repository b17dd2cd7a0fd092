// about: the program's version and the installed data it found.
#include <CLI/CLI.hpp>
#include <nlohmann/json.hpp>
#include <ostream>

#include "cli/cli_context.h"
#include "core/platform/install_paths.h"

namespace ostrel::cli {

void RegisterAboutCommand(CLI::App& app, CliContext& ctx) {
    auto json = std::make_shared<bool>(false);
    auto* about = app.add_subcommand(
        "about", "The version, and the installed guide and demonstration catalogue");
    about->add_flag("--json", *json, "Write JSON instead of tab-separated text");
    about->callback([&ctx, json] {
        ctx.run = [&ctx, json] {
            const std::string program = RunningProgramPath();
            nlohmann::ordered_json j;
            j["version"] = ProgramVersion();
            j["program"] = program;
            j["guide"] = InstalledDataFolder(InstalledData::Guide, program);
            j["demoCatalogue"] = InstalledDemoCatalogue(program);
            if (*json) {
                *ctx.out << j.dump(2) << '\n';
            } else {
                for (const auto& [key, value] : j.items()) {
                    *ctx.out << key << '\t' << value.get<std::string>() << '\n';
                }
            }
            return kExitOk;
        };
    });
}

}  // namespace ostrel::cli
