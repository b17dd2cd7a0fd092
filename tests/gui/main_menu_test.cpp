// The main window's menu bar and welcome panel, offscreen: the menu items reach the same
// commands as the tool strip and follow its enabled state, the welcome panel shows over an
// empty list only.

#include "core/shell/main_menu.h"
#include "core/shell/welcome.h"
#include "gui/shell/main_menu_bar.h"
#include "gui/shell/welcome_panel.h"
#include "gui_fixture.h"

namespace ostrel::gui {
namespace {

// A working form that only counts how often it was shown.
struct CountingForm : WorkingForm {
    void Display() override { ++shown; }
    void ForceUnload() override {}
    int shown = 0;
};

class MainMenuTest : public ::testing::Test, protected MainEnv {
  protected:
    MainMenuTest() {
        kelmoraFound = [] { return true; };
        firstLoad = [this] { return firstRun; };
        for (int n = 2; n <= 7; ++n) forms.RegisterForm(n, &counting[n]);
        mainWindow.SetMenu(menu);
        mainWindow.SetWelcome(welcome);
        mainWindow.resize(900, 600);
    }

    QAction* Action(const char* name) const { return mainWindow.findChild<QAction*>(name); }

    bool firstRun = false;
    std::vector<EditCommand> edits;
    MainMenu menu{mainUnit, dialogs, "Version: 3.0.1",
                  MainMenu::Hooks{[this](EditCommand c) { edits.push_back(c); }, {}, {}, {}}};
    Welcome welcome{forms, dialogs, settings, [this] { return list.CustomCount(); }};
    std::array<CountingForm, 8> counting;
};

// Each item opens its form exactly as its tool button does (the button goes down, the form
// becomes current), from the menu and from its keys; on a first run it is off with its tool.
TEST_F(MainMenuTest, EachItemPressesItsToolButton) {
    const struct {
        const char* action;
        int tool;
        QKeySequence key;
    } cases[] = {{"mnuNew", kFormNew, QKeySequence(QKeySequence::New)},
                 {"mnuImport", kFormImport, QKeySequence(QKeySequence::Open)},
                 {"mnuBackup", kFormExport, QKeySequence(QKeySequence::Save)},
                 {"mnuManage", kFormManage, QKeySequence(Qt::CTRL | Qt::Key_2)},
                 {"mnuArchive", kFormArchive, QKeySequence(Qt::CTRL | Qt::Key_6)},
                 {"mnuMelt", kFormMelt, QKeySequence(Qt::CTRL | Qt::Key_7)},
                 {"mnuSetup", kFormSetup, QKeySequence(Qt::CTRL | Qt::Key_1)}};
    for (const auto& c : cases) {
        SCOPED_TRACE(c.action);
        QAction* a = Action(c.action);
        ASSERT_NE(a, nullptr);
        EXPECT_TRUE(a->shortcuts().contains(c.key)) << a->shortcut().toString().toStdString();
        firstRun = true;
        forms.EnableTools();
        EXPECT_EQ(a->isEnabled(), c.tool == kFormSetup);
        firstRun = false;
        forms.EnableTools();
        ASSERT_TRUE(a->isEnabled());
        if (c.tool == kFormSetup) continue;  // no setup form in this window
        a->trigger();
        EXPECT_EQ(forms.GetCurrentForm(), c.tool);
        EXPECT_TRUE(mainWindow.ribTools(c.tool)->isChecked());
        EXPECT_EQ(counting[c.tool].shown, 1);
        // The same as a click on the tool button: the button released closes it.
        mainWindow.ribTools(c.tool)->click();
        EXPECT_EQ(forms.GetCurrentForm(), 0);
        a->trigger();
        EXPECT_EQ(counting[c.tool].shown, 2);
        mainWindow.ribTools(c.tool)->click();
    }
}

TEST_F(MainMenuTest, BarHelpAndEditItemsAndTheHelpButton) {
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

    // The help button asks for the page of the form whose window is active, else the current
    // form's, else the contents.
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
    list.ListAddDated(Record("N-BK7", "TEST"), false);
    welcome.Refresh();
    EXPECT_FALSE(panel->isVisible());
}

}  // namespace
}  // namespace ostrel::gui
