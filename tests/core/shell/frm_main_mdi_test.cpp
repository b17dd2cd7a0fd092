#include "core/shell/frm_main_mdi.h"

#include "core/material/list_fixture.h"

namespace ostrel::testing {
namespace {

class FrmMainMdiTest : public ListFixture {
  protected:
    FrmMainMdiTest()
        : forms(dialogs, {}),
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
        main = std::make_unique<frmMainMDI>(forms, *list, dialogs, notes, newMsg, "Version: 3.0.1",
                                            hooks);
    }

    ManageForms forms;
    HelpNotes notes;
    MemorySettingsStore settings;
    CNewMsg newMsg;
    std::unique_ptr<frmMainMDI> main;
    std::vector<std::string> edits;
};

TEST_F(FrmMainMdiTest, PopupNamesTheMaterialEditPicksTheFormByMeltFlagAndDeleteRemoves) {
    main->PrepForPopup(2, "BK7/Schott");
    EXPECT_EQ(main->mnuPopup[1].caption, "&Edit");
    main->PrepForPopupMelt(1, "M/S");
    EXPECT_EQ(main->mnuPopupMelt[0].caption, "&Duplicate   M/S");
    EXPECT_EQ(main->mnuPopupMelt[1].caption, "&Edit");
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
