#pragma once
// The melt maker inside the main window's frame: the parent and its melt code, the grid of
// measured pairs, the wavebands, the fit and its reports, and the plot of the melt's index
// difference from its parent, all bound to frm7Melt.
#include <QWidget>
#include <array>

#include "core/melt/frm7melt.h"

class QEventLoop;
class QLabel;
class QLineEdit;
class QListWidget;
class QMdiArea;
class QMdiSubWindow;
class QPushButton;

namespace ostrel {
class CSApplication;
}

namespace ostrel::gui {

class GridView;
class MeltDeltaPlot;

class frm7MeltWindow : public QWidget {
    Q_OBJECT
  public:
    // Puts itself, hidden, into the frame's MDI area.
    frm7MeltWindow(frm7Melt& unit, CSApplication* app, QMdiArea* area);

    // The unit's show and close hooks. With modal true ShowForm returns when the form has
    // closed.
    void ShowForm(bool modal);
    void CloseForm();

    QMdiSubWindow* subWindow() const { return sub_; }
    GridView* grid() const { return grid_; }
    MeltDeltaPlot* plot() const { return plot_; }
    QPushButton* button(const char* name) const;
    QLabel* label(const char* name) const;
    QLineEdit* edit(const char* name) const;
    QListWidget* list(const char* name) const;

    // Redraws the plot from the unit.
    void RefreshPlot();

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    QPushButton* MakeButton(QWidget* parent, const char* name, Button& model,
                            void (frm7Melt::*click)());
    QWidget* BuildSide();

    frm7Melt& unit_;
    CSApplication* app_;
    QMdiSubWindow* sub_ = nullptr;
    GridView* grid_ = nullptr;
    MeltDeltaPlot* plot_ = nullptr;
    QLineEdit* code_ = nullptr;
    QEventLoop* modalLoop_ = nullptr;
    std::array<Subscription, 2> subs_;
};

}  // namespace ostrel::gui
