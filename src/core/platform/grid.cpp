#include "core/platform/grid.h"

#include <algorithm>
#include <charconv>
#include <set>

#include "core/platform/number_text.h"

namespace ostrel {

namespace {

std::string DecimalsPattern(int decimals) {
    std::string pattern = "0";
    if (decimals > 0) pattern += "." + std::string(static_cast<size_t>(decimals), '0');
    return pattern;
}

int CompareNoCase(const std::string& a, const std::string& b) {
    const size_t n = std::min(a.size(), b.size());
    for (size_t i = 0; i < n; ++i) {
        const auto ca = static_cast<unsigned char>(a[i]);
        const auto cb = static_cast<unsigned char>(b[i]);
        const int la = (ca >= 'A' && ca <= 'Z') ? ca + 32 : ca;
        const int lb = (cb >= 'A' && cb <= 'Z') ? cb + 32 : cb;
        if (la != lb) return la < lb ? -1 : 1;
    }
    if (a.size() == b.size()) return 0;
    return a.size() < b.size() ? -1 : 1;
}

const GridColumn& NoColumn() {
    static const GridColumn none;
    return none;
}

}  // namespace

std::vector<std::vector<std::string>> SplitClipText(const std::string& clip) {
    std::vector<std::vector<std::string>> out;
    if (clip.empty()) return out;
    std::vector<std::string> row(1);
    for (size_t i = 0; i < clip.size(); ++i) {
        const char c = clip[i];
        if (c == '\r' || c == '\n') {
            if (c == '\r' && i + 1 < clip.size() && clip[i + 1] == '\n') ++i;
            out.push_back(std::move(row));
            row.assign(1, std::string());
        } else if (c == '\t') {
            row.emplace_back();
        } else {
            row.back() += c;
        }
    }
    if (row.size() > 1 || !row.front().empty()) out.push_back(std::move(row));
    return out;
}

Grid::Grid(int maxCols, int maxRows) {
    SetMaxCols(maxCols);
    SetMaxRows(maxRows);
}

void Grid::Changed(GridChange::Kind kind, GridBlock area) {
    if (!redraw_) {
        pending_ = true;
        return;
    }
    changed_.Emit(GridChange{kind, area});
}

void Grid::SetRedraw(bool on) {
    if (redraw_ == on) return;
    redraw_ = on;
    if (on && pending_) {
        pending_ = false;
        changed_.Emit(GridChange{GridChange::Kind::Layout, {}});
    }
}

// --- size ---

void Grid::SetMaxCols(int cols) {
    cols = std::max(cols, 0);
    if (cols == MaxCols()) return;
    columns_.resize(static_cast<size_t>(cols));
    for (auto& r : rows_) {
        r.cells.resize(static_cast<size_t>(cols));
        r.colours.resize(static_cast<size_t>(cols));
        r.ignored.resize(static_cast<size_t>(cols));
    }
    Changed(GridChange::Kind::Layout);
}

void Grid::SetMaxRows(int rows) {
    rows = std::max(rows, 0);
    if (rows == MaxRows()) return;
    Row blank;
    blank.cells.resize(columns_.size());
    blank.colours.resize(columns_.size());
    blank.ignored.resize(columns_.size());
    rows_.resize(static_cast<size_t>(rows), blank);
    std::erase_if(selection_, [rows](const GridBlock& b) { return b.row1 > rows; });
    for (auto& b : selection_) b.row2 = std::min(b.row2, rows);
    Changed(GridChange::Kind::Layout);
}

// --- columns ---

const GridColumn& Grid::Column(int col) const {
    if (col < 1 || col > MaxCols()) return NoColumn();
    return columns_[col - 1];
}

void Grid::SetColumn(int col, GridColumn format) {
    if (col < 1 || col > MaxCols()) return;
    columns_[col - 1] = std::move(format);
    Changed(GridChange::Kind::Layout);
}

void Grid::SetColumnTitle(int col, const std::string& title) {
    if (col < 1 || col > MaxCols() || columns_[col - 1].title == title) return;
    columns_[col - 1].title = title;
    Changed(GridChange::Kind::Layout);
}

void Grid::SetColumnText(int col) {
    if (col < 1 || col > MaxCols()) return;
    columns_[col - 1].type = CellType::Text;
    Changed(GridChange::Kind::Layout);
}

void Grid::SetColumnFloat(int col, int decimals, double minValue, double maxValue) {
    if (col < 1 || col > MaxCols()) return;
    auto& c = columns_[col - 1];
    c.type = CellType::Float;
    c.decimals = std::clamp(decimals, 0, 15);
    c.minValue = minValue;
    c.maxValue = maxValue;
    Changed(GridChange::Kind::Layout);
}

void Grid::SetColumnLocked(int col, bool locked) {
    if (col < 1 || col > MaxCols() || columns_[col - 1].locked == locked) return;
    columns_[col - 1].locked = locked;
    Changed(GridChange::Kind::Layout);
}

void Grid::SetColumnHidden(int col, bool hidden) {
    if (col < 1 || col > MaxCols() || columns_[col - 1].hidden == hidden) return;
    columns_[col - 1].hidden = hidden;
    Changed(GridChange::Kind::Layout);
}

void Grid::SetColumnWidth(int col, int chars) {
    if (col < 1 || col > MaxCols() || columns_[col - 1].width == chars) return;
    columns_[col - 1].width = chars;
    Changed(GridChange::Kind::Layout);
}

// --- cells ---

std::string Grid::Text(int col, int row) const {
    if (!InGrid(col, row)) return {};
    return rows_[row - 1].cells[col - 1];
}

void Grid::SetText(int col, int row, const std::string& text) {
    if (!InGrid(col, row)) return;
    auto& cell = rows_[row - 1].cells[col - 1];
    char& ignored = rows_[row - 1].ignored[col - 1];
    if (cell == text && !ignored) return;
    cell = text;
    ignored = 0;
    Changed(GridChange::Kind::Cells, {col, row, col, row});
}

double Grid::Value(int col, int row) const {
    return Val(Text(col, row));
}

void Grid::SetValue(int col, int row, double value) {
    char buf[64];
    auto res = std::to_chars(buf, buf + sizeof buf, value);
    SetText(col, row, std::string(buf, res.ptr));
}

std::string Grid::FloatText(int col, float value) const {
    const std::string text = FormatNumber(value, DecimalsPattern(Column(col).decimals));
    return static_cast<float>(Val(text)) == value ? text : ShortestFloatText(value);
}

bool Grid::AcceptsEntry(int col, const std::string& text) const {
    const auto& c = Column(col);
    if (c.locked || c.hidden) return false;
    if (text.empty() || c.type == CellType::Text) return true;
    if (!IsValidNumber(text)) return false;
    const double v = Val(text);
    return v >= c.minValue && v <= c.maxValue;
}

std::string Grid::EntryText(int col, const std::string& text) const {
    return Column(col).type == CellType::Float ? DecimalPointText(text) : text;
}

bool Grid::IsNoNumberEntry(int col, const std::string& text) const {
    const auto& c = Column(col);
    return !c.locked && !c.hidden && c.type == CellType::Float && !text.empty() &&
           !IsValidNumber(text);
}

void Grid::SetEntry(int col, int row, const std::string& text) {
    SetText(col, row, text);
    if (IsNoNumberEntry(col, text)) {
        rows_[row - 1].ignored[col - 1] = 1;
        Changed(GridChange::Kind::Cells, {col, row, col, row});
    }
}

bool Grid::EditText(int col, int row, const std::string& typed) {
    if (!InGrid(col, row)) return false;
    const std::string text = EntryText(col, typed);
    if (!AcceptsEntry(col, text) && !IsNoNumberEntry(col, text)) return false;
    SetEntry(col, row, text);
    return true;
}

bool Grid::IsIgnoredEntry(int col, int row) const {
    return InGrid(col, row) && rows_[row - 1].ignored[col - 1] != 0;
}

void Grid::ClearRow(int row) {
    if (row < 1 || row > MaxRows()) return;
    auto& r = rows_[row - 1];
    std::fill(r.cells.begin(), r.cells.end(), std::string());
    std::fill(r.ignored.begin(), r.ignored.end(), 0);
    Changed(GridChange::Kind::Cells, {1, row, MaxCols(), row});
}

void Grid::ClearAll() {
    for (auto& r : rows_) {
        std::fill(r.cells.begin(), r.cells.end(), std::string());
        std::fill(r.colours.begin(), r.colours.end(), std::nullopt);
        std::fill(r.ignored.begin(), r.ignored.end(), 0);
        r.colour.reset();
    }
    Changed(GridChange::Kind::Layout);
}

// --- colours ---

std::optional<Colour> Grid::RowColour(int row) const {
    if (row < 1 || row > MaxRows()) return std::nullopt;
    return rows_[row - 1].colour;
}

void Grid::SetRowColour(int row, std::optional<Colour> colour) {
    if (row < 1 || row > MaxRows() || rows_[row - 1].colour == colour) return;
    rows_[row - 1].colour = colour;
    Changed(GridChange::Kind::Cells, {1, row, MaxCols(), row});
}

std::optional<Colour> Grid::CellColour(int col, int row) const {
    if (!InGrid(col, row)) return std::nullopt;
    const auto& r = rows_[row - 1];
    return r.colours[col - 1] ? r.colours[col - 1] : r.colour;
}

void Grid::SetCellColour(int col, int row, std::optional<Colour> colour) {
    if (!InGrid(col, row) || rows_[row - 1].colours[col - 1] == colour) return;
    rows_[row - 1].colours[col - 1] = colour;
    Changed(GridChange::Kind::Cells, {col, row, col, row});
}

// --- active cell and selection ---

void Grid::SetActiveCell(int col, int row) {
    if (col == activeCol_ && row == activeRow_) return;
    activeCol_ = col;
    activeRow_ = row;
    Changed(GridChange::Kind::Selection);
}

void Grid::SetSelection(const GridBlock& block) {
    SetSelections({block});
}

void Grid::AddSelection(const GridBlock& block) {
    selection_.push_back(block);
    Changed(GridChange::Kind::Selection);
}

void Grid::SetSelections(std::vector<GridBlock> blocks) {
    for (auto& b : blocks) {
        if (b.row1 > b.row2) std::swap(b.row1, b.row2);
        if (b.col1 > b.col2) std::swap(b.col1, b.col2);
    }
    if (blocks == selection_) return;
    selection_ = std::move(blocks);
    Changed(GridChange::Kind::Selection);
}

void Grid::ClearSelection() {
    SetSelections({});
}

bool Grid::IsSelected(int col, int row) const {
    return std::any_of(selection_.begin(), selection_.end(),
                       [&](const GridBlock& b) { return b.Contains(col, row); });
}

std::vector<int> Grid::SelectedRows() const {
    std::set<int> rows;
    for (const auto& b : selection_) {
        for (int r = std::max(b.row1, 1); r <= std::min(b.row2, MaxRows()); ++r) rows.insert(r);
    }
    return {rows.begin(), rows.end()};
}

// --- clip text ---

std::string Grid::ClipText(const GridBlock& block) const {
    int c1 = block.col1, c2 = block.col2;
    if (c1 <= 0 && c2 <= 0) {
        c1 = 1;
        c2 = MaxCols();
    }
    std::string out;
    for (int r = block.row1; r <= block.row2; ++r) {
        if (r > block.row1) out += "\n";
        for (int c = c1; c <= c2; ++c) {
            if (c > c1) out += '\t';
            out += Text(c, r);
        }
    }
    return out;
}

int Grid::SetClip(int col, int row, const std::string& clip) {
    const auto rows = SplitClipText(clip);
    const bool wasOn = redraw_;
    SetRedraw(false);
    int written = 0;
    for (size_t i = 0; i < rows.size(); ++i) {
        const int r = row + static_cast<int>(i);
        if (r < 1 || r > MaxRows()) break;
        for (size_t j = 0; j < rows[i].size(); ++j)
            SetText(col + static_cast<int>(j), r, rows[i][j]);
        ++written;
    }
    SetRedraw(wasOn);
    return written;
}

int Grid::Paste(const std::string& clip) {
    const auto rows = SplitClipText(clip);
    const bool wasOn = redraw_;
    SetRedraw(false);
    int written = 0;
    for (size_t i = 0; i < rows.size(); ++i) {
        const int r = activeRow_ + static_cast<int>(i);
        if (r < 1 || r > MaxRows()) break;
        int c = activeCol_;
        for (const auto& text : rows[i]) {
            while (c <= MaxCols() && (Column(c).locked || Column(c).hidden)) ++c;
            if (c > MaxCols()) break;
            const std::string entry = EntryText(c, text);
            if (AcceptsEntry(c, entry) || IsNoNumberEntry(c, entry)) {
                SetEntry(c, r, entry);
            } else {
                SetText(c, r, std::string());
            }
            ++c;
        }
        ++written;
    }
    SetRedraw(wasOn);
    return written;
}

// --- sort ---

void Grid::Sort(int row1, int row2, const std::vector<SortKey>& keys) {
    row1 = std::max(row1, 1);
    row2 = std::min(row2, MaxRows());
    if (row1 >= row2 || keys.empty()) return;
    std::vector<SortKey> use(keys.begin(), keys.begin() + std::min<size_t>(keys.size(), 2));
    std::erase_if(use, [this](const SortKey& k) { return k.col < 1 || k.col > MaxCols(); });
    if (use.empty()) return;
    auto less = [this, &use](const Row& a, const Row& b) {
        for (const auto& k : use) {
            const auto& ta = a.cells[k.col - 1];
            const auto& tb = b.cells[k.col - 1];
            int cmp;
            if (Column(k.col).type == CellType::Float) {
                const double va = Val(ta), vb = Val(tb);
                cmp = va < vb ? -1 : (va > vb ? 1 : 0);
            } else {
                cmp = CompareNoCase(ta, tb);
            }
            if (cmp != 0) return k.ascending ? cmp < 0 : cmp > 0;
        }
        return false;
    };
    std::stable_sort(rows_.begin() + (row1 - 1), rows_.begin() + row2, less);
    Changed(GridChange::Kind::Layout);
}

}  // namespace ostrel
