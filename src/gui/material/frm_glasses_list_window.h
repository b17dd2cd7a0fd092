#pragma once
// The floating list of custom materials: a tool window over the main window.
#include <QWidget>

#include "core/material/frm_glasses_list.h"

namespace ostrel {
class CSApplication;
}

namespace ostrel::gui {

class GridView;

class frmGlassesListWindow : public QWidget {
    Q_OBJECT
  public:
    frmGlassesListWindow(frmGlassesList& unit, CSApplication* app, QWidget* owner);

    GridView* grid() const { return grid_; }
    // Keeps the list inside the owner's frame.
    void ForceResize();

  signals:
    // The unit prepared the popup: the owner opens it here.
    void popupRequested(const QPoint& globalPos);

  protected:
    void closeEvent(QCloseEvent* e) override;

  private:
    frmGlassesList& unit_;
    CSApplication* app_;
    GridView* grid_;
};

}  // namespace ostrel::gui
