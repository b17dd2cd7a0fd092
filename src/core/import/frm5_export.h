#pragma once
// The backup form without pixels: a grid over a copy of the custom list, and two commands
// that write the selected or all materials to a GLZ text file.
//
// Binding a window: one widget per control below (same names), ssGlassesCurr through the
// grid view. The save dialog of the window is expected to ask before it overwrites a file.
#include <functional>
#include <string>
#include <vector>

#include "core/material/glasses_list.h"
#include "core/platform/clock.h"
#include "core/platform/controls.h"
#include "core/platform/dialogs.h"
#include "core/platform/grid.h"
#include "core/shell/manage_forms.h"

namespace ostrel {

class frm5Export : public WorkingForm {
  public:
    enum Col {
        kColGlass = 1,
        kColSource,
        kColWaveband,
        kColIndexRange,
        kColCount = kColIndexRange
    };

    static constexpr const char* kFilter = "Ostrel (*.GLZ)|*.GLZ";
    static constexpr const char* kEmptyListMsg = "There are no glasses to backup!";

    // close: closes the form through the tool strip (RibbonClick of form 5, released);
    // without it the Close button simply hides the form.
    frm5Export(GlassesList& list, Dialogs& dialogs, const Clock& clock,
               std::function<void()> close = {});

    // Takes a copy of the custom list, fills the grid (the first time the glass column is
    // made twice as wide) and shows the form. ForceUnload closes it whatever its state.
    void Display() override;
    void ForceUnload() override;
    void FillGrid();

    void comExportAllClick();
    void comExportSelClick();
    void comOKClick();

    // The selected range of list positions: the block's first and last row (a first row
    // below 1 means the whole list), else the active row.
    void SelectedRange(int& first, int& last) const;
    // The file name offered: for one material its trimmed name with ".GLZ" and every "*"
    // made "-"; for several, empty.
    std::string DefaultFileName(int first, int last) const;

    // The form's copy of the list (the writer normalises the records it writes in it).
    const std::vector<MaterialRecord>& Copy() const { return copy_; }

    Control form{"Backup material data"};
    Grid ssGlassesCurr;
    Panel fraBackup{"Backup to text file: "};
    Button comExportSel{"&Backup selected", "Backup selected glasses to a text file"};
    Button comExportAll{"B&ackup all", "Backup all glasses to a text file"};
    Button comOK{"&Close"};

  private:
    void Export(int first, int last, const std::string& title);

    GlassesList& list_;
    Dialogs& dialogs_;
    const Clock& clock_;
    std::function<void()> close_;
    std::vector<MaterialRecord> copy_;
    bool firstFill_ = true;
};

}  // namespace ostrel
