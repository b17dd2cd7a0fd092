#pragma once
// Everything modal that the logic may show. The logic never shows anything itself: the
// desktop program shows real boxes, the command line prints, tests script the answers.
#include <optional>
#include <string>

namespace ostrel {

enum class MsgButtons { OK, OKCancel, YesNo, YesNoCancel };
enum class MsgIcon { None, Information, Question, Exclamation, Critical };
enum class MsgAnswer { OK, Cancel, Yes, No };

struct FileDialogSpec {
    std::string filter;  // "GLZ files (*.glz)|*.glz|All files (*.*)|*.*"
    int filterIndex = 1;
    std::string defaultExt;
    std::string title;
    std::string initialPath;  // folder or full path proposed
};

// The file chosen in an open dialog and the filter (1-based) the user ended with.
struct FileChoice {
    std::string path;
    int filterIndex = 1;
};

class Dialogs {
  public:
    virtual ~Dialogs() = default;
    virtual MsgAnswer MsgBox(const std::string& text, MsgButtons buttons = MsgButtons::OK,
                             MsgIcon icon = MsgIcon::None, const std::string& title = {}) = 0;
    // The answer typed, or nothing when the user cancelled.
    virtual std::optional<std::string> InputBox(const std::string& prompt, const std::string& title,
                                                const std::string& proposal) = 0;
    virtual std::optional<std::string> FileOpen(const FileDialogSpec& spec) = 0;
    virtual std::optional<std::string> FileSave(const FileDialogSpec& spec) = 0;
    // An open dialog that opens with filter spec.filterIndex and tells which filter the
    // user ended with. Where a dialog cannot tell, FileOpen with the filter it opened with.
    virtual std::optional<FileChoice> FileOpenFiltered(const FileDialogSpec& spec) {
        std::optional<std::string> path = FileOpen(spec);
        if (!path) return std::nullopt;
        return FileChoice{std::move(*path), spec.filterIndex};
    }
    virtual void SetBusy(bool busy) = 0;
    // Progress and help text on the main window's help line; lets pending events run.
    virtual void HelpNote(const std::string& text, bool bold) = 0;
    // Asks the desktop to open an address; false when that failed.
    virtual bool OpenUrl(const std::string& url) = 0;
};

// Shows nothing and answers every box with its first button (OK or Yes); input and file
// boxes are cancelled. For batch work where nobody is there to answer.
class QuietDialogs : public Dialogs {
  public:
    MsgAnswer MsgBox(const std::string&, MsgButtons buttons, MsgIcon, const std::string&) override {
        return buttons == MsgButtons::YesNo || buttons == MsgButtons::YesNoCancel ? MsgAnswer::Yes
                                                                                  : MsgAnswer::OK;
    }
    std::optional<std::string> InputBox(const std::string&, const std::string&,
                                        const std::string&) override {
        return std::nullopt;
    }
    std::optional<std::string> FileOpen(const FileDialogSpec&) override { return std::nullopt; }
    std::optional<std::string> FileSave(const FileDialogSpec&) override { return std::nullopt; }
    void SetBusy(bool) override {}
    void HelpNote(const std::string&, bool) override {}
    bool OpenUrl(const std::string&) override { return false; }
};

// Turns the pointer busy for the length of a scope.
class BusyPointer {
  public:
    explicit BusyPointer(Dialogs& d) : d_(d) { d_.SetBusy(true); }
    ~BusyPointer() { d_.SetBusy(false); }
    BusyPointer(const BusyPointer&) = delete;
    BusyPointer& operator=(const BusyPointer&) = delete;

  private:
    Dialogs& d_;
};

}  // namespace ostrel
