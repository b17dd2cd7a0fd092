#pragma once
// The catalogue program's glasses, current and archived, side by side; rows move between
// the two tables column by column, each command in one transaction.
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "core/external/bas1_setup.h"
#include "core/platform/controls.h"
#include "core/platform/database.h"
#include "core/platform/dialogs.h"
#include "core/platform/grid.h"
#include "core/shell/manage_forms.h"

namespace ostrel {

class frm6Archive : public WorkingForm {
  public:
    static constexpr const char* kMsgArchiveAll =
        "Are you really sure that you want to archive ALL the glasses in Kelmora?";
    static constexpr const char* kMsgArchiveFailed =
        "Error in archiving glass. Process rolled back.";
    static constexpr const char* kMsgRestoreFailed =
        "Error in restoring glass.  Process rolled back. ";

    // `close` closes the form through the tool strip (RibbonClick of form 6, released).
    frm6Archive(Bas1Setup& setup, Dialogs& dialogs, std::function<void()> close = {});

    // Loads and shows the form; when the database cannot be opened the form closes again.
    void Display() override;
    // Closes the database and hides the form.
    void ForceUnload() override;
    void comOKClick();

    // Opens the database and fills both grids; false (reported) when the form must close.
    bool Load();
    void Unload();

    void cmbSortOrderClick();
    void ssGlassCurrClick(int col, int row);
    void ssGlassArchiveClick(int col, int row);
    // Each returns true when the command ended with a commit (also when nothing moved).
    bool comArchiveClick();
    bool comDeArchiveClick();

    // What the last move did, as shown on the help line: "KelmoraTD: 3 archived."
    const std::string& Summary() const { return summary_; }

    // Schott's K7 and F2 (name and source compared as the custom list's key compares
    // them): never archived.
    bool IsProtectedGlass(int64_t id, bool& isProtected, DbError& error);
    // Inside the command's transaction; false with the engine's error.
    bool MoveToArchive(int64_t id, DbError& error);
    bool MoveToCurrent(int64_t id, DbError& error);
    void LoadCurrent();
    void LoadArchive();

    Database* database() { return db_.get(); }
    int SortColumn() const { return sortColumn_; }

    Control form{"Kelmora materials"};
    Label lblCurr{"Current Glasses"};
    Label lblArchive{"Archived Glasses"};
    Grid ssGlassCurr;
    Grid ssGlassArchive;
    Button comArchive{">> &Archive >>", "Archive selected glasses from Kelmora database"};
    Button comDeArchive{"<< &Restore <<", "Restore selected archive glasses to Kelmora database"};
    ListControl cmbSortOrder;
    Button comOK{"&Close"};

  private:
    // The glasses chosen in a grid, by GlassID: those of its selected rows, and the one of
    // its last clicked row.
    struct Pick {
        std::vector<int64_t> ids;
        int64_t rowId = -1;
    };
    static Pick Picked(const Grid& grid, int row);
    // Puts the selection and the clicked row back on the same glasses after a refill; a
    // glass that left the grid leaves nothing chosen behind.
    static void Repick(Grid& grid, const Pick& pick, int& row);

    bool Move(const std::string& from, const std::string& to, int64_t id, DbError& error);
    bool MoveCommand(Grid& grid, int singleRow, bool archive);
    bool MoveRows(Grid& grid, int singleRow, bool archive, int& moved);
    void Fill(Grid& grid, const std::string& table, const std::string& statusColumn,
              const std::string& lead);
    void SortGrids();
    void Refresh();

    Bas1Setup& setup_;
    Dialogs& dialogs_;
    std::function<void()> close_;
    std::unique_ptr<Database> db_;
    bool loading_ = true;
    int currRow_ = 0;
    int archiveRow_ = 0;
    int sortColumn_ = 1;
    bool busy_ = false;  // the last command found the database held by another program
    std::string summary_;
};

}  // namespace ostrel
