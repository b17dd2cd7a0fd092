#pragma once
// The wavelength picker as a modal box over its caller: three tabs of standard wavelengths,
// the multiple pick check box, OK and Cancel, bound to popEditParamWave. A double click on a
// row picks it; the box closes as soon as the unit has hidden the form.

#include "core/wave/pop_edit_param_wave.h"
#include "gui/platform/unit_dialog.h"

class QCheckBox;
class QPushButton;
class QTabWidget;

namespace ostrel {
class CSApplication;
}

namespace ostrel::gui {

class GridView;

class popEditParamWaveWindow : public UnitDialog {
    Q_OBJECT
  public:
    // Built over a unit that has been loaded (popEditParamWave::Load, which Display runs
    // before its showModal hook).
    popEditParamWaveWindow(popEditParamWave& unit, CSApplication* app, QWidget* parent);

    // The modal loop for the unit's showModal hook.
    static void ShowModal(popEditParamWave& unit, CSApplication* app, QWidget* parent);

    GridView* grid(int tab) const { return grids_[tab]; }
    QTabWidget* tabs() const { return tabs_; }
    QCheckBox* multiBox() const { return multi_; }

  private:
    popEditParamWave& unit_;
    QTabWidget* tabs_;
    GridView* grids_[3] = {};
    QCheckBox* multi_;
};

}  // namespace ostrel::gui
