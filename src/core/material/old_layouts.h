#pragma once
// The three older layouts of the custom file and their conversion to the current record.
#include <cstddef>

#include "core/material/material_record.h"

namespace ostrel {

constexpr size_t kRecordSizeV2 = 12604;      // UserDefineGlassesV2.DAT
constexpr size_t kRecordSizeV1 = 12098;      // UserDefineGlasses.DAT
constexpr size_t kRecordSizeOldest = 12070;  // UserDefGlasses.DAT

// Each takes one record image of its layout and gives the current record built on an
// all-zero record: fields are copied across, 32-bit melt values widened, nothing
// normalised and no date changed.
MaterialRecord ConvertRecordV2(const unsigned char* image);
MaterialRecord ConvertRecordV1(const unsigned char* image);
MaterialRecord ConvertRecordOldest(const unsigned char* image);

}  // namespace ostrel
