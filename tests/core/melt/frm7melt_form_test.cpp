#include <array>
#include <filesystem>

#include "core/materialform/verification.h"
#include "melt_fixture.h"

namespace ostrel::testing {
namespace {

// --- names ---

// Parent, source and code; the name kept and the key of the list.
TEST(MeltName, IsParentStarCodeCutTo30AndCaptionJoinsTheParts) {
    const std::array<std::array<const char*, 5>, 4> cases = {{
        {"BK7", "Schott", "m1234", "BK7 *m1234", "BK7 *M1234 [SCHOTT]"},
        {"  N-BK7", "[own]", "m1", "N-BK7 *m1", "N-BK7 *M1 [OWN]"},
        {"BK7", "", "m1", "BK7 *m1", "BK7 *M1"},
        // 27 characters leave room for " *" and one letter of the code.
        {"ABCDEFGHIJKLMNOPQRSTUVWXYZ1", "S", "m1234", "ABCDEFGHIJKLMNOPQRSTUVWXYZ1 *m",
         "ABCDEFGHIJKLMNOPQRSTUVWXYZ1 *M [S]"},
    }};
    for (const auto& [parent, source, code, name, key] : cases) {
        MaterialRecord rec = ClearedMaterialRecord();
        rec.Melt.MeltParentName.Set(parent);
        rec.Melt.MeltCode.Set(code);
        rec.General.Source.Set(source);
        EXPECT_EQ(BuildMeltName(rec), key);
        EXPECT_EQ(rec.General.GlassName.Text(), name);
    }
    // The caption joins source, name and code, or asks for a parent.
    const std::array<std::array<const char*, 4>, 2> captions = {{
        {" Schott ", "  BK7", "m1234 ", "Schott  BK7 *m1234"},
        {"", "", "", "<- select a parent glass for the melt"},
    }};
    for (const auto& [source, name, code, caption] : captions)
        EXPECT_EQ(MeltCaption(source, name, code), caption) << name;
}

// --- life cycle and controls ---

TEST_F(MeltFixture, NewFormWaitsForParentCodeAndFit) {
    EXPECT_FALSE(form->DisplayNew(false));
    ASSERT_FALSE(dialogs.boxes.empty());
    EXPECT_EQ(
        (Texts{dialogs.boxes[0].title, dialogs.boxes[0].text, form->form.caption,
               form->txtMeltCode.text, form->pnlStatus.caption}),
        (Texts{"Melt derivative",
               std::string(frm7Melt::NoticeText()) + "\nDo you want to see this message again?",
               "Melt glass: new", "Enter melt code!", "Index: NOT Ready"}));
    EXPECT_FALSE(form->pnlSide.visible || form->comClear.visible || form->comMeltSchott.enabled ||
                 form->comAdd.enabled || !form->ssRefInd.Column(6).hidden);

    nextMaker = "Schott";
    nextParent = "N-BK7";
    form->comParentClick();
    EXPECT_TRUE(form->comWaveSelRefInd.visible);
    // The prompt itself is no code.
    form->txtMeltCodeValidate();
    EXPECT_EQ((Texts{form->pnlPolyType.caption, form->lblMeltName.caption,
                     form->MeltRecord().Melt.MeltCode.Text()}),
              (Texts{"Sellmeier", "Schott  N-BK7  -  please enter a melt code!", ""}));
    Enter(*form, form->txtMeltCode, " m17 ", &frm7Melt::txtMeltCodeValidate);
    EXPECT_EQ(std::tuple(form->MeltRecord().Melt.MeltCode.Text(), form->comAdd.enabled.get()),
              std::tuple("m17", false));

    // An edit after a fit makes the index not ready again (the window test sees the rest).
    TypeOffsetPairs(kMainLines, 0.0002);
    form->comIndexFitClick();
    TypePair(5, "404.656", "");
    EXPECT_TRUE(form->comIndexFit.enabled && !form->comShowIndex.enabled);

    // Clear empties the table and the melt data.
    form->comIndexFitClick();
    form->MeltRecordForEdit().Melt.MeltTransThird[3] = 0.008;
    form->comClearClick();
    const auto& m = form->MeltRecord().Melt;
    EXPECT_EQ(std::tuple(m.MeltIndexPoints, m.MeltIndexWave[0], m.MeltTransThird[3],
                         form->MeltRecord().IndexState.Ready, form->ssRefInd.Text(2, 1),
                         form->comAdd.enabled.get()),
              std::tuple(0, 0.0f, 0.0, kFalse, "", false));
}

TEST_F(MeltFixture, SaveSortsTheListOffersOverwriteAndEditAndReviewOpenTheSavedMelt) {
    ASSERT_TRUE(list->AddAndSave(MakeRecord("ZZ glass", "Own"), false));

    FitNewMelt(0.003);
    ASSERT_TRUE(form->comAdd.enabled);
    dialogs.boxes.clear();
    form->comAddClick();
    EXPECT_TRUE(dialogs.boxes.empty() && form->Saved());
    ASSERT_EQ(list->CustomCount(), 2);
    const MaterialRecord saved = list->CustomList()[0];
    EXPECT_EQ(
        (Texts{saved.General.GlassName.Text(), saved.General.Source.Text(),
               saved.Melt.MeltParentName.Text(), list->CustomList()[1].General.GlassName.Text()}),
        (Texts{"N-BK7 *m1", "Schott", "N-BK7", "ZZ glass"}));
    EXPECT_EQ(std::tuple(saved.Melt.MeltFlag, saved.Melt.MeltIndexPoints, saved.DateChanged),
              std::tuple(kTrue, 4, 46349.5));
    // The derived numbers and the code are the melt's own, worked out from its polynomial.
    const auto& coef = saved.General.PolyCoef;
    ASSERT_EQ(saved.General.Polytype, 2);
    const double nd = SellmeierIndex(coef, 587.562),
                 vd = (nd - 1) / (SellmeierIndex(coef, 486.133) - SellmeierIndex(coef, 656.273));
    EXPECT_NEAR(saved.Derived.nd, nd, 6e-6);
    EXPECT_EQ(saved.General.GlassCode, std::lround((nd - 1) * 1000) * 1000 + std::lround(vd * 10));
    // The form starts again.
    EXPECT_EQ(std::tuple(form->MeltRecord().Melt.MeltParentName.Text(), form->comAdd.enabled.get(),
                         form->ssRefInd.Text(2, 1)),
              std::tuple("", false, ""));

    // The same melt again: asked, and left alone on No.
    FitNewMelt(0.0005);
    dialogs.boxes.clear();
    dialogs.answers.push_back(MsgAnswer::No);
    form->comAddClick();
    EXPECT_EQ(
        dialogs.boxes,
        (std::vector<ShownBox>{{"N-BK7 *M1 [SCHOTT] is already in your collection.\n\nDo you want "
                                "to overwrite the existing data?",
                                MsgButtons::YesNo, MsgIcon::Question, ""}}));
    EXPECT_NEAR(IndexOf(list->CustomList()[0], 587.562f) - IndexOf(form->ParentRecord(), 587.562f),
                0.003, 2e-6);

    // Edit and review open the saved melt.
    form->DisplayEdit(saved);
    EXPECT_EQ((Texts{form->form.caption, form->comAdd.caption,
                     form->ParentRecord().General.GlassName.Text(),
                     form->ssRefInd.ClipText({1, 1, 2, 1}), form->ssRefInd.Text(5, 1)}),
              (Texts{"Melt glass: edit", "Accept changes", "N-BK7", "C \t656.2730", "0.003000"}));
    EXPECT_EQ(
        std::tuple(form->MeltRecord().IndexState.Changes, form->ParentRecord().General.PolyCoef[0],
                   form->comAdd.enabled.get(), ownerStates),
        std::tuple(2, 1.03961212, true, std::vector<bool>{false}));
    form->comOKClick();
    EXPECT_EQ(ownerStates, (std::vector<bool>{false, true}));

    form->DisplayReview(saved);
    EXPECT_EQ((Texts{form->form.caption, form->comAdd.caption}),
              (Texts{"Melt glass: review", "&Save"}));
    EXPECT_EQ(Enabled({&form->comClear, &form->comWaveSelRefInd, &form->comClipPaste,
                       &form->comIndexFit, &form->comIndexSort, &form->comMeltSchott,
                       &form->comWaveBand, &form->comAdd, &form->lstWaveBand, &form->txtMeltCode}),
              std::vector<bool>(10, false));
    EXPECT_FALSE(form->ssRefInd.EditText(2, 5, "500"));
    form->ForceUnload();
    EXPECT_FALSE(form->Saved() || form->IsOpen());

    // Nothing to lose closes without asking: just opened, a saved melt opened for edit, and
    // a review whatever happens in it.
    for (int open = 0; open < 3; ++open) {
        if (open == 0) form->DisplayNew(false);
        if (open == 1) form->DisplayEdit(saved);
        if (open == 2) form->DisplayReview(saved), form->comIndexFitClick();
        dialogs.boxes.clear();
        form->comOKClick();
        EXPECT_TRUE(dialogs.boxes.empty() && !form->IsOpen());
    }

    // A melt whose parent has left the database still opens, with the database's word.
    MaterialRecord gone = ClearedMaterialRecord();
    gone.Melt.MeltParentName.Set("Gone");
    gone.Melt.MeltParentSource.Set("Schott");
    form->DisplayEdit(gone);
    EXPECT_EQ(std::tuple(dialogs.boxes.back().text, form->IsOpen()), std::tuple("no match", true));
}

TEST_F(MeltFixture, AnIncompleteRecordOrACatalogueNameIsRefused) {
    // A catalogue holding a name of 30 characters, which a melt of a parent of that name
    // cannot leave: the code is cut off entirely.
    const std::string longName = "ABCDEFGHIJKLMNOPQRSTUVWXYZ1234";
    WriteCatalogue(dir / "lumbrak", {{longName.c_str(), "Schott"}});
    list->LoadCatalogueNames((dir / "lumbrak").string());

    FitNewMelt(0.0);
    form->MeltRecordForEdit().OtherState.Ready = kFalse;
    dialogs.boxes.clear();
    form->comAddClick();
    ASSERT_EQ(dialogs.boxes.size(), 1u);
    EXPECT_EQ(dialogs.boxes[0].text,
              "Data for new material is incomplete.  Please add required information!");

    form->MeltRecordForEdit().OtherState.Ready = kTrue;
    form->MeltRecordForEdit().Melt.MeltParentName.Set(longName);
    form->comAddClick();
    ASSERT_EQ(dialogs.boxes.size(), 2u);
    EXPECT_EQ(std::tuple(dialogs.boxes[1].text, dialogs.boxes[1].icon, list->CustomCount(),
                         form->Saved()),
              std::tuple(longName + " [SCHOTT] is a catalog glass and cannot be overwritten!\n\n"
                                    "If you really want to use this data, then change the 'name' "
                                    "and /or 'source'.",
                         MsgIcon::Exclamation, 0, false));
}

// Closing by the form's own button with unsaved work asks first.
TEST_F(MeltFixture, UnsavedWorkIsOfferedForSavingOnClose) {
    // Code, fitted (or only typed), the answer, closed, and how many are saved.
    const std::tuple<const char*, bool, MsgAnswer, bool, int> cases[] = {
        {"m1", true, MsgAnswer::No, true, 0},
        {"m1", true, MsgAnswer::Cancel, false, 0},
        // Fitted but without a code: the save button is off, nothing is saved.
        {"", true, MsgAnswer::Yes, false, 0},
        {"m1", true, MsgAnswer::Yes, true, 1}};
    for (const auto& [code, fitted, answer, closed, savedCount] : cases) {
        SCOPED_TRACE(::testing::Message() << code << fitted << int(answer));
        Start("Schott", "N-BK7", code);
        TypeOffsetPairs(kMainLines, 0.0003);
        if (fitted) form->comIndexFitClick();
        dialogs.boxes.clear();
        dialogs.answers = {answer};
        form->comOKClick();
        ASSERT_FALSE(dialogs.boxes.empty());
        EXPECT_EQ(std::tuple(dialogs.boxes[0].text, dialogs.boxes[0].buttons, form->IsOpen(),
                             list->CustomCount()),
                  std::tuple("Save changes to N-BK7 *" + std::string(code) + "?",
                             MsgButtons::YesNoCancel, !closed, savedCount));
        // A Yes that cannot save says why, as the save button's own check does.
        const bool refused = answer == MsgAnswer::Yes && !closed;
        ASSERT_EQ(dialogs.boxes.size(), refused ? 2u : 1u);
        if (refused) {
            EXPECT_EQ(dialogs.boxes[1].text, frm7Melt::kIncompleteMsg);
        }
        form->ForceUnload();
    }
}

// --- wavebands ---

TEST_F(MeltFixture, WavebandsFillTheTableAndOneOfTheUsersIsSavedWithTheFixedOnes) {
    Start("Schott", "N-BK7", "m1");
    Choose(*form, form->lstWaveBand, 0, &frm7Melt::lstWaveBandClick);
    // 706.519 is not part of the standard band
    EXPECT_EQ((Texts{form->ssRefInd.ClipText({1, 1, 2, 1}), form->ssRefInd.Text(1, 4),
                     form->ssRefInd.Text(2, 5)}),
              (Texts{"C \t656.2730", "g ", ""}));
    Choose(*form, form->lstWaveBand, 1, &frm7Melt::lstWaveBandClick);
    EXPECT_EQ(form->ssRefInd.ClipText({1, 2, 2, 2}), "r \t706.5190");
    // Picked useful wavelengths fill from the active row.
    form->comClearClick();
    form->ssRefInd.SetActiveCell(2, 19);
    picker.picked = {656.273f, 587.562f, 486.133f};
    form->comWaveSelRefIndClick();
    EXPECT_EQ(form->ssRefInd.ClipText({1, 19, 2, 20}), "C \t656.2730\nd \t587.5620");
    picker.picked = {546.074f};
    form->ssRefInd.SetActiveCell(2, 2);
    form->comWaveSelRefIndClick();
    EXPECT_EQ(form->ssRefInd.ClipText({1, 2, 2, 2}), "e \t546.0740");

    form->comClearClick();
    TypePair(1, "486.133", "");
    TypePair(2, "1013.98", "");
    // Two wavelengths are too few: nothing happens.
    dialogs.inputs.push_back(std::string("Mine"));
    form->comWaveBandClick();
    const auto file = dir / "UserData" / "MeltWaveBand.lst";
    EXPECT_EQ(std::tuple(form->WaveBands().size(), std::filesystem::exists(file)),
              std::tuple(3u, false));

    TypePair(3, "656.273", "");
    dialogs.inputs.push_back(std::string("Mine"));
    form->comWaveBandClick();
    ASSERT_EQ(std::tuple(dialogs.prompts.back(), form->lstWaveBand.ListCount()),
              std::tuple("Enter a name for this waveband", 4));
    EXPECT_EQ(ReadFileBytes(file),
              "Ohara - advanced|10|852.11|706.519|656.273|643.847|587.562|546.074|486.133|"
              "479.991|435.834|404.656\n"
              "Schott - standard|7|656.273|643.847|587.562|546.074|486.133|479.991|435.834\n"
              "Mine|3|1013.98|656.273|486.133\n");

    // Opened again: five fixed rows and the user's.
    form->DisplayNew(false);
    EXPECT_EQ(std::tuple(form->lstWaveBand.Items(), form->lstWaveBand.ItemData(5)),
              std::tuple(Texts{"Ohara - standard", "Ohara - advanced", "Schott - standard",
                               "Ohara - advanced", "Schott - standard", "Mine"},
                         6));
}

// Each line is read on its own: too few wavelengths for the count, a count or a wavelength
// that is no number, a lone name and an empty line are dropped; fields past the count are not
// read.
TEST_F(MeltFixture, BadFileLinesAreDroppedAndTheRestRead) {
    std::filesystem::create_directories(dir / "UserData");
    WriteFileBytes(dir / "UserData" / "MeltWaveBand.lst",
                   "one|3|700|600|500\r\nshort|3|656.273|587.562\nbroken|4|700\ncount|x|656.273\n"
                   "wave|2|656.273|abc\nalone\n\nextra|3|656.273|587.562|486.133|400\nx|1|12.5\n");
    form->DisplayNew(false);
    ASSERT_EQ(form->WaveBands().size(), 6u);
    EXPECT_EQ(std::tuple(form->WaveBands()[3], form->WaveBands()[4], form->WaveBands()[5].Name),
              std::tuple((MeltWaveBand{"one", 3, {700.0f, 600.0f, 500.0f}}),
                         (MeltWaveBand{"extra", 3, {656.273f, 587.562f, 486.133f}}), "x"));
}

}  // namespace
}  // namespace ostrel::testing
