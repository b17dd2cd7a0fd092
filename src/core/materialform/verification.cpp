#include "core/materialform/verification.h"

#include <algorithm>
#include <utility>

#include "core/optics/glass_code.h"
#include "core/platform/text.h"

namespace ostrel {

void NormaliseStatus(MaterialRecord& rec) {
    const std::string status = UpperAscii(rec.Other.Status.Text());
    if (status != "A" && status != "E" && status != "R" && status != "0") {
        rec.Other.Status.Set("A");
    }
}

void NormaliseRecord(MaterialRecord& rec) {
    NormaliseStatus(rec);
    if (rec.IndexState.Ready != kFalse) UpdateGlassCode(rec);
}

std::string NotReadySections(const MaterialRecord& rec) {
    return NotReadySections({rec.GeneralState.Ready, rec.IndexState.Ready, rec.TransState.Ready,
                             rec.ThermalState.Ready, rec.OtherState.Ready});
}

std::string NotReadySections(const std::array<Flag, 5>& ready) {
    static const char* const kNames[] = {" Index", " Trans", " dn/dt", " Other"};
    std::string list;
    if (ready[0] == kFalse) list = "General";
    for (size_t k = 1; k < ready.size(); ++k) {
        if (ready[k] == kFalse) list = VbTrimCopy(list + kNames[k - 1]);
    }
    return list;
}

bool CheckGlassReady(const MaterialRecord& rec, std::string& report) {
    const std::string list = NotReadySections(rec);
    if (list.empty()) return true;
    report +=
        rec.General.GlassName.Text() + "/" + rec.General.Source.Text() + " - check: " + list + "\n";
    return false;
}

bool CheckGlassesReady(Dialogs& dialogs, int first, int last,
                       std::span<const MaterialRecord> glasses) {
    std::string report = "The following glass[s] are not ready for export.\n";
    bool allReady = true;
    const int end = std::min(last, static_cast<int>(glasses.size()) - 1);
    for (int i = std::max(first, 0); i <= end; ++i) {
        if (!CheckGlassReady(glasses[static_cast<size_t>(i)], report)) allReady = false;
    }
    if (!allReady) dialogs.MsgBox(report, MsgButtons::OK, MsgIcon::Information);
    return allReady;
}

ReadyStatus ReadyStatusCell(const MaterialRecord& rec) {
    return ReadyStatusCell({rec.GeneralState.Ready, rec.IndexState.Ready, rec.TransState.Ready,
                            rec.ThermalState.Ready, rec.OtherState.Ready});
}

ReadyStatus ReadyStatusCell(const std::array<Flag, 5>& ready) {
    std::string list = NotReadySections(ready);
    if (list.empty()) return {"OK", ReadyColour::Green};
    return {std::move(list), ReadyColour::Red};
}

}  // namespace ostrel
