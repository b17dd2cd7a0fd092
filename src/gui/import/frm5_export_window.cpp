#include "gui/import/frm5_export_window.h"

#include <QGroupBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QPushButton>
#include <QStyle>
#include <QVBoxLayout>

#include "gui/platform/binders.h"
#include "gui/platform/form_widgets.h"
#include "gui/platform/grid_view.h"
#include "gui/platform/mdi_form.h"
#include "gui/shell/form_position.h"

namespace ostrel::gui {

namespace {

constexpr const char* kFormName = "frm5Export";

}  // namespace

frm5ExportWindow::frm5ExportWindow(frm5Export& unit, CSApplication* app, QMdiArea* area)
    : unit_(unit), app_(app) {
    setObjectName(kFormName);
    auto* outer = new QVBoxLayout(this);

    grid_ = MakeRowGrid(this, "ssGlassesCurr", unit_.ssGlassesCurr);
    outer->addWidget(grid_, 1);

    auto* bottom = new QHBoxLayout();
    fraBackup_ = new QGroupBox(this);
    fraBackup_->setObjectName("fraBackup");
    auto* frame = new QHBoxLayout(fraBackup_);
    QPushButton* sel = MakeButton(fraBackup_, "comExportSel", unit_.comExportSel);
    sel->setDefault(true);
    connect(sel, &QPushButton::clicked, this, [this] { unit_.comExportSelClick(); });
    frame->addWidget(sel);
    QPushButton* all = MakeButton(fraBackup_, "comExportAll", unit_.comExportAll);
    connect(all, &QPushButton::clicked, this, [this] { unit_.comExportAllClick(); });
    frame->addWidget(all);
    frameSub_ = BindFrame(fraBackup_, unit_.fraBackup);
    bottom->addWidget(fraBackup_);
    bottom->addStretch(1);
    QPushButton* ok = MakeButton(this, "comOK", unit_.comOK);
    connect(ok, &QPushButton::clicked, this, [this] { unit_.comOKClick(); });
    bottom->addWidget(ok, 0, Qt::AlignBottom);
    outer->addLayout(bottom);

    sub_ = AddFormSubWindow(
        area, this, style()->standardIcon(QStyle::SP_DialogSaveButton), ToQt(unit_.form.caption),
        QSize(680, 440), [this]() -> bool { return unit_.form.visible; },
        [this] { unit_.comOKClick(); });
    formSub_ = unit_.form.Observe([this] { FollowForm(); });
}

void frm5ExportWindow::FollowForm() {
    FollowFormVisible(sub_, unit_.form, app_, kFormName);
}

QPushButton* frm5ExportWindow::button(const char* name) const {
    return findChild<QPushButton*>(name);
}

}  // namespace ostrel::gui
