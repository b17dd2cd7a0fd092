#pragma once
// The material form: one material created, edited or reviewed on five tabs (General,
// Index, Trans, dn/dt, Other), with the status of each section, the fit of the dispersion
// polynomial, the transmission table, the temperature data and the other properties, and
// the commands that save the material into the custom list.
//
// The form works on its own copy of the record. Each control is a model named as on the
// window; each user event is a method. The window shows the plots from IndexCurve,
// IndexResiduals and TransCurve.
#include <array>
#include <cstdint>
#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "core/material/glasses_list.h"
#include "core/material/material_record.h"
#include "core/materialform/index_fit_steps.h"
#include "core/platform/controls.h"
#include "core/platform/dialogs.h"
#include "core/platform/grid.h"
#include "core/shell/data_entry.h"
#include "core/shell/manage_forms.h"

namespace ostrel {

class frm2Manage;

class frm3New : public WorkingForm {
  public:
    enum Tab { kTabGeneral = 0, kTabIndex = 1, kTabTrans = 2, kTabDndt = 3, kTabOther = 4 };
    enum Mode : int16_t { kModeNew = 0, kModeEdit = 1, kModeReview = 2 };
    static constexpr int kIndexRows = 150;
    static constexpr int kCoefRows = 8;
    static constexpr int kTransRows = 150;
    static constexpr int kOtherRows = 24;
    static constexpr int kNameLength = 30;
    static constexpr int kRemarkLength = 120;

    struct Hooks {
        // The wavelength picker (popEditParamWave::Display): returns -1 when the user picked
        // something, with count and wave (one) or waves (several).
        std::function<int16_t(int16_t& count, float& wave, std::vector<float>& waves,
                              int16_t startTab)>
            pickWaves;
        // The window closes (comOK, ForceUnload) and lets its owner come to the front.
        std::function<void()> close;
        // comMelt: the melt maker opens for a new melt glass.
        std::function<void()> openMelt;
    };

    frm3New(GlassesList& list, Dialogs& dialogs, Hooks hooks = {});

    // --- life cycle ---
    // The tool strip's form 3: a new material.
    void Display() override { DisplayNew(); }
    void ForceUnload() override;
    // Before the form closes at the user's wish: with unsaved changes asks "Save changes to
    // NAME?". Yes saves as comAdd does, with its checks, and closes only when that saved;
    // No drops the changes; Cancel keeps the form open. A review never asks.
    bool QueryClose() override;
    // The question QueryClose asks: "Save changes to NAME?".
    std::string SaveQuestion() const;
    void DisplayNew();
    // A copy of rec; owner (the manage form, or none) is refreshed after a save.
    void DisplayEdit(const MaterialRecord& rec, frm2Manage* owner = nullptr);
    // A copy of rec, everything read-only.
    void DisplayReview(const MaterialRecord& rec, frm2Manage* owner = nullptr);

    // --- form-wide events ---
    void tabPropertiesChange(int tab);
    void comAddClick();
    void comOKClick();
    // Pastes the clipboard's text (tab between cells, line break between rows) into the
    // grid of the Index or Trans tab at its active cell.
    void comClipPasteClick(const std::string& clipText);
    void comClearClick();
    void comWaveSelRefIndClick();
    void comMeltClick();

    // --- General ---
    void txtGenGlassChange();
    void txtGenSourceChange();

    // --- Index ---
    void cmbIndexDataTypeClick();
    void cmbIndexPolyTypeClick();
    void ssRefIndChange(int col, int row);
    void comIndexSortClick();
    void comIndexFitClick();
    void comIndexShowClick();

    // --- Trans ---
    void cmbTransTypeClick();
    void cmbTransDispClick();
    // Enter pressed in, or focus leaving, txtTransGlassWidth.
    void txtTransGlassWidthValidate();
    void ssTransChange(int col, int row);
    void comTransSortClick();

    // --- dn/dt and Other ---
    void lstThermalClick();
    // Enter pressed in, or focus leaving, txtTherm[box].
    void txtThermValidate(int box);
    void ssOtherChange(int col, int row);

    // --- plots, worked out here so that the window only draws ---
    struct CurvePoint {
        double wave = 0;   // nm
        double value = 0;  // index, or internal transmission in percent
    };
    struct Residual {
        double wave = 0;      // nm
        double measured = 0;  // index
        double calc = 0;      // index of the polynomial
        double error = 0;     // measured - calc
        float weight = 0;
    };
    // The polynomial over IndexWvMin..IndexWvMax at nSamples evenly spaced wavelengths
    // (points where the form gives no index are left out); empty while Index is not ready.
    std::vector<CurvePoint> IndexCurve(int nSamples) const;
    // The measured points with the fitted index; empty while Index is not ready.
    std::vector<Residual> IndexResiduals() const;
    // The measured points as internal transmission at the sample thickness, longest
    // wavelength first.
    std::vector<CurvePoint> TransCurve() const;

