#include "cli/grid_entry.h"

#include <charconv>
#include <limits>
#include <ostream>

#include "core/platform/number_text.h"
#include "core/platform/text.h"

namespace ostrel::cli {

namespace {

std::string LimitText(double v) {
    char buf[32];
    const auto res = std::to_chars(buf, buf + sizeof buf, v);
    return std::string(buf, res.ptr);
}

}  // namespace

std::vector<std::vector<std::string>> CellRowsFromText(std::string_view text) {
    std::vector<std::vector<std::string>> rows;
    bool first = true;
    size_t start = 0;
    while (start < text.size()) {
        size_t end = text.find('\n', start);
        if (end == std::string_view::npos) end = text.size();
        std::string_view line = text.substr(start, end - start);
        start = end + 1;
        if (!line.empty() && line.back() == '\r') line.remove_suffix(1);
        if (line.find_first_not_of(" \t") == std::string_view::npos) continue;
        std::vector<std::string> cells;
        bool anyNumber = false;
        size_t from = 0;
        while (true) {
            const size_t sep = line.find_first_of(",;\t", from);
            cells.push_back(
                VbTrimCopy(line.substr(from, sep == std::string_view::npos ? sep : sep - from)));
            anyNumber = anyNumber || IsValidNumber(cells.back());
            if (sep == std::string_view::npos) break;
            from = sep + 1;
        }
        const bool heading = first && !anyNumber;
        first = false;
        if (!heading) rows.push_back(std::move(cells));
    }
    return rows;
}

std::string CellRefusal(const Grid& grid, int col, int row, const std::string& text) {
    const std::string where = "Row " + std::to_string(row);
    if (col < 1 || col > grid.MaxCols() || row < 1 || row > grid.MaxRows()) {
        return where + ": the grid has " + std::to_string(grid.MaxRows()) + " rows of " +
               std::to_string(grid.MaxCols()) + " columns";
    }
    const GridColumn& c = grid.Column(col);
    const std::string cell = where + ", \"" + VbTrimCopy(c.title) + "\": ";
    if (c.locked || c.hidden) return cell + "the column takes no entry";
    if (text.empty() || c.type == CellType::Text) return {};
    const bool limited = c.minValue > std::numeric_limits<double>::lowest() ||
                         c.maxValue < std::numeric_limits<double>::max();
    const std::string takes = limited ? "the column takes numbers from " + LimitText(c.minValue) +
                                            " to " + LimitText(c.maxValue)
                                      : "the column takes numbers only";
    if (!IsValidNumber(text)) return cell + "\"" + text + "\" is refused: " + takes;
    const double v = Val(text);
    if (v < c.minValue || v > c.maxValue) return cell + text + " is refused: " + takes;
    return {};
}

bool TypeCell(Grid& grid, int col, int row, const std::string& text, std::ostream& err) {
    const std::string refusal = CellRefusal(grid, col, row, text);
    if (refusal.empty() && grid.EditText(col, row, text)) return true;
    err << (refusal.empty() ? "Row " + std::to_string(row) + ": refused" : refusal) << '\n';
    return false;
}

bool Press(const Button& button, const std::function<void()>& click, const std::string& whyDisabled,
           std::ostream& err) {
    if (!button.enabled) {
        err << "\"" << StripAccelerator(button.caption) << "\" is disabled: " << whyDisabled
            << '\n';
        return false;
    }
    click();
    return true;
}

}  // namespace ostrel::cli
