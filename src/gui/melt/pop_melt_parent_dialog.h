#pragma once
// The parent picker of the melt maker as a modal box: the makers, the sort order, the
// glasses of the chosen maker, OK and Cancel, bound to popMeltParent. The box closes as
// soon as the unit has unloaded.
#include <QDialog>

#include "core/melt/pop_melt_parent.h"

class QComboBox;
class QLabel;
class QListWidget;
class QPushButton;

namespace ostrel {
class CSApplication;
}

namespace ostrel::gui {

class GridView;

class popMeltParentDialog : public QDialog {
    Q_OBJECT
  public:
    // Built over a loaded unit (popMeltParent::Load, which PickParent runs before its
    // showModal hook).
    popMeltParentDialog(popMeltParent& unit, CSApplication* app, QWidget* parent);
    ~popMeltParentDialog() override;

    // The modal loop for the unit's showModal hook.
    static void ShowModal(popMeltParent& unit, CSApplication* app, QWidget* parent);

    GridView* grid() const { return grid_; }
    QListWidget* makers() const { return makers_; }
    QComboBox* sortOrder() const { return sort_; }
    QPushButton* button(const char* name) const;

  protected:
    void reject() override;

  private:
    void FollowUnit();

    popMeltParent& unit_;
    CSApplication* app_;
    GridView* grid_;
    QListWidget* makers_;
    QComboBox* sort_;
    Subscription gridShown_;
};

}  // namespace ostrel::gui
