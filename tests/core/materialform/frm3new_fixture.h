#pragma once
// A material form over a custom list in a fresh folder, driven as the user would, and a
// form's state in one line: which controls are on, and what its captions and cells read.
#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "core/material/list_fixture.h"
#include "core/materialform/frm3new.h"

namespace ostrel::testing {

using Texts = std::vector<std::string>;

inline std::vector<bool> Enabled(std::initializer_list<const Control*> controls) {
    std::vector<bool> on;
    for (const Control* control : controls) on.push_back(control->enabled);
    return on;
}

// Wave [nm] and index of the Schott form n^2 = 2.25 + 0.01 / lambda^2 (lambda in µm), worked
// out apart.
inline const char* const kSchottPoints[][2] = {{"1000", "1.5033296378"}, {"800", "1.5051993223"},
                                               {"700", "1.5067873650"},  {"600", "1.5092308564"},
                                               {"500", "1.5132745950"},  {"450", "1.5163715627"},
                                               {"400", "1.5206906326"}};

// Every section ready, Schott n^2 = 2.25 + 0.01 / lambda^2 from 400 to 800 nm, 10 mm thick.
inline MaterialRecord ReadyRecord(const std::string& name, const std::string& source) {
    MaterialRecord r = MakeRecord(name, source);
    for (SectionState* s :
         {&r.GeneralState, &r.IndexState, &r.TransState, &r.ThermalState, &r.OtherState}) {
        s->Ready = kTrue;
    }
    r.General.Polytype = 1;
    r.General.PolyCoef[0] = 2.25;
    r.General.PolyCoef[2] = 0.01;
    r.General.IndexWvMin = 400;
    r.General.IndexWvMax = 800;
    r.Measured.TransWidth = 10.0f;
    r.DateChanged = 45292.75;  // 2024-01-01 18:00
    return r;
}

class Frm3NewFixture : public ListFixture {
  protected:
    void SetUp() override {
        Fresh();
        frm3New::Hooks hooks;
        hooks.close = [this] { ++closes; };
        hooks.pickWaves = std::ref(picker);
        form = std::make_unique<frm3New>(*list, dialogs, hooks);
    }

    // Types into a cell of a grid and tells the form, as the window does.
    void Type(Grid& grid, int col, int row, const std::string& text) {
        ASSERT_TRUE(grid.EditText(col, row, text)) << col << "," << row << " " << text;
        if (&grid == &form->ssRefInd) form->ssRefIndChange(col, row);
        if (&grid == &form->ssTrans) form->ssTransChange(col, row);
        if (&grid == &form->ssOther) form->ssOtherChange(col, row);
    }
    // The first `count` of kSchottPoints, typed from row 1.
    void TypeIndexRows(int count) {
        for (int row = 1; row <= count; ++row) {
            Type(form->ssRefInd, 1, row, kSchottPoints[row - 1][0]);
            Type(form->ssRefInd, 2, row, kSchottPoints[row - 1][1]);
        }
    }
    void TypeName(const std::string& name, const std::string& source) {
        Enter(*form, form->txtGenGlass, name, &frm3New::txtGenGlassChange);
        Enter(*form, form->txtGenSource, source, &frm3New::txtGenSourceChange);
    }
    // Coefficient mode on the Index tab: Schott n^2 = a0 + a2 / lambda^2 over lo..hi nm,
    // then checked.
    void CheckSchottCoefficients(const char* a0 = "2.25", const char* a2 = "0.01",
                                 const char* lo = "400", const char* hi = "800") {
        form->tabPropertiesChange(frm3New::kTabIndex);
        Choose(*form, form->cmbIndexDataType, 1, &frm3New::cmbIndexDataTypeClick);
        Type(form->ssRefInd, 2, 1, a0);
        Type(form->ssRefInd, 2, 3, a2);
        Type(form->ssRefInd, 2, 8, lo);
        Type(form->ssRefInd, 4, 8, hi);
        form->comIndexFitClick();
    }
    std::string LastBox() const { return dialogs.boxes.empty() ? "" : dialogs.boxes.back().text; }

    std::unique_ptr<frm3New> form;
    int closes = 0;
    ScriptedWavePicker picker;
};

}  // namespace ostrel::testing
