#include "core/material/frm_glasses_list.h"

namespace ostrel {

void FillMaterialGrid(const GlassesList& list, Grid& grid) {
    const bool wasOn = grid.Redraw();
    grid.SetRedraw(false);
    if (grid.MaxCols() < 2) grid.SetMaxCols(2);
    grid.SetColumnTitle(1, "Material");
    grid.SetColumnTitle(2, "Source");
    grid.SetColumnLocked(1, true);
    grid.SetColumnLocked(2, true);

    std::string clip;
    const auto& records = list.CustomList();
    for (size_t i = 0; i < records.size(); ++i) {
        if (i > 0) clip += '\n';
        clip += records[i].General.GlassName.Text() + '\t' + records[i].General.Source.Text();
    }
    grid.SetMaxRows(list.CustomCount());
    grid.SetClip(1, 1, clip);
    for (int row = 1; row <= list.CustomCount(); ++row) {
        const bool melt = records[row - 1].Melt.MeltFlag != 0;
        grid.SetRowColour(row, melt ? kMeltRowColour : kWhite);
    }
    grid.SetRedraw(wasOn);
}

frmGlassesList::frmGlassesList(GlassesList& list, Hooks hooks)
    : list_(list), hooks_(std::move(hooks)) {
    ssGlassesList.SetMaxCols(2);
    ssGlassesList.SetColumnTitle(1, "Material");
    ssGlassesList.SetColumnTitle(2, "Source");
    form.visible = false;
    mnuCompare.enabled = false;
    selectionSub_ = ssGlassesList.Observe(
        [this](const GridChange&) { mnuCompare.enabled = SelectedPositions().size() >= 2; });
}

frmGlassesList::~frmGlassesList() {
    list_.SetRefreshHandler(nullptr);
}

void frmGlassesList::Display() {
    list_.SetRefreshHandler([this] { UpdateTable(); });
    UpdateTable();
    form.visible = true;
}

void frmGlassesList::ForceUnload() {
    list_.SetRefreshHandler(nullptr);
    form.visible = false;
}

void frmGlassesList::UpdateTable() {
    FillMaterialGrid(list_, ssGlassesList);
}

bool frmGlassesList::ssGlassesListRightClick(int row) {
    if (hooks_.currentForm && hooks_.currentForm() != 0) {
        if (hooks_.note) hooks_.note(kMenuWhileFormOpen);
        return false;
    }
    if (row < 1 || row > ssGlassesList.MaxRows()) return false;
    popupSelection_ = mnuCompare.enabled && ssGlassesList.IsSelected(1, row);
    popupMelt_ = false;
    if (popupSelection_) return true;
    const std::string label = ssGlassesList.Text(1, row) + "/" + ssGlassesList.Text(2, row);
    if (label.find('\0') != std::string::npos) return false;
    ssGlassesList.SetActiveCell(1, row);
    const auto& records = list_.CustomList();
    popupMelt_ = row <= static_cast<int>(records.size()) &&
                 records[static_cast<size_t>(row - 1)].Melt.MeltFlag != 0 &&
                 hooks_.prepForPopupMelt != nullptr;
    if (popupMelt_) {
        hooks_.prepForPopupMelt(row, label);
    } else if (hooks_.prepForPopup) {
        hooks_.prepForPopup(row, label);
    }
    return true;
}

std::vector<int> frmGlassesList::SelectedPositions() const {
    std::vector<int> rows = ssGlassesList.SelectedRows();
    std::erase_if(rows, [this](int row) { return row < 1 || row > list_.CustomCount(); });
    return rows;
}

void frmGlassesList::mnuCompareClick() {
    const std::vector<int> rows = SelectedPositions();
    if (rows.size() < 2) {
        if (hooks_.note) hooks_.note("Select two or more materials in the list to compare them.");
        return;
    }
    if (hooks_.compare) hooks_.compare(rows);
}

}  // namespace ostrel
