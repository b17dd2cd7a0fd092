#pragma once
// One line binds a widget to a control model: the widget takes the model's state at once
// and follows every later change. The binding ends with the widget.
#include <QString>
#include <functional>

#include "core/platform/controls.h"

class QAbstractButton;
class QAction;
class QComboBox;
class QLabel;
class QLineEdit;
class QListWidget;
class QTabWidget;
class QTimer;
class QWidget;

namespace ostrel::gui {

QString ToQt(const std::string& utf8);
std::string FromQt(const QString& text);

// Caption (with its "&" shortcut), tool tip, enabled, visible, and for toggle buttons the
// pressed state (set without firing `clicked`).
void Bind(QAbstractButton* button, Button& model);
void Bind(QAction* action, Button& model);
void Bind(QAbstractButton* box, CheckBox& model);
// Caption as text, bold type.
void Bind(QLabel* label, Label& model);
// Caption and back colour.
void Bind(QLabel* panel, Panel& model);
// A panel that holds other widgets: back colour, enabled, visible.
void BindPanel(QWidget* panel, Panel& model);
void Bind(QLineEdit* edit, TextBox& model);
// A number box as a text box; an entry that is no number, once finished, is marked in red,
// its tool tip and the help line saying why it is ignored.
void Bind(QLineEdit* edit, NumberBox& model);
// Where the boxes and grids say why an entry is ignored: the main window's help line.
void SetEntryNoteSink(std::function<void(const std::string&)> sink);
void EntryNote(const std::string& text);
// Items, current item and (multi-select) selection; the user's choices are written back.
void Bind(QListWidget* list, ListControl& model);
// Runs `pick` when the user picks a row of a single-selection list bound to `model`, by mouse
// or by the arrow keys, after the binding has taken the row into the model. Tabbing into the
// list makes a row current without selecting it: that picks nothing. Queued, `pick` runs
// after the list has finished with the user's event (for a unit that refills the list).
void OnPick(QListWidget* list, ListControl& model, std::function<void()> pick, bool queued = false);
void Bind(QComboBox* combo, ListControl& model);
void Bind(QTabWidget* tabs, TabStrip& model);
void Bind(QTimer* timer, Timer& model);
// The window title, enabled and visible of a whole window.
void BindWindow(QWidget* window, Control& model);

}  // namespace ostrel::gui
