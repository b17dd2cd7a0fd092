#include "gui/external/frm1_setup_window.h"

#include <QDialog>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QProgressBar>
#include <QPushButton>
#include <QStyle>
#include <QTimer>
#include <QVBoxLayout>

#include "gui/platform/binders.h"
#include "gui/platform/form_widgets.h"
#include "gui/platform/mdi_form.h"
#include "gui/shell/form_position.h"

namespace ostrel::gui {

namespace {

constexpr const char* kFormName = "frm1Setup";

}  // namespace

frm1SetupWindow::frm1SetupWindow(frm1Setup& unit, CSApplication* app, QMdiArea* area)
    : unit_(unit), app_(app) {
    setObjectName(kFormName);
    auto* outer = new QVBoxLayout(this);
    auto* paths = new QGridLayout();
    paths->setHorizontalSpacing(6);
    paths->setVerticalSpacing(4);
    struct Row {
        const char* title;
        Label& titleModel;
        const char* path;
        Label& pathModel;
        const char* browse;
        Button& browseModel;
        void (frm1Setup::*click)();
    } rows[] = {
        {"lblTitleKelmora", unit_.lblTitleKelmora, "lblPathKelmora", unit_.lblPathKelmora,
         "comSetupPathKelmora", unit_.comSetupPathKelmora, &frm1Setup::comSetupPathKelmoraClick},
        {"lblTitleLumbrakPlus", unit_.lblTitleLumbrakPlus, "lblPathLumbrakPlus",
         unit_.lblPathLumbrakPlus, "comSetupPathLumbrakPlus", unit_.comSetupPathLumbrakPlus,
         &frm1Setup::comSetupPathLumbrakPlusClick},
        {"lblTitleLumbrakSextane", unit_.lblTitleLumbrakSextane, "lblPathLumbrakSextane",
         unit_.lblPathLumbrakSextane, "comSetupPathLumbrakSextane",
         unit_.comSetupPathLumbrakSextane, &frm1Setup::comSetupPathLumbrakSextaneClick},
    };
    int r = 0;
    for (auto& row : rows) {
        paths->addWidget(MakePlainLabel(this, row.title, row.titleModel), r, 0, 1, 2);
        QLabel* path = MakePlainLabel(this, row.path, row.pathModel);
        path->setFrameStyle(QFrame::Panel | QFrame::Sunken);
        path->setMinimumWidth(360);
        path->setContentsMargins(4, 2, 4, 2);
        path->setTextInteractionFlags(Qt::TextSelectableByMouse);
        paths->addWidget(path, r + 1, 0);
        QPushButton* browse = MakeButton(this, row.browse, row.browseModel);
        browse->setIcon(style()->standardIcon(QStyle::SP_DirOpenIcon));
        auto click = row.click;
        connect(browse, &QPushButton::clicked, this, [this, click] { (unit_.*click)(); });
        paths->addWidget(browse, r + 1, 1);
        paths->setRowMinimumHeight(r + 2, 8);
        r += 3;
    }
    paths->setColumnStretch(0, 1);
    outer->addLayout(paths);
    outer->addStretch(1);

    // The search on the worker thread: what it is looking at, a busy bar and its stop
    // button, shown only while it runs.
    auto* searchRow = new QHBoxLayout();
    auto* searchBar = new QProgressBar(this);
    searchBar->setObjectName("prgSearch");
    searchBar->setRange(0, 0);
    searchBar->setMaximumWidth(90);
    searchBar->setTextVisible(false);
    QLabel* searchNote = MakePlainLabel(this, "lblSearch", unit_.lblSearch);
    searchNote->setMinimumWidth(200);
    searchNote->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    QPushButton* stop = MakeButton(this, "comStopSearch", unit_.comStopSearch);
    connect(stop, &QPushButton::clicked, this, [this] { unit_.comStopSearchClick(); });
    searchRow->addWidget(searchBar);
    searchRow->addWidget(searchNote, 1);
    searchRow->addWidget(stop);
    outer->addLayout(searchRow);
    searchSub_ = unit_.lblSearch.Observe([this, searchBar] {
        const bool on = unit_.lblSearch.visible;
        searchBar->setVisible(on);
        // The form is busy but answers: the pointer says so without blocking anything.
        if (on) {
            setCursor(Qt::BusyCursor);
        } else {
            unsetCursor();
        }
    });
    searchBar->setVisible(unit_.lblSearch.visible);
    auto* tmrSearch = new QTimer(this);
    Bind(tmrSearch, unit_.tmrSearch);
    connect(tmrSearch, &QTimer::timeout, this, [this] { unit_.tmrSearchTimer(); });

    auto* buttons = new QHBoxLayout();
    QPushButton* scan = MakeButton(this, "comScan", unit_.comScan);
    connect(scan, &QPushButton::clicked, this, [this] { unit_.comScanClick(); });
    buttons->addWidget(scan);
    buttons->addStretch(1);
    QPushButton* ok = MakeButton(this, "comOK", unit_.comOK);
    ok->setDefault(true);
    connect(ok, &QPushButton::clicked, this, [this] { unit_.comOKClick(); });
    buttons->addWidget(ok);
    QPushButton* cancel = MakeButton(this, "comCancel", unit_.comCancel);
    connect(cancel, &QPushButton::clicked, this, [this] { unit_.comCancelClick(); });
    buttons->addWidget(cancel);
    outer->addLayout(buttons);

    sub_ = AddFormSubWindow(
        area, this, style()->standardIcon(QStyle::SP_ComputerIcon), ToQt(unit_.form.caption),
        QSize(440, 280), [this]() -> bool { return unit_.form.visible; },
        [this] { unit_.comCancelClick(); }, true);
    visibleSub_ = unit_.form.Observe([this] { FollowVisible(); });
}

QDialog* frm1SetupWindow::ModalHost() {
    if (!modal_) {
        modal_ = new QDialog(sub_->mdiArea() ? sub_->mdiArea()->window() : nullptr);
        modal_->setObjectName("frm1SetupModal");
        modal_->setWindowModality(Qt::ApplicationModal);
        auto* layout = new QVBoxLayout(modal_);
        layout->setContentsMargins(0, 0, 0, 0);
        // The close box and Escape cancel, as the Cancel button does.
        connect(modal_, &QDialog::rejected, this, [this] {
            SaveFormPosition(modal_, app_, kFormName);
            if (unit_.form.visible) unit_.comCancelClick();
        });
    }
    return modal_;
}

QWidget* frm1SetupWindow::host() const {
    if (modal_ && parentWidget() == modal_) return modal_;
    return sub_;
}

void frm1SetupWindow::FollowVisible() {
    if (unit_.form.visible) {
        QWidget* want = unit_.Modal() ? static_cast<QWidget*>(ModalHost()) : sub_;
        if (host() != want) {
            if (want == modal_) {
                sub_->setWidget(nullptr);
                modal_->layout()->addWidget(this);
            } else {
                modal_->layout()->removeWidget(this);
                sub_->setWidget(this);
            }
            show();
        }
        want->setWindowTitle(ToQt(unit_.form.caption));
        if (want->isHidden()) {
            if (want == modal_) modal_->adjustSize();
            RestoreFormPosition(want, app_, kFormName, false);
            want->show();
            want->raise();
            want->activateWindow();
        }
    } else {
        QWidget* h = host();
        if (!h->isHidden()) {
            SaveFormPosition(h, app_, kFormName);
            h->hide();
        }
    }
}

QPushButton* frm1SetupWindow::button(const char* name) const {
    return findChild<QPushButton*>(name);
}

QLabel* frm1SetupWindow::label(const char* name) const {
    return findChild<QLabel*>(name);
}

}  // namespace ostrel::gui
