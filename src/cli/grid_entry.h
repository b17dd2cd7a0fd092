#pragma once
// A form's grid filled and its buttons pressed from the command line as a user could do it:
// a cell takes only what the grid takes from the keyboard, and a disabled button cannot be
// pressed. Every refusal comes with its reason.
#include <functional>
#include <iosfwd>
#include <string>
#include <string_view>
#include <vector>

#include "core/platform/controls.h"
#include "core/platform/grid.h"

namespace ostrel::cli {

// The cells of a text file: one row a line, cells split at a comma, a semicolon or a tab,
// each trimmed. Blank lines are passed over, and so is a first line in which no cell is a
// number (a heading).
std::vector<std::vector<std::string>> CellRowsFromText(std::string_view text);

// Why the grid would refuse the text typed into the cell; empty when it takes it.
std::string CellRefusal(const Grid& grid, int col, int row, const std::string& text);

// Types the text into the cell; false, with the reason on err, when the grid refuses it.
bool TypeCell(Grid& grid, int col, int row, const std::string& text, std::ostream& err);

// Presses the button when it is enabled; a disabled one is refused with the caption and
// `whyDisabled`, what the window shows in the way.
bool Press(const Button& button, const std::function<void()>& click, const std::string& whyDisabled,
           std::ostream& err);

}  // namespace ostrel::cli
