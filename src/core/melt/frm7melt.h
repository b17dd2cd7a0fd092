#pragma once
// The melt maker: a melt glass made from a parent glass of the catalogue database, a melt
// code and at least four measured wavelength/index pairs. The differences melt minus parent
// are smoothed by a quadratic in wavelength, added to the parent's index at 21 wavelengths
// across the parent's waveband, and the parent's own polynomial type is fitted to those
// points. Everything else of the parent is kept; the name is the parent's, " *" and the
// code.
//
// The form works on two whole records: the melt glass being made and the parent as read
// from the database. Each control is a model named as on the window; each user event is a
// method. The window draws the difference plot from DeltaPoints and DeltaCurve.
#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "core/material/glasses_list.h"
#include "core/material/material_record.h"
#include "core/melt/glass_melt.h"
#include "core/melt/melt_wave_band.h"
#include "core/platform/controls.h"
#include "core/platform/dialogs.h"
#include "core/platform/grid.h"
#include "core/shell/manage_forms.h"
#include "core/shell/new_msg.h"

namespace ostrel {

class frm2Manage;

class frm7Melt : public WorkingForm {
  public:
    enum Mode : int16_t { kModeNew = 0, kModeEdit = 1, kModeReview = 2 };
    static constexpr int kRows = 20;
    static constexpr int kCols = 6;
    static constexpr const char* kCodePrompt = "Enter melt code!";
    // The longest melt code the record holds; the code box takes no more.
    static constexpr int kCodeLength = 10;

    struct Hooks {
        // Shows the window; with modal true returns when it has closed.
        std::function<void(bool modal)> show;
        // The window closes.
        std::function<void()> close;
        // The owner of an edit or review is disabled (false) and enabled and shown again
        // (true) when this form goes.
        std::function<void(bool enabled)> enableOwner;
        // The wavelength picker (popEditParamWave::Display): -1 when something was picked.
        std::function<int16_t(int16_t& count, float& wave, std::vector<float>& waves,
                              int16_t startTab)>
            pickWaves;
        // The parent picker (popMeltParent::PickParent): true with the record read.
        std::function<bool(MaterialRecord& picked)> pickParent;
        // The Schott sheet (popMeltSchott::EnterSheet): true when the record took the pairs.
        std::function<bool(MaterialRecord& record)> enterSheet;
    };

    // kelmoraFolder: where the catalogue database is (for the parent of an edit or review).
    // forms, when given, is told when the form opens beside another and when it goes.
    frm7Melt(GlassesList& list, Dialogs& dialogs, CNewMsg& newMsg, std::string kelmoraFolder,
             Hooks hooks = {}, ManageForms* forms = nullptr);

    void SetKelmoraFolder(std::string folder) { kelmora_ = std::move(folder); }

    // --- life cycle ---
    // The tool strip's form 7: a new melt glass, not modal.
    void Display() override { DisplayNew(false); }
    void ForceUnload() override;
    // Before the form closes at the user's wish: with unsaved changes asks "Save changes to
    // NAME?"; Yes saves as comAdd does (and keeps the form open when comAdd is off, or when
    // that save is refused or declined), No closes without saving, Cancel keeps the form
    // open. A review never asks.
    bool QueryClose() override;
    // True when the user changed the melt glass (its parent, code, pairs or fit) since it was
    // opened or last saved.
    bool HasUnsavedChanges() const;
    // Returns Saved: true when a melt glass was saved while the form was open.
    bool DisplayNew(bool modal);
    // A copy of rec with its parent looked up in the database; owner (the manage form, or
    // none) is refreshed after a save.
    void DisplayEdit(const MaterialRecord& rec, frm2Manage* owner = nullptr);
    // A copy of rec, read-only.
    void DisplayReview(const MaterialRecord& rec, frm2Manage* owner = nullptr);

    // --- events ---
    void comParentClick();
    // Enter pressed in, or focus leaving, txtMeltCode.
    void txtMeltCodeValidate() { ApplyMeltCode(); }
    // An edit of a cell by the user (the grid already holds the new text).
    void ssRefIndChange(int col, int row);
    void comIndexFitClick() { FitMelt(); }
    void comShowDispConstsClick();
    void comShowIndexClick();
    void comIndexSortClick() { ReadIndexTable(); }
    void comClipPasteClick(const std::string& clipText);
    void comClearClick();
    void comWaveSelRefIndClick();
    void comMeltSchottClick();
    void comWaveBandClick();
    void lstWaveBandClick();
    void comAddClick();
    void comOKClick();

    // --- procedures of the form ---
    // The parent replaces both records (what comParent does with a picked record).
    void SetParent(const MaterialRecord& picked);
    bool LoadParent(const std::string& name, const std::string& source);
    void ApplyMeltCode();
    void UpdateMeltDisplay();
    void UpdateIndexRow(int row);
    void ReadIndexTable();
    void WriteIndexTable();
    void FitMelt();
    void LockForm();

