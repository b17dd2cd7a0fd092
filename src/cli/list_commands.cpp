// list, show, delete, duplicate: the custom list from the command line.
#include <CLI/CLI.hpp>
#include <ostream>

#include "cli/arguments.h"
#include "cli/cli_context.h"
#include "cli/cli_list.h"
#include "cli/record_json.h"
#include "core/material/list_operations.h"
#include "core/platform/text.h"

namespace ostrel::cli {
namespace {

// Dumps JSON with invalid UTF-8 replaced rather than thrown on.
std::string Dump(const nlohmann::ordered_json& j) {
    return j.dump(2, ' ', false, nlohmann::ordered_json::error_handler_t::replace);
}

}  // namespace

void RegisterListCommands(CLI::App& app, CliContext& ctx) {
    struct Args {
        bool json = false;
        int index = 0;
        std::string newName;
    };
    auto args = std::make_shared<Args>();

    auto* list = app.add_subcommand("list", "The custom materials in list order");
    list->add_flag("--json", args->json, "Write JSON instead of tab-separated text");
    list->callback([&ctx, args] {
        ctx.run = [&ctx, args] {
            // Only the listed fields of each record are read; the whole list is loaded when
            // that cannot be done (an older file to convert, a file that cannot be read).
            auto entries = GlassesList::ReadListedSummaries(ctx.dataDir);
            if (!entries) {
                CliList opened(ctx);
                if (!opened.Open()) return kExitRefused;
                entries.emplace();
                entries->reserve(opened.list().CustomList().size());
                for (const auto& rec : opened.list().CustomList()) {
                    entries->push_back(SummaryOf(rec));
                }
            }
            if (args->json) {
                *ctx.out << ListToJsonText(*entries) << '\n';
            } else {
                std::string text;
                for (size_t i = 0; i < entries->size(); ++i) {
                    text += std::to_string(i + 1);
                    text += '\t';
                    text += (*entries)[i].GlassName.Text();
                    text += '\t';
                    text += (*entries)[i].Source.Text();
                    text += '\n';
                }
                *ctx.out << text;
            }
            return kExitOk;
        };
    });

    auto* show = app.add_subcommand("show", "Every field of one material");
    show->add_option("N", args->index, "Position in the list, from 1")->required();
    show->add_flag("--json", args->json, "Write JSON (the only format)");
    show->callback([&ctx, args] {
        ctx.run = [&ctx, args] {
            // Only material N is read from the list file; the whole list is loaded when
            // that cannot be done (an older file to convert, N beyond the list).
            if (auto one = GlassesList::ReadListedMaterial(ctx.dataDir, args->index)) {
                *ctx.out << Dump(RecordToJson(*one)) << '\n';
                return kExitOk;
            }
            CliList opened(ctx);
            if (!opened.Open()) return kExitRefused;
            if (!opened.CheckIndex(args->index)) return kExitUsage;
            MaterialRecord rec;
            opened.list().GetMaterial(args->index, rec);
            *ctx.out << Dump(RecordToJson(rec)) << '\n';
            return kExitOk;
        };
    });

    auto* del = app.add_subcommand("delete", "Delete one material (asks first)");
    del->add_option("N", args->index, "Position in the list, from 1")->required();
    del->callback([&ctx, args] {
        ctx.run = [&ctx, args] {
            CliList opened(ctx);
            if (!opened.Open()) return kExitRefused;
            if (!opened.CheckIndex(args->index)) return kExitUsage;
            return DeleteMaterial(opened.list(), opened.dialogs(), args->index) ? kExitOk
                                                                                : kExitRefused;
        };
    });

    auto* dup = app.add_subcommand("duplicate", "Copy one material under a new name");
    dup->add_option("N", args->index, "Position in the list, from 1")->required();
    dup->add_option("NEWNAME", args->newName, "Name of the copy")->required()->check(StoredName());
    dup->callback([&ctx, args] {
        ctx.run = [&ctx, args] {
            CliList opened(ctx);
            if (!opened.Open()) return kExitRefused;
            if (!opened.CheckIndex(args->index)) return kExitUsage;
            // The name rule is asked first, so that a refusal says why and a failed save
            // is reported as that alone.
            MaterialRecord copy;
            opened.list().GetMaterial(args->index, copy);
            copy.General.GlassName.Set(VbTrimCopy(args->newName));
            std::string message;
            if (!opened.list().CheckOverwrite(copy, true, message)) {
                // The first line says why; a question that may follow is the window's.
                *ctx.err << "No copy was made: " << message.substr(0, message.find('\n')) << '\n';
                return kExitRefused;
            }
            ctx.dialogs->inputAnswers = {args->newName};
            return DuplicateMaterial(opened.list(), opened.dialogs(), args->index) ? kExitOk
                                                                                   : kExitRefused;
        };
    });
}

}  // namespace ostrel::cli
