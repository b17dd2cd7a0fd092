#pragma once
// The floating list of custom materials: two columns, "Material" and "Source", melt glasses
// on light yellow. A right click on a row, while no working form is open, prepares the main
// window's popup menu for that material; on a row of a selection of several, the
// selection's own menu, which compares them.
#include <functional>
#include <string>
#include <vector>

#include "core/material/glasses_list.h"
#include "core/platform/controls.h"
#include "core/platform/grid.h"

namespace ostrel {

// Fills a two-column grid with the names and sources of the custom list, one row each,
// and colours melt glasses' rows light yellow (the others white). Redraw is off meanwhile.
void FillMaterialGrid(const GlassesList& list, Grid& grid);

class frmGlassesList {
  public:
    struct Hooks {
        // The working form open now (0 for none).
        std::function<int()> currentForm;
        // The main window's PrepForPopup(index, label).
        std::function<void(int, const std::string&)> prepForPopup;
        // The main window's PrepForPopupMelt(index, label), for a melt glass's row.
        std::function<void(int, const std::string&)> prepForPopupMelt = {};
        // A line on the help line.
        std::function<void(const std::string&)> note = {};
        // Opens the comparison of the materials at these list positions (1-based).
        std::function<void(const std::vector<int>&)> compare = {};
    };

    // Said on the help line when the list is right clicked while a form is open.
    static constexpr const char* kMenuWhileFormOpen =
        "The list's menu is available once the open form is closed.";

    frmGlassesList(GlassesList& list, Hooks hooks);
    ~frmGlassesList();
    frmGlassesList(const frmGlassesList&) = delete;
    frmGlassesList& operator=(const frmGlassesList&) = delete;

    // Fills the grid and shows the form; from now on every change of the list refreshes it.
    void Display();
    void ForceUnload();
    // Refills the grid from the custom list.
    void UpdateTable();

    // A right click (or the menu key) on grid row `row`. True when the popup menu is to be
    // opened: the melt menu for a melt glass's row, else the list's menu. While a form is
    // open the help line says why no menu comes.
    bool ssGlassesListRightClick(int row);
    // True when the last opened popup is the melt menu.
    bool PopupIsMelt() const { return popupMelt_; }
    // True when the last opened popup is the menu of a selection of several rows.
    bool PopupIsSelection() const { return popupSelection_; }

    // The list positions (1-based) of the selected rows, in list order.
    std::vector<int> SelectedPositions() const;
    // Compares the selected materials; enabled while two or more are selected.
    void mnuCompareClick();

    Control form{"Materials"};
    Grid ssGlassesList;
    Button mnuCompare{"&Compare selected",
                      "Compare the index and transmission of the materials selected in the list"};

  private:
    GlassesList& list_;
    Hooks hooks_;
    bool popupMelt_ = false;
    bool popupSelection_ = false;
    Subscription selectionSub_;
};

}  // namespace ostrel
