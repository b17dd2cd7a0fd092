#pragma once
// What the melt form's files share: the columns of the index grid and the trim applied to
// the melt's text fields before they are shown or checked.

namespace ostrel::frm7melt_cells {

constexpr int kColLetter = 1, kColWave = 2, kColIndex = 3, kColParent = 4, kColDiff = 5,
              kColFit = 6;

void TrimText(auto& field) {
    field.Set(field.Text());
}

}  // namespace ostrel::frm7melt_cells
