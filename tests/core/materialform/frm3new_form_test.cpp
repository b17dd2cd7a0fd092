#include <gtest/gtest.h>

#include <filesystem>

#include "core/material/material_record_codec.h"
#include "core/materialform/frm3new_fixture.h"

namespace ostrel::testing {
namespace {

using Form = Frm3NewFixture;

TEST_F(Form, NewEditAndReviewTitlesStatesAndCommandsPerTab) {
    form->DisplayNew();
    EXPECT_TRUE(form->IsOpen() && form->lblGenNew.visible && dialogs.boxes.empty());
    EXPECT_EQ((Texts{form->form.caption, form->comAdd.caption, form->pnlStatus[0].caption,
                     form->pnlStatus[1].caption, form->pnlStatus[2].caption,
                     form->pnlStatus[3].caption, form->pnlStatus[4].caption,
                     form->txtTransGlassWidth.text, form->Record().Other.Status.Text()}),
              (Texts{"Editing data  ", "Add to list", "General: NOT Ready", "Index: NOT Ready",
                     "Trans: NOT Ready", "dn/dt: Ready", "Other: NOT Ready", "10.0", "A"}));
    for (size_t i = 0; i < 5; ++i)
        EXPECT_EQ(form->pnlStatus[i].backColour, i == 3 ? kStatusGreen : kStatusRed);
    EXPECT_EQ(form->Record().General.GlassKind, 8);

    // The commands follow the tab.
    // Per tab: paste caption and state, clear caption and state, the wave picker's state.
    const std::tuple<const char*, bool, const char*, bool, bool> tabs[] = {
        {"&Paste", false, "C&lear", false, false},
        {"&Paste index", true, "C&lear index", true, true},
        {"&Paste trans", true, "C&lear trans", true, true},
        {"&Paste", false, "C&lear dndt", true, false},
        {"&Paste", false, "C&lear other", true, false}};
    for (int tab = 0; tab < 5; ++tab) {
        form->tabPropertiesChange(tab);
        EXPECT_EQ(std::tuple(form->comClipPaste.caption.get(), form->comClipPaste.enabled.get(),
                             form->comClear.caption.get(), form->comClear.enabled.get(),
                             form->comWaveSelRefInd.enabled.get()),
                  tabs[tab])
            << tab;
    }

    // An edited material is titled by its name; a review locks everything.
    MaterialRecord rec = MakeRecord("N-AB", "Maker");
    form->DisplayEdit(rec);
    EXPECT_EQ(std::tuple(form->form.caption.get(), form->comAdd.caption.get(),
                         form->lblGenNew.visible.get()),
              std::tuple("New material data  N-AB::Maker", "Accept changes", false));
    form->DisplayEdit(MakeRecord("N-AB", ""));
    EXPECT_EQ(form->form.caption, "New material data  ?? ::");

    form->DisplayReview(rec);
    EXPECT_EQ(form->form.caption, "Reviewing data");
    // The window test sees the name box, the save button and the index grid locked.
    EXPECT_EQ(
        Enabled({&form->comClear, &form->comClipPaste, &form->comWaveSelRefInd, &form->comIndexFit,
                 &form->comTransSort, &form->comMelt, &form->lstThermal, &form->cmbTransType}),
        std::vector<bool>(8, false));
    form->tabPropertiesChange(frm3New::kTabIndex);
    EXPECT_FALSE(form->comClear.enabled || form->ssOther.EditText(2, 9, "2.5"));
    form->comOKClick();
    EXPECT_EQ(std::tuple(form->IsOpen(), closes), std::tuple(false, 1));
}

TEST_F(Form, CatalogueNameIsRefusedAndTheOldTextComesBack) {
    WriteCatalogue(dir.path(), {{"N-AB", "MAKER"}});
    list->LoadCatalogueNames(dir.path().string());
    ASSERT_TRUE(list->ListAdd(MakeRecord("MINE", "MAKER"), false));

    form->DisplayNew();
    TypeName("N-A", "maker");
    EXPECT_EQ(form->pnlStatus[0].caption, "General: Ready");
    Enter(*form, form->txtGenGlass, "n-ab", &frm3New::txtGenGlassChange);
    EXPECT_EQ(dialogs.boxes,
              (std::vector<ShownBox>{{"N-AB - MAKER is already in the list of catalog "
                                      "materials, and cannot be overwritten!",
                                      MsgButtons::OK, MsgIcon::Information, ""}}));
    EXPECT_EQ((Texts{form->txtGenGlass.text, form->pnlStatus[0].caption, form->form.caption}),
              (Texts{"N-A", "General: NOT Ready", "Editing data  N-A::maker"}));

    // A name of the custom list passes here; saving asks about it.
    Enter(*form, form->txtGenGlass, "Mine", &frm3New::txtGenGlassChange);
    EXPECT_EQ(std::tuple(dialogs.boxes.size(), form->pnlStatus[0].caption.get()),
              std::tuple(1u, "General: Ready"));

    // A name longer than the field is refused, not cut.
    Enter(*form, form->txtGenGlass, std::string(40, 'Z'), &frm3New::txtGenGlassChange);
    EXPECT_EQ((Texts{form->txtGenGlass.text, form->Record().General.GlassName.Text()}),
              (Texts{"Mine", "Mine"}));
}

// The whole road of a new material: every tab, then the save into the custom file.
TEST_F(Form, NewMaterialIsSavedAndTheFormIsReadyForTheNext) {
    form->DisplayNew();
    form->comAddClick();
    EXPECT_EQ(std::tuple(LastBox(), dialogs.boxes.back().icon),
              std::tuple(frm3New::kIncompleteMsg, MsgIcon::Exclamation));

    TypeName("Glass-1", "Lab");
    form->tabPropertiesChange(frm3New::kTabIndex);
    TypeIndexRows(7);
    form->comIndexFitClick();
    form->tabPropertiesChange(frm3New::kTabTrans);
    Choose(*form, form->cmbTransType, 1, &frm3New::cmbTransTypeClick);
    form->comClipPasteClick("400\t90\n700\t90\n550\t90\n");
    form->comTransSortClick();
    form->tabPropertiesChange(frm3New::kTabOther);
    Type(form->ssOther, 2, 9, "2.51");
    const size_t before = dialogs.boxes.size();

    form->comAddClick();
    EXPECT_EQ(dialogs.boxes.size(), before);
    ASSERT_EQ(list->CustomCount(), 1);
    const MaterialRecord& saved = list->CustomList()[0];
    EXPECT_EQ(std::tuple(saved.General.GlassName.Text(), AllSectionsReady(saved), saved.DateChanged,
                         saved.Measured.TransWave[0], saved.General.Density, refreshes,
                         std::filesystem::file_size(Current())),
              std::tuple("Glass-1", true, 46349.5, 700.0f, 2.51f, 1, uintmax_t{12964}));

    // Ready for the next material.
    EXPECT_EQ(std::tuple(form->form.caption.get(), form->pnlStatus[1].caption.get(),
                         form->Record().General.IndexPoints),
              std::tuple("Editing data  ", "Index: NOT Ready", 0));

    // The same name again: asked, and No keeps the saved one.
    MaterialRecord again = saved;
    again.General.GlassName.Set("Glass-2");
    again.General.Density = 3.0f;
    form->DisplayEdit(again);
    Enter(*form, form->txtGenGlass, "Glass-1", &frm3New::txtGenGlassChange);
    dialogs.answers.push_back(MsgAnswer::No);
    form->comAddClick();
    EXPECT_EQ(std::tuple(LastBox(), dialogs.boxes.back().buttons, list->CustomCount(),
                         list->CustomList()[0].General.Density),
              std::tuple("Glass-1 - Lab is already in your collection.\nDo you want to overwrite "
                         "the existing data?",
                         MsgButtons::YesNo, 1, 2.51f));

    // The saved material opened for edit is replaced without a question and stays in edit.
    form->DisplayEdit(saved);
    form->tabPropertiesChange(frm3New::kTabOther);
    Type(form->ssOther, 2, 9, "4.2");
    dialogs.boxes.clear();
    form->comAddClick();
    EXPECT_EQ(
        std::tuple(dialogs.boxes.size(), list->CustomCount(), list->CustomList()[0].General.Density,
                   form->FormMode(), form->Record().GeneralState.Changes),
        std::tuple(0u, 1, 4.2f, frm3New::kModeEdit, 0));
}

// Closing with unsaved changes asks; Yes saves with the checks of comAdd and closes only when
// that saved, No drops the changes, Cancel keeps the form. Nothing changed, or a review: no
// question.
TEST_F(Form, CloseWithUnsavedChangesAsksAndSavesOnYes) {
    // Mode, a change made, the answer, the question ("" for none), closed, density saved.
    const std::tuple<int16_t, bool, MsgAnswer, const char*, bool, float> cases[] = {
        {frm3New::kModeEdit, true, MsgAnswer::Cancel, "Save changes to E-1?", false, 1},
        {frm3New::kModeEdit, true, MsgAnswer::No, "Save changes to E-1?", true, 1},
        {frm3New::kModeEdit, true, MsgAnswer::Yes, "Save changes to E-1?", true, 4.2f},
        {frm3New::kModeNew, true, MsgAnswer::Yes, "Save changes to the new material?", false, 1},
        {frm3New::kModeEdit, false, MsgAnswer::Cancel, "", true, 1},
        {frm3New::kModeReview, true, MsgAnswer::Cancel, "", true, 1}};
    for (const auto& [mode, change, answer, question, closed, savedDensity] : cases) {
        SCOPED_TRACE(::testing::Message() << mode << change << int(answer));
        MaterialRecord rec = ReadyRecord("E-1", "Lab");
        rec.General.Density = 1.0f;
        ASSERT_TRUE(list->CommitList({rec}));
        if (mode == frm3New::kModeNew) form->DisplayNew();
        if (mode == frm3New::kModeEdit) form->DisplayEdit(rec);
        if (mode == frm3New::kModeReview) form->DisplayReview(rec);
        form->tabPropertiesChange(frm3New::kTabOther);
        if (change) {
            form->ssOther.SetText(2, 9, "4.2");
            form->ssOtherChange(2, 9);
        }
        dialogs.boxes.clear();
        dialogs.answers = {answer};
        closes = 0;
        form->comOKClick();
        ASSERT_EQ(dialogs.boxes.empty(), *question == '\0');
        if (*question != '\0') {
            EXPECT_EQ(std::tie(dialogs.boxes[0].text, dialogs.boxes[0].buttons),
                      std::tuple(question, MsgButtons::YesNoCancel));
        }
        EXPECT_EQ(std::tuple(form->IsOpen(), closes), std::tuple(!closed, closed ? 1 : 0));
        EXPECT_FLOAT_EQ(list->CustomList()[0].General.Density, savedDensity);
        form->ForceUnload();
    }
}

TEST_F(Form, OtherTabDensityStatusAndRemark) {
    form->DisplayNew();
    form->tabPropertiesChange(frm3New::kTabOther);
    EXPECT_EQ(form->ssOther.ClipText({1, 9, 3, 9}), "p [g/cm³]\t0.000\tDensity   [REQUIRED]");
    const std::string remark(120, 'q');
    const struct {
        int row;
        std::string typed;
        const char* cell;  // nullptr: not looked at
        const char* status;
    } steps[] = {{9, "0", nullptr, "Other: NOT Ready"},
                 {9, "2.5", "2.500", "Other: Ready"},
                 {9, "", nullptr, "Other: Ready"},
                 {22, "r", "R", "Other: Ready"},
                 {22, "x", "R", "Other: Ready"},
                 {24, remark + "qqqqqqqqqq", remark.c_str(), "Other: Ready"},
                 {3, "525", "0525", "Other: Ready"},
                 {1, "abc", nullptr, "Other: Ready"}};
    for (const auto& step : steps) {
        Type(form->ssOther, 2, step.row, step.typed);
        if (step.cell) {
            EXPECT_EQ(form->ssOther.Text(2, step.row), step.cell) << step.typed;
        }
        EXPECT_EQ(form->pnlStatus[4].caption, step.status) << step.typed;
    }
    const MaterialRecord& r = form->Record();
    EXPECT_FLOAT_EQ(r.General.Density, 2.5f);
    EXPECT_EQ((Texts{r.Other.Status.Text(), r.Other.REMark.Text(), r.Other.Tg.Text(),
                     r.Other.A3070.Text()}),
              (Texts{"R", remark, "525", ""}));

    form->comClearClick();
    EXPECT_EQ(std::tuple(form->pnlStatus[4].caption.get(), r.General.Density, r.Other.Tg.Text()),
              std::tuple("Other: NOT Ready", 0.0f, ""));
}

TEST_F(Form, DnDtModelsRouteBoxZeroToTheirOwnField) {
    form->DisplayNew();
    Choose(*form, form->lstThermal, 1, &frm3New::lstThermalClick);
    EXPECT_EQ((Texts{form->lblTherm[0].caption, form->lblDnDtLinear.caption}),
              (Texts{"dn/dt", "Abs. value 20°C at 546nm (e) [units: 10^-6/K]"}));
    EXPECT_FALSE(form->txtTherm[1].visible);
    form->txtTherm[0].text = "2.5";
    form->txtThermValidate(0);
    EXPECT_EQ(std::tuple(form->Record().Thermal.dndt_lin, form->txtTherm[0].text.get()),
              std::tuple(2.5f, "2.500e+00"));

    Choose(*form, form->lstThermal, 2, &frm3New::lstThermalClick);
    EXPECT_EQ((Texts{form->lblTherm[0].caption, form->lblTherm[6].caption}),
              (Texts{"D0", "ref. temp °C"}));
    EXPECT_TRUE(form->txtTherm[6].visible);
    form->txtTherm[0].text = "1.5e-6";
    form->txtThermValidate(0);
    form->txtTherm[6].text = "oops";
    form->txtThermValidate(6);
    const auto& t = form->Record().Thermal;
    EXPECT_EQ(std::tuple(t.dndt_D0, t.dndt_lin, t.dndt_RefTemp, form->txtTherm[6].text.get(),
                         form->txtTherm[6].countsAs.get()),
              std::tuple(1.5e-6f, 2.5f, 0.0f, "oops", "0.000e+00"));
}

}  // namespace
}  // namespace ostrel::testing
