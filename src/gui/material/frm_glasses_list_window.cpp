#include "gui/material/frm_glasses_list_window.h"

#include <QCloseEvent>
#include <QCoreApplication>
#include <QDockWidget>
#include <QHeaderView>
#include <QMainWindow>
#include <QMenu>
#include <QTimer>
#include <QVBoxLayout>

#include "core/shell/cs_application.h"
#include "gui/platform/binders.h"
#include "gui/platform/grid_view.h"
#include "gui/shell/form_position.h"

namespace ostrel::gui {

namespace {
constexpr const char* kFormName = "frmGlassesList";
// Where the docked list was: left 1 while docked (0 while floating), top the dock side
// (1 left, 2 right), and its width.
constexpr const char* kDockName = "frmGlassesListDock";
}  // namespace

frmGlassesListWindow::frmGlassesListWindow(frmGlassesList& unit, CSApplication* app, QWidget* owner)
    : QWidget(owner, Qt::Tool), unit_(unit), app_(app) {
    setObjectName(kFormName);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(2, 2, 2, 2);
    grid_ = new GridView(this);
    grid_->setObjectName("ssGlassesList");
    grid_->setSelectionBehavior(QAbstractItemView::SelectRows);
    // Several rows can be selected (Ctrl and Shift), to be compared.
    grid_->setSelectionMode(QAbstractItemView::ExtendedSelection);
    grid_->setEditTriggers(QAbstractItemView::NoEditTriggers);
    grid_->horizontalHeader()->setStretchLastSection(true);
    grid_->Bind(unit_.ssGlassesList);
    grid_->setColumnWidth(0, 150);
    layout->addWidget(grid_);
    selectionMenu_ = new QMenu(this);
    selectionMenu_->setObjectName("mnuSelection");
    QAction* compare = selectionMenu_->addAction(QString());
    compare->setObjectName("mnuCompare");
    Bind(compare, unit_.mnuCompare);
    connect(compare, &QAction::triggered, this, [this] { unit_.mnuCompareClick(); });
    connect(grid_, &GridView::cellRightClicked, this, [this](int, int row, const QPoint& pos) {
        if (!unit_.ssGlassesListRightClick(row)) return;
        if (unit_.PopupIsSelection()) {
            selectionMenu_->popup(pos);
        } else {
            emit popupRequested(pos, unit_.PopupIsMelt());
        }
    });
    BindWindow(this, unit_.form);
    resize(300, 420);
    if (owner) {
        const QRect f = owner->geometry();
        move(f.right() - width() - 24, f.top() + 140);
    }
    // Until it has a place of its own the list stands at the right of the frame, clear of
    // the working forms.
    if (app_ && app_->HasFormPosn(kFormName)) RestoreFormPosition(this, app_, kFormName, false);
    ForceResize();
}

void frmGlassesListWindow::ForceResize() {
    if (dock_) return;  // a dock keeps itself in the frame
    QWidget* owner = parentWidget();
    if (!owner) return;
    const QRect f = owner->frameGeometry();
    QRect g = frameGeometry();
    if (g.width() > f.width()) g.setWidth(f.width());
    if (g.height() > f.height()) g.setHeight(f.height());
    if (g.right() > f.right()) g.moveRight(f.right());
    if (g.bottom() > f.bottom()) g.moveBottom(f.bottom());
    if (g.left() < f.left()) g.moveLeft(f.left());
    if (g.top() < f.top()) g.moveTop(f.top());
    if (g != frameGeometry()) move(g.topLeft());
}

void frmGlassesListWindow::closeEvent(QCloseEvent* e) {
    // The list stays for as long as the program runs; closing it only stores its place.
    SavePlace();
    e->accept();
}

QDockWidget* frmGlassesListWindow::DockIn(QMainWindow* main) {
    dock_ = new QDockWidget(windowTitle(), main);
    dock_->setObjectName("dockGlassesList");
    dock_->setFeatures(QDockWidget::DockWidgetClosable | QDockWidget::DockWidgetMovable |
                       QDockWidget::DockWidgetFloatable);
    dock_->setAllowedAreas(Qt::LeftDockWidgetArea | Qt::RightDockWidgetArea);
    const QSize floatSize = size();
    const bool shown = !isHidden();
    dock_->setWidget(this);
    QWidget::setVisible(true);
    connect(this, &QWidget::windowTitleChanged, dock_, &QDockWidget::setWindowTitle);

    FormRect place{1, 2, 260, 0};
    if (app_ && app_->HasFormPosn(kDockName)) {
        place = app_->ThisFormPosnGet(kDockName, false, false, place, {100000, 100000});
    }
    const Qt::DockWidgetArea side =
        place.top == 1 ? Qt::LeftDockWidgetArea : Qt::RightDockWidgetArea;
    main->addDockWidget(side, dock_);
    // Wide enough for a name and its source; the width is given again once the window is
    // laid out, as a dock takes it only then.
    setMinimumWidth(fontMetrics().averageCharWidth() * 24);
    const int width = std::max(place.width, minimumWidth());
    main->resizeDocks({dock_}, {width}, Qt::Horizontal);
    QTimer::singleShot(0, dock_, [main, this, width] {
        if (!dock_->isFloating()) main->resizeDocks({dock_}, {width}, Qt::Horizontal);
    });
    if (place.left == 0 && app_ && app_->HasFormPosn(kFormName)) {
        dock_->setFloating(true);
        dock_->resize(floatSize);
        RestoreFormPosition(dock_, app_, kFormName, false);
    }
    if (!shown) dock_->hide();
    connect(dock_, &QDockWidget::visibilityChanged, this, [this](bool visible) {
        if (!visible && !dock_->isVisible()) SavePlace();
    });
    connect(qApp, &QCoreApplication::aboutToQuit, this, &frmGlassesListWindow::SavePlace);
    return dock_;
}

void frmGlassesListWindow::setVisible(bool visible) {
    if (!dock_) return QWidget::setVisible(visible);
    QWidget::setVisible(true);
    if (dock_->isHidden() == visible) dock_->setVisible(visible);
}

void frmGlassesListWindow::SavePlace() {
    if (!app_) return;
    if (!dock_) {
        SaveFormPosition(this, app_, kFormName);
        return;
    }
    auto* main = qobject_cast<QMainWindow*>(dock_->parentWidget());
    const bool floating = dock_->isFloating();
    const int side = main && main->dockWidgetArea(dock_) == Qt::LeftDockWidgetArea ? 1 : 2;
    app_->ThisFormPosnSave(kDockName, {floating ? 0 : 1, side, dock_->width(), dock_->height()});
    if (floating) SaveFormPosition(dock_, app_, kFormName);
}

}  // namespace ostrel::gui
