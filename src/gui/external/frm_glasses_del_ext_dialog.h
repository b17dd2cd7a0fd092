#pragma once
// The modal picker of custom materials to take out of a sibling program, bound to
// frmGlassesDelExt.
#include <QDialog>

#include "core/external/frm_glasses_del_ext.h"

class QListWidget;
class QPushButton;
class QRadioButton;

namespace ostrel::gui {

class frmGlassesDelExtDialog : public QDialog {
    Q_OBJECT
  public:
    frmGlassesDelExtDialog(frmGlassesDelExt& unit, QWidget* parent);

    QListWidget* list() const { return list_; }
    QRadioButton* option(int index) const { return options_[index]; }
    QPushButton* button(const char* name) const;

  public slots:
    // The close box and Escape cancel, as the Cancel button does.
    void reject() override;

  private:
    // Ends the dialog once the unit has closed the form.
    void FollowClosed();

    frmGlassesDelExt& unit_;
    QListWidget* list_;
    QRadioButton* options_[2];
};

}  // namespace ostrel::gui
