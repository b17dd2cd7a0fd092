#include "core/optics/glass_code.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdio>
#include <random>
#include <tuple>

#include "core/optics/crown.h"
#include "core/optics/derived_data.h"

namespace ostrel {
namespace {

TEST(GlassCode, FromTexts) {
    const std::tuple<const char*, const char*, int32_t> cases[] = {
        {"1.5168", "64.17", 517642}, {"0", "64.17", 0}, {"", "64.17", 0}, {"abc", "50", 0},
        {"1.5168", "5.3", 517053},     // b padded to "053"
        {"1.6", "0", 600000},          // nF = nC: vd 0
        {"1.5168", "64.25", 517642},   // 642.5 to even
        {"1.5168", "64.75", 517648},   // 647.5 to even
        {"1.4", "1234.5", 40012345}};  // no limit on digits
    for (auto [nd, vd, code] : cases) EXPECT_EQ(MakeGlassCode(nd, vd), code) << nd << " " << vd;
}

// The code from values must be the code from nd written with 15 digits and vd with 7, also
// where a part lies at or next to a half and the written text rounds the other way.
TEST(GlassCode, FromValuesAsFromTexts) {
    auto fromTexts = [](double nd, float vd) {
        char ndText[40], vdText[40];
        std::snprintf(ndText, sizeof ndText, "%.15g", nd);
        std::snprintf(vdText, sizeof vdText, "%.7g", static_cast<double>(vd));
        return MakeGlassCode(ndText, vdText);
    };
    std::vector<std::pair<double, float>> cases = {
        {1.5165, 64.25f},  {1.5175, 64.35f},     {1.51649999999999996, 64.15f},
        {1.5, 0.05f},      {0.9, 64.2f},         {1.2, -3.4f},
        {0.0, 64.0f},      {-1.0, 10.0f},        {40.0, 64.0f},
        {1.7, 3276.75f},   {1.7, 99.95f},        {std::nan(""), 50.0f},
        {INFINITY, 50.0f}, {1.6, std::nanf("")}, {1e-320, 1.0f}};
    std::mt19937_64 random(7);
    std::uniform_real_distribution<double> nds(1.3, 2.1), vds(15.0, 95.0);
    for (int i = 0; i < 20000; ++i) {
        // Every fourth value is pushed to a half of the code's last digit, give or take a
        // few units of the last place.
        double nd = nds(random);
        float vd = static_cast<float>(vds(random));
        if (i % 4 == 0) {
            nd = 1.0 + (std::floor((nd - 1.0) * 1000.0) + 0.5) / 1000.0;
            nd = std::nextafter(nd, i % 8 == 0 ? 0.0 : 2.0);
            vd = static_cast<float>((std::floor(vd * 10.0) + 0.5) / 10.0);
        }
        cases.emplace_back(nd, vd);
    }
    for (const auto& [nd, vd] : cases) {
        ASSERT_EQ(GlassCodeOf(nd, vd), fromTexts(nd, vd)) << nd << " " << vd;
    }
}

// Reference values: the catalogue data of the same glass (nd 1.51680, Ne 1.51872,
// vd 64.17, Ve 63.96, nF-nC 0.008054, nF'-nC' 0.008110, PgF 0.5349), with the last digits
// worked out separately from the Sellmeier formula.
TEST(DerivedData, SellmeierCrown) {
    MaterialRecord rec = ClearedMaterialRecord();
    rec.General.Polytype = 2;
    rec.General.PolyCoef = testing::kNbk7Coef;
    UpdateDerivedData(rec);
    const std::pair<float DerivedData::*, float> exact[] = {
        {&DerivedData::nd, 1.51680f},     {&DerivedData::vd, 64.17f},
        {&DerivedData::nF_NC, 0.008054f}, {&DerivedData::Ne, 1.51872f},
        {&DerivedData::Ve, 63.96f},       {&DerivedData::nfd_ncd, 0.008110f},
        {&DerivedData::PCs, 0.56115f},    {&DerivedData::PdC, 0.30764f},
        {&DerivedData::PgF, 0.53494f}};
    for (auto [field, value] : exact) EXPECT_FLOAT_EQ(rec.Derived.*field, value) << value;
    // nC, nF, nC', nF'
    const float spare[] = {1.5143223f, 1.5223763f, 1.5147193f, 1.5228293f};
    for (int i = 0; i < 4; ++i) EXPECT_NEAR(rec.Derived.DerivedSpare[i], spare[i], 1e-6f) << i;
}

// n^2 = A0 of the Schott form: an index without dispersion.
TEST(DerivedData, ZeroDispersionKeepsRatios) {
    MaterialRecord rec = ClearedMaterialRecord();
    rec.General.Polytype = 1;
    rec.General.PolyCoef[0] = 2.25;
    const std::pair<float DerivedData::*, float> kept[] = {{&DerivedData::vd, 11.0f},
                                                           {&DerivedData::Ve, 12.0f},
                                                           {&DerivedData::PCs, 0.1f},
                                                           {&DerivedData::PdC, 0.2f},
                                                           {&DerivedData::PgF, 0.3f}};
    for (auto [field, value] : kept) rec.Derived.*field = value;
    UpdateDerivedData(rec);
    EXPECT_EQ(std::tuple(rec.Derived.nd, rec.Derived.Ne, rec.Derived.nF_NC, rec.Derived.nfd_ncd),
              std::tuple(1.5f, 1.5f, 0.0f, 0.0f));
    for (auto [field, value] : kept) EXPECT_EQ(rec.Derived.*field, value);
}

}  // namespace
}  // namespace ostrel
