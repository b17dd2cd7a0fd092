#include "gui/external/frm6_archive_window.h"

#include <QAbstractButton>
#include <QComboBox>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
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

constexpr const char* kFormName = "frm6Archive";

}  // namespace

GridView* frm6ArchiveWindow::MakeGrid(const char* name, Grid& grid,
                                      void (frm6Archive::*click)(int, int)) {
    auto* view = new GridView(this);
    view->setObjectName(name);
    // Whole rows, several blocks at once (Ctrl and Shift with the mouse).
    view->setSelectionBehavior(QAbstractItemView::SelectRows);
    view->setSelectionMode(QAbstractItemView::ExtendedSelection);
    view->setEditTriggers(QAbstractItemView::NoEditTriggers);
    view->verticalHeader()->setDefaultSectionSize(view->fontMetrics().height() + 6);
    view->horizontalHeader()->setStretchLastSection(true);
    // The ID column numbers the rows already; without the row numbers beside it every
    // column, Status included, shows whole at the form's first size.
    view->verticalHeader()->hide();
    view->Bind(grid);
    // The corner button selects the whole grid: one block from row -1.
    if (auto* corner = view->findChild<QAbstractButton*>()) {
        connect(corner, &QAbstractButton::clicked, this, [&grid] {
            grid.SetSelection({0, -1, 0, -1});
        });
    }
    connect(view, &QAbstractItemView::pressed, this, [this, click](const QModelIndex& index) {
        (unit_.*click)(index.column() + 1, index.row() + 1);
    });
    connect(view, &GridView::cellKeyed, this,
            [this, click](int col, int row) { (unit_.*click)(col, row); });
    return view;
}

frm6ArchiveWindow::frm6ArchiveWindow(frm6Archive& unit, CSApplication* app, QMdiArea* area)
    : unit_(unit), app_(app) {
    setObjectName(kFormName);
    auto* outer = new QVBoxLayout(this);
    auto* grids = new QGridLayout();
    grids->addWidget(MakePlainLabel(this, "lblCurr", unit_.lblCurr), 0, 0);
    grids->addWidget(MakePlainLabel(this, "lblArchive", unit_.lblArchive), 0, 2);
    curr_ = MakeGrid("ssGlassCurr", unit_.ssGlassCurr, &frm6Archive::ssGlassCurrClick);
    archive_ = MakeGrid("ssGlassArchive", unit_.ssGlassArchive, &frm6Archive::ssGlassArchiveClick);
    grids->addWidget(curr_, 1, 0);
    grids->addWidget(archive_, 1, 2);

    auto* moves = new QVBoxLayout();
    moves->addStretch(1);
    QPushButton* toArchive = MakeButton(this, "comArchive", unit_.comArchive);
    connect(toArchive, &QPushButton::clicked, this, [this] { unit_.comArchiveClick(); });
    moves->addWidget(toArchive);
    QPushButton* toCurrent = MakeButton(this, "comDeArchive", unit_.comDeArchive);
    connect(toCurrent, &QPushButton::clicked, this, [this] { unit_.comDeArchiveClick(); });
    moves->addWidget(toCurrent);
    moves->addStretch(1);
    grids->addLayout(moves, 1, 1);
    // Tab reads across: the current glasses, the buttons between, the archived glasses.
    setTabOrder(curr_, toArchive);
    setTabOrder(toArchive, toCurrent);
    setTabOrder(toCurrent, archive_);
    grids->setColumnStretch(0, 1);
    grids->setColumnStretch(2, 1);
    grids->setRowStretch(1, 1);
    outer->addLayout(grids, 1);

    auto* bottom = new QHBoxLayout();
    sort_ = new QComboBox(this);
    sort_->setObjectName("cmbSortOrder");
    Bind(sort_, unit_.cmbSortOrder);
    connect(sort_, &QComboBox::currentIndexChanged, this, [this] { unit_.cmbSortOrderClick(); });
    bottom->addWidget(sort_);
    bottom->addStretch(1);
    QPushButton* ok = MakeButton(this, "comOK", unit_.comOK);
    connect(ok, &QPushButton::clicked, this, [this] { unit_.comOKClick(); });
    bottom->addWidget(ok);
    outer->addLayout(bottom);

    sub_ = AddFormSubWindow(
        area, this, style()->standardIcon(QStyle::SP_DriveHDIcon), ToQt(unit_.form.caption),
        QSize(900, 520), [this]() -> bool { return unit_.form.visible; },
        [this] { unit_.comOKClick(); });
    visibleSub_ = unit_.form.Observe([this] {
        FollowFormVisible(sub_, unit_.form, app_, kFormName, {}, [this] {
            curr_->resizeColumnsToContents();
            archive_->resizeColumnsToContents();
        });
    });
}

QPushButton* frm6ArchiveWindow::button(const char* name) const {
    return findChild<QPushButton*>(name);
}

}  // namespace ostrel::gui
