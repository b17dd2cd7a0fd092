#include "core/material/material_record_codec.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <functional>
#include <random>

namespace ostrel {
namespace {

// Every field written alone must land at its offset and nowhere else.
struct FieldCase {
    const char* name;
    size_t offset;
    std::function<void(MaterialRecord&)> set;
    std::vector<unsigned char> bytes;
};

// The bytes of a value as a little-endian machine stores them.
template <typename T>
std::vector<unsigned char> Le(T v) {
    std::vector<unsigned char> b(sizeof v);
    std::memcpy(b.data(), &v, sizeof v);
    return b;
}
std::vector<unsigned char> Txt(const char* s) {
    return {s, s + std::strlen(s)};
}

// A case that sets one field of r; its name (letters, digits, _) also names the test.
#define FIELD(name, at, set, ...)                               \
    FieldCase {                                                 \
        name, at, [](MaterialRecord& r) { r.set; }, __VA_ARGS__ \
    }

const FieldCase kFields[] = {
    FIELD("IndexDataType", 0, General.IndexDataType = 1, Le<int16_t>(1)),
    FIELD("IndexReserved", 2, General.IndexReserved = 6, Le<int16_t>(6)),
    FIELD("IndexPoints", 4, General.IndexPoints = 150, Le<int16_t>(150)),
    FIELD("GlassName", 6, General.GlassName.Set("N-BK7"), Txt("N-BK7                         ")),
    FIELD("GlassKind", 36, General.GlassKind = 8, Le<int16_t>(8)),
    FIELD("Source", 38, General.Source.Set("MAKER"), Txt("MAKER     ")),
    FIELD("GlassCode", 68, General.GlassCode = 517642, Le<int32_t>(517642)),
    FIELD("Density", 72, General.Density = 2.51f, Le<float>(2.51f)),
    FIELD("Polytype", 76, General.Polytype = 2, Le<int16_t>(2)),
    FIELD("PolyCoef0", 78, General.PolyCoef[0] = 1.03961212, Le<double>(1.03961212)),
    FIELD("PolyCoef13", 182, General.PolyCoef[13] = -2.5, Le<double>(-2.5)),
    FIELD("IndexWvMin", 190, General.IndexWvMin = 365, Le<int16_t>(365)),
    FIELD("IndexWvMax", 192, General.IndexWvMax = 2325, Le<int16_t>(2325)),
    FIELD("TransShortWave0", 194, General.TransShortWave[0] = 300, Le<float>(300)),
    FIELD("TransShortValue40", 518, General.TransShortValue[40] = 99.0f, Le<float>(99.0f)),
    FIELD("nd", 522, Derived.nd = 1.5168f, Le<float>(1.5168f)),
    FIELD("vd", 526, Derived.vd = 64.17f, Le<float>(64.17f)),
    FIELD("PgF", 554, Derived.PgF = 0.5349f, Le<float>(0.5349f)),
    FIELD("DerivedSpare3", 570, Derived.DerivedSpare[3] = 7, Le<float>(7)),
    FIELD("TransTable0", 574, TransTable[0] = 0.5f, Le<float>(0.5f)),
    FIELD("TransTable40", 734, TransTable[40] = 0.25f, Le<float>(0.25f)),
    FIELD("A3070", 738, Other.A3070.Set("7.1"), Txt("7.1   ")),
    FIELD("Knoop", 888, Other.Knoop.Set("610"), Txt("610 ")),
    FIELD("CR", 903, Other.CR.Set("1"), Txt("1    ")),
    FIELD("FR", 908, Other.FR.Set("0"), Txt("0    ")),
    FIELD("SR", 913, Other.SR.Set("1.0"), Txt("1.0      ")),
    FIELD("AR", 922, Other.AR.Set("2.3"), Txt("2.3   ")),
    FIELD("PR", 928, Other.PR.Set("2.3"), Txt("2.3 ")),
    FIELD("REMark", 943, Other.REMark.Set("remark"), Txt("remark ")),
    FIELD("CC", 1063, Other.CC.Set("A"), Txt("A     ")),
    FIELD("OtherSpare", 1069, Other.OtherSpare = (std::array<unsigned char, 4>{1, 2, 3, 4}),
          {1, 2, 3, 4}),
    FIELD("Bubble", 1073, Other.Bubble.Set("B"), Txt("B   ")),
    FIELD("Status", 1077, Other.Status.Set("R"), Txt("R   ")),
    FIELD("Price", 1081, Other.Price.Set("1.0"), Txt("1.0 ")),
    FIELD("TT1", 1096, Thermal.TT[0].Set("t1"), Txt("t1 ")),
    FIELD("TT6", 1696, Thermal.TT[5].Set("t6"), Txt("t6 ")),
    FIELD("ThermalAux", 1816, Thermal.ThermalAux = 0.5f, Le<float>(0.5f)),
    FIELD("dndttype", 1820, Thermal.dndttype = 2, Le<int16_t>(2)),
    FIELD("dndt_lin", 1822, Thermal.dndt_lin = 3.0f, Le<float>(3.0f)),
    FIELD("dndt_D0", 1826, Thermal.dndt_D0 = 1.86e-6f, Le<float>(1.86e-6f)),
    FIELD("dndt_E1", 1842, Thermal.dndt_E1 = 6.0e-7f, Le<float>(6.0e-7f)),
    FIELD("dndt_LamdaTK", 1846, Thermal.dndt_LamdaTK = 0.17f, Le<float>(0.17f)),
    FIELD("dndt_RefTemp", 1850, Thermal.dndt_RefTemp = 20.0f, Le<float>(20.0f)),
    FIELD("IndexWave0", 1854, Measured.IndexWave[0] = 2325.42, Le<double>(2325.42)),
    FIELD("IndexWaveUm1", 3062, Measured.IndexWaveUm[1] = 1.97, Le<double>(1.97)),
    FIELD("IndexWeight149", 4850, Measured.IndexWeight[149] = 0.5f, Le<float>(0.5f)),
    FIELD("IndexValue0", 4854, Measured.IndexValue[0] = 1.4892, Le<double>(1.4892)),
    FIELD("IndexSquared0", 6054, Measured.IndexSquared[0] = 2.2, Le<double>(2.2)),
    FIELD("IndexCalc0", 7254, Measured.IndexCalc[0] = 1.5, Le<double>(1.5)),
    FIELD("IndexError149", 9646, Measured.IndexError[149] = 1e-6, Le<double>(1e-6)),
    FIELD("FitError", 9654, Measured.FitError = 2e-10, Le<double>(2e-10)),
    FIELD("TransType", 9662, Measured.TransType = 3, Le<int16_t>(3)),
    FIELD("TransPoints", 9664, Measured.TransPoints = 12, Le<int16_t>(12)),
    FIELD("TransWidth", 9666, Measured.TransWidth = 10.0f, Le<float>(10.0f)),
    FIELD("TransWave0", 9670, Measured.TransWave[0] = 2500, Le<float>(2500)),
    FIELD("TransAbsorb0", 10270, Measured.TransAbsorb[0] = 0.01f, Le<float>(0.01f)),
    FIELD("TransTotal0", 10870, Measured.TransTotal[0] = 91.5f, Le<float>(91.5f)),
    FIELD("TransInternal149", 12066, Measured.TransInternal[149] = 99.9f, Le<float>(99.9f)),
    FIELD("MeltFlag", 12070, Melt.MeltFlag = kTrue, Le<int16_t>(-1)),
    FIELD("MeltSpareText", 12072, Melt.MeltSpareText.Set("s"), Txt("s ")),
    FIELD("MeltParentName", 12102, Melt.MeltParentName.Set("P"), Txt("P ")),
    FIELD("MeltParentSource", 12132, Melt.MeltParentSource.Set("Q"), Txt("Q ")),
    FIELD("MeltCode", 12162, Melt.MeltCode.Set("M1"), Txt("M1        ")),
    FIELD("MeltIndexPoints", 12172, Melt.MeltIndexPoints = 20, Le<int16_t>(20)),
    FIELD("MeltIndexWave0", 12174, Melt.MeltIndexWave[0] = 587.56f, Le<float>(587.56f)),
    FIELD("MeltIndexValue0", 12254, Melt.MeltIndexValue[0] = 1.52, Le<double>(1.52)),
    FIELD("MeltTransPoints", 12414, Melt.MeltTransPoints = 9, Le<int16_t>(9)),
    FIELD("MeltTransPair0_0", 12416, Melt.MeltTransPair[0][0] = 1, Le<double>(1)),
    FIELD("MeltTransPair1_0", 12576, Melt.MeltTransPair[1][0] = 2, Le<double>(2)),
    FIELD("MeltTransThird19", 12888, Melt.MeltTransThird[19] = 3, Le<double>(3)),
    FIELD("StatusECO", 12896, Status.StatusECO = kTrue, Le<int16_t>(-1)),
    FIELD("StatusMold", 12898, Status.StatusMold = kTrue, Le<int16_t>(-1)),
    FIELD("StatusILine", 12900, Status.StatusILine = kTrue, Le<int16_t>(-1)),
    FIELD("StatusSpare1", 12902, Status.StatusSpare1.fill(9), {9, 9, 9, 9}),
    FIELD("StatusMelt", 12906, Status.StatusMelt = kTrue, Le<int16_t>(-1)),
    FIELD("Abrasion", 12908, Status.Abrasion = 120, Le<int16_t>(120)),
    FIELD("StatusSpare2_17", 12927, Status.StatusSpare2[17] = 5, {5}),
    FIELD("DataDate", 12928, Status.DataDate = 45000.5, Le<double>(45000.5)),
    FIELD("GeneralState", 12936, GeneralState = (SectionState{3, kTrue}), {3, 0, 0xFF, 0xFF}),
    FIELD("IndexState", 12940, IndexState = (SectionState{1, kTrue}), {1, 0, 0xFF, 0xFF}),
    FIELD("TransState", 12944, TransState = (SectionState{2, 0}), {2, 0, 0, 0}),
    FIELD("ThermalState", 12948, ThermalState = (SectionState{0, kTrue}), {0, 0, 0xFF, 0xFF}),
    FIELD("OtherState", 12952, OtherState = (SectionState{7, kTrue}), {7, 0, 0xFF, 0xFF}),
    FIELD("DateChanged", 12956, DateChanged = 46349.25, Le<double>(46349.25)),
};
#undef FIELD

TEST(MaterialRecordCodec, EveryFieldLandsAtItsOffset) {
    const MaterialImage before = ToBytes(ClearedMaterialRecord());
    for (const FieldCase& c : kFields) {
        MaterialRecord rec = ClearedMaterialRecord();
        c.set(rec);
        const MaterialImage after = ToBytes(rec);
        for (size_t i = 0; i < kMaterialRecordSize; ++i) {
            const bool inField = i >= c.offset && i < c.offset + c.bytes.size();
            ASSERT_EQ(after[i], inField ? c.bytes[i - c.offset] : before[i])
                << c.name << " byte " << i;
        }
    }
}

TEST(MaterialRecordCodec, AnyImageSurvivesLoadAndSave) {
    // Random bytes stand for any record a file may hold, NUL-holding texts, NaNs and
    // spare bytes included: reading and writing gives the same bytes back.
    std::mt19937 rng(12964);
    for (int round = 0; round < 20; ++round) {
        MaterialImage image;
        for (auto& b : image) b = static_cast<unsigned char>(rng());
        if (round == 0) image.fill(0);
        EXPECT_EQ(ToBytes(FromBytes(image)), image) << "round " << round;
    }
}

TEST(MaterialRecordCodec, ClearedRecordIsBlankTextsAndOnlyDndtReady) {
    const MaterialImage img = ToBytes(ClearedMaterialRecord());
    // Name, source, other data up to the spare bytes, bubble to price, TT1..TT6, melt texts.
    const std::pair<size_t, size_t> texts[] = {{6, 30},    {38, 30},    {738, 331},
                                               {1073, 23}, {1096, 720}, {12072, 100}};
    for (const auto& [off, len] : texts)
        EXPECT_EQ(std::count(img.begin() + off, img.begin() + off + len, ' '), len) << off;
    // Spare bytes are no text; ThermalState.Ready is set, GeneralState.Ready is not.
    EXPECT_EQ(std::tuple(img[1069], img[12950], img[12951], img[12938]),
              std::tuple(0, 0xFF, 0xFF, 0));
}

// A fixed text cuts at its width, pads with blanks, keeps NULs and stores Windows-1252.
TEST(FixedText, CutsAtWidthPadsWithBlanksKeepsNulAndStoresWindows1252) {
    FixedText<5> t("ABCDEFG");
    EXPECT_EQ(t.Raw(), "ABCDE");
    t.Set("ab");
    EXPECT_EQ(std::tuple(t.Raw(), t.Text()), std::tuple("ab   ", "ab"));
    t.Zero();
    EXPECT_TRUE(t.HasNul());
    EXPECT_FALSE(t.IsBlank());  // NULs are not blanks
    EXPECT_EQ(t.Text(), std::string(5, '\0'));
    FixedText<10> w("Glas \xC3\xA9\xE2\x82\xAC");  // "Glas é€" in UTF-8
    EXPECT_EQ(std::tuple(w.Raw(), w.Text()),
              std::tuple(std::string("Glas \xE9\x80   "), "Glas \xC3\xA9\xE2\x82\xAC"));
    w.Set("\xE2\x88\x9A");  // square root sign has no code-page byte
    EXPECT_EQ(w.Raw()[0], '?');
}

}  // namespace
}  // namespace ostrel
