#pragma once
// A melt maker over a custom list in a fresh folder, with a demo catalogue database as the
// source of parent glasses, driven as the user would.
#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "core/external/bas1_setup.h"
#include "core/external/external_fixture.h"
#include "core/materialform/frm3new_fixture.h"
#include "core/melt/frm7melt.h"
#include "core/melt/glass_melt.h"
#include "core/melt/pop_melt_parent.h"
#include "core/optics/crown.h"
#include "core/optics/index_from_polynomial.h"
#include "core/platform/text.h"
#include "core/shell/new_msg.h"

namespace ostrel::testing {

// C, d, F and g.
inline const std::vector<float> kMainLines = {656.273f, 587.562f, 486.133f, 435.834f};

inline double IndexOf(const MaterialRecord& rec, float wave) {
    int16_t ok = 0;
    return IndexFromPolynomial(rec.General.PolyCoef, wave, rec.General.Polytype, ok);
}

class MeltFixture : public ListFixture {
  protected:
    void SetUp() override {
        Fresh();
        std::string message;
        ASSERT_TRUE(
            CreateDemoInstallation((dir / "demo").string(), DemoGlasses(), settings, message))
            << message;
        setup.LoadPaths();
        ASSERT_TRUE(setup.GetKelmoraFound());
        frm7Melt::Hooks hooks;
        hooks.enableOwner = [this](bool on) { ownerStates.push_back(on); };
        // The record the parent picker returns for the next parent.
        hooks.pickParent = [this](MaterialRecord& rec) {
            if (nextParent.empty()) return false;
            popMeltParent picker(dialogs, settings, setup.GetPathKelmora(), {nextMaker});
            EXPECT_TRUE(picker.Load());
            Choose(picker, picker.lstMakers, 0, &popMeltParent::lstMakersClick);
            const int row = RowOf(picker, nextParent);
            EXPECT_GT(row, 0) << "no parent " << nextMaker << " " << nextParent;
            picker.ssGlassesClick(2, row);
            picker.comOKClick();
            rec = picker.PickedRecord();
            return true;
        };
        hooks.pickWaves = std::ref(picker);
        hooks.enterSheet = [this](MaterialRecord& rec) {
            if (!sheetResult) return false;
            sheetResult(rec);
            return true;
        };
        form = std::make_unique<frm7Melt>(*list, dialogs, newMsg, setup.GetPathKelmora(), hooks);
    }

    // The picker's row of a glass, 0 when it shows none of that name.
    static int RowOf(popMeltParent& p, const std::string& name) {
        for (int r = 1; r <= p.ssGlasses.MaxRows(); ++r) {
            if (VbTrimCopy(p.ssGlasses.Text(2, r)) == name) return r;
        }
        return 0;
    }
    // A new melt of the parent with a code.
    void Start(const std::string& maker, const std::string& name, const std::string& code) {
        form->DisplayNew(false);
        nextMaker = maker;
        nextParent = name;
        form->comParentClick();
        form->txtMeltCode.text = code;
        form->txtMeltCodeValidate();
    }

    // Types a pair into a row, as the window does; an empty text leaves its cell alone.
    void TypePair(int row, const std::string& wave, const std::string& index) {
        if (!wave.empty()) {
            ASSERT_TRUE(form->ssRefInd.EditText(2, row, wave));
            form->ssRefIndChange(2, row);
        }
        if (!index.empty()) {
            ASSERT_TRUE(form->ssRefInd.EditText(3, row, index));
            form->ssRefIndChange(3, row);
        }
    }
    // The parent's index at the wavelength plus offset, typed with 10 digits.
    void TypeOffsetPair(int row, float wave, double offset) {
        char wbuf[40], buf[40];
        std::snprintf(wbuf, sizeof wbuf, "%.4f", wave);
        std::snprintf(buf, sizeof buf, "%.10g", IndexOf(form->ParentRecord(), wave) + offset);
        TypePair(row, wbuf, buf);
    }
    // From row 1, pairs of the parent's index plus offset(wave).
    void TypeOffsetPairs(const std::vector<float>& waves,
                         const std::function<double(double)>& offset) {
        for (size_t i = 0; i < waves.size(); ++i)
            TypeOffsetPair(static_cast<int>(i) + 1, waves[i], offset(waves[i]));
    }
    void TypeOffsetPairs(const std::vector<float>& waves, double offset) {
        TypeOffsetPairs(waves, [offset](double) { return offset; });
    }
    // A new melt "N-BK7 *m1" of Schott fitted to the main lines at the parent's index plus
    // offset.
    void FitNewMelt(double offset) {
        Start("Schott", "N-BK7", "m1");
        TypeOffsetPairs(kMainLines, offset);
        form->comIndexFitClick();
    }

    MemorySettingsStore settings;
    Bas1Setup setup{settings, dialogs};
    CNewMsg newMsg{dialogs, settings};
    std::unique_ptr<frm7Melt> form;
    std::string nextMaker, nextParent;
    ScriptedWavePicker picker;
    std::function<void(MaterialRecord&)> sheetResult;
    std::vector<bool> ownerStates;
};

}  // namespace ostrel::testing
