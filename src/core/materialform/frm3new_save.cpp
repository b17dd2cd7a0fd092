// The material form's save: the checks before a material goes into the list, and the
// form after it has.
#include <exception>

#include "core/materialform/frm2_manage.h"
#include "core/materialform/frm3new.h"
#include "core/materialform/verification.h"

namespace ostrel {

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
