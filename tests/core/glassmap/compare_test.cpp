#include <gtest/gtest.h>

#include <cmath>

#include "core/glassmap/frm_compare.h"

namespace ostrel {
namespace {

// Sellmeier glasses with the published coefficients of N-BK7 and F2.
CompareItem Sellmeier(const std::string& name, std::array<double, 6> c, int16_t lo, int16_t hi) {
    CompareItem it;
    it.rec = ClearedMaterialRecord();
    it.rec.General.GlassName.Set(name);
    it.rec.General.Source.Set("S");
    it.rec.General.Polytype = 2;
    for (size_t i = 0; i < 6; ++i) it.rec.General.PolyCoef[i] = c[i];
    it.rec.General.IndexWvMin = lo;
    it.rec.General.IndexWvMax = hi;
    it.rec.TransTable.fill(kNoTransData);
    it.label = name + " (S)";
    return it;
}

double SellmeierIndex(const std::array<double, 6>& c, double nm) {
    const double l2 = nm * nm / 1e6;
    double s = 1;
    for (int i = 0; i < 3; ++i) s += c[i] * l2 / (l2 - c[3 + i]);
    return std::sqrt(s);
}

const std::array<double, 6> kBK7 = {1.03961212,    0.231792344,  1.01046945,
                                    0.00600069867, 0.0200179144, 103.560653};
const std::array<double, 6> kF2 = {1.34533359,    0.209073176,  0.937357162,
                                   0.00997743871, 0.0470450767, 111.886764};

TEST(CompareMaterials, CommonBandIndexDifferenceAndTransmission) {
    CompareItem bk7 = Sellmeier("N-BK7", kBK7, 310, 2500);
    CompareItem f2 = Sellmeier("F2", kF2, 365, 1014);
    bk7.rec.TransTable[17] = 0.01f;  // 400 nm, per mm
    f2.rec.TransTable[17] = 0.0f;
    CompareCurves c;
    std::string message;
    ASSERT_TRUE(CompareMaterials({&bk7, &f2}, 10.0f, 11, c, message)) << message;
    EXPECT_EQ(c.bandMin, 365);
    EXPECT_EQ(c.bandMax, 1014);
    ASSERT_EQ(c.wave.size(), 11u);
    for (size_t k = 0; k < c.wave.size(); ++k) {
        const double a = SellmeierIndex(kBK7, c.wave[k]), b = SellmeierIndex(kF2, c.wave[k]);
        EXPECT_NEAR(c.index[0][k], a, 2e-6);
        EXPECT_NEAR(c.delta[1][k], b - a, 4e-6);
        EXPECT_EQ(c.delta[0][k], 0.0);
    }
    EXPECT_NEAR(c.internal[0][17], 100 * std::exp(-0.1), 1e-4);
    EXPECT_NEAR(c.internal[1][17], 100, 1e-6);
    EXPECT_TRUE(std::isnan(c.internal[0][16]));

    const std::string csv = CompareCsv(c);
    EXPECT_EQ(csv.substr(0, csv.find('\n')), "Wavelength (nm),n N-BK7 (S),n F2 (S),dn F2 (S)");
    EXPECT_NE(csv.find("\n400,90.48,100.00\n"), std::string::npos);
    EXPECT_NE(csv.find("\n390,,\n"), std::string::npos) << "no data is a blank field";
    const std::string svg = CompareSvg(c, 900, 900);
    size_t curves = 0;
    for (size_t at = svg.find("class=\"curve\""); at != std::string::npos;
         at = svg.find("class=\"curve\"", at + 1))
        ++curves;
    EXPECT_EQ(curves, 2u + 2u + 2u);
}

TEST(CompareMaterials, RefusedWithTheReason) {
    const CompareItem bk7 = Sellmeier("N-BK7", kBK7, 310, 500);
    const CompareItem f2 = Sellmeier("F2", kF2, 600, 1014);
    CompareItem broken = Sellmeier("BAD", kF2, 310, 2500);
    broken.rec.General.Polytype = 99;
    struct Case {
        std::vector<const CompareItem*> items;
        const char* message;
    };
    const Case cases[] = {
        {{&bk7}, "Select two or more materials to compare."},
        {{&bk7, &f2}, "The materials have no wavelength band of index data in common."},
        {{&bk7, &broken}, "The index of BAD (S) cannot be computed at 310 nm."},
    };
    for (const Case& c : cases) {
        CompareCurves curves;
        std::string message;
        EXPECT_FALSE(CompareMaterials(c.items, 10, 20, curves, message));
        EXPECT_EQ(message, c.message);
    }
}

TEST(CompareForm, FirstChosenStaysTheReference) {
    frmCompare form({Sellmeier("A", kBK7, 310, 2500), Sellmeier("B", kF2, 310, 2500),
                     Sellmeier("C", kBK7, 400, 800)});
    form.SelectMaterials({1, 0});
    ASSERT_TRUE(form.HasCurves());
    EXPECT_EQ(form.Curves().labels, (std::vector<std::string>{"B (S)", "A (S)"}));
    form.lstMaterials.SetSelected(2, true);
    form.lstMaterialsClick();
    EXPECT_EQ(form.Curves().labels, (std::vector<std::string>{"B (S)", "A (S)", "C (S)"}));
    EXPECT_EQ(form.lblStatus.caption.get(), "3 materials compared over 400 - 800 nm");
}

}  // namespace
}  // namespace ostrel
