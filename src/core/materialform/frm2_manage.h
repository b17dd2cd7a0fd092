#pragma once
// The managing form's list side: a grid of all custom materials with waveband, index range,
// date and readiness, and the commands Edit, Delete, Duplicate and Sort on the form's own
// copy of the list. (The commands that push materials into the sibling programs work on
// the same grid and copy.)
#include <functional>
#include <string>
#include <vector>

#include "core/material/glasses_list.h"
#include "core/platform/controls.h"
#include "core/platform/dialogs.h"
#include "core/platform/grid.h"
#include "core/shell/manage_forms.h"

namespace ostrel {

// Picks materials of a list to delete.
class frmGlassesDel {
  public:
    explicit frmGlassesDel(std::vector<MaterialRecord>& list);

    // Fills the list: name "/" source for every material.
    void Load();
    // Removes the selected materials from the list (the others keep their order) and closes;
    // the result is true when something was removed.
    void comDelSelClick();
    void comCancelClick();

    bool Result() const { return result_; }
    bool Closed() const { return closed_; }

    Control form{"Materials to delete"};
    Label lblSelect{"Select materials to be deleted from the Ostrel database:"};
    ListControl lstGlasses{true};
    Button comDelSel{"&Delete"};
    Button comCancel{"&Cancel"};

  private:
    std::vector<MaterialRecord>& list_;
    bool result_ = false;
    bool closed_ = false;
};

class frm2Manage : public WorkingForm {
  public:
    // Grid columns.
    enum Col {
        kColGlass = 1,
        kColSource,
        kColWaveband,
        kColIndexRange,
        kColDate,
        kColStatus,
        kColIndex,
        kColCount = kColIndex
    };

    struct Hooks {
        // Open material `index` (1-based, of the form's copy) for editing in the material
        // form, or in the melt form; the manage form is the parent.
        std::function<void(int index, const MaterialRecord&)> editInNewForm;
        std::function<void(int index, const MaterialRecord&)> editInMeltForm;
        // Shows frmGlassesDel modally (its Load already done); returns when it has closed.
        std::function<void(frmGlassesDel&)> showGlassesDel;
        // Closes the form through the tool strip (RibbonClick of form 2, released).
        std::function<void()> close;
    };

    frm2Manage(GlassesList& list, Dialogs& dialogs, Hooks hooks);

    // Takes a copy of the list, fills the grid and shows the form.
    void Display() override;
    void ForceUnload() override;
    // After a material was saved elsewhere: takes a new copy and refills the grid.
    void UpdatesGlasssAftEdit();
    // Refills ssGlassesCurr from the form's copy.
    void FillGrid();

    // --- commands ---
    void comOKClick();
    void comEditClick();
    void comDeleteClick();
    void comDuplicateClick();
    void comSortClick();

    const std::vector<MaterialRecord>& Copy() const { return copy_; }
    // The list index (1-based) of the material on the selected grid row (the first row of
    // a selected block, else the active row); 0 when the grid is empty.
    int SelectedIndex() const;

    Control form{"Manage materials in Ostrel database"};
    Grid ssGlassesCurr;
    Button comOK{"&Close"};
    Button comEdit{"&Edit", "Edit the data for the selected glass"};
    // Each Alt letter is used once in the form: Delete and Sort leave D and S to Duplicate
    // and to the update panel's Synchronise.
    Button comDelete{"De&lete", "Delete selected glass[s] from this list"};
    Button comSort{"S&ort", "Sort by Glass-name or by Source"};
    Button comDuplicate{"&Duplicate", "Make a copy of an existing material, but with a new name"};

    static constexpr const char* kSortQuestion =
        "Select sort order:\nYes   \tto sort by 'Glass'\nNo    \tto sort by 'Source'\n"
        "Cancel\tto abort";

  private:
    // Saves the copy as the list; when that fails the copy is taken back from the list.
    void CommitCopy();
    void Trap(const char* command, const std::function<void()>& body);

    GlassesList& list_;
    Dialogs& dialogs_;
    Hooks hooks_;
    std::vector<MaterialRecord> copy_;
};

// The grid texts of one material: waveband, index range.
std::string WavebandText(const MaterialRecord& rec);
std::string IndexRangeText(const MaterialRecord& rec);

}  // namespace ostrel
