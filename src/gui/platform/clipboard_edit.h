#pragma once
// Copy, cut and paste of the focused entry's selected text through the system clipboard,
// with the failure boxes of CSWindow.
#include <QPointer>
#include <QWidget>

#include "core/shell/cs_window.h"
#include "core/shell/main_menu.h"

namespace ostrel::gui {

class QtClipboard : public ClipboardPort {
  public:
    bool Clear() override;
    bool SetText(const std::string& text) override;
    std::optional<std::string> GetText() override;
};

// A line edit or a text edit; any other widget has no selection and takes no text.
class WidgetEditTarget : public EditTarget {
  public:
    explicit WidgetEditTarget(QWidget* widget) : widget_(widget) {}
    std::string SelectedText() const override;
    bool ReplaceSelection(const std::string& text) override;

  private:
    QPointer<QWidget> widget_;
};

// The edit commands on the widget that has the focus.
bool EditCopy(Dialogs& dialogs);
bool EditCut(Dialogs& dialogs);
bool EditPaste(Dialogs& dialogs);
// Selects the whole text of the focused box, or every cell of the focused grid.
void EditSelectAll();
// The Edit menu's command on the focused box or grid, through the edit service above.
void RunEditCommand(EditCommand command, Dialogs& dialogs);

}  // namespace ostrel::gui
