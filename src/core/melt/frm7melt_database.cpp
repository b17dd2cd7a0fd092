// The melt form's storage: the parent of an edited melt read back from the catalogue
// database, and the finished melt saved into the local list.
#include <algorithm>
#include <utility>
#include <vector>

#include "core/external/kelmora_database.h"
#include "core/materialform/frm2_manage.h"
#include "core/materialform/verification.h"
#include "core/melt/frm7melt.h"
#include "core/optics/derived_data.h"
#include "core/optics/glass_code.h"
#include "core/platform/text.h"

namespace ostrel {

bool frm7Melt::LoadParent(const std::string& name, const std::string& source) {
    auto db = OpenGlassDatabase(kelmora_, dialogs_);
    if (!db) return false;
    std::vector<DbRow> rows;
    DbError error;
    if (!RunGlassQuery(*db, GlassQuery(VbTrimCopy(source)), rows, error)) {
        dialogs_.MsgBox("There is an error in the database query");
        return false;
    }
    const std::string wanted = UpperAscii(VbTrimCopy(name));
    for (const auto& row : rows) {
        if (UpperAscii(VbTrimCopy(DbText(row.Field("GlassName")))) != wanted) continue;
        MaterialRecord rec = ClearedMaterialRecord();
        if (!ReadGlassRow(row, rec, error)) return false;
        parent_ = rec;
        return true;
    }
    dialogs_.MsgBox("no match");
    return false;
}

// --- saving ---

void frm7Melt::comAddClick() {
    if (mode_ == kModeReview) return;
    Trap("The melt glass could not be saved.", [&] {
        if (!AllSectionsReady(melt_)) {
            dialogs_.MsgBox(kIncompleteMsg, MsgButtons::OK, MsgIcon::Exclamation);
            return;
        }
        // What is saved carries the numbers of its own polynomial.
        UpdateDerivedData(melt_);
        UpdateGlassCode(melt_);
        NormaliseRecord(melt_);
        const std::string key = BuildMeltName(melt_);
        if (list_.ListContainsSupplied(melt_)) {
            dialogs_.MsgBox(key +
                                " is a catalog glass and cannot be overwritten!\n\nIf you really "
                                "want to use this data, then change the 'name' and /or 'source'.",
                            MsgButtons::OK, MsgIcon::Exclamation);
            return;
        }
        if (list_.ListContains(melt_)) {
            const MsgAnswer a = dialogs_.MsgBox(key +
                                                    " is already in your collection.\n\nDo you "
                                                    "want to overwrite the existing data?",
                                                MsgButtons::YesNo, MsgIcon::Question);
            if (a != MsgAnswer::Yes) return;
        }
        melt_.Melt.MeltFlag = kTrue;

        // Added (or replacing the one of the same key), then the list sorted and saved.
        MaterialRecord dated = melt_;
        dated.DateChanged = list_.errors().clock().Now();
        std::vector<MaterialRecord> copy = list_.CopyListOut();
        auto same = std::find_if(copy.begin(), copy.end(),
                                 [&](const MaterialRecord& r) { return SameMaterial(r, dated); });
        if (same != copy.end()) {
            *same = dated;
        } else {
            copy.push_back(dated);
        }
        std::stable_sort(copy.begin(), copy.end(),
                         [](const MaterialRecord& a, const MaterialRecord& b) {
                             return MaterialKey(a) < MaterialKey(b);
                         });
        if (!list_.CommitList(std::move(copy))) return;
        saved_ = true;
        changed_ = false;

        if (mode_ == kModeNew) {
            melt_ = ClearedMaterialRecord();
            parent_ = ClearedMaterialRecord();
            SetAllSectionsReady(melt_, kFalse);
            melt_.ThermalState.Ready = kTrue;
            ResetForm(true);
        } else if (mode_ == kModeEdit && owner_ &&
                   (!forms_ || forms_->GetCurrentForm() == kFormManage)) {
            owner_->UpdatesGlasssAftEdit();
        }
    });
}

}  // namespace ostrel
