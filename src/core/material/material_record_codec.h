#pragma once
// The file image of a MaterialRecord: 12964 bytes, little endian, fields at fixed offsets.
#include <array>
#include <cstddef>
#include <span>

#include "core/material/material_record.h"

namespace ostrel {

constexpr size_t kMaterialRecordSize = 12964;
using MaterialImage = std::array<unsigned char, kMaterialRecordSize>;

// Where the fields that are read without the rest of the record stand in its image.
namespace material_offset {
constexpr size_t kGlassName = 6;
constexpr size_t kSource = 38;
// The name and the source end within this many bytes of a record's start.
constexpr size_t kKeyEnd = 68;
constexpr size_t kPolytype = 76;
constexpr size_t kIndexWvMin = 190;
constexpr size_t kIndexWvMax = 192;
constexpr size_t kMeltFlag = 12070;
// Changes and Ready of the General, Index, Trans, Thermal and Other sections, in turn.
constexpr size_t kSectionStates = 12936;
constexpr size_t kDateChanged = 12956;
}  // namespace material_offset

void ToBytes(const MaterialRecord& rec, unsigned char* image);
MaterialImage ToBytes(const MaterialRecord& rec);
void FromBytes(const unsigned char* image, MaterialRecord& rec);
MaterialRecord FromBytes(std::span<const unsigned char, kMaterialRecordSize> image);
// The summary fields of a record image, the rest of it left unread.
void SummaryFromBytes(const unsigned char* image, MaterialSummary& summary);

}  // namespace ostrel
