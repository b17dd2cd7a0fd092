#include "core/shell/manage_forms.h"
#include "core/shell/frm_main_mdi.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "core/material/list_fixture.h"
#include "support/scripted_dialogs.h"

namespace ostrel::testing {
namespace {

// Logs its Display and ForceUnload calls as "show n" and "unload n", comma separated; counts
// the QueryClose questions and answers them with `agree`.
class FakeForm : public WorkingForm {
  public:
    FakeForm(int n, std::string& log) : n_(n), log_(log) {}
    void Display() override { Log("show "); }
    void ForceUnload() override { Log("unload "); }
    bool QueryClose() override { return ++asked, agree; }
    bool agree = true;
    int asked = 0;

  private:
    void Log(const char* what) {
        log_ += std::string(log_.empty() ? "" : ", ") + what + std::to_string(n_);
    }
    int n_;
    std::string& log_;
};

class RibbonTest : public ::testing::Test {
  protected:
    RibbonTest() {
        hooks.kelmoraFound = [] { return true; };
        hooks.updateWallPaper = [this] { ++wallpapers; };
        Build();
    }
    // A fresh strip with no form open and the seven forms registered.
    void Build() {
        calls.clear();
        dialogs.boxes.clear();
        fakes.clear();
        forms = std::make_unique<ManageForms>(dialogs, hooks);
        for (int n = 1; n <= 7; ++n) {
            fakes.push_back(std::make_unique<FakeForm>(n, calls));
            forms->RegisterForm(n, fakes.back().get());
        }
    }
    bool Unloaded(int n) const { return calls.find("unload " + std::to_string(n)) != calls.npos; }

