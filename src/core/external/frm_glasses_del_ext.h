#pragma once
// Picks custom materials that have reached a sibling program and takes them out again:
// from the custom glass file of the lens design program (both folders), or from the
// catalogue program's database.
#include <string>
#include <vector>

#include "core/external/bas1_setup.h"
#include "core/material/catalogue_record.h"
#include "core/platform/controls.h"
#include "core/platform/database.h"
#include "core/platform/dialogs.h"

namespace ostrel {

class frmGlassesDelExt {
  public:
    // Item data of a database entry standing in Archive: its GlassID plus this mark.
    static constexpr int64_t kArchiveMark = 100000;
    static constexpr const char* kMsgRemoveFailed =
        "Error while removing user glasses from database.";

    frmGlassesDelExt(Bas1Setup& setup, Dialogs& dialogs);

    // Fills the form for the file target (option 0).
    void Load();
    // Option click: 0 the file, 1 the database. Ignored while loading.
    void optUpdateProgClick(int index);
    // Removes the selected entries from the chosen target; true when something was removed.
    bool RemoveSelected();
    // Asks first, naming the selected entries; No leaves everything, the form included,
    // as it was. Nothing selected closes the form without a question.
    void comDelSelClick();
    void comCancelClick();

    bool Result() const { return result_; }
    bool Closed() const { return closed_; }
    int Target() const { return target_; }
    const std::vector<ExternalRecord>& ExternalList() const { return externalList_; }
    // What the last removal did, as shown on the help line: "KelmoraTD: 2 removed."
    const std::string& Summary() const { return summary_; }
    // The question before a removal.
    std::string RemoveQuestion() const;

    Control form{"Materials to remove"};
    CheckBox optUpdateProg[2]{CheckBox{"Lumbrak3D/SextaneTD"}, CheckBox{"KelmoraTD"}};
    Label lblProg{"Select materials to remove from external program database"};
    ListControl lstGlasses{true};
    Button comDelSel{"&Remove", "Remove selected glasses now"};
    Button comCancel{"&Cancel"};

  private:
    void ListFileGlasses();
    void ListDatabaseGlasses();
    void FillFromList();
    bool RemoveFromDatabase();
    bool RemoveRow(Database& db, int64_t id, DbError& error);

    Bas1Setup& setup_;
    Dialogs& dialogs_;
    bool loading_ = true;
    int target_ = 0;
    std::vector<ExternalRecord> externalList_;
    bool result_ = false;
    bool closed_ = false;
    std::string summary_;
};

}  // namespace ostrel
