// The material form: life cycle, status panels, General tab and the form-wide commands.
#include "core/materialform/frm3new.h"

#include <charconv>
#include <exception>

#include "core/material/name_check.h"
#include "core/materialform/frm2_manage.h"
#include "core/materialform/verification.h"
#include "core/platform/text.h"

namespace ostrel {

namespace {

constexpr const char* kSectionNames[5] = {"General", "Index", "Trans", "dn/dt", "Other"};

std::string Trimmed(const FixedText<30>& t) {
    return t.Text();
}

std::string UpperTrim(const std::string& s) {
    return UpperAscii(VbTrimCopy(s));
}

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

// ---------------------------------------------------------------------------------------
// General

bool frm3New::GeneralCheck(const std::string& name, const std::string& source) {
    const std::string n = UpperTrim(name);
    const std::string s = UpperTrim(source);
    if (n.empty() || s.empty()) {
        SetSectionReady(rec_.GeneralState, false);
        return true;
    }
    MaterialRecord proposal = rec_;
    proposal.General.GlassName.Set(n);
    proposal.General.Source.Set(s);
    std::string message;
    if (!list_.CheckOverwrite(proposal, false, message)) {
        dialogs_.MsgBox(message, MsgButtons::OK, MsgIcon::Information);
        SetSectionReady(rec_.GeneralState, false);
        return false;
    }
    SetSectionReady(rec_.GeneralState, true);
    return true;
}

void frm3New::NameOrSourceChange(bool isName) {
    if (loading_ || mode_ == kModeReview) return;
    TextBox& box = isName ? txtGenGlass : txtGenSource;
    auto& field = isName ? rec_.General.GlassName : rec_.General.Source;
    const std::string typed = box.text.get();
    const std::string old = Trimmed(field);
    // A name or source is kept as typed or refused with its reason, never cut or altered.
    if (const std::string refusal = NameRefusal(typed); !refusal.empty()) {
        ShowNameRefusal(dialogs_, !isName, typed, refusal);
        loading_ = true;
        box.text = old;
        loading_ = false;
        return;
    }
    if (UpperTrim(typed) != UpperTrim(old)) {
        const std::string name = isName ? typed : Trimmed(rec_.General.GlassName);
        const std::string source = isName ? Trimmed(rec_.General.Source) : typed;
        if (!GeneralCheck(name, source)) {
            loading_ = true;
            box.text = old;
            loading_ = false;
            RefreshPanels();
            UpdateTitle();
            return;
        }
        ++rec_.GeneralState.Changes;
    }
    if (typed != Trimmed(field)) MarkModified();
    field.Set(VbTrimCopy(typed));
    RefreshPanels();
    UpdateTitle();
}

void frm3New::txtGenGlassChange() {
    NameOrSourceChange(true);
}

void frm3New::txtGenSourceChange() {
    NameOrSourceChange(false);
}

// ---------------------------------------------------------------------------------------
// Tabs and the commands shared by them

void frm3New::tabPropertiesChange(int tab) {
    if (tab < kTabGeneral || tab > kTabOther) return;
    // What the paste, clear and wavelength commands offer on each tab, in tab order.
    struct TabCommands {
        const char* paste;
        bool pasteOn;
        const char* clear;
        bool clearOn;
        bool waveOn;
    };
    static constexpr TabCommands kCommands[] = {
        // The Alt letters are unique in the form: Clear takes L, Close keeps C.
        {"&Paste", false, "C&lear", false, false},
        {"&Paste index", true, "C&lear index", true, true},
        {"&Paste trans", true, "C&lear trans", true, true},
        {"&Paste", false, "C&lear dndt", true, false},
        {"&Paste", false, "C&lear other", true, false},
    };
    tabProperties.tab = tab;
    const bool editable = mode_ != kModeReview;
    const TabCommands& c = kCommands[tab];
    comClipPaste.caption = c.paste;
    comClipPaste.enabled = c.pasteOn && editable;
    comClear.caption = c.clear;
    comClear.enabled = c.clearOn && editable;
    comWaveSelRefInd.enabled =
        c.waveOn && editable && (tab != kTabIndex || rec_.General.IndexDataType == 0);
    if (tab == kTabIndex) FillIndexGrid();
}

void frm3New::comClipPasteClick(const std::string& clipText) {
    if (mode_ == kModeReview) return;
    try {
        if (tabProperties.tab == kTabIndex) {
            const int first = ssRefInd.ActiveRow();
            const int rows = ssRefInd.Paste(clipText);
            if (rows > 0 && rec_.General.IndexDataType == 0) {
                // Pasted rows without a weight get one as typed rows do; a weight pasted
                // as 0 stays 0.
                for (int r = first; r < first + rows && r <= ssRefInd.MaxRows(); ++r) {
                    if (ssRefInd.Text(3, r).empty()) ssRefIndChange(1, r);
                }
            }
            if (rows > 0) {
                MarkModified();
                if (rec_.General.IndexDataType == 0) HideFitColumns(true);
                comIndexFit.enabled = true;
                comIndexShow.enabled = false;
                SetSectionReady(rec_.IndexState, false);
                RefreshPanels();
            }
        } else if (tabProperties.tab == kTabTrans) {
            const int first = ssTrans.ActiveRow();
            const int rows = ssTrans.Paste(clipText);
            PasteTrans(first, rows);
        }
    } catch (const std::exception& e) {
        list_.errors().ErrorDisplay("The clipboard text could not be pasted.", e.what(), 0);
    }
}

void frm3New::comClearClick() {
    if (mode_ == kModeReview) return;
    switch (tabProperties.tab) {
        case kTabIndex:
            ClearIndex();
            break;
        case kTabTrans:
            ClearTrans();
            break;
        case kTabDndt: {
            ShowThermal();
            auto& t = rec_.Thermal;
            t.dndt_lin = t.dndt_D0 = t.dndt_D1 = t.dndt_D2 = 0;
            t.dndt_E0 = t.dndt_E1 = t.dndt_LamdaTK = t.dndt_RefTemp = 0;
            ShowThermal();
            break;
        }
        case kTabOther:
            ClearOther();
            break;
        default:
            return;
    }
    MarkModified();
    RefreshPanels();
}

void frm3New::comWaveSelRefIndClick() {
    if (mode_ == kModeReview || !hooks_.pickWaves) return;
    const int tab = tabProperties.tab;
    const bool index = tab == kTabIndex && rec_.General.IndexDataType == 0;
    if (!index && tab != kTabTrans) return;
    try {
        Grid& grid = index ? ssRefInd : ssTrans;
        // The grid goes to the top of its active block.
        if (grid.IsBlockMode()) {
            const GridBlock b = grid.SelBlock();
            grid.ClearSelection();
            if (b.row1 >= 1) grid.SetActiveCell(1, b.row1);
        }
        const int row = grid.ActiveRow();
        if (row < 1 || row > grid.MaxRows()) return;
        float wave = static_cast<float>(CellNumber(grid.Text(1, row)));
        int16_t count = 0;
        std::vector<float> waves;
        const int16_t startTab = index ? 0 : 2;
        if (hooks_.pickWaves(count, wave, waves, startTab) == 0) return;
        std::vector<float> picked;
        if (waves.empty()) {
            picked.push_back(wave);
        } else {
            picked = waves;
        }
        for (size_t i = 0; i < picked.size(); ++i) {
            const int r = row + static_cast<int>(i);
            if (r > grid.MaxRows()) break;
            char buf[32];  // the wavelength as picked, not as its nearest double
            const auto res = std::to_chars(buf, buf + sizeof buf, picked[i]);
            grid.SetText(1, r, std::string(buf, res.ptr));
            if (index) {
                ssRefIndChange(1, r);
            } else {
                ssTransChange(1, r);
            }
        }
    } catch (const std::exception&) {
        // a failed pick leaves the grid as it was
    }
}

// ---------------------------------------------------------------------------------------
// Saving

void frm3New::comAddClick() {
    Save();
}

bool frm3New::Save() {
    if (mode_ == kModeReview) return false;
    try {
        if (!AllSectionsReady(rec_)) {
            dialogs_.MsgBox(kIncompleteMsg, MsgButtons::OK, MsgIcon::Exclamation);
            return false;
        }
        NormaliseRecord(rec_);
        const std::string shown = DisplayName(rec_);
        if (list_.ListContainsSupplied(rec_)) {
            dialogs_.MsgBox(shown +
                                " is a catalog glass and cannot be overwritten!\nIf you "
                                "really want to use this data, then change the 'name' "
                                "and /or 'source'.",
                            MsgButtons::OK, MsgIcon::Exclamation);
            return false;
        }
        const bool nameChanged = mode_ == kModeNew || shown != startKey_;
        if (nameChanged && list_.ListContains(rec_)) {
            const MsgAnswer a =
                dialogs_.MsgBox(shown +
                                    " is already in your collection.\nDo you want to overwrite the "
                                    "existing data?",
                                MsgButtons::YesNo, MsgIcon::Question);
            if (a != MsgAnswer::Yes) return false;
        }
        if (!list_.AddAndSave(rec_, true)) return false;
        if (mode_ == kModeNew) {
            DisplayNew();
        } else {
            startKey_ = shown;
            if (owner_) owner_->UpdatesGlasssAftEdit();
        }
        rec_.GeneralState.Changes = 0;
        modified_ = false;
        return true;
    } catch (const std::exception& e) {
        list_.errors().ErrorDisplay("The material could not be saved.", e.what(), 0);
        return false;
    }
}

}  // namespace ostrel
