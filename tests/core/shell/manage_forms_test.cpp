#include "core/shell/manage_forms.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "support/scripted_dialogs.h"

namespace ostrel {
namespace {

using ostrel::testing::ScriptedDialogs;

class FakeForm : public WorkingForm {
  public:
    FakeForm(int n, std::vector<std::string>& log) : n_(n), log_(log) {}
    void Display() override { log_.push_back("show " + std::to_string(n_)); }
    void ForceUnload() override { log_.push_back("unload " + std::to_string(n_)); }

  private:
    int n_;
    std::vector<std::string>& log_;
};

struct Row {
    const char* name;
    int openForm;  // form open before the click
    bool newOpen;
    bool meltOpen;
    bool kelmora;
    int button;
    bool pressed;
    std::vector<std::string> calls;  // Display / ForceUnload calls, in order
    int currentAfter;
    bool boxShown;
};

void PrintTo(const Row& r, std::ostream* os) {
    *os << r.name;
}

class RibbonClickTest : public ::testing::TestWithParam<Row> {
  protected:
    RibbonClickTest() {
        hooks.kelmoraFound = [this] { return kelmora; };
        hooks.firstLoad = [this] { return firstLoad; };
        hooks.updateWallPaper = [this] { ++wallpapers; };
        forms = std::make_unique<ManageForms>(dialogs, hooks);
        for (int n = 1; n <= 7; ++n) {
            fakes.push_back(std::make_unique<FakeForm>(n, calls));
            forms->RegisterForm(n, fakes.back().get());
        }
    }

