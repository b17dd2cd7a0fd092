#pragma once
// Whether a record is complete enough to be saved or exported, judged from its five
// section ready flags alone, and the normal form a record is put into before it is saved.
#include <array>
#include <span>
#include <string>

#include "core/material/material_record.h"
#include "core/platform/dialogs.h"

namespace ostrel {

// Status of a record is one of "A", "E", "R", "0" (trimmed, any case); anything else is set
// to "A". With the index section ready the glass code is derived again.
void NormaliseRecord(MaterialRecord& rec);
// The status part alone, for a record whose glass code is derived later.
void NormaliseStatus(MaterialRecord& rec);

// The sections not ready, as "General Index Trans dn/dt Other" with the ready ones left
// out; empty when all five are ready.
std::string NotReadySections(const MaterialRecord& rec);
// The same from the ready flags of General, Index, Trans, dn/dt and Other, in that order.
std::string NotReadySections(const std::array<Flag, 5>& ready);

// True when all five sections are ready; otherwise appends the line
// "name/source - check: sections" and a line break to report.
bool CheckGlassReady(const MaterialRecord& rec, std::string& report);

// Checks glasses[first..last] (an empty range when last < first). When any is not ready,
// shows the list with an OK button and the information icon. True when all are ready.
bool CheckGlassesReady(Dialogs& dialogs, int first, int last,
                       std::span<const MaterialRecord> glasses);

enum class ReadyColour { Green, Red };

// What the status column of a list grid shows for a record: "OK" in green, or the
// sections not ready in red.
struct ReadyStatus {
    std::string text;
    ReadyColour colour = ReadyColour::Red;
};

ReadyStatus ReadyStatusCell(const MaterialRecord& rec);
ReadyStatus ReadyStatusCell(const std::array<Flag, 5>& ready);

}  // namespace ostrel
