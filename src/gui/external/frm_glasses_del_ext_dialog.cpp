#include "gui/external/frm_glasses_del_ext_dialog.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

#include "gui/platform/binders.h"

namespace ostrel::gui {

frmGlassesDelExtDialog::frmGlassesDelExtDialog(frmGlassesDelExt& unit, QWidget* parent)
    : QDialog(parent), unit_(unit) {
    setObjectName("frmGlassesDelExt");
    setWindowTitle(ToQt(unit_.form.caption));
    auto* layout = new QVBoxLayout(this);

    auto* targets = new QHBoxLayout();
    const char* names[] = {"optUpdateProg0", "optUpdateProg1"};
    for (int i = 0; i < 2; ++i) {
        options_[i] = new QRadioButton(this);
        options_[i]->setObjectName(names[i]);
        Bind(options_[i], unit_.optUpdateProg[i]);
        // Only a change of target is answered: a click on the target already chosen would
        // read the list again and drop the materials the user has selected in it.
        connect(options_[i], &QRadioButton::toggled, this, [this, i](bool on) {
            if (on) unit_.optUpdateProgClick(i);
        });
        targets->addWidget(options_[i]);
    }
    targets->addStretch(1);
    layout->addLayout(targets);

    auto* prompt = new QLabel(this);
    prompt->setObjectName("lblProg");
    prompt->setTextFormat(Qt::PlainText);
    prompt->setWordWrap(true);
    Bind(prompt, unit_.lblProg);
    layout->addWidget(prompt);

    list_ = new QListWidget(this);
    list_->setObjectName("lstGlasses");
    Bind(list_, unit_.lstGlasses);
    layout->addWidget(list_, 1);

    auto* row = new QHBoxLayout();
    row->addStretch(1);
    auto* del = new QPushButton(this);
    del->setObjectName("comDelSel");
    Bind(del, unit_.comDelSel);
    auto* cancel = new QPushButton(this);
    cancel->setObjectName("comCancel");
    Bind(cancel, unit_.comCancel);
    row->addWidget(del);
    row->addWidget(cancel);
    layout->addLayout(row);
    connect(del, &QPushButton::clicked, this, [this] {
        unit_.comDelSelClick();
        FollowClosed();
    });
    connect(cancel, &QPushButton::clicked, this, [this] {
        unit_.comCancelClick();
        FollowClosed();
    });
    resize(380, 440);
}

QPushButton* frmGlassesDelExtDialog::button(const char* name) const {
    return findChild<QPushButton*>(name);
}

void frmGlassesDelExtDialog::FollowClosed() {
    if (unit_.Closed()) done(unit_.Result() ? QDialog::Accepted : QDialog::Rejected);
}

void frmGlassesDelExtDialog::reject() {
    if (!unit_.Closed()) unit_.comCancelClick();
    QDialog::reject();
}

}  // namespace ostrel::gui
