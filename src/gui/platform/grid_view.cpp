#include "gui/platform/grid_view.h"

#include <QContextMenuEvent>
#include <QHeaderView>
#include <QItemSelectionModel>
#include <QKeyEvent>
#include <QMetaMethod>

#include "gui/platform/binders.h"

namespace ostrel::gui {

GridTableModel::GridTableModel(Grid& grid, std::function<void(int, int)> changed, QObject* parent)
    : QAbstractTableModel(parent), grid_(grid), changed_(std::move(changed)) {
    sub_ = grid_.Observe([this](const GridChange& c) { OnGridChange(c); });
}

void GridTableModel::OnGridChange(const GridChange& c) {
    switch (c.kind) {
        case GridChange::Kind::Cells: {
            const int c1 = std::max(c.area.col1, 1), c2 = std::max(c.area.col2, 1);
            emit dataChanged(index(c.area.row1 - 1, c1 - 1), index(c.area.row2 - 1, c2 - 1));
            break;
        }
        case GridChange::Kind::Layout:
            beginResetModel();
            endResetModel();
            emit layoutReset();
            break;
        case GridChange::Kind::Selection:
            emit selectionFromGrid();
            break;
    }
}

int GridTableModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : grid_.MaxRows();
}

int GridTableModel::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : grid_.MaxCols();
}

QVariant GridTableModel::data(const QModelIndex& index, int role) const {
    const int col = index.column() + 1, row = index.row() + 1;
    switch (role) {
        // The cell shows the text its form wrote, exactly: each form formats its numbers
        // itself, and a view that formatted them again would show something else than the
        // form holds (a coefficient of 1.2e-7 as 0.00000012, a "----" as a number).
        case Qt::DisplayRole:
        case Qt::EditRole:
            return ToQt(grid_.Text(col, row));
        case Qt::BackgroundRole:
            if (auto c = grid_.CellColour(col, row)) return QColor(c->r, c->g, c->b);
            return {};
        case Qt::ForegroundRole:
            if (grid_.CellColour(col, row)) return QColor(Qt::black);
            return {};
        case Qt::TextAlignmentRole:
            if (grid_.Column(col).type == CellType::Float)
                return int(Qt::AlignRight | Qt::AlignVCenter);
            return int(Qt::AlignLeft | Qt::AlignVCenter);
        default:
            return {};
    }
}

bool GridTableModel::setData(const QModelIndex& index, const QVariant& value, int role) {
    if (role != Qt::EditRole || !index.isValid()) return false;
    const int col = index.column() + 1, row = index.row() + 1;
    if (!grid_.EditText(col, row, FromQt(value.toString().trimmed()))) return false;
    if (changed_) changed_(col, row);
    return true;
}

Qt::ItemFlags GridTableModel::flags(const QModelIndex& index) const {
    Qt::ItemFlags f = Qt::ItemIsEnabled | Qt::ItemIsSelectable;
    if (!grid_.Column(index.column() + 1).locked) f |= Qt::ItemIsEditable;
    return f;
}

QVariant GridTableModel::headerData(int section, Qt::Orientation o, int role) const {
    if (role != Qt::DisplayRole) return {};
    if (o == Qt::Horizontal) return ToQt(grid_.Column(section + 1).title);
    return section + 1;
}

GridView::GridView(QWidget* parent) : QTableView(parent) {
    setSelectionBehavior(QAbstractItemView::SelectItems);
    setSelectionMode(QAbstractItemView::ExtendedSelection);
    setAlternatingRowColors(false);
    verticalHeader()->setDefaultSectionSize(fontMetrics().height() + 6);
    horizontalHeader()->setHighlightSections(false);
}

void GridView::Bind(Grid& grid, std::function<void(int, int)> changed) {
    model_ = new GridTableModel(grid, std::move(changed), this);
    setModel(model_);
    connect(model_, &GridTableModel::layoutReset, this, [this] {
        ApplyColumns();
        SelectionFromGrid();
    });
    connect(model_, &GridTableModel::selectionFromGrid, this, &GridView::SelectionFromGrid);
    connect(selectionModel(), &QItemSelectionModel::selectionChanged, this,
            &GridView::SelectionToGrid);
    connect(selectionModel(), &QItemSelectionModel::currentChanged, this,
            &GridView::SelectionToGrid);
    ApplyColumns();
}

void GridView::ApplyColumns() {
    const Grid& g = model_->grid();
    const int charWidth = fontMetrics().horizontalAdvance(QLatin1Char('0'));
    for (int c = 1; c <= g.MaxCols(); ++c) {
        setColumnHidden(c - 1, g.Column(c).hidden);
        if (g.Column(c).width > 0) setColumnWidth(c - 1, g.Column(c).width * charWidth + 8);
    }
}

void GridView::SelectionToGrid() {
    if (syncing_ || !model_) return;
    syncing_ = true;
    Grid& g = model_->grid();
    const QModelIndex cur = currentIndex();
    if (cur.isValid()) g.SetActiveCell(cur.column() + 1, cur.row() + 1);
    std::vector<GridBlock> blocks;
    for (const QItemSelectionRange& r : selectionModel()->selection()) {
        // A single cell is the active cell, not a block.
        if (r.top() == r.bottom() && r.left() == r.right()) continue;
        blocks.push_back({r.left() + 1, r.top() + 1, r.right() + 1, r.bottom() + 1});
    }
    g.SetSelections(std::move(blocks));
    syncing_ = false;
}

void GridView::SelectionFromGrid() {
    if (syncing_ || !model_) return;
    syncing_ = true;
    const Grid& g = model_->grid();
    QItemSelection sel;
    for (const GridBlock& b : g.Selection()) {
        const int c1 = b.col1 <= 0 ? 0 : b.col1 - 1;
        const int c2 = b.col2 <= 0 ? g.MaxCols() - 1 : b.col2 - 1;
        // A first row of -1 is the whole grid.
        const int r1 = b.row1 < 1 ? 0 : b.row1 - 1;
        const int r2 = b.row1 < 1 || b.row2 < 1 ? g.MaxRows() - 1 : b.row2 - 1;
        sel.select(model_->index(r1, c1), model_->index(r2, c2));
    }
    const QModelIndex active = model_->index(g.ActiveRow() - 1, g.ActiveCol() - 1);
    if (active.isValid()) selectionModel()->setCurrentIndex(active, QItemSelectionModel::NoUpdate);
    selectionModel()->select(sel, QItemSelectionModel::ClearAndSelect);
    syncing_ = false;
}

void GridView::contextMenuEvent(QContextMenuEvent* e) {
    const QModelIndex idx = indexAt(e->pos());
    emit cellRightClicked(idx.isValid() ? idx.column() + 1 : 0, idx.isValid() ? idx.row() + 1 : 0,
                          e->globalPos());
}

void GridView::keyPressEvent(QKeyEvent* e) {
    const bool enter = e->key() == Qt::Key_Return || e->key() == Qt::Key_Enter;
    if (enter && state() != EditingState && currentIndex().isValid() &&
        isSignalConnected(QMetaMethod::fromSignal(&GridView::cellEntered))) {
        e->accept();
        emit cellEntered(currentIndex().column() + 1, currentIndex().row() + 1);
        return;
    }
    const QPersistentModelIndex before = currentIndex();
    QTableView::keyPressEvent(e);
    const QModelIndex now = currentIndex();
    if (now.isValid() && now != before) emit cellKeyed(now.column() + 1, now.row() + 1);
}

}  // namespace ostrel::gui
