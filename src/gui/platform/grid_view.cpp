#include "gui/platform/grid_view.h"

#include <QApplication>
#include <QClipboard>
#include <QContextMenuEvent>
#include <QHeaderView>
#include <QItemSelectionModel>
#include <QKeyEvent>
#include <QMetaMethod>
#include <QScrollBar>

#include "gui/platform/binders.h"

namespace ostrel::gui {

namespace {

// Why a cell that holds no number is ignored: its tool tip and the help line.
std::string IgnoredCellText(const std::string& text) {
    return IgnoredEntryText(text, "0");
}

}  // namespace

void GridView::SetNoteSink(std::function<void(const std::string&)> sink) {
    SetEntryNoteSink(std::move(sink));
}

void GridView::Note(const std::string& text) {
    EntryNote(text);
}

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
        // An entry that is no number stays on show, marked, and says why it is ignored.
        case Qt::BackgroundRole:
            if (grid_.IsIgnoredEntry(col, row))
                return QColor(kIgnoredEntryBack.r, kIgnoredEntryBack.g, kIgnoredEntryBack.b);
            if (auto c = grid_.CellColour(col, row)) return QColor(c->r, c->g, c->b);
            return {};
        case Qt::ForegroundRole:
            if (grid_.IsIgnoredEntry(col, row))
                return QColor(kIgnoredEntryText.r, kIgnoredEntryText.g, kIgnoredEntryText.b);
            if (grid_.CellColour(col, row)) return QColor(Qt::black);
            return {};
        case Qt::ToolTipRole:
            if (grid_.IsIgnoredEntry(col, row)) return ToQt(IgnoredCellText(grid_.Text(col, row)));
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
    if (grid_.IsIgnoredEntry(col, row)) GridView::Note(IgnoredCellText(grid_.Text(col, row)));
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
    // The columns take at least their content's width and the last one takes what the
    // window has to spare, so a grid stretches with its form.
    horizontalHeader()->setStretchLastSection(true);
    // A column resized by the form or the user changes the room to spare: the last column
    // takes it once the resizing is over.
    connect(horizontalHeader(), &QHeaderView::sectionResized, this, [this](int, int, int) {
        if (filling_ || fillPending_) return;
        fillPending_ = true;
        QMetaObject::invokeMethod(
            this,
            [this] {
                fillPending_ = false;
                lastFitWidth_ = -1;
                filling_ = true;
                FillWidth();
                filling_ = false;
            },
            Qt::QueuedConnection);
    });
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
        const int given = g.Column(c).width > 0 ? g.Column(c).width * charWidth + 8 : 0;
        const int content =
            std::max(sizeHintForColumn(c - 1), horizontalHeader()->sectionSizeHint(c - 1));
        setColumnWidth(c - 1, std::max(given, given > 0 ? std::min(content, 2 * given) : content));
    }
    lastFitWidth_ = -1;
    FillWidth();
}

void GridView::FillWidth() {
    // The last column on show takes the room to spare, also when hidden columns follow it,
    // and never less than its content.
    if (!model_ || !horizontalHeader()->stretchLastSection()) return;
    const Grid& g = model_->grid();
    int last = -1, others = 0;
    for (int c = g.MaxCols(); c >= 1; --c) {
        if (g.Column(c).hidden) continue;
        if (last < 0) {
            last = c - 1;
        } else {
            others += columnWidth(c - 1);
        }
    }
    if (last < 0) return;
    if (lastFitWidth_ < 0) {
        lastFitWidth_ =
            std::max(sizeHintForColumn(last), horizontalHeader()->sectionSizeHint(last));
    }
    // The room as it is once the vertical scroll bar is there, when the rows need it.
    const QSize room = maximumViewportSize();
    const int bar =
        verticalHeader()->length() > room.height() ? verticalScrollBar()->sizeHint().width() : 0;
    const int width = std::max(lastFitWidth_, room.width() - bar - others);
    if (width != columnWidth(last)) setColumnWidth(last, width);
}

void GridView::updateGeometries() {
    // Also after a scroll bar came or went: the room to spare changed.
    QTableView::updateGeometries();
    if (filling_) return;
    filling_ = true;
    FillWidth();
    filling_ = false;
}

QString GridView::SelectedClipText() const {
    if (!model_) return {};
    const Grid& g = model_->grid();
    if (!g.IsBlockMode()) return ToQt(g.Text(g.ActiveCol(), g.ActiveRow()));
    GridBlock b = g.SelBlock();
    if (b.row1 < 1) b = {0, 1, 0, g.MaxRows()};
    return ToQt(g.ClipText(b));
}

