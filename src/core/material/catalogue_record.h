#pragma once
// Records of the lens design program's own files: the catalogue file (495 bytes a record)
// and the custom/generic glass file (554 bytes a record). Fields not used here are kept as
// raw bytes so that a record read and written again is unchanged.
#include <array>
#include <cstdint>

#include "core/material/material_record.h"
#include "core/platform/fixed_text.h"

namespace ostrel {

constexpr size_t kCatalogueRecordSize = 495;
constexpr size_t kExternalRecordSize = 554;

struct CatalogueRecord {
    FixedText<30> GlassName;
    int16_t Field30 = 0;
    FixedText<30> Source;
    std::array<unsigned char, 10> Block62{};
    std::array<unsigned char, 290> Block72{};
    std::array<unsigned char, 48> Block362{};
    std::array<unsigned char, 56> Block410{};
    std::array<FixedText<4>, 5> Texts466;
    std::array<unsigned char, 4> Block486{};
    FixedText<5> Text490;
};

struct ExternalRecord {
    FixedText<30> GlassName;
    int16_t GlassKind = 0;
    FixedText<30> Source;
    int32_t GlassCode = 0;
    float Density = 0;
    int16_t Polytype = 0;
    std::array<double, kPolyCoefCount> PolyCoef{};
    int16_t IndexWvMin = 0;
    int16_t IndexWvMax = 0;
    std::array<float, kTransTableSize> TransShortWave{};
    std::array<float, kTransTableSize> TransShortValue{};
    std::array<unsigned char, 38> Reserved{};
};

// Zero the record and blank its two text fields.
void ClearCatalogueRecord(CatalogueRecord& rec);
void ClearGenericRecord(ExternalRecord& rec);

void ToBytes(const CatalogueRecord& rec, unsigned char* image);
void FromBytes(const unsigned char* image, CatalogueRecord& rec);
void ToBytes(const ExternalRecord& rec, unsigned char* image);
void FromBytes(const unsigned char* image, ExternalRecord& rec);

// The general data that travels to the lens design program, both ways. Nothing else of
// the target is touched.
void ToExternalRecord(const GeneralData& general, ExternalRecord& external);
void FromExternalRecord(const ExternalRecord& external, GeneralData& general);

}  // namespace ostrel
