#include <gtest/gtest.h>

#include <cmath>
#include <string>

#include "core/materialform/frm3new_fixture.h"

namespace ostrel::testing {
namespace {

// Index 1.5 everywhere from 400 to 800 nm; with it P = 3 / 3.25 = 0.9230769.
class Frm3NewTrans : public Frm3NewFixture {
  protected:
    void SetUp() override {
        Frm3NewFixture::SetUp();
        form->DisplayNew();
        CheckSchottCoefficients("2.25", "0");
        dialogs.boxes.clear();
        form->tabPropertiesChange(frm3New::kTabTrans);
    }
    void SetType(int type) { Choose(*form, form->cmbTransType, type, &frm3New::cmbTransTypeClick); }
};

TEST_F(Frm3NewTrans, InternalGivesAbsorptionAndTotalInBothDisplays) {
    SetType(1);
    EXPECT_TRUE(form->ssTrans.Column(2).locked && !form->ssTrans.Column(3).locked);
    const auto& m = form->Record().Measured;
    // A pasted table passes over the locked columns: the two columns go to wave and internal.
    form->comClipPasteClick("600\t95\n500\t90\n");
    EXPECT_EQ(std::tuple(m.TransWave[1], m.TransInternal[0]), std::tuple(500.0f, 95.0f));
    EXPECT_NEAR(m.TransAbsorb[1], 0.0105361, 1e-6);
    form->comClearClick();
    EXPECT_EQ(std::tuple(m.TransWave[0], form->ssTrans.Text(1, 1)), std::tuple(0.0f, ""));

    Type(form->ssTrans, 1, 1, "500");
    Type(form->ssTrans, 3, 1, "90");
    // -ln(0.9) / 10 and 90 x 0.9230769.
    EXPECT_EQ(form->ssTrans.ClipText({2, 1, 4, 1}), "83.08\t90.00\t0.01054");

    Choose(*form, form->cmbTransDisp, 1, &frm3New::cmbTransDispClick);
    EXPECT_EQ((Texts{form->ssTrans.Column(3).title, form->ssTrans.ClipText({2, 1, 3, 1})}),
              (Texts{"Internal trans", "0.8308\t0.9000"}));
    Type(form->ssTrans, 3, 1, "0.8");  // a fraction now
    Choose(*form, form->cmbTransDisp, 0, &frm3New::cmbTransDispClick);
    EXPECT_EQ(std::tuple(form->ssTrans.Column(3).title, m.TransInternal[0]),
              std::tuple("Internal trans [%]", 80.0f));

    // A thinner sample: the same internal transmission means more absorption.
    Enter(*form, form->txtTransGlassWidth, "5", &frm3New::txtTransGlassWidthValidate);
    EXPECT_NEAR(m.TransAbsorb[0], -std::log(0.8) / 5, 1e-6);
    Enter(*form, form->txtTransGlassWidth, "-1", &frm3New::txtTransGlassWidthValidate);
    EXPECT_EQ(std::tuple(form->txtTransGlassWidth.text.get(), m.TransWidth, dialogs.boxes.size()),
              std::tuple("5.0", 5.0f, 0u));
    const auto curve = form->TransCurve();
    ASSERT_EQ(curve.size(), 1u);
    EXPECT_DOUBLE_EQ(curve[0].wave, 500.0);
    EXPECT_NEAR(curve[0].value, 80.0, 1e-5);
}

// A total transmission that cannot be worked out, the wavelength lying outside the index band
// (400 to 800 nm), shows "----" in either display, never a number that reads as opaque.
TEST_F(Frm3NewTrans, TotalOutsideTheIndexBandShowsDashes) {
    // Type, column typed into, wave, value, and column 2 in percent and as a fraction.
    const std::tuple<int, int, const char*, const char*, const char*, const char*> cases[] = {
        {1, 3, "900", "90", "----", "----"}, {2, 4, "900", "0.01", "----", "----"}};
    for (const auto& [type, col, wave, value, percent, fraction] : cases) {
        SCOPED_TRACE(std::string(wave) + " type " + std::to_string(type));
        Choose(*form, form->cmbTransDisp, 0, &frm3New::cmbTransDispClick);
        SetType(type);
        Type(form->ssTrans, 1, 1, wave);
        Type(form->ssTrans, col, 1, value);
        EXPECT_EQ(form->ssTrans.Text(2, 1), percent);
        Choose(*form, form->cmbTransDisp, 1, &frm3New::cmbTransDispClick);
        EXPECT_EQ(form->ssTrans.Text(2, 1), fraction);
    }
    EXPECT_TRUE(dialogs.boxes.empty()) << LastBox();
}

TEST_F(Frm3NewTrans, TotalIsRefusedWithTheReason) {
    SetType(0);
    Type(form->ssTrans, 1, 1, "500");
    Type(form->ssTrans, 2, 1, "95");
    EXPECT_EQ(LastBox(),
              "Reflection Loss at this wavelength  7.7%\nTherefore total transmittance must be "
              "less than  92.3%");
    EXPECT_EQ(form->Record().Measured.TransTotal[0], 0.0f);
    Type(form->ssTrans, 2, 1, "92");
    EXPECT_NEAR(form->Record().Measured.TransInternal[0], 99.66667, 1e-3);

    Type(form->ssTrans, 1, 2, "900");
    Type(form->ssTrans, 2, 2, "50");
    EXPECT_EQ(LastBox(), "Wavelength outside waveband covered by refractive index polynomial");
    Type(form->ssTrans, 2, 3, "50");
    EXPECT_EQ(LastBox(), "You need to specify a wavelength");

    form->DisplayNew();  // without a ready index
    form->tabPropertiesChange(frm3New::kTabTrans);
    Type(form->ssTrans, 1, 1, "500");
    Type(form->ssTrans, 2, 1, "50");
    EXPECT_EQ(LastBox(),
              "The Index Data must be READY\nto get the absorption coeff\nfrom the total "
              "Transmission");
}

TEST_F(Frm3NewTrans, SortAndCheckNeedsThreePoints) {
    SetType(2);
    Type(form->ssTrans, 1, 1, "450");
    Type(form->ssTrans, 4, 1, "0.01");
    Type(form->ssTrans, 1, 3, "650");
    Type(form->ssTrans, 4, 3, "0.002");
    form->comTransSortClick();
    const auto& m = form->Record().Measured;
    EXPECT_EQ(std::tuple(m.TransPoints, form->pnlStatus[2].caption.get(), m.TransWave[0],
                         m.TransAbsorb[1], form->ssTrans.Text(1, 1)),
              std::tuple(2, "Trans: NOT Ready", 650.0f, 0.01f, "650"));
    EXPECT_NEAR(m.TransInternal[1], 100 * std::exp(-0.1), 1e-4);

    Type(form->ssTrans, 1, 3, "500.3");
    EXPECT_EQ(form->ssTrans.Text(1, 3), "500.3") << "the digits typed, not the float's";
    Type(form->ssTrans, 1, 3, "500");
    Type(form->ssTrans, 4, 3, "2");  // above 1 reads 0
    EXPECT_EQ(m.TransAbsorb[2], 0.0f);
    form->comTransSortClick();
    EXPECT_EQ(std::tuple(m.TransPoints, form->pnlStatus[2].caption.get()),
              std::tuple(3, "Trans: Ready"));
    // 500 nm is a column of the table; 660 nm lies beyond the data.
    const auto& table = form->Record().TransTable;
    EXPECT_NEAR(table[24], 0.0f, 1e-6);
    const auto& g = form->Record().General;
    EXPECT_EQ(std::tuple(table[31], g.TransShortWave[1], g.TransShortValue[3]),
              std::tuple(kNoTransData, 500.0f, kNoTransData));

    SetType(3);
    EXPECT_EQ(Enabled({&form->comTransSort, &form->txtTransGlassWidth}),
              std::vector<bool>(2, false));
    EXPECT_TRUE(form->ssTrans.Column(1).locked);

    // A zero width is repaired with a message when a record is opened.
    MaterialRecord rec = frm3New::FreshRecord();
    rec.Measured.TransWidth = 0;
    form->DisplayEdit(rec);
    EXPECT_EQ((Texts{LastBox(), form->txtTransGlassWidth.text}),
              (Texts{"Transmition Data: thickness was zero, set to10mm", "10.0"}));
}

}  // namespace
}  // namespace ostrel::testing
