// The melt form: its life cycle, the parent picked, and the melt's name and status shown.
#include "core/melt/frm7melt.h"

#include <exception>
#include <utility>

#include "core/melt/frm7melt_cells.h"
#include "core/optics/index_from_polynomial.h"
#include "core/platform/text.h"

namespace ostrel {

using frm7melt_cells::kColFit;
using frm7melt_cells::TrimText;

const char* frm7Melt::NoticeText() {
    return "This form will help you create a melt glass for use in the Lumbrak Plus suite\n\n"
           "A melt glass is based upon an existing catalog glass, but its refractive index "
           "values are slightly different.\n\n"
           "To define a melt glass, you will need to define:\n"
           "\ta parent material\n"
           "\ta code name for the melt\n"
           "\tat least 4 wavelength/index pairs [from melt sheet]\n\n"
           "Ostrel will then calculate the differences from the parent glass, and re-fit the "
           "index polynomial. All non-index related properties will be unchanged, except the "
           "glass name, which will be the parent glass name followed by the melt code";
}

frm7Melt::frm7Melt(GlassesList& list, Dialogs& dialogs, CNewMsg& newMsg, std::string kelmoraFolder,
                   Hooks hooks, ManageForms* forms)
    : list_(list),
      dialogs_(dialogs),
      newMsg_(newMsg),
      kelmora_(std::move(kelmoraFolder)),
      hooks_(std::move(hooks)),
      forms_(forms),
      melt_(ClearedMaterialRecord()),
      parent_(ClearedMaterialRecord()) {
    InitGrid();
}

void frm7Melt::Trap(const char* what, const std::function<void()>& body) {
    try {
        body();
    } catch (const std::exception& e) {
        list_.errors().ErrorDisplay(what, e.what(), 0);
    }
}

// --- life cycle ---

bool frm7Melt::DisplayNew(bool modal) {
    Trap("The melt maker could not be opened.", [&] {
        mode_ = kModeNew;
        caption_ = "Melt glass: new";
        loading_ = true;
        saved_ = false;
        saveAllowed_ = true;
        ownerHidden_ = false;
        owner_ = nullptr;
        melt_ = ClearedMaterialRecord();
        parent_ = ClearedMaterialRecord();
        comAdd.caption = "&Save";
        comAdd.toolTip = "Add this material to the ostrel database";
        FormLoad();
    });
    if (hooks_.show) hooks_.show(modal);
    return saved_;
}

void frm7Melt::DisplayEdit(const MaterialRecord& rec, frm2Manage* owner) {
    OpenRecord(rec, owner, kModeEdit);
}

void frm7Melt::DisplayReview(const MaterialRecord& rec, frm2Manage* owner) {
    OpenRecord(rec, owner, kModeReview);
}

void frm7Melt::OpenRecord(const MaterialRecord& rec, frm2Manage* owner, int mode) {
    const bool review = mode == kModeReview;
    Trap("The melt glass could not be shown.", [&] {
        mode_ = mode;
        caption_ = review ? "Melt glass: review" : "Melt glass: edit";
        loading_ = true;
        saved_ = false;
        owner_ = owner;
        if (hooks_.enableOwner) hooks_.enableOwner(false);
        melt_ = rec;
        parent_ = ClearedMaterialRecord();
        melt_.GeneralState.Changes = 2;
        melt_.IndexState.Changes = 2;
        melt_.TransState.Changes = 2;
        saveAllowed_ = !review;
        ownerHidden_ = true;
        if (forms_) forms_->SetMeltFormOpen(true);
        if (review) {
            comAdd.caption = "&Save";
            comAdd.toolTip = "Add this material to the ostrel database";
        }
        FormLoad();
        LoadParent(melt_.Melt.MeltParentName.Text(), melt_.Melt.MeltParentSource.Text());
        if (!review) {
            comAdd.caption = "Accept changes";
            comAdd.toolTip = "Accept changes made to this melt glass";
        }
        pnlPolyType.caption = PolyTypeName(melt_.General.Polytype);
        WriteIndexTable();
        UpdateMeltDisplay();
        if (review) LockForm();
    });
    if (hooks_.show) hooks_.show(false);
}

void frm7Melt::FormLoad() {
    open_ = true;
    changed_ = false;
    waveBands_ = LoadWaveBands(list_.dataFolder());
    ResetForm(true);
    FillWaveBandList();
    loading_ = false;
    newMsg_.Display(NoticeText(), kNoticeTitle, false, 0, kNoticeKey);
}

void frm7Melt::ForceUnload() {
    saved_ = false;
    Unload();
}

void frm7Melt::comOKClick() {
    if (QueryClose()) Unload();
}

bool frm7Melt::HasUnsavedChanges() const {
    // Nothing can be saved before a parent is chosen, so there is nothing to lose either.
    return open_ && mode_ != kModeReview && changed_ &&
           !VbTrimCopy(melt_.Melt.MeltParentName.Text()).empty();
}

bool frm7Melt::QueryClose() {
    if (!HasUnsavedChanges()) return true;
    MaterialRecord named = melt_;
    BuildMeltName(named);
    const MsgAnswer answer =
        dialogs_.MsgBox("Save changes to " + named.General.GlassName.Text() + "?",
                        MsgButtons::YesNoCancel, MsgIcon::Question, caption_);
    if (answer == MsgAnswer::No) return true;
    if (answer != MsgAnswer::Yes) return false;
    // Yes saves only as the save button could: while it is off (no code, or no fit yet) the
    // user is told that the melt is incomplete and the form stays open.
    if (!comAdd.enabled) {
        dialogs_.MsgBox(kIncompleteMsg, MsgButtons::OK, MsgIcon::Exclamation);
        return false;
    }
    comAddClick();
    return !HasUnsavedChanges();
}

void frm7Melt::Unload() {
    if (!open_) return;
    open_ = false;
    if (ownerHidden_) {
        ownerHidden_ = false;
        if (forms_) forms_->SetMeltFormOpen(false);
        if (hooks_.enableOwner) hooks_.enableOwner(true);
    }
    owner_ = nullptr;
    if (hooks_.close) hooks_.close();
}

void frm7Melt::ResetForm(bool setCaption) {
    if (setCaption) {
        form.caption = caption_;
        comAdd.enabled = saveAllowed_;
    }
    InitGrid();
    comIndexFit.enabled = true;
    comIndexSort.enabled = true;
    comWaveBand.enabled = true;
    lstWaveBand.enabled = true;
    txtMeltCode.enabled = true;
    comShowDispConsts.enabled = false;
    comShowIndex.enabled = false;
    lblError.caption = "";
    pnlPolyType.caption = PolyTypeName(melt_.General.Polytype);
    UpdateMeltDisplay();
}

void frm7Melt::LockForm() {
    for (Control* c : std::initializer_list<Control*>{
             &comClear, &comWaveSelRefInd, &comClipPaste, &comIndexFit, &comIndexSort,
             &comMeltSchott, &comWaveBand, &comAdd, &lstWaveBand, &txtMeltCode}) {
        c->enabled = false;
    }
    for (int c = 1; c <= ssRefInd.MaxCols(); ++c) ssRefInd.SetColumnLocked(c, true);
}

// --- parent ---

void frm7Melt::SetParent(const MaterialRecord& picked) {
    melt_ = picked;
    parent_ = picked;
    melt_.IndexState.Ready = kFalse;
    changed_ = true;
    pnlPolyType.caption = PolyTypeName(melt_.General.Polytype);
    UpdateMeltDisplay();
    ssRefInd.ClearAll();
    comIndexFit.enabled = true;
    comShowDispConsts.enabled = false;
    comShowIndex.enabled = false;
    lblError.caption = "";
    ShowFitColumn(false);
}

void frm7Melt::comParentClick() {
    Trap("The parent glass could not be read.", [&] {
        if (!hooks_.pickParent) return;
        MaterialRecord picked = ClearedMaterialRecord();
        if (hooks_.pickParent(picked)) SetParent(picked);
    });
}

// --- name and status ---

void frm7Melt::ApplyMeltCode() {
    const std::string text = VbTrimCopy(txtMeltCode.text.get());
    if (text == kCodePrompt) return;
    if (UpperAscii(text) != UpperAscii(melt_.Melt.MeltCode.Text())) {
        melt_.Melt.MeltCode.Set(text);
        changed_ = true;
        UpdateMeltDisplay();
    }
}

void frm7Melt::UpdateMeltDisplay() {
    auto& m = melt_.Melt;
    TrimText(m.MeltCode);
    TrimText(m.MeltParentName);
    TrimText(m.MeltParentSource);
    bool saveOk = true;
    const std::string code = m.MeltCode.Text();
    if (code.empty()) {
        txtMeltCode.text = kCodePrompt;
        saveOk = false;
    } else {
        txtMeltCode.text = code;
    }
    const bool parentOk = !m.MeltParentName.Text().empty();
    if (!parentOk) {
        lblMeltName.caption = "<- select parent material";
        saveOk = false;
    }
    pnlSide.visible = parentOk;
    for (Control* c : std::initializer_list<Control*>{&comClipPaste, &comClear, &comWaveSelRefInd,
                                                      &comMeltSchott, &fraWaveBand}) {
        c->enabled = parentOk;
    }
    for (Control* c : std::initializer_list<Control*>{&comClear, &comWaveSelRefInd, &comMeltSchott,
                                                      &fraWaveBand}) {
        c->visible = parentOk;
    }
    if (melt_.IndexState.Ready == 0) saveOk = false;
    ShowStatus();
    lblMeltName.caption =
        MeltCaption(m.MeltParentSource.Text(), m.MeltParentName.Text(), m.MeltCode.Text());
    comAdd.enabled = saveOk;
}

void frm7Melt::ShowStatus() {
    const bool ready = melt_.IndexState.Ready != 0;
    pnlStatus.caption = ready ? "Index: Ready" : "Index: NOT Ready";
    pnlStatus.backColour = ready ? kStatusGreen : kStatusRed;
    lblGlassCode.caption = ready ? std::to_string(melt_.General.GlassCode) : std::string();
}

void frm7Melt::ShowFitColumn(bool shown) {
    ssRefInd.SetColumnHidden(kColFit, !shown);
}

}  // namespace ostrel
