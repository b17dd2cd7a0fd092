// The material form's General tab: the glass name and source, each checked as typed and
// against the materials already in the list.
#include "core/material/name_check.h"
#include "core/materialform/frm3new.h"
#include "core/materialform/frm3new_fields.h"
#include "core/platform/text.h"

namespace ostrel {

using frm3new_fields::Trimmed;

namespace {

std::string UpperTrim(const std::string& s) {
    return UpperAscii(VbTrimCopy(s));
}

}  // namespace

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

}  // namespace ostrel
