#pragma once
// The archive form inside the main window: the catalogue program's current glasses and its
// archived glasses side by side, the commands that move the selected rows between them,
// and the sort order of both grids, all bound to frm6Archive.
#include <QWidget>

#include "core/external/frm6_archive.h"

class QComboBox;
class QMdiArea;
class QMdiSubWindow;
class QPushButton;

namespace ostrel {
class CSApplication;
}

namespace ostrel::gui {

class GridView;

class frm6ArchiveWindow : public QWidget {
    Q_OBJECT
  public:
    // Puts itself into the frame's MDI area; it shows and hides with the unit's form.
    frm6ArchiveWindow(frm6Archive& unit, CSApplication* app, QMdiArea* area);

    GridView* gridCurr() const { return curr_; }
    GridView* gridArchive() const { return archive_; }
    QMdiSubWindow* subWindow() const { return sub_; }
    QPushButton* button(const char* name) const;
    QComboBox* sortOrder() const { return sort_; }

  private:
    GridView* MakeGrid(const char* name, Grid& grid, void (frm6Archive::*click)(int, int));

    frm6Archive& unit_;
    CSApplication* app_;
    GridView* curr_;
    GridView* archive_;
    QComboBox* sort_;
    QMdiSubWindow* sub_;
    Subscription visibleSub_;
};

}  // namespace ostrel::gui