    ScriptedDialogs dialogs;
    ManageForms::Hooks hooks;
    bool kelmora = true;
    bool firstLoad = false;
    int wallpapers = 0;
    std::vector<std::string> calls;
    std::vector<std::unique_ptr<FakeForm>> fakes;
    std::unique_ptr<ManageForms> forms;
};

TEST_P(RibbonClickTest, FollowsTheStateTable) {
    const Row& r = GetParam();
    kelmora = r.kelmora;
    forms->SetCurrentForm(r.openForm);
    if (r.openForm) forms->ribTools[r.openForm].value = true;
    forms->SetNewFormOpen(r.newOpen);
    forms->SetMeltFormOpen(r.meltOpen);
    if (r.newOpen) forms->ribTools[3].value = true;

    forms->RibbonClick(r.button, r.pressed);

    EXPECT_EQ(calls, r.calls);
    EXPECT_EQ(forms->GetCurrentForm(), r.currentAfter);
    if (r.boxShown) {
        ASSERT_EQ(dialogs.boxes.size(), 1u);
        EXPECT_EQ(dialogs.boxes[0].text,
                  "You cannot use the 'Archive' form until Kelmora is installed!");
        EXPECT_EQ(dialogs.boxes[0].icon, MsgIcon::Information);
    } else {
        EXPECT_TRUE(dialogs.boxes.empty());
    }
    // A form that was closed has its tool button released; the one now open is down.
    for (const std::string& c : r.calls) {
        if (c.rfind("unload ", 0) == 0) {
            int n = std::stoi(c.substr(7));
            if (n != r.currentAfter) {
                EXPECT_FALSE(forms->ribTools[n].value) << c;
            }
        }
    }
    if (r.currentAfter) {
        EXPECT_TRUE(forms->ribTools[r.currentAfter].value);
    }
    // Unloading the side forms clears their flags.
    for (const std::string& c : r.calls) {
        if (c == "unload 3") {
            EXPECT_FALSE(forms->GetNewFormOpen());
        }
        if (c == "unload 7") {
            EXPECT_FALSE(forms->GetMeltFormOpen());
        }
    }
}

INSTANTIATE_TEST_SUITE_P(
    Rows, RibbonClickTest,
    ::testing::Values(
        Row{"NonePress2", 0, false, false, true, 2, true, {"show 2"}, 2, false},
        Row{"NonePress6WithoutKelmora", 0, false, false, false, 6, true, {}, 0, true},
        Row{"NonePress6WithKelmora", 0, false, false, true, 6, true, {"show 6"}, 6, false},
        Row{"NoneRelease", 0, false, false, true, 4, false, {}, 0, false},
        Row{"NonePressClosesNewForm",
            0,
            true,
            false,
            true,
            5,
            true,
            {"unload 3", "show 5"},
            5,
            false},
        Row{"NonePressClosesMeltForm",
            0,
            false,
            true,
            true,
            2,
            true,
            {"unload 7", "show 2"},
            2,
            false},
        Row{"ManageRelease", 2, false, false, true, 2, false, {"unload 2"}, 0, false},
        Row{"ManageReleaseClosesSideForms",
            2,
            true,
            true,
            true,
            2,
            false,
            {"unload 3", "unload 7", "unload 2"},
            0,
            false},
        Row{"ManagePressOwn", 2, false, false, true, 2, true, {}, 2, false},
        Row{"ManagePress3KeepsIt", 2, false, false, true, 3, true, {}, 2, false},
        Row{"ImportPress3KeepsIt", 4, false, false, true, 3, true, {}, 4, false},
        Row{"ManagePress4ClosesNewForm",
            2,
            true,
            false,
            true,
            4,
            true,
            {"unload 3", "unload 2", "show 4"},
            4,
            false},
        Row{"ImportPress7", 4, false, false, true, 7, true, {"unload 4", "show 7"}, 7, false},
        Row{"ImportRelease", 4, false, false, true, 4, false, {"unload 4"}, 0, false},
        Row{"ExportRelease", 5, false, false, true, 5, false, {"unload 5"}, 0, false},
        Row{"ExportPress7", 5, false, false, true, 7, true, {"unload 5", "show 7"}, 7, false},
        Row{"ExportPressOwn", 5, false, false, true, 5, true, {}, 5, false},
        Row{"NewPress2", 3, false, false, true, 2, true, {"unload 3", "show 2"}, 2, false},
        Row{"MeltRelease", 7, false, false, true, 7, false, {"unload 7"}, 0, false},
        Row{"SetupPressedFromManage",
            2,
            false,
            false,
            true,
            1,
            true,
            {"unload 2", "show 1"},
            1,
            false},
        Row{"SetupRelease", 1, false, false, true, 1, false, {"unload 1"}, 0, false}),
    [](const ::testing::TestParamInfo<Row>& info) { return std::string(info.param.name); });

TEST_F(RibbonClickTest, Button6WithoutKelmoraLeavesTheButtonReleased) {
    kelmora = false;
    forms->RibbonClick(6, true);
    EXPECT_FALSE(forms->ribTools[6].value);
    EXPECT_EQ(forms->GetCurrentForm(), 0);
}

TEST_F(RibbonClickTest, Button3FromManageOpensNothingButRefreshesTheWallpaper) {
    forms->RibbonClick(2, true);
    EXPECT_EQ(wallpapers, 1);
    forms->RibbonClick(3, true);
    EXPECT_EQ(calls, std::vector<std::string>{"show 2"});
    EXPECT_EQ(wallpapers, 2);
}

TEST_F(RibbonClickTest, SetupShowsWithoutWallpaper) {
    forms->RibbonClick(1, true);
    EXPECT_EQ(calls, std::vector<std::string>{"show 1"});
    EXPECT_EQ(wallpapers, 0);
}

TEST_F(RibbonClickTest, ToolsStayOffUntilTheSetupHasClosedOnTheFirstRun) {
    firstLoad = true;
    forms->EnableTools();
    for (int n = 2; n <= 7; ++n) EXPECT_FALSE(forms->ribTools[n].enabled) << n;
    EXPECT_TRUE(forms->ribTools[1].enabled);
    EXPECT_TRUE(forms->ribEnd.enabled);

    forms->RibbonClick(1, true);
    for (int n = 2; n <= 7; ++n) EXPECT_FALSE(forms->ribTools[n].enabled) << n;

    // Closing the setup (by OK or Cancel) ends the first run and releases its button.
    firstLoad = false;
    forms->RibbonClick(1, false);
    for (int n = 2; n <= 7; ++n) EXPECT_TRUE(forms->ribTools[n].enabled) << n;
    EXPECT_FALSE(forms->ribTools[1].value);
    EXPECT_EQ(forms->GetCurrentForm(), 0);
}

TEST_F(RibbonClickTest, HideFormOfNothingDoesNothing) {
    forms->HideForm(0);
    EXPECT_TRUE(calls.empty());
}

TEST_F(RibbonClickTest, UnloadAllAtTheEndClosesEveryOpenForm) {
    forms->RibbonClick(2, true);
    forms->SetNewFormOpen(true);
    calls.clear();
    forms->UnloadAll();
    EXPECT_EQ(calls, (std::vector<std::string>{"unload 3", "unload 2"}));
    EXPECT_EQ(forms->GetCurrentForm(), 0);
    EXPECT_FALSE(forms->GetNewFormOpen());
    EXPECT_FALSE(forms->ribTools[2].value);
    calls.clear();
    forms->UnloadAll();
    EXPECT_TRUE(calls.empty());
}

TEST_F(RibbonClickTest, EditFromManageOpensTheMaterialFormBesideItAndClosesItAlone) {
    forms->RibbonClick(2, true);
    calls.clear();
    forms->OpenForEdit(3);
    EXPECT_TRUE(calls.empty()) << "the caller fills the form itself";
    EXPECT_TRUE(forms->GetNewFormOpen());
    EXPECT_TRUE(forms->ribTools[3].value);
    EXPECT_EQ(forms->GetCurrentForm(), 2);

    forms->FormClosed(3);
    EXPECT_EQ(calls, std::vector<std::string>{"unload 3"});
    EXPECT_FALSE(forms->GetNewFormOpen());
    EXPECT_FALSE(forms->ribTools[3].value);
    EXPECT_EQ(forms->GetCurrentForm(), 2) << "the manage form stays";
    EXPECT_TRUE(forms->ribTools[2].value);
}

TEST_F(RibbonClickTest, EditWithNoFormOpenMakesTheMaterialFormCurrent) {
    forms->RibbonClick(5, true);
    calls.clear();
    forms->OpenForEdit(3);
    EXPECT_EQ(calls, (std::vector<std::string>{"unload 5", "show 3"}));
    EXPECT_EQ(forms->GetCurrentForm(), 3);
    EXPECT_FALSE(forms->GetNewFormOpen());
    calls.clear();
    forms->OpenForEdit(3);
    EXPECT_TRUE(calls.empty()) << "already the current form";

    forms->FormClosed(3);
    EXPECT_EQ(calls, std::vector<std::string>{"unload 3"});
    EXPECT_EQ(forms->GetCurrentForm(), 0);
    EXPECT_FALSE(forms->ribTools[3].value);
}

TEST(ManageFormsToolTips, NameEachTool) {
    EXPECT_EQ(ManageForms::ToolTip(1), "Confirm paths to LumbrakPlus & Kelmora");
    EXPECT_EQ(ManageForms::ToolTip(6), "Archive/restore any glasses in Kelmora database");
    ScriptedDialogs d;
    ManageForms forms(d, {});
    EXPECT_EQ(forms.ribTools[7].toolTip.get(), "Make melt derivative of existing glass");
    EXPECT_EQ(forms.ribEnd.toolTip.get(), "End Ostrel");
}

}  // namespace
}  // namespace ostrel
