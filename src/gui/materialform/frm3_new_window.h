#pragma once
// The material form inside the main window's frame: the tabs General, Index, Trans, dn/dt
// and Other, the five status panels and the form's commands, all bound to frm3New, with the
// plots of the index fit and of the transmission.
#include <QWidget>
#include <array>

#include "core/materialform/frm3new.h"

class QComboBox;
class QLabel;
class QLineEdit;
class QListWidget;
class QMdiArea;
class QMdiSubWindow;
class QPushButton;
class QTabWidget;

namespace ostrel {
class CSApplication;
}

namespace ostrel::gui {

class GridView;
class IndexPlot;
class TransPlot;

class frm3NewWindow : public QWidget {
    Q_OBJECT
  public:
    // Puts itself into the frame's MDI area; it shows and hides with the unit's form.
    frm3NewWindow(frm3New& unit, CSApplication* app, QMdiArea* area);

    QMdiSubWindow* subWindow() const { return sub_; }
    QTabWidget* tabs() const { return tabs_; }
    GridView* grid(const char* name) const;
    QPushButton* button(const char* name) const;
    QLabel* label(const char* name) const;
    QLineEdit* edit(const char* name) const;
    QComboBox* combo(const char* name) const;
    IndexPlot* indexPlot() const { return indexPlot_; }
    TransPlot* transPlot() const { return transPlot_; }

    // Redraws the plots from the unit (after every event that can change their data).
    void RefreshPlots();

  private:
    QWidget* BuildGeneralTab();
    QWidget* BuildIndexTab();
    QWidget* BuildTransTab();
    QWidget* BuildDndtTab();
    QWidget* BuildOtherTab();
    QPushButton* MakeButton(QWidget* parent, const char* name, Button& model,
                            void (frm3New::*click)());
    QComboBox* MakeCombo(QWidget* parent, const char* name, ListControl& model,
                         void (frm3New::*click)());
    void FollowForm();

    frm3New& unit_;
    CSApplication* app_;
    QMdiSubWindow* sub_ = nullptr;
    QTabWidget* tabs_ = nullptr;
    IndexPlot* indexPlot_ = nullptr;
    TransPlot* transPlot_ = nullptr;
    std::array<Subscription, 4> subs_;
};

}  // namespace ostrel::gui
