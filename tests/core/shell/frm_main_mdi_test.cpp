#include "core/shell/frm_main_mdi.h"

#include "core/material/list_fixture.h"
#include "core/platform/maker.h"

namespace ostrel::testing {
namespace {

class FrmMainMdiTest : public ListFixture {
  protected:
    FrmMainMdiTest()
        : forms(dialogs, {[this] { return kelmora; }, [this] { return firstLoad; }, [] {}}),
          notes(dialogs, [this] { return forms.GetCurrentForm(); }),
          newMsg(dialogs, settings) {
        Fresh();
        frmMainMDI::Hooks hooks;
        hooks.editInNewForm = [this](int i, const MaterialRecord&) {
            edits.push_back("new " + std::to_string(i));
        };
        hooks.editInMeltForm = [this](int i, const MaterialRecord&) {
            edits.push_back("melt " + std::to_string(i));
        };
        hooks.unload = [this] { ++unloads; };
        main = std::make_unique<frmMainMDI>(forms, *list, dialogs, notes, newMsg, "Version: 3.0.1",
                                            hooks);
    }

    bool kelmora = false;
    bool firstLoad = false;
    ManageForms forms;
    HelpNotes notes;
    MemorySettingsStore settings;
    CNewMsg newMsg;
    std::unique_ptr<frmMainMDI> main;
    std::vector<std::string> edits;
    int unloads = 0;
};

TEST_F(FrmMainMdiTest, LoadSetsCaptionToolsAndPanels) {
    EXPECT_EQ(main->form.caption, "Ostrel for Lumbrak3D/SextaneTD & KelmoraTD");
    main->Load(false, {true, false, true});
    EXPECT_EQ(main->form.caption,
              std::string(maker::kName) + " - Ostrel for Lumbrak & KelmoraTD:   Version: 3.0.1");
    for (int n = 1; n <= 7; ++n) EXPECT_TRUE(forms.ribTools[n].enabled) << n;
    EXPECT_EQ(main->pnlInstalled[0].caption, " KelmoraTD found");
    EXPECT_EQ(main->pnlInstalled[1].caption, " Lumbrak3D not found");
    EXPECT_EQ(main->pnlInstalled[2].caption, " SextaneTD found");
    EXPECT_EQ(main->pnlInstalled[0].backColour, kStatusGreen);
    EXPECT_EQ(main->pnlInstalled[1].backColour, kStatusRed);
    EXPECT_EQ(forms.GetCurrentForm(), 0);
}

TEST_F(FrmMainMdiTest, FirstLoadPressesSetupWithTheOtherToolsOff) {
    firstLoad = true;
    main->Load(true, {});
    EXPECT_FALSE(forms.ribTools[2].enabled);
    EXPECT_EQ(forms.GetCurrentForm(), kFormSetup);
    EXPECT_EQ(main->pnlInstalled[0].caption, "") << "panels stay untouched until the setup";
}

TEST_F(FrmMainMdiTest, PopupCaptionsNameTheMaterial) {
    main->PrepForPopup(2, "BK7/Schott");
    EXPECT_EQ(main->mnuPopup[1].caption, "&Edit");
    main->PrepForPopupMelt(1, "M/S");
    EXPECT_EQ(main->mnuPopupMelt[0].caption, "&Duplicate   M/S");
    EXPECT_EQ(main->mnuPopupMelt[1].caption, "&Edit");
}

TEST_F(FrmMainMdiTest, PopupEditPicksTheFormByMeltFlagAndDeleteRemoves) {
    MaterialRecord melt = MakeRecord("M", "S");
    melt.Melt.MeltFlag = kTrue;
    list->ListAdd(MakeRecord("A", "S"), false);
    list->ListAdd(melt, false);
    main->PrepForPopup(2, "M/S");
    main->mnuPopupClick(1);
    main->PrepForPopupMelt(2, "M/S");
    main->mnuPopupMeltClick(1);
    main->PrepForPopup(1, "A/S");
    main->mnuPopupClick(1);
    main->PrepForPopup(3, "none");
    main->mnuPopupClick(1);  // no such material
    EXPECT_EQ(edits, (std::vector<std::string>{"melt 2", "new 2", "new 1"}));

    main->PrepForPopup(1, "A/S");
    main->mnuPopupClick(2);  // answered Yes
    ASSERT_EQ(list->CustomCount(), 1);
    EXPECT_EQ(list->CustomList()[0].General.GlassName.Text(), "M");
}

TEST_F(FrmMainMdiTest, HelpLineFollowsTheMouseAndTheEndButtonUnloads) {
    main->ribToolsMouseMove(3);
    main->ribEndMouseMove();
    ASSERT_EQ(dialogs.helpNotes.size(), 2u);
    EXPECT_EQ(dialogs.helpNotes[0].rfind("Form to create a new material, ", 0), 0u);
    EXPECT_EQ(dialogs.helpNotes[1], "");
    EXPECT_EQ(unloads, 0);
    main->ribEndClick();
    EXPECT_EQ(unloads, 1);
}

// The end button and the window's close box end the program only when the open form agrees.
TEST_F(FrmMainMdiTest, EndWaitsForTheOpenFormToAgree) {
    struct Form : WorkingForm {
        void Display() override {}
        void ForceUnload() override {}
        bool QueryClose() override {
            ++asked;
            return agree;
        }
        bool agree = false;
        int asked = 0;
    } open;
    forms.RegisterForm(kFormExport, &open);
    forms.RibbonClick(kFormExport, true);
    main->ribEndClick();
    EXPECT_FALSE(main->QueryUnload());
    EXPECT_EQ(open.asked, 2);
    EXPECT_EQ(unloads, 0);
    open.agree = true;
    main->ribEndClick();
    EXPECT_EQ(unloads, 1);
    EXPECT_EQ(open.asked, 3);
}

TEST_F(FrmMainMdiTest, WallpaperNeverRepeats) {
    int last = 0;
    for (int i = 0; i < 50; ++i) {
        main->UpdateWallPaper();
        const int now = main->picWallpaper.picture;
        EXPECT_NE(now, last);
        EXPECT_GE(now, 1);
        EXPECT_LE(now, frmMainMDI::kWallpaperCount);
        last = now;
    }
}

}  // namespace
}  // namespace ostrel::testing
