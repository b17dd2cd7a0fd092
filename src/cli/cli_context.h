#pragma once
// What every ostrel-cli command shares: the global options and the Dialogs that answer
// question boxes without a terminal.
#include <functional>
#include <iosfwd>
#include <string>

#include "core/platform/dialogs.h"

namespace CLI {
class App;
}

namespace ostrel::cli {

// Question boxes are answered by --answer; every box is printed to stderr, one line per
// box, behind its title. Input boxes take the queued answers and then cancel.
class CliDialogs : public Dialogs {
  public:
    explicit CliDialogs(std::ostream& err) : err_(err) {}
    MsgAnswer MsgBox(const std::string& text, MsgButtons buttons, MsgIcon icon,
                     const std::string& title) override;
    std::optional<std::string> InputBox(const std::string& prompt, const std::string& title,
                                        const std::string& proposal) override;
    std::optional<std::string> FileOpen(const FileDialogSpec&) override { return std::nullopt; }
    std::optional<std::string> FileSave(const FileDialogSpec&) override { return std::nullopt; }
    void SetBusy(bool) override {}
    void HelpNote(const std::string&, bool) override {}
    bool OpenUrl(const std::string&) override { return false; }

    bool answerYes = true;
    std::vector<std::string> inputAnswers;

  private:
    std::ostream& err_;
    size_t nextInput_ = 0;
};

struct CliContext;

// The one-time notices of the windows ("Enhanced import" and the like). The command line
// shows a notice's text on stderr only with --verbose, and never asks whether to show it
// again: a script sees the same output on every run.
class CliNotices : public QuietDialogs {
  public:
    explicit CliNotices(const CliContext& ctx) : ctx_(ctx) {}
    MsgAnswer MsgBox(const std::string& text, MsgButtons buttons, MsgIcon icon,
                     const std::string& title) override;

  private:
    const CliContext& ctx_;
};

struct CliContext {
    std::string dataDir;     // the custom list's folder
    std::string lumbrakDir;  // folder of the catalogue and generic name files
    // The settings file: inside the data folder when one is given, else the per-user one.
    std::string settingsPath;
    std::string answer = "yes";
    bool verbose = false;  // print the one-time notices too
    CliDialogs* dialogs = nullptr;
    std::ostream* out = nullptr;
    std::ostream* err = nullptr;
    // Set by the chosen sub-command; returns the exit status.
    std::function<int()> run;
};

// Exit statuses.
constexpr int kExitOk = 0;
constexpr int kExitRefused = 1;
constexpr int kExitUsage = 2;

// Each group of commands registers itself here.
void RegisterListCommands(CLI::App& app, CliContext& ctx);
void RegisterOpticsCommands(CLI::App& app, CliContext& ctx);
void RegisterImportCommands(CLI::App& app, CliContext& ctx);
void RegisterExternalCommands(CLI::App& app, CliContext& ctx);
void RegisterMeltCommands(CLI::App& app, CliContext& ctx);
void RegisterGlassMapCommands(CLI::App& app, CliContext& ctx);
void RegisterAboutCommand(CLI::App& app, CliContext& ctx);

}  // namespace ostrel::cli
