#include "gui/material/frm_glasses_list_window.h"

#include <QCloseEvent>
#include <QHeaderView>
#include <QVBoxLayout>

#include "core/shell/cs_application.h"
#include "gui/platform/binders.h"
#include "gui/platform/grid_view.h"
#include "gui/shell/form_position.h"

namespace ostrel::gui {

namespace {
constexpr const char* kFormName = "frmGlassesList";
}

frmGlassesListWindow::frmGlassesListWindow(frmGlassesList& unit, CSApplication* app, QWidget* owner)
    : QWidget(owner, Qt::Tool), unit_(unit), app_(app) {
    setObjectName(kFormName);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(2, 2, 2, 2);
    grid_ = new GridView(this);
    grid_->setObjectName("ssGlassesList");
    grid_->setSelectionBehavior(QAbstractItemView::SelectRows);
    grid_->setSelectionMode(QAbstractItemView::SingleSelection);
    grid_->setEditTriggers(QAbstractItemView::NoEditTriggers);
    grid_->horizontalHeader()->setStretchLastSection(true);
    grid_->Bind(unit_.ssGlassesList);
    grid_->setColumnWidth(0, 150);
    layout->addWidget(grid_);
    connect(grid_, &GridView::cellRightClicked, this, [this](int, int row, const QPoint& pos) {
        if (unit_.ssGlassesListRightClick(row)) emit popupRequested(pos);
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
    SaveFormPosition(this, app_, kFormName);
    e->accept();
}

}  // namespace ostrel::gui
