#pragma once
// The backup form inside the main window: the grid of the custom materials and the two
// commands that write some or all of them to a GLZ text file. Bound to frm5Export.
#include <QWidget>

#include "core/import/frm5_export.h"

class QGroupBox;
class QMdiArea;
class QMdiSubWindow;
class QPushButton;

namespace ostrel {
class CSApplication;
}

namespace ostrel::gui {

class GridView;

class frm5ExportWindow : public QWidget {
    Q_OBJECT
  public:
    // Puts itself into the frame's MDI area; it shows and hides with the unit's form.
    frm5ExportWindow(frm5Export& unit, CSApplication* app, QMdiArea* area);

    GridView* grid() const { return grid_; }
    QMdiSubWindow* subWindow() const { return sub_; }
    QPushButton* button(const char* name) const;

  private:
    void FollowForm();

    frm5Export& unit_;
    CSApplication* app_;
    GridView* grid_;
    QGroupBox* fraBackup_;
    QMdiSubWindow* sub_;
    Subscription formSub_;
    Subscription frameSub_;
};

}  // namespace ostrel::gui
