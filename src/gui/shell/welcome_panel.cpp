#include "gui/shell/welcome_panel.h"

#include <QGridLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

#include "gui/platform/binders.h"
#include "gui/platform/form_widgets.h"

namespace ostrel::gui {

WelcomePanel::WelcomePanel(Welcome& unit, QWidget* area) : QFrame(area), unit_(unit) {
    setObjectName("pnlWelcome");
    setFrameStyle(QFrame::StyledPanel | QFrame::Raised);
    setAutoFillBackground(true);
    auto* outer = new QVBoxLayout(this);
    outer->setContentsMargins(24, 18, 24, 18);
    outer->setSpacing(10);
    QLabel* title = MakePlainLabel(this, "lblWelcomeTitle", unit_.lblWelcomeTitle);
    QFont big = title->font();
    big.setPointSizeF(big.pointSizeF() * 1.5);
    big.setBold(true);
    title->setFont(big);
    outer->addWidget(title);
    outer->addWidget(MakePlainLabel(this, "lblWelcomeText", unit_.lblWelcomeText, true));
    outer->addSpacing(6);

    auto* steps = new QGridLayout();
    steps->setHorizontalSpacing(14);
    steps->setVerticalSpacing(8);
    struct Step {
        const char* button;
        Button& model;
        const char* label;
        Label& text;
        void (Welcome::*click)();
    } rows[] = {
        {"comWelcomeNew", unit_.comWelcomeNew, "lblWelcomeNew", unit_.lblWelcomeNew,
         &Welcome::comWelcomeNewClick},
        {"comWelcomeImport", unit_.comWelcomeImport, "lblWelcomeImport", unit_.lblWelcomeImport,
         &Welcome::comWelcomeImportClick},
        {"comWelcomeSetup", unit_.comWelcomeSetup, "lblWelcomeSetup", unit_.lblWelcomeSetup,
         &Welcome::comWelcomeSetupClick},
    };
    int r = 0;
    for (auto& row : rows) {
        QPushButton* b = MakeButton(this, row.button, row.model);
        b->setMinimumWidth(170);
        auto click = row.click;
        connect(b, &QPushButton::clicked, this, [this, click] { (unit_.*click)(); });
        steps->addWidget(b, r, 0);
        steps->addWidget(MakePlainLabel(this, row.label, row.text, true), r, 1);
        ++r;
    }
    steps->setColumnStretch(1, 1);
    outer->addLayout(steps);
    setMaximumWidth(640);
    visibleSub_ = unit_.pnlWelcome.Observe([this] {
        setVisible(unit_.pnlWelcome.visible);
        if (isVisible()) Place();
    });
    setVisible(unit_.pnlWelcome.visible);
}

void WelcomePanel::Place() {
    QWidget* area = parentWidget();
    if (!area) return;
    const int w = std::min(640, std::max(300, area->width() - 40));
    const int h = heightForWidth(w) > 0 ? heightForWidth(w) : sizeHint().height();
    resize(w, h);
    move((area->width() - w) / 2, std::max(10, (area->height() - h) / 3));
    raise();
}

}  // namespace ostrel::gui
