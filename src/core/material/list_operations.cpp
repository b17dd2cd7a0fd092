#include "core/material/list_operations.h"

#include "core/material/name_check.h"
#include "core/platform/text.h"

namespace ostrel {

namespace {
constexpr const char* kDuplicatePrompt =
    "Enter NEW name for glass. [you will not be allowed to use an existing name/source "
    "combination]";
}

bool DeleteMaterial(GlassesList& list, Dialogs& dialogs, int index) {
    std::vector<MaterialRecord> work = list.CopyListOut();
    if (index < 1 || index > static_cast<int>(work.size())) return false;
    const MaterialRecord& rec = work[static_cast<size_t>(index - 1)];
    const std::string question = "Are you sure that you wish to delete " +
                                 rec.General.GlassName.Text() + " - " + rec.General.Source.Text() +
                                 "?";
    if (dialogs.MsgBox(question, MsgButtons::YesNo, MsgIcon::Question, "") != MsgAnswer::Yes) {
        return false;
    }
    work.erase(work.begin() + (index - 1));
    return list.CommitList(std::move(work));
}

bool DuplicateMaterial(GlassesList& list, Dialogs& dialogs, int index) {
    std::vector<MaterialRecord> work = list.CopyListOut();
    if (index < 1 || index > static_cast<int>(work.size())) return false;
    MaterialRecord copy = work[static_cast<size_t>(index - 1)];
    std::string proposal = copy.General.GlassName.Text();
    for (;;) {
        std::optional<std::string> answer = dialogs.InputBox(kDuplicatePrompt, "", proposal);
        // An empty answer (or one of blanks only, which would make a nameless material)
        // leaves everything as it is.
        if (!answer || VbTrim(*answer).empty()) return false;
        // A name that cannot be stored as typed is refused with its reason, then asked again.
        if (const std::string refusal = NameRefusal(*answer); !refusal.empty()) {
            ShowNameRefusal(dialogs, false, *answer, refusal);
            proposal = *answer;
            continue;
        }
        copy.General.GlassName.Set(VbTrimCopy(*answer));
        std::string message;  // the reason is not shown: the prompt simply comes again
        if (list.CheckOverwrite(copy, true, message) && NameUsable(copy)) break;
        proposal = *answer;
    }
    work.insert(work.begin() + index, copy);
    return list.CommitList(std::move(work));
}

}  // namespace ostrel
