#include "gui/external/frm2_manage_update_panel.h"

#include <QComboBox>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

#include "gui/platform/binders.h"

namespace ostrel::gui {

frm2ManageUpdatePanel::frm2ManageUpdatePanel(frm2ManageUpdate& unit, QWidget* parent)
    : QGroupBox(parent), unit_(unit) {
    setObjectName("fraUpdate");
    captionSub_ = unit_.fraUpdate.Observe([this] {
        setTitle(ToQt(unit_.fraUpdate.caption));
        setEnabled(unit_.fraUpdate.enabled);
        setVisible(unit_.fraUpdate.visible);
    });
    setTitle(ToQt(unit_.fraUpdate.caption));

    auto* layout = new QVBoxLayout(this);
    auto* settings = new QHBoxLayout();
    struct {
        const char* name;
        ListControl& model;
    } combos[] = {{"cmbUpdateProg", unit_.cmbUpdateProg},
                  {"cmbDataOverWrite", unit_.cmbDataOverWrite}};
    for (auto& c : combos) {
        auto* box = new QComboBox(this);
        box->setObjectName(c.name);
        box->setSizeAdjustPolicy(QComboBox::AdjustToContents);
        Bind(box, c.model);
        settings->addWidget(box);
    }
    settings->addStretch(1);
    layout->addLayout(settings);

    auto* commands = new QHBoxLayout();
    struct {
        const char* name;
        Button& model;
        bool (frm2ManageUpdate::*click)();
    } buttons[] = {
        {"comExtAddSel", unit_.comExtAddSel, &frm2ManageUpdate::comExtAddSelClick},
        {"comExtAddAll", unit_.comExtAddAll, &frm2ManageUpdate::comExtAddAllClick},
        {"comExtSynch", unit_.comExtSynch, &frm2ManageUpdate::comExtSynchClick},
        {"comExtRemove", unit_.comExtRemove, &frm2ManageUpdate::comExtRemoveClick},
    };
    for (auto& b : buttons) {
        auto* w = new QPushButton(this);
        w->setObjectName(b.name);
        Bind(w, b.model);
        auto click = b.click;
        connect(w, &QPushButton::clicked, this, [this, click] { (unit_.*click)(); });
        commands->addWidget(w);
    }
    commands->addStretch(1);
    layout->addLayout(commands);

    auto* note = new QLabel(this);
    note->setObjectName("lblSynch");
    note->setTextFormat(Qt::PlainText);
    note->setWordWrap(true);
    Bind(note, unit_.lblSynch);
    layout->addWidget(note);
}

QPushButton* frm2ManageUpdatePanel::button(const char* name) const {
    return findChild<QPushButton*>(name);
}

QComboBox* frm2ManageUpdatePanel::combo(const char* name) const {
    return findChild<QComboBox*>(name);
}

}  // namespace ostrel::gui
