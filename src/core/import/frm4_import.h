#pragma once
// The import form without pixels: reads a material text file (GLZ, GLA, GLS, GLC, AGF) into
// its own staging list, shows what was found in ssGlasses, and on request adds some or all
// of it to the custom list. Nothing reaches the custom list until the user adds it.
//
// Binding a window: one widget per control below (same names), ssGlasses through the grid
// view; clicks go to the *Click methods, grid clicks to ssGlassesClick / ssGlassesDblClick.
// Hooks.reviewInNewForm / reviewInMeltForm open the material or melt form read-only, and
// Hooks.progress may drive a progress bar while a large catalogue is read.
//
// A catalogue's glasses are staged compact (StagedGlass); the full record of a glass is built
// when it leaves staging: added to the list, previewed, or asked for by StagedRecord.
//
// Every staged glass is checked against its file (CheckImported): the Check column says
// whether it agrees, and a glass that does not, or that has no index somewhere in its
// waveband, has the status "Check" on a cell of its own colour instead of "OK". The add
// commands ask before adding such glasses.
#include <functional>
#include <string>
#include <vector>

#include "core/import/import_common.h"
#include "core/import/staged_glass.h"
#include "core/material/glasses_list.h"
#include "core/platform/controls.h"
#include "core/platform/dialogs.h"
#include "core/platform/grid.h"
#include "core/platform/settings_store.h"
#include "core/shell/manage_forms.h"
#include "core/shell/new_msg.h"

namespace ostrel {

// The last used file type and the last folder of each type, in the per-user section
// "B4Import".
class Bas4Import {
  public:
    static constexpr const char* kSection = "B4Import";
    static constexpr const char* kLastTypeKey = "B4ImportLastType";

    // appPath: the default folder of every type (the program's folder).
    Bas4Import(SettingsStore& settings, std::string appPath)
        : settings_(settings), appPath_(std::move(appPath)) {}

    void SaveLastType(int type);
    // 1 when nothing was stored.
    int GetLastType() const;
    void SaveLastPath(int type, const std::string& path);
    std::string GetLastPath(int type) const;
    // The folder key of types 1 to 5; "" for any other value.
    static std::string PathKey(int type);

  private:
    SettingsStore& settings_;
    std::string appPath_;
};

// The status cell of a glass flagged by its check.
inline constexpr Colour kStatusCheck{240, 184, 64};

class frm4Import : public WorkingForm {
  public:
    enum FileTypes { kGLZ = 1, kGLA, kGLS, kGLC, kAGF };
    enum Col {
        kColGlass = 1,
        kColSource,
        kColWaveband,
        kColIndexRange,
        kColStatus,
        kColRefit,
        kColCheck,
        kColCount = kColCheck
    };

    static constexpr const char* kFilter =
        "Ostrel (*.GLZ)|*.GLZ|Lumbrak old (*.GLA)|*.GLA|Kelmora [old] (*.GLS)|*.GLS|"
        "OSLO GLC (*.GLC)|*.GLC|Zemax AGF (*.AGF)|*.AGF";
    static const std::string kRefitNotice;

    struct Hooks {
        // Show a staged record read-only in the material form, or in the melt form.
        std::function<void(const MaterialRecord&)> reviewInNewForm;
        std::function<void(const MaterialRecord&)> reviewInMeltForm;
        // Reading progress (parts done of total) of the file being read.
        std::function<void(size_t done, size_t total)> progress;
        // Closes the form through the tool strip (RibbonClick of form 4, released); without
        // it the Close button simply hides the form.
        std::function<void()> close;
    };

    // appPath: the program's folder, the default folder of the open dialog.
    frm4Import(GlassesList& list, Dialogs& dialogs, SettingsStore& settings, CNewMsg& newMsg,
               std::string appPath, Hooks hooks = {});

    // Shows the form (the grid filled from the staging list; the first time the glass
    // column is made twice as wide). ForceUnload closes it whatever its state.
    void Display() override;
    void ForceUnload() override;

