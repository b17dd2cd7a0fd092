#pragma once
// The floating list of custom materials: a tool window over the main window.
#include <QWidget>

#include "core/material/frm_glasses_list.h"

namespace ostrel {
class CSApplication;
}

class QDockWidget;
class QMainWindow;
class QMenu;

namespace ostrel::gui {

class GridView;

class frmGlassesListWindow : public QWidget {
    Q_OBJECT
  public:
    frmGlassesListWindow(frmGlassesList& unit, CSApplication* app, QWidget* owner);

    GridView* grid() const { return grid_; }
    // The menu of a selection of several rows.
    QMenu* selectionMenu() const { return selectionMenu_; }
    // Keeps the list inside the owner's frame while it floats.
    void ForceResize();
    // Puts the list in a dock of `main`, at the right side unless its stored place says
    // otherwise, where it never covers the form being worked in; it can still float. Its
    // place is stored when it closes and when the program ends. The dock's toggle view
    // action brings the list back once closed.
    QDockWidget* DockIn(QMainWindow* main);
    QDockWidget* dock() const { return dock_; }
    void SavePlace();
    // Docked, the list shows and hides with its dock.
    void setVisible(bool visible) override;

  signals:
    // The unit prepared the popup (the melt menu when `melt`): the owner opens it here.
    void popupRequested(const QPoint& globalPos, bool melt);

  protected:
    void closeEvent(QCloseEvent* e) override;

  private:
    frmGlassesList& unit_;
    CSApplication* app_;
    GridView* grid_;
    QMenu* selectionMenu_ = nullptr;
    QDockWidget* dock_ = nullptr;
};

}  // namespace ostrel::gui
