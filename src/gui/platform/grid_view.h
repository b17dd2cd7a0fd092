#pragma once
// The grid on screen: a QTableView over a table model that adapts a Grid. Each cell shows
// the grid's text as it is. An entry by the user goes through Grid::EditText and then to the
// form's change handler; the view's active cell and selection are written back to the grid,
// and the grid's to the view.
#include <QAbstractTableModel>
#include <QTableView>
#include <functional>

#include "core/platform/grid.h"

namespace ostrel::gui {

class GridTableModel : public QAbstractTableModel {
    Q_OBJECT
  public:
    // `changed(col, row)` is called after each accepted entry (1-based).
    GridTableModel(Grid& grid, std::function<void(int, int)> changed, QObject* parent = nullptr);

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    bool setData(const QModelIndex& index, const QVariant& value, int role) override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;
    QVariant headerData(int section, Qt::Orientation o, int role) const override;

    Grid& grid() { return grid_; }
    // Runs the form's change handler for a cell the user changed outside the cell editor.
    void Entered(int col, int row) {
        if (changed_) changed_(col, row);
    }

  signals:
    void layoutReset();
    void selectionFromGrid();

  private:
    void OnGridChange(const GridChange& c);

    Grid& grid_;
    std::function<void(int, int)> changed_;
    Subscription sub_;
};

class GridView : public QTableView {
    Q_OBJECT
  public:
    explicit GridView(QWidget* parent = nullptr);
    // Shows `grid`; `changed(col, row)` follows each accepted entry.
    void Bind(Grid& grid, std::function<void(int, int)> changed = {});
    GridTableModel* gridModel() const { return model_; }

    // The selected blocks' texts (the active cell's without a block) as tab-separated text,
    // what spreadsheets exchange.
    QString SelectedClipText() const;
    // Pastes tab-separated text at the active cell: through the form's own paste where it
    // has one, else cell by cell as typed entries. False when the grid takes no entry.
    bool PasteText(const QString& text);
    // Empties the selected cells (the active cell without a block) that take an entry.
    void ClearSelectedCells();
    // The form's paste (it knows what follows a pasted row).
    void SetPasteHandler(std::function<void(const std::string&)> paste) {
        paste_ = std::move(paste);
    }
    // Where the grids say why an entry is ignored: the main window's help line.
    static void SetNoteSink(std::function<void(const std::string&)> sink);
    static void Note(const std::string& text);

  signals:
    // A right click on a cell (1-based); row 0 when below the last row.
    void cellRightClicked(int col, int row, const QPoint& globalPos);
    // The user moved to a cell with the keyboard (1-based): what a click on it is by mouse.
    void cellKeyed(int col, int row);
    // Enter on a cell, outside an edit (1-based): the keyboard's double click. Taken by the
    // grid only where something answers it.
    void cellEntered(int col, int row);

  protected:
    void contextMenuEvent(QContextMenuEvent* e) override;
    void keyPressEvent(QKeyEvent* e) override;
    void closeEditor(QWidget* editor, QAbstractItemDelegate::EndEditHint hint) override;
    void updateGeometries() override;

  private:
    void ApplyColumns();
    void SelectionToGrid();
    void SelectionFromGrid();

    void MoveDown();
    void FillWidth();

    GridTableModel* model_ = nullptr;
    bool syncing_ = false;
    bool filling_ = false;
    bool fillPending_ = false;
    int lastFitWidth_ = -1;  // the last column's own width, before it takes the spare room
    std::function<void(const std::string&)> paste_;
};

}  // namespace ostrel::gui
