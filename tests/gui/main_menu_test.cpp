// The main window's menu bar, welcome panel and start-up search, offscreen: the menu items
// reach the same commands as the tool strip and follow its enabled state, the welcome
// panel shows over an empty list only, and the setup's search runs while the window
// answers.
#include <gtest/gtest.h>

#include <QtCore/qtestsupport_core.h>
#include <QAction>
#include <QApplication>
#include <QLabel>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QMenu>
#include <QMenuBar>
#include <QPushButton>
#include <QTimer>
#include <QToolButton>
#include <filesystem>
#include <memory>

#include "core/external/frm1setup.h"
#include "core/material/glasses_list.h"
#include "core/platform/settings_store.h"
#include "core/shell/frm_main_mdi.h"
#include "core/shell/main_menu.h"
#include "core/shell/welcome.h"
#include "gui/external/frm1_setup_window.h"
#include "gui/shell/frm_main_mdi_window.h"
#include "gui/shell/main_menu_bar.h"
#include "gui/shell/welcome_panel.h"
#include "support/scripted_dialogs.h"
#include "support/temp_dir.h"

namespace ostrel::gui {
namespace {

namespace fs = std::filesystem;
using ostrel::testing::ScriptedDialogs;
using ostrel::testing::TempDir;
using ostrel::testing::WriteFileBytes;

// A working form that only counts how often it was shown.
struct CountingForm : WorkingForm {
    void Display() override { ++shown; }
    void ForceUnload() override {}
    int shown = 0;
};

class MainMenuTest : public ::testing::Test {
  protected:
    MainMenuTest() {
        for (int n = 2; n <= 7; ++n) forms.RegisterForm(n, &counting[n]);
        mainWindow.SetMenu(menu);
        mainWindow.SetWelcome(welcome);
        mainWindow.resize(900, 600);
    }

    QAction* Action(const char* name) const { return mainWindow.findChild<QAction*>(name); }

