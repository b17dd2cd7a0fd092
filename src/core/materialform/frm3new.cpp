// The material form: life cycle, status panels and the form's title.
#include "core/materialform/frm3new.h"

#include <exception>

#include "core/materialform/frm3new_fields.h"
#include "core/materialform/verification.h"

namespace ostrel {

using frm3new_fields::Trimmed;

namespace {

constexpr const char* kSectionNames[5] = {"General", "Index", "Trans", "dn/dt", "Other"};

}  // namespace

std::string DisplayName(const MaterialRecord& rec) {
    return rec.General.GlassName.Text() + " - " + rec.General.Source.Text();
}

std::string Frm3Title(const MaterialRecord& rec, int16_t mode) {
    if (mode == frm3New::kModeReview) return "Reviewing data";
    // The prefixes are the other way round on purpose: a new material reads "Editing".
    const std::string prefix =
        mode == frm3New::kModeEdit ? "New material data  " : "Editing data  ";
    const std::string name = Trimmed(rec.General.GlassName);
    const std::string source = Trimmed(rec.General.Source);
    if (name.empty()) return prefix;
    if (source.empty()) return prefix + "?? ::";
    return prefix + name + "::" + source;
}

MaterialRecord frm3New::FreshRecord() {
    MaterialRecord rec = ClearedMaterialRecord();
    rec.General.IndexDataType = 0;
    rec.Measured.TransType = 0;
    rec.Measured.TransWidth = 10.0f;
    rec.General.Polytype = 1;
    rec.General.GlassKind = 8;
    rec.General.Density = 0;
    NormaliseRecord(rec);
    return rec;
}

frm3New::frm3New(GlassesList& list, Dialogs& dialogs, Hooks hooks)
    : ssRefInd(5, kIndexRows),
      ssTrans(4, kTransRows),
      ssOther(3, kOtherRows),
      list_(list),
      dialogs_(dialogs),
      entry_(dialogs),
      hooks_(std::move(hooks)) {
    cmbIndexPolyType.AddItem("Schott", 1);
    cmbIndexPolyType.AddItem("Sellmeier", 2);
    cmbIndexPolyType.AddItem("Cauchy", 4);
    cmbIndexPolyType.AddItem("Schott Plus", 3);
    cmbIndexDataType.AddItem("Index data", 0);
    cmbIndexDataType.AddItem("Coefficients", 1);
    cmbTransType.AddItem("Total transmission", 0);
    cmbTransType.AddItem("Internal transmission", 1);
    cmbTransType.AddItem("Absorption coefficient", 2);
    cmbTransType.AddItem("No Data Available", 3);
    cmbTransDisp.AddItem("percent", 0);
    cmbTransDisp.AddItem("fraction", 1);
    lstThermal.AddItem("No known data", 0);
    lstThermal.AddItem("Simple dn/dt", 1);
    lstThermal.AddItem("Schott Sellmeier equation", 2);
    form.visible = false;
    rec_ = FreshRecord();
}

// ---------------------------------------------------------------------------------------
// Life cycle

void frm3New::DisplayNew() {
    MaterialRecord rec = FreshRecord();
    for (SectionState* s : {&rec.GeneralState, &rec.IndexState, &rec.TransState}) {
        s->Ready = kFalse;
        s->Changes = 2;
    }
    transDisplay_ = 0;
    comAdd.caption = "Add to list";
    comAdd.toolTip = "Add this new material to the ostrel database";
    Show(rec, kModeNew, nullptr);
    lblGenNew.visible = true;
}

void frm3New::DisplayEdit(const MaterialRecord& rec, frm2Manage* owner) {
    ShowStored(rec, kModeEdit, owner);
}

void frm3New::DisplayReview(const MaterialRecord& rec, frm2Manage* owner) {
    ShowStored(rec, kModeReview, owner);
    LockForReview();
}

void frm3New::ShowStored(const MaterialRecord& rec, int16_t mode, frm2Manage* owner) {
    // A stored material opens with every section counted as changed.
    MaterialRecord copy = rec;
    for (SectionState* s : {&copy.GeneralState, &copy.IndexState, &copy.TransState,
                            &copy.ThermalState, &copy.OtherState}) {
        s->Changes = 2;
    }
    comAdd.caption = "Accept changes";
    comAdd.toolTip = "Accept changes made to this material";
    Show(copy, mode, owner);
}

void frm3New::Show(const MaterialRecord& rec, int16_t mode, frm2Manage* owner) {
    try {
        rec_ = rec;
        mode_ = mode;
        owner_ = owner;
        constantsText_.clear();
        startKey_ = mode == kModeNew ? std::string() : DisplayName(rec_);
        lblGenNew.visible = mode == kModeNew;
        SetErrorLabel("", false);
        modified_ = false;

        // Everything editable again (a review before may have locked it).
        for (Control* c : std::initializer_list<Control*>{
                 &comAdd, &comClear, &comWaveSelRefInd, &comClipPaste, &comIndexFit, &comIndexSort,
                 &comTransSort, &comMelt, &lstThermal, &txtGenGlass, &txtGenSource,
                 &cmbIndexDataType, &cmbIndexPolyType, &cmbTransType, &cmbTransDisp,
                 &txtTransGlassWidth}) {
            c->enabled = true;
        }
        for (auto& t : txtTherm) t.enabled = true;
        for (auto& t : txtTherm) t.locked = false;
        txtGenGlass.locked = false;
        txtGenSource.locked = false;
        txtTransGlassWidth.locked = false;

        loading_ = true;
        txtGenGlass.text = Trimmed(rec_.General.GlassName);
        txtGenSource.text = Trimmed(rec_.General.Source);
        loading_ = false;
        FillControls(mode == kModeNew);
        open_ = true;
        form.visible = true;
        tabPropertiesChange(tabProperties.tab);
        UpdateTitle();
    } catch (const std::exception& e) {
        list_.errors().ErrorDisplay("The material could not be shown.", e.what(), 0);
    }
}

void frm3New::FillControls(bool silentWidth) {
    loading_ = true;
    int polyIndex = -1;
    for (int i = 0; i < cmbIndexPolyType.ListCount(); ++i) {
        if (cmbIndexPolyType.ItemData(i) == rec_.General.Polytype) polyIndex = i;
    }
    // A type the list does not offer (Sellmeier Plus) is kept, with no entry selected.
    cmbIndexPolyType.SetListIndex(polyIndex);
    cmbIndexDataType.SetListIndex(rec_.General.IndexDataType == 1 ? 1 : 0);
    cmbTransType.SetListIndex(rec_.Measured.TransType);
    lstThermal.SetListIndex(rec_.Thermal.dndttype);
    cmbTransDisp.SetListIndex(transDisplay_);
    loading_ = false;

    BuildIndexColumns();
    if (mode_ == kModeNew) {
        comIndexFit.enabled = true;
        ssRefInd.SetActiveCell(1, 1);
    }
    const bool coefficients = rec_.General.IndexDataType == 1;
    comIndexFit.caption = coefficients ? "Check coeffs" : "Fit Polynomial";
    comIndexShow.enabled = !coefficients && rec_.IndexState.Ready != 0;
    comIndexSort.enabled = !coefficients;
    SetMinPointsLabel();
    FillIndexGrid();
    BuildTransColumns();
    TransDisplayRefresh(silentWidth);
    TransEnableByType();
    ShowThermal();
    BuildOtherGrid();
    FillOtherGrid();
    RefreshPanels();
}

void frm3New::LockForReview() {
    // Nothing of a review can be saved: Accept changes is off with the rest.
    for (Control* c : std::initializer_list<Control*>{
             &comAdd, &comClear, &comWaveSelRefInd, &comClipPaste, &comIndexFit, &comIndexSort,
             &comTransSort, &comMelt, &lstThermal, &txtGenGlass, &txtGenSource, &cmbIndexDataType,
             &cmbIndexPolyType, &cmbTransType, &cmbTransDisp, &txtTransGlassWidth}) {
        c->enabled = false;
    }
    for (auto& t : txtTherm) t.enabled = false;
    for (Grid* g : {&ssRefInd, &ssTrans, &ssOther}) {
        for (int c = 1; c <= g->MaxCols(); ++c) g->SetColumnLocked(c, true);
        g->SetSelection({-1, 1, -1, g->MaxRows()});
    }
}

void frm3New::ForceUnload() {
    Close();
}

void frm3New::comOKClick() {
    if (!QueryClose()) return;
    Close();
}

bool frm3New::QueryClose() {
    if (!open_ || mode_ == kModeReview || !modified_) return true;
    const MsgAnswer a = dialogs_.MsgBox(SaveQuestion(), MsgButtons::YesNoCancel, MsgIcon::Question);
    if (a == MsgAnswer::No) return true;
    if (a != MsgAnswer::Yes) return false;
    return Save();
}

std::string frm3New::SaveQuestion() const {
    const std::string name = Trimmed(rec_.General.GlassName);
    return "Save changes to " + (name.empty() ? std::string("the new material") : name) + "?";
}

void frm3New::Close() {
    if (!open_) return;
    open_ = false;
    form.visible = false;
    if (hooks_.close) hooks_.close();
}

void frm3New::comMeltClick() {
    if (hooks_.openMelt) hooks_.openMelt();
}

// ---------------------------------------------------------------------------------------
// Status

void frm3New::SetSectionReady(SectionState& s, bool ready) {
    s.Ready = ready ? kTrue : kFalse;
}

void frm3New::RefreshPanels() {
    const SectionState* states[5] = {&rec_.GeneralState, &rec_.IndexState, &rec_.TransState,
                                     &rec_.ThermalState, &rec_.OtherState};
    for (size_t i = 0; i < 5; ++i) {
        const bool ready = states[i]->Ready != 0;
        pnlStatus[i].caption = std::string(kSectionNames[i]) + (ready ? ": Ready" : ": NOT Ready");
        pnlStatus[i].backColour = ready ? kStatusGreen : kStatusRed;
    }
    lblGlassCode.caption =
        rec_.IndexState.Ready != 0 ? std::to_string(rec_.General.GlassCode) : std::string();
}

void frm3New::UpdateTitle() {
    form.caption = Frm3Title(rec_, mode_);
    const std::string name = Trimmed(rec_.General.GlassName);
    const std::string source = Trimmed(rec_.General.Source);
    lblGlassSource.caption = name.empty() ? std::string() : name + "::" + source;
}

}  // namespace ostrel
