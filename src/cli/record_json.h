#pragma once
#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "core/material/material_record.h"

namespace ostrel::cli {

// Every field of a record, keyed by its field name; texts trimmed (NULs kept), 32-bit
// numbers written with the shortest text that reads back to the same float.
nlohmann::ordered_json RecordToJson(const MaterialRecord& rec);
// The list as JSON: an array of the summaries with their positions, indented by two.
std::string ListToJsonText(const std::vector<MaterialSummary>& entries);

}  // namespace ostrel::cli
