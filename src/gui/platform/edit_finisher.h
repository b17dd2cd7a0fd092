#pragma once
// A typed value is never left out of a command. A text box takes what was typed in it when
// it is left (the focus moves on, or Enter); commands that leave the focus where it is (a
// button's Alt shortcut, a tool strip button, which never takes the focus, closing a window)
// would otherwise run before the box has taken its value, and a thickness or a dn/dt constant
// typed last would be missing from a save, or a form with such an edit would close without
// asking. Installed on the application, this object finishes the edit under way first.
#include <QObject>

namespace ostrel::gui {

class EditFinisher : public QObject {
  public:
    using QObject::QObject;

  protected:
    bool eventFilter(QObject* target, QEvent* event) override;
};

// Finishes the edit of the text box that has the focus (a box of a form or a grid cell being
// edited) as leaving it would, and gives the focus back to it (or to its grid).
void FinishEditUnderWay();

}  // namespace ostrel::gui