    TempDir tmp;
    ScriptedDialogs dialogs;
    FixedClock clock{45292.0};
    ErrorDisplayer errors{tmp.path().string() + "/", dialogs, clock};
    MemorySettingsStore settings;
    bool firstLoad = false;
    GlassesList list{tmp.path().string() + "/", errors};
    ManageForms forms{dialogs, {[] { return true; }, [this] { return firstLoad; }, [] {}}};
    HelpNotes notes{dialogs, [this] { return forms.GetCurrentForm(); }};
    CNewMsg newMsg{dialogs, settings};
    frmMainMDI mainUnit{forms, list, dialogs, notes, newMsg, "Version: 3.0.1", frmMainMDI::Hooks{}};
    frmMainMDIWindow mainWindow{mainUnit, nullptr};
    std::vector<EditCommand> edits;
    MainMenu menu{mainUnit, dialogs, "Version: 3.0.1",
                  MainMenu::Hooks{[this](EditCommand c) { edits.push_back(c); }, {}, {}, {}}};
    Welcome welcome{forms, dialogs, settings, [this] { return list.CustomCount(); }};
    std::array<CountingForm, 8> counting;
};

struct ToolCase {
    const char* action;
    int tool;
    QKeySequence key;
};

class MenuToolTest : public MainMenuTest, public ::testing::WithParamInterface<ToolCase> {};

// Each item opens its form exactly as its tool button does (the button goes down, the form
// becomes current), from the menu and from its keys; on a first run it is off with its tool.
TEST_P(MenuToolTest, ItemPressesItsToolButton) {
    const ToolCase c = GetParam();
    QAction* a = Action(c.action);
    ASSERT_NE(a, nullptr);
    EXPECT_TRUE(a->shortcuts().contains(c.key)) << a->shortcut().toString().toStdString();
    firstLoad = true;
    forms.EnableTools();
    EXPECT_EQ(a->isEnabled(), c.tool == kFormSetup);
    firstLoad = false;
    forms.EnableTools();
    ASSERT_TRUE(a->isEnabled());
    if (c.tool == kFormSetup) return;  // no setup form in this window
    a->trigger();
    EXPECT_EQ(forms.GetCurrentForm(), c.tool);
    EXPECT_TRUE(mainWindow.ribTools(c.tool)->isChecked());
    EXPECT_EQ(counting[c.tool].shown, 1);
    // The same as a click on the tool button: a second press of an open form does nothing.
    mainWindow.ribTools(c.tool)->click();
    EXPECT_EQ(forms.GetCurrentForm(), 0) << "the button released closes it";
    a->trigger();
    EXPECT_EQ(counting[c.tool].shown, 2);
}

INSTANTIATE_TEST_SUITE_P(
    Items, MenuToolTest,
    ::testing::Values(ToolCase{"mnuNew", kFormNew, QKeySequence(QKeySequence::New)},
                      ToolCase{"mnuImport", kFormImport, QKeySequence(QKeySequence::Open)},
                      ToolCase{"mnuBackup", kFormExport, QKeySequence(QKeySequence::Save)},
                      ToolCase{"mnuManage", kFormManage, QKeySequence(Qt::CTRL | Qt::Key_2)},
                      ToolCase{"mnuArchive", kFormArchive, QKeySequence(Qt::CTRL | Qt::Key_6)},
                      ToolCase{"mnuMelt", kFormMelt, QKeySequence(Qt::CTRL | Qt::Key_7)},
                      ToolCase{"mnuSetup", kFormSetup, QKeySequence(Qt::CTRL | Qt::Key_1)}));

TEST_F(MainMenuTest, BarHelpAndEditItems) {
    QStringList titles;
    for (QAction* a : mainWindow.menuBar()->actions()) titles << a->text();
    EXPECT_EQ(titles, QStringList({"&File", "&Edit", "&Materials", "&Tools", "&Help"}));
    EXPECT_TRUE(Action("mnuGuide")->shortcuts().contains(QKeySequence(QKeySequence::HelpContents)));
    EXPECT_TRUE(Action("mnuQuit")->shortcuts().contains(QKeySequence(Qt::CTRL | Qt::Key_Q)));
    Action("mnuCopy")->trigger();
    Action("mnuPaste")->trigger();
    EXPECT_EQ(edits, (std::vector<EditCommand>{EditCommand::Copy, EditCommand::Paste}));
    Action("mnuAbout")->trigger();
    ASSERT_EQ(dialogs.boxes.size(), 1u);
    EXPECT_NE(dialogs.boxes[0].text.find("Version: 3.0.1"), std::string::npos);
    EXPECT_EQ(dialogs.boxes[0].title, "About Ostrel");
    // One more item is one call; the bar built afterwards shows it.
    menu.AddItem(menu.mnuTools, "mnuExtra", "E&xtra", "", MenuKey::None, [] {});
    mainWindow.SetMenu(menu);
    EXPECT_NE(Action("mnuExtra"), nullptr);
}

// The help button asks for the page of the form whose window is active, else the current
// form's, else the contents.
TEST_F(MainMenuTest, HelpButtonNamesTheActiveForm) {
    std::vector<int> asked;
    mainWindow.SetGuideOpener([&](int form) { asked.push_back(form); });
    mainWindow.show();
    mainWindow.comHelp()->click();
    auto* page = new QWidget;
    page->setObjectName("frm3New");
    QMdiSubWindow* sub = mainWindow.mdiArea()->addSubWindow(page);
    sub->show();
    mainWindow.mdiArea()->setActiveSubWindow(sub);
    mainWindow.comHelp()->click();
    EXPECT_EQ(asked, (std::vector<int>{0, 3}));
    EXPECT_NE(mainWindow.comHelp()->toolTip().indexOf("F1"), -1);
}

TEST_F(MainMenuTest, WelcomeShowsOverAnEmptyListOnly) {
    mainWindow.show();
    auto* panel = mainWindow.welcomePanel();
    ASSERT_NE(panel, nullptr);
    EXPECT_TRUE(panel->isVisible());
    EXPECT_TRUE(mainWindow.mdiArea()->viewport()->rect().contains(panel->geometry()));
    panel->findChild<QPushButton*>("comWelcomeImport")->click();
    EXPECT_EQ(forms.GetCurrentForm(), kFormImport);
    EXPECT_FALSE(panel->isVisible()) << "a working form hides it";
    forms.RibbonClick(kFormImport, false);
    EXPECT_TRUE(panel->isVisible());
    // A material in the list: no welcome.
    MaterialRecord rec;
    rec.General.GlassName.Set("N-BK7");
    rec.General.Source.Set("TEST");
    list.ListAddDated(rec, false);
    welcome.Refresh();
    EXPECT_FALSE(panel->isVisible());
}

// The search of the first run on the worker thread: the form is up at once with its stop
// button and the window goes on handling events; the paths arrive at a tick of its timer.
TEST(SetupSearchWindowTest, WindowAnswersDuringTheSearch) {
    TempDir tmp;
    for (int i = 0; i < 40; ++i)
        fs::create_directories(tmp.path() / "home" / ("d" + std::to_string(i)) / "x" / "y");
    fs::create_directories(tmp.path() / "opt" / "Lumbrak");
    WriteFileBytes(tmp.path() / "opt" / "Lumbrak" / "Lumbrak3D.EXE", "l");
    ScriptedDialogs dialogs;
    MemorySettingsStore settings;
    Bas1Setup setup(settings, dialogs);
    setup.LoadPaths();
    ManageForms forms{dialogs, {[] { return false; }, [&] { return setup.GetFirstLoad(); }, [] {}}};
    frm1Setup::Hooks h;
    h.ribbonClick = [&](int n, bool p) { forms.RibbonClick(n, p); };
    h.searchRoots = [&] {
        return SearchRoots{"", tmp.path().string() + "/home/", {tmp.path().string() + "/opt/"}};
    };
    h.searchInBackground = true;
    frm1Setup unit(setup, dialogs, h);
    QMdiArea area;
    frm1SetupWindow window(unit, nullptr, &area);
    forms.RegisterForm(kFormSetup, &unit);
    area.show();

    forms.RibbonClick(kFormSetup, true);
    ASSERT_TRUE(unit.Searching());
    auto* stop = window.button("comStopSearch");
    ASSERT_NE(stop, nullptr);
    EXPECT_TRUE(stop->isVisible());
    EXPECT_FALSE(window.button("comOK")->isEnabled());
    bool answered = false;
    QTimer::singleShot(0, [&] { answered = true; });
    ASSERT_TRUE(QTest::qWaitFor([&] { return !unit.Searching(); }, 10000));
    EXPECT_TRUE(answered) << "events ran while the search was going on";
    EXPECT_FALSE(stop->isVisible());
    EXPECT_TRUE(window.button("comOK")->isEnabled());
    EXPECT_EQ(window.label("lblPathLumbrakPlus")->text().toStdString(),
              tmp.path().string() + "/opt/Lumbrak/Lumbrak3D.EXE");
    EXPECT_EQ(dialogs.boxes.size(), 1u) << "the first run's box after the search";
}

}  // namespace
}  // namespace ostrel::gui
