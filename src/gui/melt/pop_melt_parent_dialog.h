#pragma once
// The parent picker of the melt maker as a modal box: the makers, the sort order, the
// glasses of the chosen maker, OK and Cancel, bound to popMeltParent. The box closes as
// soon as the unit has unloaded.

#include "core/melt/pop_melt_parent.h"
#include "gui/platform/unit_dialog.h"

class QComboBox;
class QLabel;
class QListWidget;
class QPushButton;

namespace ostrel {
class CSApplication;
}

namespace ostrel::gui {

class GridView;

class popMeltParentDialog : public UnitDialog {
    Q_OBJECT
  public:
    // Built over a loaded unit (popMeltParent::Load, which PickParent runs before its
    // showModal hook).
    popMeltParentDialog(popMeltParent& unit, CSApplication* app, QWidget* parent);

    // The modal loop for the unit's showModal hook.
    static void ShowModal(popMeltParent& unit, CSApplication* app, QWidget* parent);

    GridView* grid() const { return grid_; }
    QListWidget* makers() const { return makers_; }
    QComboBox* sortOrder() const { return sort_; }

  private:
    popMeltParent& unit_;
    GridView* grid_;
    QListWidget* makers_;
    QComboBox* sort_;
    Subscription gridShown_;
};

}  // namespace ostrel::gui
