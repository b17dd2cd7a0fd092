#include "core/materialform/verification.h"

#include <algorithm>
#include <utility>

#include "core/optics/glass_code.h"
#include "core/platform/text.h"

namespace ostrel {

void NormaliseRecord(MaterialRecord& rec) {
    const std::string status = UpperAscii(rec.Other.Status.Text());
    if (status != "A" && status != "E" && status != "R" && status != "0") {
        rec.Other.Status.Set("A");
    }
    if (rec.IndexState.Ready != kFalse) UpdateGlassCode(rec);
}

std::string NotReadySections(const MaterialRecord& rec) {
    std::string list;
    if (rec.GeneralState.Ready == kFalse) list = "General";
    const struct {
        const SectionState& state;
        const char* name;
    } sections[] = {{rec.IndexState, " Index"},
                    {rec.TransState, " Trans"},
                    {rec.ThermalState, " dn/dt"},
                    {rec.OtherState, " Other"}};
    for (const auto& s : sections) {
        if (s.state.Ready == kFalse) list = VbTrimCopy(list + s.name);
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
    std::string list = NotReadySections(rec);
    if (list.empty()) return {"OK", ReadyColour::Green};
    return {std::move(list), ReadyColour::Red};
}

}  // namespace ostrel
