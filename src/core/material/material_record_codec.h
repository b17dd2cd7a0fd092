#pragma once
// The file image of a MaterialRecord: 12964 bytes, little endian, fields at fixed offsets.
#include <array>
#include <cstddef>
#include <span>

#include "core/material/material_record.h"

namespace ostrel {

constexpr size_t kMaterialRecordSize = 12964;
using MaterialImage = std::array<unsigned char, kMaterialRecordSize>;

void ToBytes(const MaterialRecord& rec, unsigned char* image);
MaterialImage ToBytes(const MaterialRecord& rec);
void FromBytes(const unsigned char* image, MaterialRecord& rec);
MaterialRecord FromBytes(std::span<const unsigned char, kMaterialRecordSize> image);

}  // namespace ostrel
