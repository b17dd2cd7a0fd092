#pragma once
// The main window: the tool strip, the frame that holds the working forms, the panels of
// the installed programs and the help line, all bound to frmMainMDI and ManageForms.
#include <QKeySequence>
#include <QMainWindow>
#include <array>
#include <functional>

#include "core/shell/frm_main_mdi.h"
#include "core/shell/main_menu.h"
#include "core/shell/welcome.h"

class QLabel;
class QMdiArea;
class QMenu;
class QToolButton;

namespace ostrel {
class CSApplication;
}

namespace ostrel::gui {

class WelcomePanel;

class frmMainMDIWindow : public QMainWindow {
    Q_OBJECT
  public:
    frmMainMDIWindow(frmMainMDI& unit, CSApplication* app, QWidget* parent = nullptr);

    QMdiArea* mdiArea() const { return mdi_; }
    // Opens the list's popup menu (mnuPopup, or mnuPopupMelt) at a screen position.
    void ShowPopup(const QPoint& globalPos, bool melt = false);
    QToolButton* ribTools(int n) const { return ribTools_[n]; }
    QToolButton* ribEnd() const { return ribEnd_; }
    QLabel* pnlInstalled(int i) const { return pnlInstalled_[i]; }
    QLabel* lblHelp() const { return lblHelp_; }
    QMenu* mnuPopup() const { return mnuPopup_; }
    QToolButton* comHelp() const { return comHelp_; }
    WelcomePanel* welcomePanel() const { return welcome_; }

    // The menu bar, and the keys the tools' tips name.
    void SetMenu(MainMenu& menu);
    // The welcome panel in the empty frame.
    void SetWelcome(Welcome& welcome);
    // What the help button does with the number of the form in use.
    void SetGuideOpener(std::function<void(int)> open) { openGuide_ = std::move(open); }
    // The working form whose window is active (by its widget's name), else the current
    // form; 0 for none.
    int ActiveFormNumber() const;

  signals:
    void resized();

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void closeEvent(QCloseEvent* e) override;
    void resizeEvent(QResizeEvent* e) override;

  private:
    void PaintWallpaper();

    frmMainMDI& unit_;
    CSApplication* app_;
    QMdiArea* mdi_ = nullptr;
    std::array<QToolButton*, 8> ribTools_{};
    QToolButton* ribEnd_ = nullptr;
    std::array<QLabel*, 3> pnlInstalled_{};
    QLabel* lblHelp_ = nullptr;
    QMenu* mnuPopup_ = nullptr;
    QMenu* mnuPopupMelt_ = nullptr;
    QToolButton* comHelp_ = nullptr;
    WelcomePanel* welcome_ = nullptr;
    std::array<QKeySequence, 8> toolKeys_{};  // [0] the end button
    std::function<void(int)> openGuide_;
    Subscription wallpaperSub_;
};

}  // namespace ostrel::gui
