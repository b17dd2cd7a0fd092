#pragma once
#include <nlohmann/json.hpp>

#include "core/material/material_record.h"

namespace ostrel::cli {

// Every field of a record, keyed by its field name; texts trimmed (NULs kept), 32-bit
// numbers written with the shortest text that reads back to the same float.
nlohmann::ordered_json RecordToJson(const MaterialRecord& rec);
// The summary of one list entry.
nlohmann::ordered_json ListEntryToJson(int index, const MaterialSummary& summary);

}  // namespace ostrel::cli
