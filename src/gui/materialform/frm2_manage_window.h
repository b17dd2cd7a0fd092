#pragma once
// The managing form inside the main window (list side), and the picker of materials to
// delete.
#include <QDialog>
#include <QWidget>

#include "core/materialform/frm2_manage.h"

class QMdiArea;
class QMdiSubWindow;
class QPushButton;

namespace ostrel {
class CSApplication;
}

namespace ostrel::gui {

class GridView;

class frmGlassesDelDialog : public QDialog {
    Q_OBJECT
  public:
    frmGlassesDelDialog(frmGlassesDel& unit, QWidget* parent);

  private:
    Subscription closeSub_;
};

class frm2ManageWindow : public QWidget {
    Q_OBJECT
  public:
    // Puts itself into the frame's MDI area; it shows and hides with the unit's form.
    frm2ManageWindow(frm2Manage& unit, CSApplication* app, QMdiArea* area);

    GridView* grid() const { return grid_; }
    QMdiSubWindow* subWindow() const { return sub_; }
    QPushButton* button(const char* name) const;
    // Places a panel of another part of the form (the update frame) below the grid.
    void AddPanel(QWidget* panel);

  private:
    frm2Manage& unit_;
    CSApplication* app_;
    GridView* grid_;
    QMdiSubWindow* sub_;
    Subscription visibleSub_;
};

}  // namespace ostrel::gui
