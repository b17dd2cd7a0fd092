// import, export: material text files from the command line.
#include <CLI/CLI.hpp>
#include <filesystem>
#include <ostream>

#include "cli/arguments.h"
#include "cli/cli_context.h"
#include "cli/cli_list.h"
#include "cli/record_json.h"
#include "core/import/frm4_import.h"
#include "core/import/glz_writer.h"
#include "core/platform/settings_store.h"
#include "core/platform/text.h"
#include "core/shell/new_msg.h"

namespace ostrel::cli {
namespace {

int TypeFromName(const std::string& text) {
    const std::string t = UpperAscii(text);
    const char* names[] = {"GLZ", "GLA", "GLS", "GLC", "AGF"};
    for (int i = 0; i < 5; ++i) {
        if (t == names[i] || t == std::string(".") + names[i]) return i + 1;
    }
    return 0;
}

// The summary of one file read, for stderr: "a.agf: 12 staged, 3 refitted" and, when
// glasses were passed over, how many and why.
std::string FileSummary(const std::string& file, frm4Import& form) {
    std::string line = file + ": " + std::to_string(form.ImportCount()) + " staged, " +
                       std::to_string(form.RefitCount()) + " refitted";
    if (!form.lblSkipped.caption.get().empty()) line += "; " + form.lblSkipped.caption.get();
    return line;
}

}  // namespace

void RegisterImportCommands(CLI::App& app, CliContext& ctx) {
    struct Args {
        std::vector<std::string> files;
        std::string type;
        bool refitAll = false;
        bool json = false;
        bool addAll = false;
        std::vector<int> add;
        std::string renameSource;
        std::string out;
        bool all = false;
        std::vector<int> range;
    };
    auto args = std::make_shared<Args>();

    auto* imp = app.add_subcommand("import", "Read material text files into the import grid");
    imp->add_option("FILE", args->files, "GLZ, GLA, GLS, GLC or AGF files")
        ->required()
        ->check(NotAFolder());
    imp->add_option("--type", args->type, "glz|gla|gls|glc|agf (default: from the extension)");
    imp->add_flag("--refit-all", args->refitAll, "Refit AGF formulas that have no stored form");
    imp->add_flag("--json", args->json, "Write the staged records as JSON");
    auto* addAll = imp->add_flag("--add-all", args->addAll, "Add every staged material");
    imp->add_option("--add", args->add, "Add staged materials FIRST..LAST (one file only)")
        ->expected(2)
        ->excludes(addAll);
    imp->add_option("--rename-source", args->renameSource, "New source of the staged materials")
        ->check(StoredName());
    imp->callback([&ctx, args] {
        ctx.run = [&ctx, args] {
            if (!RangeInOrder(args->add, *ctx.err)) return kExitUsage;
            const bool several = args->files.size() > 1;
            if (several && !args->add.empty()) {
                *ctx.err << "--add takes one file; give --add-all to add from several\n";
                return kExitUsage;
            }
            // Every type is known before any file is read.
            std::vector<int> types;
            for (const auto& file : args->files) {
                const int type = TypeFromName(args->type.empty()
                                                  ? std::filesystem::path(file).extension().string()
                                                  : args->type);
                if (type == 0) {
                    *ctx.err << "Unknown file type of " << file
                             << "; give --type glz|gla|gls|glc|agf\n";
                    return kExitUsage;
                }
                types.push_back(type);
            }
            CliList opened(ctx);
            if (!opened.Open()) return kExitRefused;
            // The windows' one-time notices: printed only with --verbose.
            CliNotices notices(ctx);
            MemorySettingsStore settings;
            CNewMsg newMsg(notices, settings);

            int status = kExitOk;
            auto staged = nlohmann::ordered_json::array();
            bool headed = false;
            // Each file is read by a fresh import form, as the window reads it, into the
            // same list; with several files each row names its file first.
            for (size_t f = 0; f < args->files.size(); ++f) {
                const std::string& file = args->files[f];
                frm4Import form(opened.list(), opened.dialogs(), settings, newMsg, ctx.dataDir);
                form.chkRefitOther.value = args->refitAll;
                const bool read = form.ImportFile(file, types[f]);
                if (!args->renameSource.empty()) {
                    ctx.dialogs->inputAnswers.push_back(args->renameSource);
                    form.comRenameSourceClick();
                }
                *ctx.err << FileSummary(file, form) << '\n';
                if (args->json) {
                    for (int i = 0; i < form.ImportCount(); ++i) {
                        const auto k = static_cast<size_t>(i);
                        nlohmann::ordered_json j;
                        j["file"] = file;
                        j["record"] = RecordToJson(form.StagedRecord(k));
                        j["refitError"] = form.RefitErrors()[k];
                        j["status"] = form.ssGlasses.Text(frm4Import::kColStatus, i + 1);
                        j["check"] = form.CheckTexts()[k];
                        staged.push_back(std::move(j));
                    }
                } else {
                    const auto& g = form.ssGlasses;
                    if (!headed) {
                        if (several) *ctx.out << "File\t";
                        for (int c = 1; c <= g.MaxCols(); ++c) {
                            *ctx.out << g.Column(c).title << (c < g.MaxCols() ? '\t' : '\n');
                        }
                        headed = true;
                    }
                    for (int r = 1; r <= g.MaxRows(); ++r) {
                        if (several) *ctx.out << file << '\t';
                        for (int c = 1; c <= g.MaxCols(); ++c) {
                            *ctx.out << g.Text(c, r) << (c < g.MaxCols() ? '\t' : '\n');
                        }
                    }
                }
                if (!read) {
                    status = kExitRefused;
                    continue;
                }
                bool added = true;
                if (args->addAll) {
                    added = form.AddRange(1, form.ImportCount());
                } else if (args->add.size() == 2) {
                    if (!RangeInside(args->add[0], args->add[1], form.ImportCount(),
                                     "staged materials", "in an import of", *ctx.err))
                        return kExitUsage;
                    added = form.AddRange(args->add[0], args->add[1]);
                }
                if (!added) status = kExitRefused;
            }
            if (args->json) {
                *ctx.out << staged.dump(2, ' ', false,
                                        nlohmann::ordered_json::error_handler_t::replace)
                         << '\n';
            }
            return status;
        };
    });

    auto* exp = app.add_subcommand("export", "Back up custom materials to a GLZ text file");
    exp->add_option("OUT", args->out, "The GLZ file to write")->required()->check(NotAFolder());
    auto* all = exp->add_flag("--all", args->all, "Every material of the list");
    exp->add_option("RANGE", args->range, "FIRST [LAST] list positions")
        ->expected(1, 2)
        ->excludes(all);
    exp->callback([&ctx, args] {
        ctx.run = [&ctx, args] {
            if (!args->all && args->range.empty()) {
                *ctx.err << "Give --all or FIRST [LAST]\n";
                return kExitUsage;
            }
            CliList opened(ctx);
            if (!opened.Open()) return kExitRefused;
            std::vector<MaterialRecord> copy = opened.list().CopyListOut();
            const int size = static_cast<int>(copy.size());
            if (size == 0) {
                *ctx.err << "There are no glasses to backup!\n";
                return kExitRefused;
            }
            int first = 1, last = size;
            if (!args->all) {
                first = args->range[0];
                last = args->range.size() > 1 ? args->range[1] : first;
                if (!RangeInside(first, last, size, "materials", "in a list of", *ctx.err))
                    return kExitUsage;
            }
            SystemClock clock;
            FileError error;
            if (!WriteGlzFile({}, args->out, copy, first, last, clock.Now(), error)) {
                *ctx.err << "File save error: " << error.message << '\n';
                return kExitRefused;
            }
            return kExitOk;
        };
    });
}

}  // namespace ostrel::cli
