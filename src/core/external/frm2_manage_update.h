#pragma once
// The managing form's update frame: the commands that push custom materials into the
// sibling programs (the custom glass files of the lens design program and its tolerancing
// tool, and the catalogue program's database), the two settings that steer them, and the
// removal form. An update to both changes both or neither: the database's write lock is
// taken first, the files are made ready beside the old ones, the database is committed, and
// then the files are put in place.
#include <functional>
#include <string>
#include <vector>

#include "core/external/bas1_setup.h"
#include "core/external/frm_glasses_del_ext.h"
#include "core/external/update_summary.h"
#include "core/material/material_record.h"
#include "core/platform/controls.h"
#include "core/platform/database.h"
#include "core/platform/dialogs.h"
#include "core/platform/file_io.h"

namespace ostrel {

class frm2Manage;

class frm2ManageUpdate {
  public:
    // Where the frame takes its materials from: the managing form's copy of the list and
    // the 1-based range of the selected grid rows (false when nothing can be selected).
    struct Source {
        std::function<const std::vector<MaterialRecord>&()> list;
        std::function<bool(int& first, int& last)> selection;
    };
    // Shows the removal form modally (its Load already done); returns when it has closed.
    using ShowRemoval = std::function<void(frmGlassesDelExt&)>;

    enum Target { kTargetFiles = 0, kTargetDatabase = 1, kTargetBoth = 2 };

    frm2ManageUpdate(Source source, Bas1Setup& setup, Dialogs& dialogs,
                     ShowRemoval showRemoval = {});
    // The source of the managing form: its copy and its selected block (or active row).
    static Source SourceOf(frm2Manage& form);

    // Each returns true when the command ran to its end without a failure; false when it
    // stopped (empty list, not ready, cancelled) or a target failed (reported).
    bool comExtAddSelClick();
    bool comExtAddAllClick();
    bool comExtSynchClick();
    // Opens the removal form; true when it removed something.
    bool comExtRemoveClick();

    int Target() const;
    bool Overwrite() const { return cmbDataOverWrite.listIndex() == 0; }
    std::string TargetName() const;
    // What the last update, synchronisation or removal did, as shown on the help line:
    // "Lumbrak3D: 3 added, 1 replaced. KelmoraTD: 4 added." Empty until one has run.
    const std::string& Summary() const { return summary_; }

    Panel fraUpdate{"Update external programs: "};
    ListControl cmbUpdateProg;
    ListControl cmbDataOverWrite;
    Button comExtAddSel{"&Update with selected materials",
                        "Add the selected custom glass[s] to the external programs"};
    Button comExtAddAll{"U&pdate with all materials",
                        "Add all custom glasses to the external programs"};
    Button comExtSynch{"&Synchronise materials",
                       "Force external programs to have only glasses listed here [overwriting "
                       "any old data]"};
    Button comExtRemove{"&Remove materials",
                        "Remove selected materials from databas of external program"};
    Label lblSynch{kSynchNote};

    static constexpr const char* kSynchNote =
        "'Synchronising' ensures that the custom glass databases to the external programs "
        "have the latest data for all glasses listed here.  All other custom materials are "
        "removed!";

  private:
    // The update of the targets with list[first..last]; synchronising writes the whole list
    // without reading the file, and clears the database's custom rows first.
    bool UpdateTargets(const std::vector<MaterialRecord>& list, int first, int last, bool synch);
    // The new sibling files, written beside the old ones; false, with the text that reports
    // it, on a failure.
    bool PrepareFiles(const std::vector<MaterialRecord>& list, int first, int last, bool synch,
                      std::vector<PreparedFile>& files, UpdateCounts& counts, std::string& failure);
    // The database's changes and its commit, in the transaction `db` holds; false (reported,
    // rolled back) on a failure.
    bool ChangeDatabase(Database& db, const std::vector<MaterialRecord>& list, int first, int last,
                        bool synch, UpdateCounts& counts);
    void ShowSummary(std::string summary);

    Source source_;
    Bas1Setup& setup_;
    Dialogs& dialogs_;
    ShowRemoval showRemoval_;
    std::string summary_;
};

}  // namespace ostrel
