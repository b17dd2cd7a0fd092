#include "core/optics/trans_calcs.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <tuple>
#include <utility>
#include <vector>

namespace ostrel {
namespace {

// Record-sized arrays (150 points, unused slots 0) filled with the given points.
struct Points {
    std::array<float, kMaxTransPoints> waves{};
    std::array<float, kMaxTransPoints> values{};
    Points(std::initializer_list<float> w, std::initializer_list<float> v) {
        std::copy(w.begin(), w.end(), waves.begin());
        std::copy(v.begin(), v.end(), values.begin());
    }
};

TEST(TransCalcs, ConversionsBetweenTheThreeStatements) {
    EXPECT_FLOAT_EQ(ReflectionFactor(1.5), 0.9230769f);             // 3 / 3.25
    EXPECT_FLOAT_EQ(InternalFromAbsorb(10.0f, 0.01f), 90.483742f);  // 100 e^-0.1
    // Width, internal transmission, coefficient.
    const std::tuple<float, float, float> absorbs[] = {
        {10.0f, 50.0f, 0.069314718f},  // ln 2 / 10
        {2.0f, 36.787944f, 0.5f},      // e^-1 over 2 mm
        {10.0f, 100.0f, 0.0f},        {10.0f, 120.0f, 0.0f},
        {10.0f, 0.0f, 0.0f},          {0.0f, 50.0f, 0.0f}};
    for (auto [width, internal, alpha] : absorbs) {
        EXPECT_FLOAT_EQ(AbsorbFromInternal(width, internal), alpha) << width << " " << internal;
    }
}

TEST(TransCalcs, AbsorbAtWaveInterpolatesInInternalTransmission) {
    const Points data{{700.0f, 500.0f, 400.0f}, {0.001f, 0.01f, 0.1f}};
    // 450 nm lies half way between 500 and 400 nm: t = (e^-0.1 + e^-1) / 2 = 0.6363584,
    // alpha = -ln t / 10 = 0.0451993 (not the mean of the coefficients, 0.055).
    const std::pair<float, float> cases[] = {{700.0f, 0.001f},       {500.0f, 0.01f},
                                             {400.0f, 0.1f},         {450.0f, 0.0451993f},
                                             {700.5f, kNoTransData}, {399.9f, kNoTransData}};
    for (auto [wave, alpha] : cases) {
        EXPECT_NEAR(AbsorbAtWave(wave, data.waves, data.values, 10.0f), alpha, 1e-6f) << wave;
    }
    EXPECT_EQ(AbsorbAtWave(450.0f, data.waves, data.values, 0.0f), kNoTransData);
    // No points, one point, two points of one wavelength.
    const Points unusable[] = {{{}, {}}, {{500.0f}, {0.01f}}, {{500.0f, 500.0f}, {0.01f, 0.02f}}};
    for (const Points& p : unusable) {
        EXPECT_EQ(AbsorbAtWave(500.0f, p.waves, p.values, 10.0f), kNoTransData);
    }
    // Opaque neighbours fall back on their coefficients and stay finite.
    const Points dark{{600.0f, 400.0f}, {90.0f, 99.0f}};
    const float got = AbsorbAtWave(500.0f, dark.waves, dark.values, 10.0f);
    EXPECT_TRUE(std::isfinite(got));
    EXPECT_GE(got, 90.0f);
    EXPECT_LE(got, 99.0f);
}

// The table is AbsorbAtWave entry by entry, to the bit, whatever the shape of the data (the
// first shape has table wavelengths on both of its ends).
TEST(TransCalcs, FillTransTableEqualsAbsorbAtWaveEntryByEntry) {
    const Points shapes[] = {
        {{2500.0f, 1529.6f, 700.0f, 420.0f, 365.0f, 310.0f},
         {0.001f, 0.0005f, 0.0002f, 0.004f, 0.03f, 0.4f}},
        // Opaque neighbours: the fallback on the coefficients.
        {{600.0f, 500.0f, 400.0f, 300.0f}, {0.0f, 0.0f, 80.0f, 90.0f}},
        // Two points of equal wavelength, and a table entry that hits a point exactly.
        {{800.0f, 650.0f, 650.0f, 546.1f, 250.0f}, {0.01f, 0.02f, 0.03f, 0.04f, 0.3f}},
        // Points out of order, and a run of equal wavelengths at the long end.
        {{400.0f, 900.0f, 300.0f, 1200.0f, 700.0f}, {0.05f, 0.001f, 0.2f, 0.0f, 0.003f}},
        {{1000.0f, 1000.0f, 1000.0f, 600.0f, 260.0f}, {0.0f, 0.001f, 0.002f, 0.01f, 0.9f}},
        {{}, {}},
        {{550.0f}, {0.01f}},
        {{250.0f}, {0.01f}}};
    for (const Points& data : shapes) {
        for (const float width : {10.0f, 2.5f, 0.0f}) {
            std::array<float, kTransTableSize> table{};
            FillTransTable(table, width, data.waves, data.values);
            for (size_t i = 0; i < table.size(); ++i) {
                EXPECT_EQ(table[i], AbsorbAtWave(TransTableWave[i], data.waves, data.values, width))
                    << "width " << width << ", " << TransTableWave[i] << " nm, first "
                    << data.waves[0];
            }
        }
    }
}

// The rows of the 41-place short tables: each row its own place up to 41 rows; beyond, the
// first and the last row and rows evenly between them, none twice.
TEST(TransCalcs, ShortTableRowsSpanTheRows) {
    for (const size_t points : {1u, 41u, 42u, 44u, 81u, 150u}) {
        SCOPED_TRACE(points);
        const size_t places = std::min<size_t>(points, 41);
        EXPECT_EQ(ShortTableRow(0, points), 0u);
        EXPECT_EQ(ShortTableRow(places - 1, points), points <= 41 ? places - 1 : points - 1);
        for (size_t slot = 1; slot < places; ++slot) {
            const size_t step = ShortTableRow(slot, points) - ShortTableRow(slot - 1, points);
            EXPECT_GE(step, 1u);
            EXPECT_LE(step, (points + 39) / 40);
        }
    }
    EXPECT_EQ(ShortTableRow(20, 44), 22u);  // 20 * 43 / 40 = 21.5, rounded up
}

TEST(TransCalcs, CheckTransPointsRepairsBluntly) {
    const std::pair<int16_t, int16_t> counts[] = {
        {1, 1}, {10, 10}, {0, 150}, {11, 150}, {150, 150}};
    for (auto [given, repaired] : counts) {
        MaterialRecord rec = ClearedMaterialRecord();
        rec.Measured.TransPoints = given;
        CheckTransPoints(rec);
        EXPECT_EQ(rec.Measured.TransPoints, repaired) << given;
    }
}

// Worked by hand. 10 mm: levels 0.05 and 0.8.
//   l5 = 300 + (0.05 - 0.01) * 50 / 0.49 = 304.08 -> 30; l80 = 350 + 0.3 * 50 / 0.4 = 387.5 -> 39.
// 5 mm: levels sqrt(0.05) = 0.2236068 and sqrt(0.8) = 0.8944272.
//   l5 = 300 + 0.2136068 * 50 / 0.49 = 321.80 -> 32; l80 = 350 + 0.3944272 * 50 / 0.4 = 399.30
//   -> 40.
TEST(TransCalcs, ColourCode) {
    // Name, width, points of internal transmission in per cent, and the code.
    const std::tuple<const char*, float, Points, const char*> cases[] = {
        {"TenMillimetres", 10.0f, {{500, 400, 350, 300}, {99, 90, 50, 1}}, "39/30"},
        {"FiveMillimetres", 5.0f, {{500, 400, 350, 300}, {99, 90, 50, 1}}, "40/32"},
        // Never falls to either level: l5 = last - 10 = 320, l80 = last = 330.
        {"ClearToTheEnd", 10.0f, {{500, 400, 330}, {99, 98, 95}}, "33/32"},
        // l80 = 900 + 0.79 * 100 / 0.795 = 999.37 -> "100" cut to "10";
        // l5 = 900 + 0.04 * 100 / 0.795 = 905.03 -> 91.
        {"ThreeDigitsCut", 10.0f, {{1200, 1000, 900}, {99, 80.5f, 1}}, "10/91"},
        // Zero width: both levels are 1. The last point is not above 1, and the point
        // before it has the same fraction, so l5 is the short-wave neighbour's wavelength.
        {"ZeroWidth", 0.0f, {{500, 400}, {100, 100}}, "40/40"},
        // Never rises to 80 %: the code is left as it was.
        {"NeverReaches80", 10.0f, {{500, 400}, {50, 10}}, "xx/xx"},
        {"NoPoints", 10.0f, {{}, {}}, "xx/xx"},
        // A row at an infinite wavelength (an overflowing number in a file): no code.
        {"InfiniteWavelength", 10.0f, {{500, HUGE_VALF}, {99, 98}}, "xx/xx"}};
    for (const auto& [name, width, data, expected] : cases) {
        MaterialRecord rec = ClearedMaterialRecord();
        rec.Other.CC.Set("xx/xx");
        ColourCode(rec, width, data.waves, data.values);
        EXPECT_EQ(rec.Other.CC.Text(), expected) << name;
    }
}

}  // namespace
}  // namespace ostrel
