#include "core/material/old_layouts.h"

#include <cstring>

#include "core/material/material_record_codec.h"

namespace ostrel {
namespace {

constexpr size_t kSharedPrefix = 12070;  // bytes 0..12069 are those of the current record
constexpr size_t kStatesAt = 12936;      // the five section pairs in the current record
constexpr size_t kDateAt = 12956;

void Copy(MaterialImage& to, size_t toOff, const unsigned char* from, size_t fromOff,
          size_t count) {
    std::memcpy(to.data() + toOff, from + fromOff, count);
}

void WidenSingles(MaterialImage& to, size_t toOff, const unsigned char* from, size_t fromOff,
                  size_t count) {
    for (size_t i = 0; i < count; ++i) {
        float f;
        std::memcpy(&f, from + fromOff + 4 * i, 4);
        double d = f;
        std::memcpy(to.data() + toOff + 8 * i, &d, 8);
    }
}

}  // namespace

MaterialRecord ConvertRecordV2(const unsigned char* image) {
    MaterialImage out{};
    Copy(out, 0, image, 0, kSharedPrefix);
    Copy(out, 12070, image, 12070, 2);           // melt flag
    Copy(out, 12072, image, 12072, 100);         // spare text, parent name and source, melt code
    Copy(out, 12172, image, 12172, 2);           // melt index points
    Copy(out, 12174, image, 12174, 80);          // melt index wavelengths stay 32-bit
    WidenSingles(out, 12254, image, 12254, 20);  // melt index values
    // The old row count at 12334 is dropped on purpose: MeltTransPoints stays 0.
    WidenSingles(out, 12416, image, 12336, 20);  // first number of each row
    WidenSingles(out, 12576, image, 12416, 20);  // second number
    WidenSingles(out, 12736, image, 12496, 20);  // third number
    Copy(out, kStatesAt, image, 12576, 20);
    Copy(out, kDateAt, image, 12596, 8);
    return FromBytes(out);
}

MaterialRecord ConvertRecordV1(const unsigned char* image) {
    MaterialImage out{};
    Copy(out, 0, image, 0, kSharedPrefix);
    Copy(out, kStatesAt, image, 12070, 20);
    Copy(out, kDateAt, image, 12090, 8);
    return FromBytes(out);
}

MaterialRecord ConvertRecordOldest(const unsigned char* image) {
    MaterialImage out{};
    Copy(out, 0, image, 0, 6);  // head
    // Name (12) and source (20) are widened to 30 characters, blank padded.
    std::memset(out.data() + 6, ' ', 30);
    Copy(out, 6, image, 6, 12);
    Copy(out, 36, image, 18, 2);  // GlassKind
    std::memset(out.data() + 38, ' ', 30);
    Copy(out, 38, image, 20, 20);
    Copy(out, 68, image, 40, 4);          // GlassCode
    Copy(out, 72, image, 44, 4);          // Density
    Copy(out, 76, image, 48, 2);          // Polytype
    Copy(out, 78, image, 50, 112);        // PolyCoef
    Copy(out, 190, image, 162, 4);        // IndexWvMin, IndexWvMax
    Copy(out, 194, image, 166, 328);      // TransShortWave, TransShortValue
    Copy(out, 522, image, 494, 52);       // DerivedData
    Copy(out, 574, image, 546, 164);      // TransTable
    Copy(out, 738, image, 710, 358);      // OtherData
    Copy(out, 1096, image, 1068, 758);    // ThermalData
    Copy(out, 1854, image, 1826, 10216);  // MeasuredData
    Copy(out, kStatesAt, image, 12042, 20);
    Copy(out, kDateAt, image, 12062, 8);
    return FromBytes(out);
}

}  // namespace ostrel
