#pragma once
// A form's place in the main window's MDI area: the sub-window that holds it and its close box.
#include <QSize>
#include <QString>
#include <functional>

class QIcon;
class QMdiArea;
class QMdiSubWindow;
class QWidget;

namespace ostrel::gui {

// Enter and Escape that the focused widget leaves press the form's default button and its
// cancel button ("comCancel", else "comOK"). Every form in the MDI area has them.
void InstallFormKeys(QWidget* form);

// Puts `form` into `area` as a hidden sub-window with `icon` and `title`, `size` large (or,
// with `atLeast`, its own size hint but no smaller than `size`). While `isOpen()` holds, its
// close box leaves it open and runs `close` instead, the form's own way of closing.
QMdiSubWindow* AddFormSubWindow(QMdiArea* area, QWidget* form, const QIcon& icon,
                                const QString& title, QSize size, std::function<bool()> isOpen,
                                std::function<void()> close, bool atLeast = false);

}  // namespace ostrel::gui
