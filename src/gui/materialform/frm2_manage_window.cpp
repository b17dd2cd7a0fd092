#include "gui/materialform/frm2_manage_window.h"

#include <QDate>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QListWidget>
#include <QLocale>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QPushButton>
#include <QVBoxLayout>
#include <vector>

#include "core/platform/ole_date.h"
#include "gui/platform/binders.h"
#include "gui/platform/form_widgets.h"
#include "gui/platform/grid_view.h"
#include "gui/platform/mdi_form.h"
#include "gui/shell/form_position.h"

namespace ostrel::gui {

namespace {
constexpr const char* kFormName = "frm2Manage";
}  // namespace

frmGlassesDelDialog::frmGlassesDelDialog(frmGlassesDel& unit, QWidget* parent) : QDialog(parent) {
    setWindowTitle(ToQt(unit.form.caption));
    auto* layout = new QVBoxLayout(this);
    auto* label = new QLabel(this);
    Bind(label, unit.lblSelect);
    layout->addWidget(label);
    auto* list = new QListWidget(this);
    list->setObjectName("lstGlasses");
    Bind(list, unit.lstGlasses);
    layout->addWidget(list, 1);
    auto* row = new QHBoxLayout();
    row->addStretch(1);
    auto* del = MakeButton(this, "comDelSel", unit.comDelSel);
    auto* cancel = MakeButton(this, "comCancel", unit.comCancel);
    row->addWidget(del);
    row->addWidget(cancel);
    layout->addLayout(row);
    connect(del, &QPushButton::clicked, this, [&unit] { unit.comDelSelClick(); });
    connect(cancel, &QPushButton::clicked, this, [&unit] { unit.comCancelClick(); });
    closeSub_ = unit.form.Observe([this, &unit] {
        if (unit.Closed()) done(unit.Result() ? QDialog::Accepted : QDialog::Rejected);
    });
    resize(360, 420);
}

frm2ManageWindow::frm2ManageWindow(frm2Manage& unit, CSApplication* app, QMdiArea* area)
    : unit_(unit), app_(app) {
    setObjectName(kFormName);
    // The list's dates in the user's short date format.
    SetShortDateFormat([](int year, int month, int day) {
        return FromQt(QLocale().toString(QDate(year, month, day), QLocale::ShortFormat));
    });
    auto* layout = new QVBoxLayout(this);
    grid_ = MakeRowGrid(this, "ssGlassesCurr", unit_.ssGlassesCurr);
    layout->addWidget(grid_, 1);
    connect(grid_, &QAbstractItemView::doubleClicked, this, [this] { unit_.comEditClick(); });
    connect(grid_, &GridView::cellEntered, this, [this] { unit_.comEditClick(); });

    auto* row = new QHBoxLayout();
    struct {
        const char* name;
        Button& model;
        void (frm2Manage::*click)();
    } buttons[] = {{"comEdit", unit_.comEdit, &frm2Manage::comEditClick},
                   {"comDuplicate", unit_.comDuplicate, &frm2Manage::comDuplicateClick},
                   {"comDelete", unit_.comDelete, &frm2Manage::comDeleteClick},
                   {"comSort", unit_.comSort, &frm2Manage::comSortClick}};
    for (auto& b : buttons) {
        QPushButton* w = MakeButton(this, b.name, b.model);
        auto click = b.click;
        connect(w, &QPushButton::clicked, this, [this, click] { (unit_.*click)(); });
        row->addWidget(w);
    }
    row->addStretch(1);
    QPushButton* ok = MakeButton(this, "comOK", unit_.comOK);
    connect(ok, &QPushButton::clicked, this, [this] { unit_.comOKClick(); });
    row->addWidget(ok);
    layout->addLayout(row);

    sub_ = AddFormSubWindow(
        area, this, style()->standardIcon(QStyle::SP_FileDialogDetailedView),
        ToQt(unit_.form.caption), QSize(820, 460), [this]() -> bool { return unit_.form.visible; },
        [this] { unit_.comOKClick(); });
    visibleSub_ = unit_.form.Observe([this] {
        FollowFormVisible(sub_, unit_.form, app_, kFormName, {},
                          [this] { grid_->resizeColumnsToContents(); });
    });
}

QPushButton* frm2ManageWindow::button(const char* name) const {
    return findChild<QPushButton*>(name);
}

void frm2ManageWindow::AddPanel(QWidget* panel) {
    panel->setParent(this);
    static_cast<QVBoxLayout*>(layout())->insertWidget(1, panel);
    // Tab reaches the panel where it lies: after the grid, before the buttons below it.
    std::vector<QWidget*> stops;
    for (QWidget* w = panel->nextInFocusChain(); panel->isAncestorOf(w); w = w->nextInFocusChain())
        stops.push_back(w);
    QWidget* before = grid();
    for (QWidget* w : stops) {
        setTabOrder(before, w);
        before = w;
    }
}

}  // namespace ostrel::gui
