#pragma once
// The setup form: the folders of the three sibling programs, each with its browse button,
// and the Scan, OK and Cancel buttons, all bound to frm1Setup. It opens inside the main
// window's frame, or as a modal box over it when the unit asks for that.
#include <QWidget>

#include "core/external/frm1setup.h"

class QDialog;
class QLabel;
class QMdiArea;
class QMdiSubWindow;
class QPushButton;

namespace ostrel {
class CSApplication;
}

namespace ostrel::gui {

class frm1SetupWindow : public QWidget {
    Q_OBJECT
  public:
    frm1SetupWindow(frm1Setup& unit, CSApplication* app, QMdiArea* area);

    QMdiSubWindow* subWindow() const { return sub_; }
    // The window the form is shown in now (the sub-window, or the modal box).
    QWidget* host() const;
    QPushButton* button(const char* name) const;
    QLabel* label(const char* name) const;

  private:
    void FollowVisible();
    QDialog* ModalHost();

    frm1Setup& unit_;
    CSApplication* app_;
    QMdiSubWindow* sub_ = nullptr;
    QDialog* modal_ = nullptr;
    Subscription visibleSub_;
    Subscription searchSub_;
};

}  // namespace ostrel::gui