    // --- commands ---
    // Open dialog, read, notice, settings, caption.
    void comImportClick();
    void comAddSelClick();
    void comAddAllClick();
    void comRenameSourceClick();
    void comReviewClick();
    void comOKClick();
    void ssGlassesClick(int col, int row);
    void ssGlassesDblClick(int col, int row);

    // Reads the file of the given type into the staging list as comImport does after its
    // dialog (messages, notice, settings and caption included). True when the read gave ok.
    bool ImportFile(const std::string& fullPath, int fileType);
    // Adds staged records first..last (1-based) to the custom list with the checks of the
    // add commands. True when they were added and saved.
    bool AddRange(int first, int last);
    // Fills ssGlasses and lblReFit from the staging list.
    void UpdateTable();
    // The file type (kGLZ..kAGF) a path's extension names, in any case; `fallback` when it
    // names none of them.
    static int FileTypeOf(const std::string& path, int fallback);

    // --- state, read-only for the window and the command line ---
    int FileType() const { return fileType_; }
    int ImportCount() const { return importCount_; }
    // The staging list as it is kept, and the full record of staged glass i (0-based) as it
    // leaves staging.
    const std::vector<StagedGlass>& StagedGlasses() const { return importList_; }
    MaterialRecord StagedRecord(size_t i) const;
    // Every staged glass as a full record, built on each call.
    std::vector<MaterialRecord> ImportList() const;
    const std::vector<float>& RefitErrors() const { return refitErrors_; }
    const std::vector<std::string>& CheckTexts() const { return checkTexts_; }
    // One per staged record: true when its check flags it.
    const std::vector<bool>& Flagged() const { return flagged_; }
    int RefitCount() const { return refitCount_; }
    int SkippedCount() const { return skippedCount_; }
    int SelectedRow() const { return selectedRow_; }

    Control form{"Import material data from text file"};
    Grid ssGlasses;
    Label lblReFit;
    // How many glasses of the file were passed over, and why.
    Label lblSkipped;
    CheckBox chkRefitOther{"Refit other AGF formulas",
                           "Refit glasses whose AGF formula has no stored form to Schott"};
    Button comImport{"&Open file...", "open glass data text file for inspection"};
    Button comReview{"&Pre-view", "Review the data for the selected glass"};
    Button comOK{"&Close"};
    Panel fraUpdate{"Update local material list: "};
    Button comAddSel{"&Import selected", "Add the selected material[s] to the ostrel database"};
    Button comAddAll{"I&mport all", "Add all these materials to the ostrel database"};
    Button comRenameSource{"&Rename 'source'",
                           "Change the 'source' name of  these imported materials"};

  private:
    void ShowInfo(const std::string& text);
    // The reads of ImportFile by file type; true when the read gave ok.
    bool ReadGlz(const std::string& fullPath, const ImportOptions& options);
    bool ReadOldFile(const std::string& fullPath, int fileType);
    bool ReadGlc(const std::string& fullPath, const ImportOptions& options);
    bool ReadAgf(const std::string& fullPath, const ImportOptions& options);
    // Clears what the last read left beside the staging list, sized to the list.
    void ResetStaging();
    // Stages records read whole.
    void StageWhole(std::vector<MaterialRecord> records);
    // Checks every staged glass against what its file stated (one entry per glass, or
    // none for a file that states nothing).
    void CheckStaged(const std::vector<StatedIndex>& stated);

    GlassesList& list_;
    Dialogs& dialogs_;
    Bas4Import bas_;
    CNewMsg& newMsg_;
    std::string appPath_;
    Hooks hooks_;
    int fileType_ = 1;
    int importCount_ = 0;
    std::vector<StagedGlass> importList_;
    std::vector<bool> flagged_;
    std::vector<float> refitErrors_;
    std::vector<std::string> checkTexts_;
    int refitCount_ = 0;
    int skippedCount_ = 0;
    std::string skippedNote_;
    int selectedRow_ = 0;
    bool firstFill_ = true;
};

}  // namespace ostrel
