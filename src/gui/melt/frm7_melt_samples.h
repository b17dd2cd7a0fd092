#pragma once
// Pictures of the melt maker: a parent picked from a demo catalogue database made in a
// temporary folder, a melt typed in and fitted, one of four visible pairs with its shaded
// plot and comparison report, then the parent picker and the Schott melt sheet. Used by the
// program's --screenshots option.
#include <QString>
#include <functional>

class QWidget;

namespace ostrel {
class CNewMsg;
class CSApplication;
class Dialogs;
class ManageForms;
class frm7Melt;
}  // namespace ostrel

namespace ostrel::gui {

class frm7MeltWindow;

// The demo catalogue shipped with the program's sources, looked for from the program's
// folder upward; empty when there is none.
QString FindDemoCatalogue();

// `floating` (the floating list, may be null) is hidden meanwhile. `shot(file)` lets the
// windows settle and saves the screen under the file name. Does nothing when the demo
// catalogue cannot be found or installed.
void ShowMeltFormSamples(ManageForms& forms, frm7Melt& unit, frm7MeltWindow& window,
                         Dialogs& dialogs, CNewMsg& newMsg, CSApplication* app, QWidget* owner,
                         QWidget* floating, const std::function<void(const QString&)>& shot);

}  // namespace ostrel::gui
