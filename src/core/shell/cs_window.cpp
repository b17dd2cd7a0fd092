#include "core/shell/cs_window.h"

namespace ostrel {

bool CSWindow::Fail(const char* text) {
    dialogs_.MsgBox(text, MsgButtons::OK, MsgIcon::Exclamation, kTitle);
    return false;
}

bool CSWindow::EditCopy(const EditTarget& target) {
    if (!clip_.Clear()) return Fail(kClearFailed);
    if (!clip_.SetText(target.SelectedText())) return Fail(kCopyFailed);
    return true;
}

bool CSWindow::EditCut(EditTarget& target) {
    // The selection goes only once it is safely on the clipboard.
    if (!EditCopy(target)) return false;
    target.ReplaceSelection("");
    return true;
}

bool CSWindow::EditPaste(EditTarget& target) {
    const std::optional<std::string> text = clip_.GetText();
    if (!text || !target.ReplaceSelection(*text)) return Fail(kPasteFailed);
    return true;
}

}  // namespace ostrel
