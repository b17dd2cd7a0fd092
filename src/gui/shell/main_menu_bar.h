#pragma once
// The main window's menu bar, built from MainMenu: one QMenu per menu, one QAction per
// item bound to its Button model, with the platform's standard key and Ctrl+number for the
// items that stand for a tool button.
#include <QKeySequence>

#include "core/shell/main_menu.h"

class QAction;
class QMainWindow;
class QMenuBar;

namespace ostrel::gui {

// The platform's key sequence of a standard key (empty for None).
QKeySequence StandardSequence(MenuKey key);
// Every key sequence of the item: its standard key, then Ctrl+number for a tool item.
QList<QKeySequence> ItemSequences(const MenuItem& item);
// Builds the bar on the window; returns it.
QMenuBar* BuildMenuBar(QMainWindow* window, MainMenu& menu);
// The Edit command sent to the focused widget as the key the desktop uses for it, so that
// a box or a grid does what its own key does.
void SendEditCommand(EditCommand command);

}  // namespace ostrel::gui