    // --- reports, as the two buttons show them ---
    std::string ConstantsReport() const;
    std::string ComparisonReport() const;

    // --- the difference plot: melt minus parent, worked out here so the window only draws ---
    struct DeltaPoint {
        double wave = 0;   // nm
        double delta = 0;  // index difference
    };
    // The measured pairs: measured index minus the parent's.
    std::vector<DeltaPoint> DeltaPoints() const;
    // The fitted melt minus the parent over the parent's waveband at nSamples evenly spaced
    // wavelengths; empty until a fit has succeeded.
    std::vector<DeltaPoint> DeltaCurve(int nSamples) const;
    // The parts of that curve carried beyond the measured pairs, which the plot shades;
    // empty until a fit has succeeded.
    std::vector<WaveRange> ExtrapolatedRanges() const;

    // --- state ---
    const MaterialRecord& MeltRecord() const { return melt_; }
    const MaterialRecord& ParentRecord() const { return parent_; }
    MaterialRecord& MeltRecordForEdit() { return melt_; }
    int16_t FormMode() const { return mode_; }
    const std::string& FormCaption() const { return caption_; }
    bool Saved() const { return saved_; }
    bool IsOpen() const { return open_; }
    bool SaveAllowed() const { return saveAllowed_; }
    const std::vector<MeltWaveBand>& WaveBands() const { return waveBands_; }
    const std::string& ConstantsText() const { return constantsText_; }
    // The root mean square of the last refit, for the record.
    double FitRms() const { return fitRms_; }

    static const char* NoticeText();
    static constexpr const char* kNoticeKey = "MeltMaker";
    static constexpr const char* kNoticeTitle = "Melt derivative";
    static constexpr const char* kTooFewPairsMsg =
        "You need at least 4 full melt index/wavelength pairs to create a melt glass";
    static constexpr const char* kIncompleteMsg =
        "Data for new material is incomplete.  Please add required information!";
    static constexpr const char* kAverageCaption =
        "Average error [user-fitted] indices at above wavelengths: ";

    // --- controls ---
    Control form{"Melt Maker"};
    Button comParent{"&Parent material...", "Select parent material for melt glass"};
    TextBox txtMeltCode;
    Label lblGen{"Melt code [required]"};
    Label lblMeltName{"Schott: BK7-m1234"};
    Panel pnlSide;
    Panel pnlPolyType;
    Panel pnlStatus{"Index: NOT Ready"};
    Label lblGlassCode;
    Grid ssRefInd;
    Label lblError;
    Button comIndexFit{"Fit polynomial", "Fit chosen polynomial form to supplied data"};
    Button comShowDispConsts{"Show consts", "show the dispersion constants for melt & parent"};
    Button comShowIndex{"Show index", "shows index difference over waveband"};
    // Each Alt letter is used once in the form: Sort, Paste and Clear leave S, P and C to
    // Save, Parent and Close.
    Button comIndexSort{"S&ort", "Sort index data by wavelength"};
    Button comClipPaste{"Pas&te", "Paste data from clipboard "};
    Button comClear{"C&lear", "Clear existing data"};
    Button comWaveSelRefInd{"&Useful wavelengths", "Get predefined spectral/laser wavelength[s]"};
    Button comMeltSchott{"", "Enter melt sheet data using Schott format"};
    Panel fraWaveBand;
    Button comWaveBand{"&Add",
                       "Make current wavelenghts into a 'waveband' and add to waveband list"};
    ListControl lstWaveBand;
    Button comAdd{"&Save", "Add this material to the ostrel database"};
    Button comOK{"&Close"};

  private:
    // Opens a stored melt glass for editing or, read-only, for review.
    void OpenRecord(const MaterialRecord& rec, frm2Manage* owner, int mode);
    void FormLoad();
    void Unload();
    void ResetForm(bool setCaption);
    void InitGrid();
    void FillWaveBandList();
    void ShowStatus();
    void ShowFitColumn(bool shown);
    void AfterGridChange();
    void ShowFitDifferences();
    void SetLetter(int row, float wave);
    double ParentIndex(float wave, bool& ok) const;
    std::vector<float> ReadWavelengths() const;
    void Trap(const char* what, const std::function<void()>& body);

    GlassesList& list_;
    Dialogs& dialogs_;
    CNewMsg& newMsg_;
    std::string kelmora_;
    Hooks hooks_;
    ManageForms* forms_;
    frm2Manage* owner_ = nullptr;

    MaterialRecord melt_;
    MaterialRecord parent_;
    int16_t mode_ = kModeNew;
    std::string caption_ = "Melt glass: new";
    bool loading_ = false;
    bool saved_ = false;
    bool ownerHidden_ = false;
    bool saveAllowed_ = true;
    bool waveBandFilling_ = false;
    bool open_ = false;
    bool changed_ = false;
    std::vector<MeltWaveBand> waveBands_;
    std::string constantsText_;
    double fitRms_ = 0;
};

}  // namespace ostrel
