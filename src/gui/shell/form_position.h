#pragma once
// Restores and stores a window's place through the program's position store.
#include <string>

class QWidget;

namespace ostrel {
class CSApplication;
}

namespace ostrel::gui {

void RestoreFormPosition(QWidget* w, const CSApplication* app, const std::string& formName,
                         bool mainForm);
void SaveFormPosition(QWidget* w, CSApplication* app, const std::string& formName);

}  // namespace ostrel::gui
