#pragma once
// Restores and stores a window's place through the program's position store.
#include <functional>
#include <string>

class QMdiSubWindow;
class QWidget;

namespace ostrel {
class CSApplication;
class Control;
}  // namespace ostrel

namespace ostrel::gui {

void RestoreFormPosition(QWidget* w, const CSApplication* app, const std::string& formName,
                         bool mainForm);
void SaveFormPosition(QWidget* w, CSApplication* app, const std::string& formName);

// The sub-window takes the form's caption. When the form turns visible it shows at its stored
// place and takes the focus (`beforeShow` runs once the place is restored, `afterShow` at the
// end); when the form turns invisible it stores its place and hides.
void FollowFormVisible(QMdiSubWindow* sub, const Control& form, CSApplication* app,
                       const std::string& formName, const std::function<void()>& beforeShow = {},
                       const std::function<void()>& afterShow = {});

}  // namespace ostrel::gui
