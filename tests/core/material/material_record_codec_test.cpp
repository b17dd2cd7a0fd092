#include "core/material/material_record_codec.h"

#include <gtest/gtest.h>

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

std::vector<unsigned char> Le16(int16_t v) {
    return {static_cast<unsigned char>(v & 0xFF), static_cast<unsigned char>((v >> 8) & 0xFF)};
}
std::vector<unsigned char> Le32(int32_t v) {
    std::vector<unsigned char> b(4);
    std::memcpy(b.data(), &v, 4);
    return b;
}
std::vector<unsigned char> F32(float v) {
    std::vector<unsigned char> b(4);
    std::memcpy(b.data(), &v, 4);
    return b;
}
std::vector<unsigned char> F64(double v) {
    std::vector<unsigned char> b(8);
    std::memcpy(b.data(), &v, 8);
    return b;
}
std::vector<unsigned char> Txt(const char* s) {
    return {s, s + std::strlen(s)};
}

class FieldOffsetTest : public ::testing::TestWithParam<FieldCase> {};

TEST_P(FieldOffsetTest, FieldLandsAtItsOffset) {
    const FieldCase& c = GetParam();
    MaterialRecord base = ClearedMaterialRecord();
    MaterialImage before = ToBytes(base);
    MaterialRecord rec = base;
    c.set(rec);
    MaterialImage after = ToBytes(rec);
    for (size_t i = 0; i < c.bytes.size(); ++i) {
        EXPECT_EQ(after[c.offset + i], c.bytes[i]) << c.name << " byte " << i;
    }
    for (size_t i = 0; i < kMaterialRecordSize; ++i) {
        if (i >= c.offset && i < c.offset + c.bytes.size()) continue;
        ASSERT_EQ(after[i], before[i]) << c.name << " touched byte " << i;
    }
    // and it reads back into the same field
    MaterialRecord back = FromBytes(after);
    EXPECT_EQ(ToBytes(back), after);
}

