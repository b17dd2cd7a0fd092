#pragma once
// The spreadsheet grid the forms use, without pixels. Rows and columns count from 1; every
// cell holds text (a number cell holds the number as text, a non-numeric cell reads 0).
// Columns carry the cell type (text, or float with decimals and limits), lock and hide;
// rows carry a back colour and cells may carry their own. The grid has an active cell,
// a selection of one or several blocks, block clip text (tab between cells, line break
// between rows), paste at the active cell and a sort on up to two keys. Observers hear of
// every change; with redraw off changes are gathered and told once when it goes back on.
#include <limits>
#include <optional>
#include <string>
#include <vector>

#include "core/platform/controls.h"

namespace ostrel {

enum class CellType { Text, Float };

struct GridColumn {
    std::string title;
    CellType type = CellType::Text;
    int decimals = 2;
    double minValue = std::numeric_limits<double>::lowest();
    double maxValue = std::numeric_limits<double>::max();
    bool locked = false;
    bool hidden = false;
    int width = 0;  // in characters; 0 lets the view choose
};

// A block of cells, corners included. A column of 0 or -1 in both corners means whole rows.
struct GridBlock {
    int col1 = 0, row1 = 0, col2 = 0, row2 = 0;
    bool Contains(int col, int row) const {
        return row >= row1 && row <= row2 &&
               ((col1 <= 0 && col2 <= 0) || (col >= col1 && col <= col2));
    }
    bool operator==(const GridBlock&) const = default;
};

struct SortKey {
    int col = 1;
    bool ascending = true;
};

struct GridChange {
    enum class Kind {
        Cells,      // texts or colours inside `area` changed
        Layout,     // counts, columns, or anything wide: redraw everything
        Selection,  // active cell or selection
    };
    Kind kind = Kind::Layout;
    GridBlock area;
};

class Grid {
  public:
    Grid(int maxCols = 0, int maxRows = 0);
    Grid(const Grid&) = delete;
    Grid& operator=(const Grid&) = delete;

    [[nodiscard]] Subscription Observe(std::function<void(const GridChange&)> observer) {
        return changed_.Subscribe(std::move(observer));
    }

    // --- size ---
    int MaxCols() const { return static_cast<int>(columns_.size()); }
    int MaxRows() const { return static_cast<int>(rows_.size()); }
    // Growing adds blank cells; shrinking drops what lies outside.
    void SetMaxCols(int cols);
    void SetMaxRows(int rows);

    // --- columns ---
    const GridColumn& Column(int col) const;
    void SetColumn(int col, GridColumn format);
    void SetColumnTitle(int col, const std::string& title);
    void SetColumnText(int col);
    void SetColumnFloat(int col, int decimals,
                        double minValue = std::numeric_limits<double>::lowest(),
                        double maxValue = std::numeric_limits<double>::max());
    void SetColumnLocked(int col, bool locked);
    void SetColumnHidden(int col, bool hidden);
    void SetColumnWidth(int col, int chars);

    // --- cells ---
    // "" outside the grid.
    std::string Text(int col, int row) const;
    // Ignored outside the grid.
    void SetText(int col, int row, const std::string& text);
    // The cell read as a number: a non-numeric or empty cell is 0.
    double Value(int col, int row) const;
    void SetValue(int col, int row, double value);
    // The text a form writes for a 32-bit number in a float column: with the column's
    // decimals, or in its shortest form where those decimals would not give back the same
    // float, so that nothing typed is lost by showing it.
    std::string FloatText(int col, float value) const;
    // An entry by the user: refused (false) in a locked or hidden column, outside the grid,
    // and in a float column for a number outside the limits. A number with a decimal comma
    // is taken with a point. Text that is no number is not erased in a float column: it is
    // taken as typed and marked as an ignored entry (it reads 0 like any non-numeric cell)
    // until something else is written to the cell. An empty entry always clears the cell.
    bool EditText(int col, int row, const std::string& text);
    // True for a cell of a float column holding text the user typed or pasted that is no
    // number: the view marks it and says why it is ignored.
    bool IsIgnoredEntry(int col, int row) const;
    void ClearRow(int row);
    void ClearAll();

    // --- colours; a cell's own colour wins over its row's ---
    std::optional<Colour> RowColour(int row) const;
    void SetRowColour(int row, std::optional<Colour> colour);
    std::optional<Colour> CellColour(int col, int row) const;
    void SetCellColour(int col, int row, std::optional<Colour> colour);

    // --- active cell and selection ---
    int ActiveCol() const { return activeCol_; }
    int ActiveRow() const { return activeRow_; }
    void SetActiveCell(int col, int row);
    const std::vector<GridBlock>& Selection() const { return selection_; }
    // True while at least one block is selected.
    bool IsBlockMode() const { return !selection_.empty(); }
    // The first block, or an empty block when nothing is selected.
    GridBlock SelBlock() const { return selection_.empty() ? GridBlock{} : selection_.front(); }
    void SetSelection(const GridBlock& block);
    void AddSelection(const GridBlock& block);
    void SetSelections(std::vector<GridBlock> blocks);
    void ClearSelection();
    bool IsSelected(int col, int row) const;
    // Rows touched by any selected block, ascending, each once.
    std::vector<int> SelectedRows() const;

    // --- clip text ---
    // The block's texts: tab between cells, "\n" between rows (none after the last).
    std::string ClipText(const GridBlock& block) const;
    // Writes clip text with its first cell at (col, row); what falls outside is dropped.
    // Returns the number of rows written.
    int SetClip(int col, int row, const std::string& clip);
    // Pastes at the active cell as the user would: locked or hidden columns are passed over
    // and float columns take an entry as EditText does, except that a number outside the
    // limits leaves the cell empty.
    int Paste(const std::string& clip);

    // --- sort ---
    // Sorts rows row1..row2 on up to two keys; rows move whole, colours included. Equal
    // rows keep their order. Float columns compare as numbers, text columns without regard
    // to case.
    void Sort(int row1, int row2, const std::vector<SortKey>& keys);

    // --- redraw ---
    bool Redraw() const { return redraw_; }
    void SetRedraw(bool on);

  private:
    struct Row {
        std::vector<std::string> cells;
        std::vector<std::optional<Colour>> colours;
        std::vector<char> ignored;  // per cell: an entry that is no number
        std::optional<Colour> colour;
    };
    bool InGrid(int col, int row) const {
        return col >= 1 && col <= MaxCols() && row >= 1 && row <= MaxRows();
    }
    bool AcceptsEntry(int col, const std::string& text) const;
    // The entry as the cell takes it: a float column reads a decimal comma as a point.
    std::string EntryText(int col, const std::string& text) const;
    bool IsNoNumberEntry(int col, const std::string& text) const;
    void SetEntry(int col, int row, const std::string& text);
    void Changed(GridChange::Kind kind, GridBlock area = {});

    std::vector<GridColumn> columns_;
    std::vector<Row> rows_;
    int activeCol_ = 1;
    int activeRow_ = 1;
    std::vector<GridBlock> selection_;
    bool redraw_ = true;
    bool pending_ = false;
    Signal<const GridChange&> changed_;
};

// Splits clip text into rows (line breaks, "\r\n" or "\n"; a final line break ends the last
// row) and cells (tabs).
std::vector<std::vector<std::string>> SplitClipText(const std::string& clip);

}  // namespace ostrel
