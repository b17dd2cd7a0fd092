// The import form's staging list: what a read leaves beside it, the check of every staged
// glass, the full records of glasses leaving it, and the commands that take glasses out
// (the add commands) or change them there (a new source).
#include <algorithm>

#include "core/import/frm4_import.h"
#include "core/material/name_check.h"
#include "core/platform/text.h"

namespace ostrel {

void frm4Import::ResetStaging() {
    flagged_.assign(importList_.size(), false);
    refitErrors_.assign(importList_.size(), 0.0f);
    checkTexts_.assign(importList_.size(), std::string());
    refitCount_ = 0;
    skippedCount_ = 0;
    skippedNote_.clear();
}

void frm4Import::StageWhole(std::vector<MaterialRecord> records) {
    importList_.clear();
    importList_.reserve(records.size());
    for (MaterialRecord& rec : records) importList_.push_back(StageWholeRecord(std::move(rec)));
    ResetStaging();
}

void frm4Import::CheckStaged(const std::vector<StatedIndex>& stated) {
    for (size_t i = 0; i < importList_.size(); ++i) {
        const ImportCheck c =
            CheckImported(importList_[i].Form, i < stated.size() ? stated[i] : StatedIndex{});
        checkTexts_[i] = c.text;
        flagged_[i] = c.flagged;
    }
}

MaterialRecord frm4Import::StagedRecord(size_t i) const {
    return LeaveStaging(importList_.at(i));
}

std::vector<MaterialRecord> frm4Import::ImportList() const {
    std::vector<MaterialRecord> out;
    out.reserve(importList_.size());
    for (const StagedGlass& glass : importList_) out.push_back(LeaveStaging(glass));
    return out;
}

bool frm4Import::AddRange(int first, int last) {
    if (importCount_ == 0) {
        const MsgAnswer a = dialogs_.MsgBox(
            "No materials have been imported, so none can be added to the main list!\n\n"
            "Do you wish to open a material text file now?",
            MsgButtons::YesNo, MsgIcon::Question, {});
        if (a == MsgAnswer::Yes) {
            comImportClick();
            return false;
        }
    }
    const int count = std::min<int>(importCount_, static_cast<int>(importList_.size()));
    first = std::max(first, 1);
    last = std::min(last, count);
    // Which glasses of the range are to be added; the Check question may leave some out.
    std::vector<bool> take(static_cast<size_t>(std::max(count, 0)) + 1, true);
    auto names = [&](auto test) {
        std::string joined;
        for (int i = first; i <= last; ++i) {
            const StagedGlass& glass = importList_[static_cast<size_t>(i - 1)];
            if (!take[static_cast<size_t>(i)] || !test(i, glass)) continue;
            if (!joined.empty()) joined += ", ";
            joined += glass.GlassName.Text() + "/" + glass.Source.Text();
        }
        return joined;
    };
    auto key = [](const StagedGlass& g) {
        return MaterialKeyOf(g.GlassName.Raw(), g.Source.Raw());
    };
    const std::string catalogue =
        names([&](int, const StagedGlass& g) { return list_.ListContainsSuppliedKey(key(g)); });
    if (!catalogue.empty()) {
        dialogs_.MsgBox(
            "The following materials are catalog glasses and cannot be overwritten!"
            "\n\n" +
                catalogue + "\n\nIf you really want to use this data, then rename the 'Source'.",
            MsgButtons::OK, MsgIcon::Exclamation, {});
        return false;
    }
    // A glass marked Check is added only when the user says so: Yes adds it with the others,
    // No leaves it out, Cancel adds nothing.
    auto isFlagged = [this](int i) {
        const auto k = static_cast<size_t>(i - 1);
        return k < flagged_.size() && flagged_[k];
    };
    const std::string flagged = names([&](int i, const StagedGlass&) { return isFlagged(i); });
    if (!flagged.empty()) {
        const MsgAnswer a = dialogs_.MsgBox(
            "The following materials are marked Check: their index disagrees with the figures "
            "of their file, or cannot be computed somewhere in their waveband:\n\n" +
                flagged +
                "\n\nDo you want to add them all the same?\n(Yes adds them, No leaves them out, "
                "Cancel adds nothing.)",
            MsgButtons::YesNoCancel, MsgIcon::Exclamation, {});
        if (a == MsgAnswer::Cancel) return false;
        if (a == MsgAnswer::No) {
            bool any = false;
            for (int i = first; i <= last; ++i) {
                if (isFlagged(i)) take[static_cast<size_t>(i)] = false;
                any = any || take[static_cast<size_t>(i)];
            }
            if (!any) return false;
        }
    }
    const std::string custom =
        names([&](int, const StagedGlass& g) { return list_.ListContainsKey(key(g)); });
    if (!custom.empty()) {
        const MsgAnswer a =
            dialogs_.MsgBox("The following materials are already in your collection:\n\n" + custom +
                                "\n\nDo you want to overwrite the existing data?",
                            MsgButtons::YesNo, MsgIcon::Question, {});
        if (a != MsgAnswer::Yes) return false;
    }
    // The list in memory is kept as it was when the file cannot be written.
    std::vector<MaterialRecord> before = list_.CopyListOut();
    for (int i = first; i <= last; ++i) {
        if (take[static_cast<size_t>(i)]) {
            list_.ListAddDated(StagedRecord(static_cast<size_t>(i - 1)), true);
        }
    }
    if (!list_.SaveCustomFile()) {
        list_.ReplaceList(std::move(before));
        return false;
    }
    list_.RefreshListForm();
    return true;
}

void frm4Import::comRenameSourceClick() {
    if (importCount_ <= 0) return;
    const auto answer =
        dialogs_.InputBox("Enter new source name for these materials", form.caption, {});
    if (!answer) return;
    const std::string source = VbTrimCopy(*answer);
    if (source.empty()) return;
    if (const std::string refusal = NameRefusal(source); !refusal.empty()) {
        ShowNameRefusal(dialogs_, true, *answer, refusal);
        return;
    }
    for (auto& glass : importList_) glass.Source.Set(source);
    UpdateTable();
}

}  // namespace ostrel
