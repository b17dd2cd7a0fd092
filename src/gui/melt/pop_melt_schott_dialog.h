#pragma once
// The Schott melt sheet as a modal box: the nine figures of a sheet with the parent's
// figures beside them, the picture that starts a sheet from the parent, Show indices, OK
// and Cancel, bound to popMeltSchott. The box closes as soon as the unit has unloaded.
#include <array>

#include "core/melt/pop_melt_schott.h"
#include "gui/platform/unit_dialog.h"

class QLineEdit;
class QPushButton;
class QToolButton;

namespace ostrel {
class CSApplication;
}

namespace ostrel::gui {

class popMeltSchottDialog : public UnitDialog {
    Q_OBJECT
  public:
    // Built over a loaded unit (popMeltSchott::Load, which EnterSheet runs before its
    // showModal hook).
    popMeltSchottDialog(popMeltSchott& unit, CSApplication* app, QWidget* parent);

    // The modal loop for the unit's showModal hook.
    static void ShowModal(popMeltSchott& unit, CSApplication* app, QWidget* parent);

    // Fields 1 to 9.
    QLineEdit* field(int i) const { return fields_[static_cast<size_t>(i)]; }
    QToolButton* picture() const { return picture_; }

    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    popMeltSchott& unit_;
    std::array<QLineEdit*, popMeltSchott::kFields + 1> fields_{};
    QToolButton* picture_;
};

}  // namespace ostrel::gui