const FieldCase kFields[] = {
    {"IndexDataType", 0, [](MaterialRecord& r) { r.General.IndexDataType = 1; }, Le16(1)},
    {"IndexReserved", 2, [](MaterialRecord& r) { r.General.IndexReserved = 6; }, Le16(6)},
    {"IndexPoints", 4, [](MaterialRecord& r) { r.General.IndexPoints = 150; }, Le16(150)},
    {"GlassName", 6, [](MaterialRecord& r) { r.General.GlassName.Set("N-BK7"); },
     Txt("N-BK7                         ")},
    {"GlassKind", 36, [](MaterialRecord& r) { r.General.GlassKind = 8; }, Le16(8)},
    {"Source", 38, [](MaterialRecord& r) { r.General.Source.Set("MAKER"); }, Txt("MAKER     ")},
    {"GlassCode", 68, [](MaterialRecord& r) { r.General.GlassCode = 517642; }, Le32(517642)},
    {"Density", 72, [](MaterialRecord& r) { r.General.Density = 2.51f; }, F32(2.51f)},
    {"Polytype", 76, [](MaterialRecord& r) { r.General.Polytype = 2; }, Le16(2)},
    {"PolyCoef[0]", 78, [](MaterialRecord& r) { r.General.PolyCoef[0] = 1.03961212; },
     F64(1.03961212)},
    {"PolyCoef[13]", 182, [](MaterialRecord& r) { r.General.PolyCoef[13] = -2.5; }, F64(-2.5)},
    {"IndexWvMin", 190, [](MaterialRecord& r) { r.General.IndexWvMin = 365; }, Le16(365)},
    {"IndexWvMax", 192, [](MaterialRecord& r) { r.General.IndexWvMax = 2325; }, Le16(2325)},
    {"TransShortWave[0]", 194, [](MaterialRecord& r) { r.General.TransShortWave[0] = 300; },
     F32(300)},
    {"TransShortValue[40]", 518, [](MaterialRecord& r) { r.General.TransShortValue[40] = 99.0f; },
     F32(99.0f)},
    {"nd", 522, [](MaterialRecord& r) { r.Derived.nd = 1.5168f; }, F32(1.5168f)},
    {"vd", 526, [](MaterialRecord& r) { r.Derived.vd = 64.17f; }, F32(64.17f)},
    {"PgF", 554, [](MaterialRecord& r) { r.Derived.PgF = 0.5349f; }, F32(0.5349f)},
    {"DerivedSpare[3]", 570, [](MaterialRecord& r) { r.Derived.DerivedSpare[3] = 7; }, F32(7)},
    {"TransTable[0]", 574, [](MaterialRecord& r) { r.TransTable[0] = 0.5f; }, F32(0.5f)},
    {"TransTable[40]", 734, [](MaterialRecord& r) { r.TransTable[40] = 0.25f; }, F32(0.25f)},
    {"A3070", 738, [](MaterialRecord& r) { r.Other.A3070.Set("7.1"); }, Txt("7.1   ")},
    {"Knoop", 888, [](MaterialRecord& r) { r.Other.Knoop.Set("610"); }, Txt("610 ")},
    {"CR", 903, [](MaterialRecord& r) { r.Other.CR.Set("1"); }, Txt("1    ")},
    {"FR", 908, [](MaterialRecord& r) { r.Other.FR.Set("0"); }, Txt("0    ")},
    {"SR", 913, [](MaterialRecord& r) { r.Other.SR.Set("1.0"); }, Txt("1.0      ")},
    {"AR", 922, [](MaterialRecord& r) { r.Other.AR.Set("2.3"); }, Txt("2.3   ")},
    {"PR", 928, [](MaterialRecord& r) { r.Other.PR.Set("2.3"); }, Txt("2.3 ")},
    {"REMark", 943, [](MaterialRecord& r) { r.Other.REMark.Set("remark"); }, Txt("remark ")},
    {"CC", 1063, [](MaterialRecord& r) { r.Other.CC.Set("A"); }, Txt("A     ")},
    {"OtherSpare",
     1069,
     [](MaterialRecord& r) {
         r.Other.OtherSpare = {1, 2, 3, 4};
     },
     {1, 2, 3, 4}},
    {"Bubble", 1073, [](MaterialRecord& r) { r.Other.Bubble.Set("B"); }, Txt("B   ")},
    {"Status", 1077, [](MaterialRecord& r) { r.Other.Status.Set("R"); }, Txt("R   ")},
    {"Price", 1081, [](MaterialRecord& r) { r.Other.Price.Set("1.0"); }, Txt("1.0 ")},
    {"TT1", 1096, [](MaterialRecord& r) { r.Thermal.TT[0].Set("t1"); }, Txt("t1 ")},
    {"TT6", 1696, [](MaterialRecord& r) { r.Thermal.TT[5].Set("t6"); }, Txt("t6 ")},
    {"ThermalAux", 1816, [](MaterialRecord& r) { r.Thermal.ThermalAux = 0.5f; }, F32(0.5f)},
    {"dndttype", 1820, [](MaterialRecord& r) { r.Thermal.dndttype = 2; }, Le16(2)},
    {"dndt_lin", 1822, [](MaterialRecord& r) { r.Thermal.dndt_lin = 3.0f; }, F32(3.0f)},
    {"dndt_D0", 1826, [](MaterialRecord& r) { r.Thermal.dndt_D0 = 1.86e-6f; }, F32(1.86e-6f)},
    {"dndt_E1", 1842, [](MaterialRecord& r) { r.Thermal.dndt_E1 = 6.0e-7f; }, F32(6.0e-7f)},
    {"dndt_LamdaTK", 1846, [](MaterialRecord& r) { r.Thermal.dndt_LamdaTK = 0.17f; }, F32(0.17f)},
    {"dndt_RefTemp", 1850, [](MaterialRecord& r) { r.Thermal.dndt_RefTemp = 20.0f; }, F32(20.0f)},
    {"IndexWave[0]", 1854, [](MaterialRecord& r) { r.Measured.IndexWave[0] = 2325.42; },
     F64(2325.42)},
    {"IndexWaveUm[1]", 3062, [](MaterialRecord& r) { r.Measured.IndexWaveUm[1] = 1.97; },
     F64(1.97)},
    {"IndexWeight[149]", 4850, [](MaterialRecord& r) { r.Measured.IndexWeight[149] = 0.5f; },
     F32(0.5f)},
    {"IndexValue[0]", 4854, [](MaterialRecord& r) { r.Measured.IndexValue[0] = 1.4892; },
     F64(1.4892)},
    {"IndexSquared[0]", 6054, [](MaterialRecord& r) { r.Measured.IndexSquared[0] = 2.2; },
     F64(2.2)},
    {"IndexCalc[0]", 7254, [](MaterialRecord& r) { r.Measured.IndexCalc[0] = 1.5; }, F64(1.5)},
    {"IndexError[149]", 9646, [](MaterialRecord& r) { r.Measured.IndexError[149] = 1e-6; },
     F64(1e-6)},
    {"FitError", 9654, [](MaterialRecord& r) { r.Measured.FitError = 2e-10; }, F64(2e-10)},
    {"TransType", 9662, [](MaterialRecord& r) { r.Measured.TransType = 3; }, Le16(3)},
    {"TransPoints", 9664, [](MaterialRecord& r) { r.Measured.TransPoints = 12; }, Le16(12)},
    {"TransWidth", 9666, [](MaterialRecord& r) { r.Measured.TransWidth = 10.0f; }, F32(10.0f)},
    {"TransWave[0]", 9670, [](MaterialRecord& r) { r.Measured.TransWave[0] = 2500; }, F32(2500)},
    {"TransAbsorb[0]", 10270, [](MaterialRecord& r) { r.Measured.TransAbsorb[0] = 0.01f; },
     F32(0.01f)},
    {"TransTotal[0]", 10870, [](MaterialRecord& r) { r.Measured.TransTotal[0] = 91.5f; },
     F32(91.5f)},
    {"TransInternal[149]", 12066, [](MaterialRecord& r) { r.Measured.TransInternal[149] = 99.9f; },
     F32(99.9f)},
    {"MeltFlag", 12070, [](MaterialRecord& r) { r.Melt.MeltFlag = kTrue; }, Le16(-1)},
    {"MeltSpareText", 12072, [](MaterialRecord& r) { r.Melt.MeltSpareText.Set("s"); }, Txt("s ")},
    {"MeltParentName", 12102, [](MaterialRecord& r) { r.Melt.MeltParentName.Set("P"); }, Txt("P ")},
    {"MeltParentSource", 12132, [](MaterialRecord& r) { r.Melt.MeltParentSource.Set("Q"); },
     Txt("Q ")},
    {"MeltCode", 12162, [](MaterialRecord& r) { r.Melt.MeltCode.Set("M1"); }, Txt("M1        ")},
    {"MeltIndexPoints", 12172, [](MaterialRecord& r) { r.Melt.MeltIndexPoints = 20; }, Le16(20)},
    {"MeltIndexWave[0]", 12174, [](MaterialRecord& r) { r.Melt.MeltIndexWave[0] = 587.56f; },
     F32(587.56f)},
    {"MeltIndexValue[0]", 12254, [](MaterialRecord& r) { r.Melt.MeltIndexValue[0] = 1.52; },
     F64(1.52)},
    {"MeltTransPoints", 12414, [](MaterialRecord& r) { r.Melt.MeltTransPoints = 9; }, Le16(9)},
    {"MeltTransPair[0][0]", 12416, [](MaterialRecord& r) { r.Melt.MeltTransPair[0][0] = 1; },
     F64(1)},
    {"MeltTransPair[1][0]", 12576, [](MaterialRecord& r) { r.Melt.MeltTransPair[1][0] = 2; },
     F64(2)},
    {"MeltTransThird[19]", 12888, [](MaterialRecord& r) { r.Melt.MeltTransThird[19] = 3; }, F64(3)},
    {"StatusECO", 12896, [](MaterialRecord& r) { r.Status.StatusECO = kTrue; }, Le16(-1)},
    {"StatusMold", 12898, [](MaterialRecord& r) { r.Status.StatusMold = kTrue; }, Le16(-1)},
    {"StatusILine", 12900, [](MaterialRecord& r) { r.Status.StatusILine = kTrue; }, Le16(-1)},
    {"StatusSpare1",
     12902,
     [](MaterialRecord& r) {
         r.Status.StatusSpare1 = {9, 9, 9, 9};
     },
     {9, 9, 9, 9}},
    {"StatusMelt", 12906, [](MaterialRecord& r) { r.Status.StatusMelt = kTrue; }, Le16(-1)},
    {"Abrasion", 12908, [](MaterialRecord& r) { r.Status.Abrasion = 120; }, Le16(120)},
    {"StatusSpare2[17]", 12927, [](MaterialRecord& r) { r.Status.StatusSpare2[17] = 5; }, {5}},
    {"DataDate", 12928, [](MaterialRecord& r) { r.Status.DataDate = 45000.5; }, F64(45000.5)},
    {"GeneralState",
     12936,
     [](MaterialRecord& r) {
         r.GeneralState = {3, kTrue};
     },
     {3, 0, 0xFF, 0xFF}},
    {"IndexState",
     12940,
     [](MaterialRecord& r) {
         r.IndexState = {1, kTrue};
     },
     {1, 0, 0xFF, 0xFF}},
    {"TransState",
     12944,
     [](MaterialRecord& r) {
         r.TransState = {2, 0};
     },
     {2, 0, 0, 0}},
    {"ThermalState",
     12948,
     [](MaterialRecord& r) {
         r.ThermalState = {0, kTrue};
     },
     {0, 0, 0xFF, 0xFF}},
    {"OtherState",
     12952,
     [](MaterialRecord& r) {
         r.OtherState = {7, kTrue};
     },
     {7, 0, 0xFF, 0xFF}},
    {"DateChanged", 12956, [](MaterialRecord& r) { r.DateChanged = 46349.25; }, F64(46349.25)},
};

