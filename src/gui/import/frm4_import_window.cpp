#include "gui/import/frm4_import_window.h"

#include <QApplication>
#include <QCheckBox>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QProgressBar>
#include <QPushButton>
#include <QStyle>
#include <QVBoxLayout>
#include <algorithm>

#include "gui/platform/binders.h"
#include "gui/platform/form_widgets.h"
#include "gui/platform/grid_view.h"
#include "gui/platform/mdi_form.h"
#include "gui/shell/form_position.h"

namespace ostrel::gui {

namespace {

constexpr const char* kFormName = "frm4Import";

}  // namespace

frm4ImportWindow::frm4ImportWindow(frm4Import& unit, CSApplication* app, QMdiArea* area)
    : unit_(unit), app_(app) {
    setObjectName(kFormName);
    auto* outer = new QVBoxLayout(this);

    // Open and review on top, with the choice that applies to the next AGF read.
    auto* top = new QHBoxLayout();
    QPushButton* open = MakeButton(this, "comImport", unit_.comImport);
    open->setDefault(true);
    open->setIcon(style()->standardIcon(QStyle::SP_DialogOpenButton));
    connect(open, &QPushButton::clicked, this, [this] { unit_.comImportClick(); });
    top->addWidget(open);
    QPushButton* review = MakeButton(this, "comReview", unit_.comReview);
    connect(review, &QPushButton::clicked, this, [this] { unit_.comReviewClick(); });
    top->addWidget(review);
    top->addSpacing(16);
    auto* refitOther = new QCheckBox(this);
    refitOther->setObjectName("chkRefitOther");
    Bind(refitOther, unit_.chkRefitOther);
    top->addWidget(refitOther);
    top->addStretch(1);
    outer->addLayout(top);

    outer->addWidget(MakePlainLabel(this, "lblReFit", unit_.lblReFit, true));
    outer->addWidget(MakePlainLabel(this, "lblSkipped", unit_.lblSkipped, true));

    grid_ = MakeRowGrid(this, "ssGlasses", unit_.ssGlasses);
    connect(grid_, &QAbstractItemView::clicked, this,
            [this](const QModelIndex& i) { unit_.ssGlassesClick(i.column() + 1, i.row() + 1); });
    connect(grid_, &GridView::cellKeyed, this,
            [this](int col, int row) { unit_.ssGlassesClick(col, row); });
    connect(grid_, &QAbstractItemView::doubleClicked, this,
            [this](const QModelIndex& i) { unit_.ssGlassesDblClick(i.column() + 1, i.row() + 1); });
    connect(grid_, &GridView::cellEntered, this,
            [this](int col, int row) { unit_.ssGlassesDblClick(col, row); });
    outer->addWidget(grid_, 1);

    progress_ = new QProgressBar(this);
    progress_->setObjectName("prgRead");
    progress_->setTextVisible(true);
    progress_->hide();
    outer->addWidget(progress_);

    // The frame of the commands that change the custom list, and Close at the right.
    auto* bottom = new QHBoxLayout();
    fraUpdate_ = new QGroupBox(this);
    fraUpdate_->setObjectName("fraUpdate");
    auto* frame = new QHBoxLayout(fraUpdate_);
    struct {
        const char* name;
        Button& model;
        void (frm4Import::*click)();
    } adds[] = {{"comAddSel", unit_.comAddSel, &frm4Import::comAddSelClick},
                {"comAddAll", unit_.comAddAll, &frm4Import::comAddAllClick},
                {"comRenameSource", unit_.comRenameSource, &frm4Import::comRenameSourceClick}};
    for (auto& b : adds) {
        QPushButton* w = MakeButton(fraUpdate_, b.name, b.model);
        auto click = b.click;
        connect(w, &QPushButton::clicked, this, [this, click] { (unit_.*click)(); });
        frame->addWidget(w);
    }
    frameSub_ = BindFrame(fraUpdate_, unit_.fraUpdate);
    bottom->addWidget(fraUpdate_);
    bottom->addStretch(1);
    QPushButton* ok = MakeButton(this, "comOK", unit_.comOK);
    connect(ok, &QPushButton::clicked, this, [this] { unit_.comOKClick(); });
    bottom->addWidget(ok, 0, Qt::AlignBottom);
    outer->addLayout(bottom);

    sub_ = AddFormSubWindow(
        area, this, style()->standardIcon(QStyle::SP_DialogOpenButton), ToQt(unit_.form.caption),
        QSize(940, 520), [this]() -> bool { return unit_.form.visible; },
        [this] { unit_.comOKClick(); });
    formSub_ = unit_.form.Observe([this] { FollowForm(); });
}

void frm4ImportWindow::FollowForm() {
    // Every read ends by naming its file in the caption; a read that failed half way
    // leaves no bar behind.
    progress_->hide();
    FollowFormVisible(sub_, unit_.form, app_, kFormName);
}

void frm4ImportWindow::ShowProgress(std::size_t done, std::size_t total) {
    if (total == 0 || done >= total) {
        progress_->hide();
        return;
    }
    // The bar counts in thousandths so that byte counts of large files fit an int.
    progress_->setRange(0, 1000);
    progress_->setValue(static_cast<int>(std::min<std::size_t>(done * 1000 / total, 1000)));
    progress_->show();
    // Repaint now; a click meanwhile must not start another command in the middle of a read.
    QApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
}

QPushButton* frm4ImportWindow::button(const char* name) const {
    return findChild<QPushButton*>(name);
}

QLabel* frm4ImportWindow::label(const char* name) const {
    return findChild<QLabel*>(name);
}

QCheckBox* frm4ImportWindow::checkBox(const char* name) const {
    return findChild<QCheckBox*>(name);
}

}  // namespace ostrel::gui
