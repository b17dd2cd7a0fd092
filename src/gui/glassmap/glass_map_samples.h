#pragma once
// Custom and melt glasses for the pictures of the glass map and the comparison, made in
// memory from catalogue glasses of the database (the list is not touched). Used by the
// program's --screenshots option.
#include <string>
#include <vector>

#include "core/material/material_record.h"

namespace ostrel::gui {

// A few custom glasses near catalogue ones and melts of N-BK7 and F2; empty when the
// database cannot be read or lacks those glasses.
std::vector<MaterialRecord> GlassMapSampleMaterials(const std::string& kelmoraFolder);

}  // namespace ostrel::gui
