#pragma once
// The edit commands of every form: copy, cut and paste of the active entry's selected text
// through the clipboard. A failure shows its box titled "CApplication" and changes nothing
// more.
#include <optional>
#include <string>

#include "core/platform/dialogs.h"

namespace ostrel {

// The system clipboard as the edit commands use it.
class ClipboardPort {
  public:
    virtual ~ClipboardPort() = default;
    virtual bool Clear() = 0;
    virtual bool SetText(const std::string& text) = 0;
    // The clipboard's text, or nothing when it holds none that can be read.
    virtual std::optional<std::string> GetText() = 0;
};

// The entry that has the focus.
class EditTarget {
  public:
    virtual ~EditTarget() = default;
    virtual std::string SelectedText() const = 0;
    // Puts `text` in place of the selection (an empty text deletes it); false when the
    // entry takes no text.
    virtual bool ReplaceSelection(const std::string& text) = 0;
};

class CSWindow {
  public:
    static constexpr const char* kTitle = "CApplication";
    static constexpr const char* kClearFailed = "Could not clear clipboard.";
    static constexpr const char* kCopyFailed =
        "Could not set text from active control to clipboard.";
    static constexpr const char* kPasteFailed =
        "Could not paste text from clipboard to active control.";

    CSWindow(ClipboardPort& clipboard, Dialogs& dialogs) : clip_(clipboard), dialogs_(dialogs) {}

    // Each answers true when the command was done.
    bool EditCopy(const EditTarget& target);
    bool EditCut(EditTarget& target);
    bool EditPaste(EditTarget& target);

  private:
    bool Fail(const char* text);

    ClipboardPort& clip_;
    Dialogs& dialogs_;
};

}  // namespace ostrel
