#pragma once
// One optical material: everything the program knows about it. The members stand in file
// order; the file image (12964 bytes, little endian) is produced and read by the codec in
// material_record_codec.h, never by copying memory.
#include <array>
#include <cstdint>
#include <vector>

#include "core/platform/fixed_text.h"

namespace ostrel {

using Flag = int16_t;  // 0 false, -1 true
constexpr Flag kTrue = -1;
constexpr Flag kFalse = 0;

constexpr int kMaxIndexPoints = 150;
constexpr int kMaxTransPoints = 150;
constexpr int kMaxMeltPoints = 20;
constexpr int kTransTableSize = 41;
constexpr int kPolyCoefCount = 14;
constexpr float kNoTransData = 99.0f;

struct GeneralData {
    int16_t IndexDataType = 0;  // 0 index points, 1 coefficients typed in
    int16_t IndexReserved = 0;
    int16_t IndexPoints = 0;
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
};

struct DerivedData {
    float nd = 0, vd = 0, nF_NC = 0, Ne = 0, Ve = 0, nfd_ncd = 0, PCs = 0, PdC = 0, PgF = 0;
    std::array<float, 4> DerivedSpare{};
};

struct OtherData {
    FixedText<15> A3070, A20300, Tg, T1013, T1076, Cp, lambda, EMod, Poisson, Torsion, Knoop;
    FixedText<5> CR, FR;
    FixedText<9> SR;
    FixedText<6> AR;
    FixedText<15> PR;
    FixedText<120> REMark;
    FixedText<6> CC;
    std::array<unsigned char, 4> OtherSpare{};
    FixedText<4> Bubble;
    FixedText<4> Status;
    FixedText<15> Price;
};

struct ThermalData {
    std::array<FixedText<120>, 6> TT;  // TT1 .. TT6
    float ThermalAux = 0;
    int16_t dndttype = 0;  // 0 no data, 1 simple dn/dt, 2 Schott Sellmeier equation
    float dndt_lin = 0;
    float dndt_D0 = 0, dndt_D1 = 0, dndt_D2 = 0, dndt_E0 = 0, dndt_E1 = 0;
    float dndt_LamdaTK = 0;
    float dndt_RefTemp = 0;
};

struct MeasuredData {
    std::array<double, kMaxIndexPoints> IndexWave{};    // nm
    std::array<double, kMaxIndexPoints> IndexWaveUm{};  // µm
    std::array<float, kMaxIndexPoints> IndexWeight{};
    std::array<double, kMaxIndexPoints> IndexValue{};
    std::array<double, kMaxIndexPoints> IndexSquared{};
    std::array<double, kMaxIndexPoints> IndexCalc{};
    std::array<double, kMaxIndexPoints> IndexError{};
    double FitError = 0;
    int16_t TransType = 0;  // 0 total, 1 internal, 2 absorption, 3 no data
    int16_t TransPoints = 0;
    float TransWidth = 0;  // mm
    std::array<float, kMaxTransPoints> TransWave{};
    std::array<float, kMaxTransPoints> TransAbsorb{};
    std::array<float, kMaxTransPoints> TransTotal{};
    std::array<float, kMaxTransPoints> TransInternal{};
};

struct MeltData {
    Flag MeltFlag = 0;
    FixedText<30> MeltSpareText;
    FixedText<30> MeltParentName;
    FixedText<30> MeltParentSource;
    FixedText<10> MeltCode;
    int16_t MeltIndexPoints = 0;
    std::array<float, kMaxMeltPoints> MeltIndexWave{};
    std::array<double, kMaxMeltPoints> MeltIndexValue{};
    int16_t MeltTransPoints = 0;
    std::array<std::array<double, kMaxMeltPoints>, 2> MeltTransPair{};
    std::array<double, kMaxMeltPoints> MeltTransThird{};
};

struct StatusData {
    Flag StatusECO = 0;
    Flag StatusMold = 0;
    Flag StatusILine = 0;
    std::array<unsigned char, 4> StatusSpare1{};
    Flag StatusMelt = 0;
    int16_t Abrasion = 0;
    std::array<unsigned char, 18> StatusSpare2{};
    double DataDate = 0;
};

struct SectionState {
    int16_t Changes = 0;
    Flag Ready = 0;
    bool operator==(const SectionState&) const = default;
};

struct MaterialRecord {
    GeneralData General;
    DerivedData Derived;
    std::array<float, kTransTableSize> TransTable{};
    OtherData Other;
    ThermalData Thermal;
    MeasuredData Measured;
    MeltData Melt;
    StatusData Status;
    SectionState GeneralState;
    SectionState IndexState;
    SectionState TransState;
    SectionState ThermalState;
    SectionState OtherState;
    double DateChanged = 0;
};

// What a list of materials shows of each: its name and source, dispersion form, index
// range, melt flag, date and which sections are ready. It can be read from a record's
// image without the rest of the record.
struct MaterialSummary {
    FixedText<30> GlassName;
    FixedText<30> Source;
    int16_t Polytype = 0;
    int16_t IndexWvMin = 0;
    int16_t IndexWvMax = 0;
    Flag MeltFlag = 0;
    double DateChanged = 0;
    // Ready of the General, Index, Trans, Thermal and Other sections.
    std::array<Flag, 5> Ready{};
    bool operator==(const MaterialSummary&) const = default;
};

MaterialSummary SummaryOf(const MaterialRecord& rec);

// Empty record: numbers and flags 0, every fixed text blank, and only the dn/dt section
// ready (a material without dn/dt data is complete as far as that section goes).
void ClearMaterialRecord(MaterialRecord& rec);
MaterialRecord ClearedMaterialRecord();
// Appends an empty record (as ClearMaterialRecord leaves it) to the list.
MaterialRecord& AppendClearedRecord(std::vector<MaterialRecord>& records);

// A record with every byte of its file image zero (texts hold NUL characters). Older files
// are converted onto such a record.
MaterialRecord ZeroMaterialRecord();

// True when all five sections are ready.
bool AllSectionsReady(const MaterialRecord& rec);
// Sets the ready flag of all five sections.
void SetAllSectionsReady(MaterialRecord& rec, Flag ready);

}  // namespace ostrel
