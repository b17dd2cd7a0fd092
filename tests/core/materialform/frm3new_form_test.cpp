#include <gtest/gtest.h>

#include <filesystem>

#include "core/material/material_record_codec.h"
#include "core/materialform/frm3new_fixture.h"

namespace ostrel::testing {
namespace {

using Form = Frm3NewFixture;

TEST_F(Form, NewMaterialReadsEditingAndHasOnlyDnDtReady) {
    form->DisplayNew();
    EXPECT_TRUE(form->IsOpen());
    EXPECT_EQ(form->form.caption, "Editing data  ");
    EXPECT_EQ(form->comAdd.caption, "Add to list");
    EXPECT_EQ(form->comAdd.toolTip, "Add this new material to the ostrel database");
    EXPECT_TRUE(form->lblGenNew.visible);
    const char* expected[] = {"General: NOT Ready", "Index: NOT Ready", "Trans: NOT Ready",
                              "dn/dt: Ready", "Other: NOT Ready"};
    for (size_t i = 0; i < 5; ++i) {
        EXPECT_EQ(form->pnlStatus[i].caption, expected[i]);
        EXPECT_EQ(form->pnlStatus[i].backColour, i == 3 ? kStatusGreen : kStatusRed);
    }
    EXPECT_EQ(form->txtTransGlassWidth.text, "10.0");
    EXPECT_EQ(form->Record().General.GlassKind, 8);
    EXPECT_EQ(form->Record().Other.Status.Text(), "A");
    EXPECT_TRUE(dialogs.boxes.empty());

    // The commands follow the tab.
    const struct {
        const char* paste;
        bool pasteOn;
        const char* clear;
        bool clearOn;
        bool waveOn;
    } tabs[] = {{"&Paste", false, "C&lear", false, false},
                {"&Paste index", true, "C&lear index", true, true},
                {"&Paste trans", true, "C&lear trans", true, true},
                {"&Paste", false, "C&lear dndt", true, false},
                {"&Paste", false, "C&lear other", true, false}};
    for (int tab = 0; tab < 5; ++tab) {
        SCOPED_TRACE(tab);
        const auto& c = tabs[tab];
        form->tabPropertiesChange(tab);
        EXPECT_EQ(form->comClipPaste.caption, c.paste);
        EXPECT_EQ(form->comClipPaste.enabled, c.pasteOn);
        EXPECT_EQ(form->comClear.caption, c.clear);
        EXPECT_EQ(form->comClear.enabled, c.clearOn);
        EXPECT_EQ(form->comWaveSelRefInd.enabled, c.waveOn);
    }
}

TEST_F(Form, TitleOfEditedMaterialAndReviewLocksEverything) {
    MaterialRecord rec = MakeRecord("N-AB", "Maker");
    form->DisplayEdit(rec);
    EXPECT_EQ(form->form.caption, "New material data  N-AB::Maker");
    EXPECT_EQ(form->comAdd.caption, "Accept changes");
    EXPECT_FALSE(form->lblGenNew.visible);
    form->DisplayEdit(MakeRecord("N-AB", ""));
    EXPECT_EQ(form->form.caption, "New material data  ?? ::");

    form->DisplayReview(rec);
    EXPECT_EQ(form->form.caption, "Reviewing data");
    // The window test sees the name box, the save button and the index grid locked.
    for (const Control* c : std::initializer_list<const Control*>{
             &form->comClear, &form->comClipPaste, &form->comWaveSelRefInd, &form->comIndexFit,
             &form->comTransSort, &form->comMelt, &form->lstThermal, &form->cmbTransType}) {
        EXPECT_FALSE(c->enabled);
    }
    form->tabPropertiesChange(frm3New::kTabIndex);
    EXPECT_FALSE(form->comClear.enabled);
    EXPECT_FALSE(form->ssOther.EditText(2, 9, "2.5"));
    form->comOKClick();
    EXPECT_FALSE(form->IsOpen());
    EXPECT_EQ(closes, 1);
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
    EXPECT_EQ(form->txtGenGlass.text, "N-A");
    EXPECT_EQ(form->pnlStatus[0].caption, "General: NOT Ready");
    EXPECT_EQ(form->form.caption, "Editing data  N-A::maker");

    // A name of the custom list passes here; saving asks about it.
    Enter(*form, form->txtGenGlass, "Mine", &frm3New::txtGenGlassChange);
    EXPECT_EQ(dialogs.boxes.size(), 1u);
    EXPECT_EQ(form->pnlStatus[0].caption, "General: Ready");

    // A name longer than the field is refused, not cut.
    Enter(*form, form->txtGenGlass, std::string(40, 'Z'), &frm3New::txtGenGlassChange);
    EXPECT_EQ(form->txtGenGlass.text, "Mine");
    EXPECT_EQ(form->Record().General.GlassName.Text(), "Mine");
}

// The whole road of a new material: every tab, then the save into the custom file.
TEST_F(Form, NewMaterialIsSavedAndTheFormIsReadyForTheNext) {
    form->DisplayNew();
    form->comAddClick();
    EXPECT_EQ(LastBox(), "Data for new material is incomplete.  Please add required information!");
    EXPECT_EQ(dialogs.boxes.back().icon, MsgIcon::Exclamation);

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
    EXPECT_EQ(saved.General.GlassName.Text(), "Glass-1");
    EXPECT_TRUE(AllSectionsReady(saved));
    EXPECT_EQ(saved.DateChanged, 46349.5);
    EXPECT_FLOAT_EQ(saved.Measured.TransWave[0], 700.0f);
    EXPECT_FLOAT_EQ(saved.General.Density, 2.51f);
    EXPECT_EQ(refreshes, 1);
    EXPECT_EQ(std::filesystem::file_size(Current()), 12964u);

    // Ready for the next material.
    EXPECT_EQ(form->form.caption, "Editing data  ");
    EXPECT_EQ(form->Record().General.IndexPoints, 0);
    EXPECT_EQ(form->pnlStatus[1].caption, "Index: NOT Ready");

    // The same name again: asked, and No keeps the saved one.
    MaterialRecord again = saved;
    again.General.GlassName.Set("Glass-2");
    again.General.Density = 3.0f;
    form->DisplayEdit(again);
    Enter(*form, form->txtGenGlass, "Glass-1", &frm3New::txtGenGlassChange);
    dialogs.answers.push_back(MsgAnswer::No);
    form->comAddClick();
    EXPECT_EQ(LastBox(),
              "Glass-1 - Lab is already in your collection.\nDo you want to overwrite the "
              "existing data?");
    EXPECT_EQ(dialogs.boxes.back().buttons, MsgButtons::YesNo);
    EXPECT_FLOAT_EQ(list->CustomList()[0].General.Density, 2.51f);
    EXPECT_EQ(list->CustomCount(), 1);
}

TEST_F(Form, EditedMaterialIsReplacedWithoutAQuestion) {
    MaterialRecord rec = ReadyRecord("E-1", "Lab");
    ASSERT_TRUE(list->ListAdd(rec, false));
    form->DisplayEdit(rec);
    form->tabPropertiesChange(frm3New::kTabOther);
    Type(form->ssOther, 2, 9, "4.2");
    form->comAddClick();
    EXPECT_TRUE(dialogs.boxes.empty()) << LastBox();
    ASSERT_EQ(list->CustomCount(), 1);
    EXPECT_FLOAT_EQ(list->CustomList()[0].General.Density, 4.2f);
    EXPECT_EQ(form->FormMode(), frm3New::kModeEdit);
    EXPECT_EQ(form->Record().GeneralState.Changes, 0);
}

// Closing with unsaved changes asks; Yes saves with the checks of comAdd and closes only when
// that saved, No drops the changes, Cancel keeps the form. Nothing changed, or a review: no
// question.
TEST_F(Form, CloseWithUnsavedChangesAsksAndSavesOnYes) {
    struct Case {
        const char* name;
        int16_t mode;
        bool change;
        MsgAnswer answer;
        const char* question;  // "" when no question
        bool closed;
        float savedDensity;  // density in the list afterwards
    } cases[] = {
        {"cancel", frm3New::kModeEdit, true, MsgAnswer::Cancel, "Save changes to E-1?", false, 1},
        {"no", frm3New::kModeEdit, true, MsgAnswer::No, "Save changes to E-1?", true, 1},
        {"yes", frm3New::kModeEdit, true, MsgAnswer::Yes, "Save changes to E-1?", true, 4.2f},
        {"yes, refused", frm3New::kModeNew, true, MsgAnswer::Yes,
         "Save changes to the new material?", false, 1},
        {"unchanged", frm3New::kModeEdit, false, MsgAnswer::Cancel, "", true, 1},
        {"review", frm3New::kModeReview, true, MsgAnswer::Cancel, "", true, 1},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        MaterialRecord rec = ReadyRecord("E-1", "Lab");
        rec.General.Density = 1.0f;
        ASSERT_TRUE(list->CommitList({rec}));
        if (c.mode == frm3New::kModeNew) form->DisplayNew();
        if (c.mode == frm3New::kModeEdit) form->DisplayEdit(rec);
        if (c.mode == frm3New::kModeReview) form->DisplayReview(rec);
        form->tabPropertiesChange(frm3New::kTabOther);
        if (c.change) {
            form->ssOther.SetText(2, 9, "4.2");
            form->ssOtherChange(2, 9);
        }
        dialogs.boxes.clear();
        dialogs.answers = {c.answer};
        closes = 0;
        form->comOKClick();
        ASSERT_EQ(dialogs.boxes.empty(), *c.question == '\0');
        if (*c.question != '\0') {
            EXPECT_EQ(dialogs.boxes[0].text, c.question);
            EXPECT_EQ(dialogs.boxes[0].buttons, MsgButtons::YesNoCancel);
        }
        EXPECT_EQ(form->IsOpen(), !c.closed);
        EXPECT_EQ(closes, c.closed ? 1 : 0);
        EXPECT_FLOAT_EQ(list->CustomList()[0].General.Density, c.savedDensity);
        form->ForceUnload();
    }
}

TEST_F(Form, OtherTabDensityStatusAndRemark) {
    form->DisplayNew();
    form->tabPropertiesChange(frm3New::kTabOther);
    EXPECT_EQ(form->ssOther.ClipText({1, 9, 3, 9}), "p [g/cm³]\t0.000\tDensity   [REQUIRED]");
    Type(form->ssOther, 2, 9, "0");
    EXPECT_EQ(form->pnlStatus[4].caption, "Other: NOT Ready");
    Type(form->ssOther, 2, 9, "2.5");
    EXPECT_EQ(form->pnlStatus[4].caption, "Other: Ready");
    EXPECT_EQ(form->ssOther.Text(2, 9), "2.500");
    Type(form->ssOther, 2, 9, "");
    EXPECT_EQ(form->pnlStatus[4].caption, "Other: Ready");
    EXPECT_FLOAT_EQ(form->Record().General.Density, 2.5f);

    Type(form->ssOther, 2, 22, "r");
    EXPECT_EQ(form->ssOther.Text(2, 22), "R");
    Type(form->ssOther, 2, 22, "x");
    EXPECT_EQ(form->Record().Other.Status.Text(), "R");
    EXPECT_EQ(form->ssOther.Text(2, 22), "R");

    Type(form->ssOther, 2, 24, std::string(130, 'q'));
    EXPECT_EQ(form->Record().Other.REMark.Text(), std::string(120, 'q'));
    EXPECT_EQ(form->ssOther.Text(2, 24), std::string(120, 'q'));

    Type(form->ssOther, 2, 3, "525");
    EXPECT_EQ(form->Record().Other.Tg.Text(), "525");
    EXPECT_EQ(form->ssOther.Text(2, 3), "0525");
    Type(form->ssOther, 2, 1, "abc");
    EXPECT_EQ(form->Record().Other.A3070.Text(), "");

    form->comClearClick();
    EXPECT_EQ(form->pnlStatus[4].caption, "Other: NOT Ready");
    EXPECT_EQ(form->Record().General.Density, 0.0f);
    EXPECT_EQ(form->Record().Other.Tg.Text(), "");
}

TEST_F(Form, DnDtModelsRouteBoxZeroToTheirOwnField) {
    form->DisplayNew();
    Choose(*form, form->lstThermal, 1, &frm3New::lstThermalClick);
    EXPECT_EQ(form->lblTherm[0].caption, "dn/dt");
    EXPECT_EQ(form->lblDnDtLinear.caption, "Abs. value 20°C at 546nm (e) [units: 10^-6/K]");
    EXPECT_FALSE(form->txtTherm[1].visible);
    form->txtTherm[0].text = "2.5";
    form->txtThermValidate(0);
    EXPECT_FLOAT_EQ(form->Record().Thermal.dndt_lin, 2.5f);
    EXPECT_EQ(form->txtTherm[0].text, "2.500e+00");

    Choose(*form, form->lstThermal, 2, &frm3New::lstThermalClick);
    EXPECT_EQ(form->lblTherm[0].caption, "D0");
    EXPECT_EQ(form->lblTherm[6].caption, "ref. temp °C");
    EXPECT_TRUE(form->txtTherm[6].visible);
    form->txtTherm[0].text = "1.5e-6";
    form->txtThermValidate(0);
    form->txtTherm[6].text = "oops";
    form->txtThermValidate(6);
    EXPECT_FLOAT_EQ(form->Record().Thermal.dndt_D0, 1.5e-6f);
    EXPECT_FLOAT_EQ(form->Record().Thermal.dndt_lin, 2.5f);
    EXPECT_EQ(form->Record().Thermal.dndt_RefTemp, 0.0f);
    EXPECT_EQ(form->txtTherm[6].text, "oops") << "kept as typed";
    EXPECT_EQ(form->txtTherm[6].countsAs, "0.000e+00");
}

}  // namespace
}  // namespace ostrel::testing
