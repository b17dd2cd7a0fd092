#pragma once
// The boxes of the desktop program: message boxes, input boxes, file dialogs, the busy
// pointer, the help line (which lets pending events run) and the browser.
#include <QPointer>
#include <QWidget>
#include <functional>
#include <memory>

#include "core/platform/dialogs.h"

class QMessageBox;

namespace ostrel::gui {

class QtDialogs : public Dialogs {
  public:
    QtDialogs() = default;
    // The window boxes are shown over.
    void SetOwner(QWidget* owner) { owner_ = owner; }
    // Where help notes go (the main window's help line).
    void SetHelpLine(std::function<void(const std::string&, bool)> sink) {
        helpLine_ = std::move(sink);
    }

    MsgAnswer MsgBox(const std::string& text, MsgButtons buttons, MsgIcon icon,
                     const std::string& title) override;
    std::optional<std::string> InputBox(const std::string& prompt, const std::string& title,
                                        const std::string& proposal) override;
    std::optional<std::string> FileOpen(const FileDialogSpec& spec) override;
    std::optional<std::string> FileSave(const FileDialogSpec& spec) override;
    std::optional<FileChoice> FileOpenFiltered(const FileDialogSpec& spec) override;
    void SetBusy(bool busy) override;
    void HelpNote(const std::string& text, bool bold) override;
    bool OpenUrl(const std::string& url) override;

  private:
    // Drops the input that arrived during busy work.
    void DropHeldInput();

    QPointer<QWidget> owner_;
    std::function<void(const std::string&, bool)> helpLine_;
    int busyDepth_ = 0;
};

// The message box MsgBox shows, built but not shown: the caller may also show it without
// waiting for an answer (the screenshot tour does).
std::unique_ptr<QMessageBox> MakeMessageBox(QWidget* owner, const std::string& text,
                                            MsgButtons buttons, MsgIcon icon,
                                            const std::string& title = "");

// "GLZ files (*.glz)|*.glz|All files (*.*)|*.*" -> "GLZ files (*.glz);;All files (*.*)"
QString QtFileFilter(const std::string& filter);

}  // namespace ostrel::gui