INSTANTIATE_TEST_SUITE_P(AllFields, FieldOffsetTest, ::testing::ValuesIn(kFields),
                         [](const auto& info) {
                             std::string n = info.param.name;
                             for (char& ch : n) {
                                 if (!std::isalnum(static_cast<unsigned char>(ch))) ch = '_';
                             }
                             return n;
                         });

TEST(MaterialRecordCodec, AnyImageSurvivesLoadAndSave) {
    // Random bytes stand for any record a file may hold, NUL-holding texts, NaNs and
    // spare bytes included: reading and writing gives the same bytes back.
    std::mt19937 rng(12964);
    for (int round = 0; round < 20; ++round) {
        MaterialImage image;
        for (auto& b : image) b = static_cast<unsigned char>(rng());
        if (round == 0) image.fill(0);
        MaterialRecord rec = FromBytes(image);
        EXPECT_EQ(ToBytes(rec), image) << "round " << round;
    }
}

TEST(MaterialRecordCodec, ClearedRecordIsBlankTextsAndOnlyDndtReady) {
    MaterialImage img = ToBytes(ClearedMaterialRecord());
    auto blank = [&](size_t off, size_t len) {
        for (size_t i = 0; i < len; ++i) {
            if (img[off + i] != ' ') return false;
        }
        return true;
    };
    EXPECT_TRUE(blank(6, 30));
    EXPECT_TRUE(blank(38, 30));
    EXPECT_TRUE(blank(738, 331));    // OtherData up to the spare bytes
    EXPECT_TRUE(blank(1073, 23));    // Bubble, Status, Price
    EXPECT_TRUE(blank(1096, 720));   // TT1..TT6
    EXPECT_TRUE(blank(12072, 100));  // melt texts
    EXPECT_EQ(img[1069], 0);         // spare bytes are not text
    EXPECT_EQ(img[12950], 0xFF);     // ThermalState.Ready
    EXPECT_EQ(img[12951], 0xFF);
    EXPECT_EQ(img[12938], 0);  // GeneralState.Ready
    MaterialRecord back = FromBytes(img);
    EXPECT_EQ(ToBytes(back), img);
}

TEST(FixedText, CutsAtWidthPadsWithBlanksAndKeepsNul) {
    FixedText<5> t("ABCDEFG");
    EXPECT_EQ(t.Raw(), "ABCDE");
    t.Set("ab");
    EXPECT_EQ(t.Raw(), "ab   ");
    EXPECT_EQ(t.Text(), "ab");
    t.Zero();
    EXPECT_TRUE(t.HasNul());
    EXPECT_FALSE(t.IsBlank());  // NULs are not blanks
    EXPECT_EQ(t.Text(), std::string(5, '\0'));
}

TEST(FixedText, StoresWindows1252) {
    FixedText<10> t("Glas \xC3\xA9\xE2\x82\xAC");  // "Glas é€" in UTF-8
    EXPECT_EQ(t.Raw(), std::string("Glas \xE9\x80   "));
    EXPECT_EQ(t.Text(), "Glas \xC3\xA9\xE2\x82\xAC");
    t.Set("\xE2\x88\x9A");  // square root sign has no code-page byte
    EXPECT_EQ(t.Raw()[0], '?');
}

}  // namespace
}  // namespace ostrel
