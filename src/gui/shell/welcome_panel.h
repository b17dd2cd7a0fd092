#pragma once
// The welcome panel over the main window's empty frame, bound to Welcome.
#include <QFrame>

#include "core/shell/welcome.h"

namespace ostrel::gui {

class WelcomePanel : public QFrame {
    Q_OBJECT
  public:
    WelcomePanel(Welcome& unit, QWidget* area);
    // Centres the panel in its area.
    void Place();

  private:
    Welcome& unit_;
    Subscription visibleSub_;
};

}  // namespace ostrel::gui
