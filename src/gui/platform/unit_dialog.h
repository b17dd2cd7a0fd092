#pragma once
// A modal box over a logic unit that unloads itself: the box closes as soon as the unit is
// no longer open (accepted or not), Escape and the close box cancel as the unit's Cancel
// button does, and the box's place on the screen is kept between runs.
#include <QDialog>
#include <functional>

#include "gui/platform/form_widgets.h"

class QPushButton;

namespace ostrel {
class CSApplication;
}

namespace ostrel::gui {

class UnitDialog : public QDialog {
  public:
    struct UnitState {
        std::function<bool()> open;      // the unit is still loaded
        std::function<bool()> accepted;  // it unloaded through OK
        std::function<void()> cancel;    // its Cancel button
    };

    // formName names the box and its stored position; it must outlive the box.
    UnitDialog(UnitState state, CSApplication* app, const char* formName, QWidget* parent);
    ~UnitDialog() override;

    QPushButton* button(const char* name) const;

  protected:
    void reject() override;
    // Closes the box when the unit has unloaded; to be called after each of its commands.
    void FollowUnit();
    // The box's first size, then the place stored for it.
    void PlaceBox(QSize size);
    // The OK and Cancel row over the unit's buttons; the box follows the unit after each.
    template <class Unit>
    QHBoxLayout* OkCancelRow(Unit& unit) {
        return MakeOkCancelRow(
            this, unit.comOK, unit.comCancel,
            [this, &unit] {
                unit.comOKClick();
                FollowUnit();
            },
            [this, &unit] {
                unit.comCancelClick();
                FollowUnit();
            });
    }

  private:
    UnitState state_;
    CSApplication* app_;
    const char* formName_;
};

}  // namespace ostrel::gui
