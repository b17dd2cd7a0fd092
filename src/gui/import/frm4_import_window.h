#pragma once
// The import form inside the main window: the grid of staged glasses, the refit and skipped
// notes, the buttons that open, review and add, and a progress bar while a large file is
// read. Everything is bound to frm4Import.
#include <QWidget>
#include <cstddef>

#include "core/import/frm4_import.h"

class QCheckBox;
class QGroupBox;
class QLabel;
class QMdiArea;
class QMdiSubWindow;
class QProgressBar;
class QPushButton;

namespace ostrel {
class CSApplication;
}

namespace ostrel::gui {

class GridView;

class frm4ImportWindow : public QWidget {
    Q_OBJECT
  public:
    // Puts itself into the frame's MDI area; it shows and hides with the unit's form.
    frm4ImportWindow(frm4Import& unit, CSApplication* app, QMdiArea* area);

    // The unit's progress hook: shows the bar while a file is read and lets the window
    // repaint. User input waits until the read is over.
    void ShowProgress(std::size_t done, std::size_t total);

    GridView* grid() const { return grid_; }
    QMdiSubWindow* subWindow() const { return sub_; }
    QProgressBar* progressBar() const { return progress_; }
    QPushButton* button(const char* name) const;
    QLabel* label(const char* name) const;
    QCheckBox* checkBox(const char* name) const;

  private:
    void FollowForm();

    frm4Import& unit_;
    CSApplication* app_;
    GridView* grid_;
    QProgressBar* progress_;
    QGroupBox* fraUpdate_;
    QMdiSubWindow* sub_;
    Subscription formSub_;
    Subscription frameSub_;
};

}  // namespace ostrel::gui