    // --- state ---
    const MaterialRecord& Record() const { return rec_; }
    int16_t FormMode() const { return mode_; }
    int16_t TransDisplay() const { return transDisplay_; }
    const std::string& ConstantsText() const { return constantsText_; }
    const std::string& StartKey() const { return startKey_; }
    bool IsOpen() const { return open_; }
    // The user changed something since the material was shown or last saved.
    bool Modified() const { return modified_; }
    // The fresh record of a new material.
    static MaterialRecord FreshRecord();
    // Row labels, notes and formats of the Other table (1..24).
    struct OtherRow {
        const char* label;
        const char* note;
        const char* format;  // kind letter F, I or T, then the display format; "" for text
    };
    static const std::array<OtherRow, kOtherRows>& OtherRows();

    static constexpr const char* kIncompleteMsg =
        "Data for new material is incomplete.  Please add required information!";
    // The tool tip of lblError while it shows a fit that does not represent its data.
    static constexpr const char* kPoorFitTip =
        "The average error is above 0.0001: the polynomial does not represent the data.";

    // --- controls ---
    Control form;
    TabStrip tabProperties;
    std::array<Panel, 5> pnlStatus;
    Label lblGlassCode;
    Label lblGlassSource;
    Label lblGenNew;
    Button comAdd{"Add to list"};
    Button comOK{"&Close"};
    Button comClipPaste{"&Paste"};
    Button comClear{"C&lear"};
    Button comWaveSelRefInd{"&Useful wavelengths"};
    Button comMelt{"&Melt glass"};

    TextBox txtGenGlass;
    TextBox txtGenSource;

    ListControl cmbIndexDataType;
    ListControl cmbIndexPolyType;
    Grid ssRefInd;
    Button comIndexFit{"Fit Polynomial"};
    Button comIndexShow{"Show consts"};
    Button comIndexSort{"&Sort"};
    Label lblError;
    Label lblIndexMinDataPoints;

    ListControl cmbTransType;
    ListControl cmbTransDisp;
    NumberBox txtTransGlassWidth;
    Grid ssTrans;
    Button comTransSort{"&Sort && check"};

    Label lblThermHeading{"Change of refractive index with temperature:"};
    ListControl lstThermal;
    std::array<NumberBox, 7> txtTherm;
    std::array<Label, 7> lblTherm;
    Label lblDnDtLinear;

    Grid ssOther;

  private:
    // life cycle and status
    void Show(const MaterialRecord& rec, int16_t mode, frm2Manage* owner);
    // Shows a material of the list for editing or review.
    void ShowStored(const MaterialRecord& rec, int16_t mode, frm2Manage* owner);
    void FillControls(bool silentWidth);
    void RefreshPanels();
    void UpdateTitle();
    void SetSectionReady(SectionState& s, bool ready);
    void LockForReview();
    void Close();
    // comAdd's save with all its checks; true when the material went into the list.
    bool Save();
    void MarkModified() { modified_ = true; }
    bool GeneralCheck(const std::string& name, const std::string& source);
    void NameOrSourceChange(bool isName);

    // index
    void BuildIndexColumns();
    void FillIndexGrid();
    std::vector<IndexRow> GridIndexRows() const;
    bool ReadIndexGrid();
    void HideFitColumns(bool hidden);
    // lblError, in bold with a tool tip when it warns of a fit that does not fit.
    void SetErrorLabel(const std::string& text, bool warning);
    void SetMinPointsLabel();
    void CheckCoefficients();
    void ClearIndex();

    // trans
    void BuildTransColumns();
    void TransDisplayRefresh(bool silent);
    void ShowTransRow(int row);
    void RecalcTransRow(int row);
    bool IndexAt(float wave, double& n) const;
    void TransEnableByType();
    void PasteTrans(int firstRow, int rows);
    void ClearTrans();

    // dn/dt and other
    void ShowThermal();
    void BuildOtherGrid();
    void FillOtherGrid();
    void ClearOther();

    GlassesList& list_;
    Dialogs& dialogs_;
    DataEntry entry_;
    Hooks hooks_;
    frm2Manage* owner_ = nullptr;
    MaterialRecord rec_;
    int16_t mode_ = kModeNew;
    int16_t transDisplay_ = 0;
    std::string startKey_;
    std::string constantsText_;
    bool loading_ = false;
    bool open_ = false;
    bool modified_ = false;
};

// The name shown in the form's messages: trimmed name, " - ", trimmed source.
std::string DisplayName(const MaterialRecord& rec);
// The form's caption for a record in the given mode.
std::string Frm3Title(const MaterialRecord& rec, int16_t mode);

}  // namespace ostrel