bool GridView::PasteText(const QString& text) {
    if (!model_ || !isEnabled()) return false;
    Grid& g = model_->grid();
    bool takes = false;
    for (int c = 1; c <= g.MaxCols(); ++c)
        takes = takes || (!g.Column(c).locked && !g.Column(c).hidden);
    if (!takes) return false;
    const std::string clip = FromQt(text);
    if (paste_) {
        paste_(clip);
        return true;
    }
    const int col = g.ActiveCol(), row = g.ActiveRow();
    const int rows = g.Paste(clip);
    for (int r = row; r < row + rows; ++r) {
        for (int c = col; c <= g.MaxCols(); ++c) {
            if (!g.Column(c).locked && !g.Column(c).hidden) model_->Entered(c, r);
        }
    }
    return true;
}

void GridView::ClearSelectedCells() {
    if (!model_ || !isEnabled()) return;
    Grid& g = model_->grid();
    std::vector<GridBlock> blocks = g.Selection();
    if (blocks.empty())
        blocks.push_back({g.ActiveCol(), g.ActiveRow(), g.ActiveCol(), g.ActiveRow()});
    for (GridBlock b : blocks) {
        if (b.row1 < 1) b = {0, 1, 0, g.MaxRows()};
        if (b.col1 <= 0 && b.col2 <= 0) b.col1 = 1, b.col2 = g.MaxCols();
        for (int r = b.row1; r <= std::min(b.row2, g.MaxRows()); ++r) {
            for (int c = b.col1; c <= std::min(b.col2, g.MaxCols()); ++c) {
                if (g.Text(c, r).empty() && !g.IsIgnoredEntry(c, r)) continue;
                if (g.EditText(c, r, "")) model_->Entered(c, r);
            }
        }
    }
}

void GridView::MoveDown() {
    const QModelIndex cur = currentIndex();
    if (!cur.isValid() || cur.row() + 1 >= model_->rowCount()) return;
    setCurrentIndex(model_->index(cur.row() + 1, cur.column()));
    emit cellKeyed(cur.column() + 1, cur.row() + 2);
}

void GridView::closeEditor(QWidget* editor, QAbstractItemDelegate::EndEditHint hint) {
    // Enter in a cell takes the entry and moves down, as in a spreadsheet.
    const bool down = hint == QAbstractItemDelegate::SubmitModelCache;
    QTableView::closeEditor(editor, down ? QAbstractItemDelegate::NoHint : hint);
    if (down && model_) MoveDown();
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
    // The menu key speaks for the active cell, and its menu opens at that cell.
    const bool keyboard = e->reason() == QContextMenuEvent::Keyboard;
    const QModelIndex idx = keyboard ? currentIndex() : indexAt(e->pos());
    const QPoint at = keyboard && idx.isValid() ? viewport()->mapToGlobal(visualRect(idx).center())
                                                : e->globalPos();
    emit cellRightClicked(idx.isValid() ? idx.column() + 1 : 0, idx.isValid() ? idx.row() + 1 : 0,
                          at);
}

void GridView::keyPressEvent(QKeyEvent* e) {
    const bool enter = e->key() == Qt::Key_Return || e->key() == Qt::Key_Enter;
    if (enter && state() != EditingState && currentIndex().isValid() &&
        isSignalConnected(QMetaMethod::fromSignal(&GridView::cellEntered))) {
        e->accept();
        emit cellEntered(currentIndex().column() + 1, currentIndex().row() + 1);
        return;
    }
    if (model_ && state() != EditingState) {
        if (e->matches(QKeySequence::Copy)) {
            QGuiApplication::clipboard()->setText(SelectedClipText());
            e->accept();
            return;
        }
        if (e->matches(QKeySequence::Cut)) {
            QGuiApplication::clipboard()->setText(SelectedClipText());
            ClearSelectedCells();
            e->accept();
            return;
        }
        if (e->matches(QKeySequence::Paste)) {
            PasteText(QGuiApplication::clipboard()->text());
            e->accept();
            return;
        }
        if (e->key() == Qt::Key_Delete && e->modifiers() == Qt::NoModifier) {
            ClearSelectedCells();
            e->accept();
            return;
        }
        // Enter moves down a grid that takes entries; in a grid that is only read, Enter
        // belongs to the form's default button.
        if (enter && (model_->flags(currentIndex()) & Qt::ItemIsEditable)) {
            MoveDown();
            e->accept();
            return;
        }
        if (enter) {
            e->ignore();
            return;
        }
    }
    const QPersistentModelIndex before = currentIndex();
    QTableView::keyPressEvent(e);
    const QModelIndex now = currentIndex();
    if (now.isValid() && now != before) emit cellKeyed(now.column() + 1, now.row() + 1);
}

}  // namespace ostrel::gui