    ScriptedDialogs dialogs;
    ManageForms::Hooks hooks;
    int wallpapers = 0;
    std::string calls;
    std::vector<std::unique_ptr<FakeForm>> fakes;
    std::unique_ptr<ManageForms> forms;
};

TEST_F(RibbonTest, ClickFollowsTheStateTable) {
    const struct {
        const char* name;
        int openForm;  // form open before the click
        bool newOpen, meltOpen;
        int button;
        bool pressed;
        const char* calls;
        int currentAfter;
    } rows[] = {
        {"NonePress6WithKelmora", 0, false, false, 6, true, "show 6", 6},
        {"NoneRelease", 0, false, false, 4, false, "", 0},
        {"NonePressClosesNewForm", 0, true, false, 5, true, "unload 3, show 5", 5},
        {"NonePressClosesMeltForm", 0, false, true, 2, true, "unload 7, show 2", 2},
        {"ManageReleaseClosesSideForms", 2, true, true, 2, false, "unload 3, unload 7, unload 2",
         0},
        {"ManagePressOwn", 2, false, false, 2, true, "", 2},
        {"ManagePress3KeepsIt", 2, false, false, 3, true, "", 2},
        {"ImportPress3KeepsIt", 4, false, false, 3, true, "", 4},
        {"ManagePress4ClosesNewForm", 2, true, false, 4, true, "unload 3, unload 2, show 4", 4},
        {"ExportRelease", 5, false, false, 5, false, "unload 5", 0},
        {"ExportPress7", 5, false, false, 7, true, "unload 5, show 7", 7},
        {"ExportPressOwn", 5, false, false, 5, true, "", 5},
        {"SetupPressedFromManage", 2, false, false, 1, true, "unload 2, show 1", 1}};
    for (const auto& r : rows) {
        SCOPED_TRACE(r.name);
        Build();
        forms->SetCurrentForm(r.openForm);
        if (r.openForm) forms->ribTools[r.openForm].value = true;
        forms->SetNewFormOpen(r.newOpen);
        forms->SetMeltFormOpen(r.meltOpen);
        if (r.newOpen) forms->ribTools[3].value = true;

        forms->RibbonClick(r.button, r.pressed);

        EXPECT_EQ(calls, r.calls);
        EXPECT_EQ(forms->GetCurrentForm(), r.currentAfter);
        EXPECT_TRUE(dialogs.boxes.empty());
        // A form that was closed has its tool released and its flag cleared; the open one is
        // down.
        for (int n = 1; n <= 7; ++n)
            if (n == r.currentAfter || Unloaded(n)) {
                EXPECT_EQ(forms->ribTools[n].value.get(), n == r.currentAfter) << n;
            }
        EXPECT_FALSE(Unloaded(3) && forms->GetNewFormOpen());
        EXPECT_FALSE(Unloaded(7) && forms->GetMeltFormOpen());
    }
}

TEST_F(RibbonTest, WallpaperChangesForEveryWorkingFormShownButNotForTheSetupAndTheEndClosesAll) {
    forms->RibbonClick(1, true);
    forms->RibbonClick(1, false);
    forms->RibbonClick(2, true);
    EXPECT_EQ(wallpapers, 1);
    forms->RibbonClick(3, true);  // beside the manage form: nothing shown, wallpaper anew
    EXPECT_EQ(calls, "show 1, unload 1, show 2");
    EXPECT_EQ(wallpapers, 2);

    // At the end every open form is closed, once.
    forms->SetNewFormOpen(true);
    calls.clear();
    forms->UnloadAll();
    EXPECT_EQ(std::tuple(calls, forms->GetCurrentForm(), forms->GetNewFormOpen(),
                         forms->ribTools[2].value.get()),
              std::tuple("unload 3, unload 2", 0, false, false));
    calls.clear();
    forms->UnloadAll();
    forms->HideForm(0);
    EXPECT_EQ(calls, "");
}

TEST_F(RibbonTest, EditOpensTheMaterialFormBesideTheManageFormOrInPlaceOfTheOpenOne) {
    forms->RibbonClick(2, true);
    calls.clear();
    // The calls, the new form beside, its tool, the current form and its tool.
    auto state = [this] {
        return std::tuple(calls, forms->GetNewFormOpen(), forms->ribTools[3].value.get(),
                          forms->GetCurrentForm(), forms->ribTools[2].value.get());
    };
    forms->OpenForEdit(3);
    EXPECT_EQ(state(), std::tuple("", true, true, 2, true)) << "the caller fills the form itself";
    forms->FormClosed(3);
    EXPECT_EQ(state(), std::tuple("unload 3", false, false, 2, true)) << "the manage form stays";

    // With no manage form open, the material form becomes the current one.
    Build();
    forms->RibbonClick(5, true);
    calls.clear();
    forms->OpenForEdit(3);
    EXPECT_EQ(state(), std::tuple("unload 5, show 3", false, true, 3, false));
    forms->OpenForEdit(3);  // already the current form: nothing more
    forms->FormClosed(3);
    EXPECT_EQ(state(), std::tuple("unload 5, show 3, unload 3", false, false, 0, false));
}

// A form that refuses to close (unsaved changes kept) stops the click that would close it:
// nothing closes or opens and the clicked tool goes back. Agreeing, the same click goes on.
TEST_F(RibbonTest, FormThatRefusesToCloseStopsTheClick) {
    struct Case {
        const char* name;
        int open;
        bool newBeside;
        int refuser, button;
        bool pressed;
    } cases[] = {
        {"release current", 5, false, 5, 5, false},
        {"press another", 3, false, 3, 7, true},
        {"release manage, new beside", 2, true, 3, 2, false},
        {"press import from manage, new beside", 2, true, 3, 4, true},
        {"press with the new form left open", 0, true, 3, 5, true},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        forms->UnloadAll();
        forms->SetCurrentForm(c.open);
        if (c.open) forms->ribTools[c.open].value = true;
        forms->SetNewFormOpen(c.newBeside);
        forms->ribTools[3].value = c.newBeside || c.open == 3;
        FakeForm& refuser = *fakes[c.refuser - 1];
        refuser.agree = false;
        refuser.asked = 0;
        calls.clear();
        forms->RibbonClick(c.button, c.pressed);
        EXPECT_EQ(refuser.asked, 1);
        EXPECT_EQ(calls, "");
        EXPECT_EQ(forms->GetCurrentForm(), c.open);
        EXPECT_EQ(forms->GetNewFormOpen(), c.newBeside);
        EXPECT_EQ(forms->ribTools[c.button].value, !c.pressed);

        refuser.agree = true;
        forms->RibbonClick(c.button, c.pressed);
        EXPECT_NE(calls.find("unload " + std::to_string(c.refuser)), std::string::npos) << calls;
    }
}

// Before the end every open form is asked, those beside the manage form first; one refusal
// ends the asking. A form closed by its own command has asked already.
TEST_F(RibbonTest, EndAndEditAskTheOpenForms) {
    forms->RibbonClick(2, true);
    forms->OpenForEdit(3);
    forms->OpenForEdit(7);
    fakes[6]->agree = false;
    auto asked = [this] { return std::tuple(fakes[1]->asked, fakes[2]->asked, fakes[6]->asked); };
    EXPECT_FALSE(forms->QueryCloseAll());
    EXPECT_EQ(asked(), std::tuple(0, 1, 1));
    // Editing another record in the open melt form replaces what it holds: asked too.
    EXPECT_FALSE(forms->OpenForEdit(7));
    fakes[6]->agree = true;
    EXPECT_TRUE(forms->QueryCloseAll());
    EXPECT_EQ(fakes[1]->asked, 1);

    for (auto& f : fakes) f->asked = 0;
    for (int n : {3, 7, 2}) forms->FormClosed(n);
    for (auto& f : fakes) EXPECT_EQ(f->asked, 0);
    EXPECT_EQ(forms->GetCurrentForm(), 0);
}

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
    main->PrepForPopupMelt(1, "M/S");
    EXPECT_EQ(main->mnuPopupMelt[0].caption, "&Duplicate   M/S");
    MaterialRecord melt = MakeRecord("M", "S");
    melt.Melt.MeltFlag = kTrue;
    list->ListAdd(MakeRecord("A", "S"), false);
    list->ListAdd(melt, false);
    // Edit from the material's menu, the last on no such material, then from the melt menu.
    for (const auto& [row, name] :
         {std::pair(2, "M/S"), std::pair(1, "A/S"), std::pair(3, "none")}) {
        main->PrepForPopup(row, name);
        main->mnuPopupClick(1);
    }
    main->PrepForPopupMelt(2, "M/S");
    main->mnuPopupMeltClick(1);
    EXPECT_EQ(edits, (std::vector<std::string>{"melt 2", "new 1", "new 2"}));

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
