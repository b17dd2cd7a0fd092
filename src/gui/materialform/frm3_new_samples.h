#pragma once
// Pictures of the material form: a sample crown glass typed in and fitted, each tab shown in
// turn, then the wavelength picker, the question of a close with unsaved changes and that of
// a fit that misses its data. Used by the program's --screenshots option.
#include <QString>
#include <functional>

class QWidget;

namespace ostrel {
class CSApplication;
class ManageForms;
class frm3New;
class popEditParamWave;
}  // namespace ostrel

namespace ostrel::gui {

class frm3NewWindow;

// `floating` (the floating list, may be null) is hidden meanwhile. `shot(file)` saves the
// screen under the file name.
void ShowMaterialFormSamples(ManageForms& forms, frm3New& unit, frm3NewWindow& window,
                             popEditParamWave& picker, CSApplication* app, QWidget* owner,
                             QWidget* floating, const std::function<void(const QString&)>& shot);

}  // namespace ostrel::gui
