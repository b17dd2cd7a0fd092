// Each window built over its logic unit, one command driven, and the widgets checked to
// follow the unit's controls. The main window's menu bar reaches the same commands as the tool
// strip and follows its enabled state; the welcome panel shows over an empty list only.

#include "core/platform/maker.h"
#include "core/shell/main_menu.h"
#include "core/shell/welcome.h"
#include "gui/material/frm_glasses_list_window.h"
#include "gui/materialform/frm2_manage_window.h"
#include "gui/platform/edit_finisher.h"
#include "gui/platform/qt_dialogs.h"
#include "gui/shell/main_menu_bar.h"
#include "gui/shell/welcome_panel.h"
#include "gui_fixture.h"

namespace ostrel::gui {
namespace {

// A working form that counts how often it was shown and asked to close, and answers `agree`.
struct FakeForm : WorkingForm {
    void Display() override { ++shown; }
    void ForceUnload() override {}
    bool QueryClose() override { return ++asked, agree; }
    bool agree = true;
    int shown = 0, asked = 0;
};

class WindowsTest : public ::testing::Test, protected MainEnv {
  protected:
    void SetUp() override {
        list.ListAdd(Record("F2", "Schott"), false);
        list.ListAdd(Record("BK7", "Schott", true), false);
        list.ListAdd(Record("ZK1", "Ohara"), false);
    }
};

// The caption and the panels of the programs found follow the load; the help line follows
// the mouse over the tools.
TEST_F(WindowsTest, MainWindowFollowsCaptionToolTipsPanelsAndPopup) {
    frmMainMDIWindow& w = mainWindow;
    mainUnit.Load(false, {true, false, true});
    EXPECT_EQ(w.windowTitle().toStdString(),
              std::string(maker::kName) + " - Ostrel for Lumbrak & KelmoraTD:   Version: 3.0.1");
    EXPECT_EQ(w.ribTools(4)->toolTip(), "Import data from text files [selected formats]");
    QStringList panels;
    for (int i = 0; i < 3; ++i) panels << w.pnlInstalled(i)->text();
    EXPECT_EQ(panels,
              QStringList({" KelmoraTD found", " Lumbrak3D not found", " SextaneTD found"}));
    EXPECT_EQ(std::pair(Back(w.pnlInstalled(1)), Back(w.pnlInstalled(2))),
              std::pair(Rgb(kStatusRed), Rgb(kStatusGreen)));
    // Without Kelmora the archive tool is refused and goes back up.
    w.ribTools(kFormArchive)->click();
    EXPECT_EQ(std::pair(w.ribTools(kFormArchive)->isChecked(), forms.GetCurrentForm()),
              std::pair(false, 0));
    EXPECT_EQ(dialogs.boxes, (std::vector<ostrel::testing::ShownBox>{
                                 {"You cannot use the 'Archive' form until Kelmora is installed!",
                                  MsgButtons::OK, MsgIcon::Information, ""}}));

    QEvent enter(QEvent::Enter);
    for (QToolButton* tool : {w.ribTools(3), w.ribEnd()}) QCoreApplication::sendEvent(tool, &enter);
    EXPECT_EQ(dialogs.helpNotes, (std::vector<std::string>{HelpNotes::NoteText(3), ""}));

    mainUnit.PrepForPopup(2, "BK7/Schott");
    ASSERT_EQ(w.mnuPopup()->actions().size(), 3);
    EXPECT_EQ(w.mnuPopup()->actions()[0]->text(), "&Duplicate   BK7/Schott");

    mainUnit.HelpNote("Searching...", true);
    EXPECT_TRUE(w.lblHelp()->text() == "Searching..." && w.lblHelp()->font().bold());
}

// Docked at the side of the main window the list shows the list and never covers a form; it
// follows changes of the list, and a row asks for its popup by the mouse or the menu key, the
// melt menu for a melt glass.
TEST_F(WindowsTest, DockedListShowsTheListBesideTheFormsAndAsksForPopups) {
    QMainWindow main;
    auto* area = new QMdiArea;
    main.setCentralWidget(area);
    std::vector<int> prepared, compared;
    frmGlassesList unit(list, {[] { return 0; },
                               [&](int row, const std::string&) { prepared.push_back(row); },
                               [&](int row, const std::string&) { prepared.push_back(-row); },
                               {},
                               [&](const std::vector<int>& rows) { compared = rows; }});
    frmGlassesListWindow w(unit, nullptr, &main);
    w.DockIn(&main);
    unit.Display();
    auto* model = w.grid()->model();
    EXPECT_EQ(model->index(1, 0).data(Qt::BackgroundRole).value<QColor>(), Rgb(kMeltRowColour));
    QMdiSubWindow* form = area->addSubWindow(new QWidget);
    main.resize(900, 600);
    main.show();
    form->showMaximized();
    QCoreApplication::processEvents();

    const QRect listRect(w.mapToGlobal(QPoint(0, 0)), w.size());
    const QRect formRect(form->mapToGlobal(QPoint(0, 0)), form->size());
    EXPECT_TRUE(w.isVisible());
    EXPECT_FALSE(listRect.intersects(formRect));
    EXPECT_GT(listRect.left(), formRect.left()) << "at the right side";

    // The menu key opens the popup of the current row, as the window system places it: at the
    // middle of the current cell as the grid reports it.
    w.grid()->setCurrentIndex(model->index(2, 0));
    const QPoint at = w.grid()->inputMethodQuery(Qt::ImCursorRectangle).toRect().center();
    QContextMenuEvent key(QContextMenuEvent::Keyboard, at, w.grid()->mapToGlobal(at));
    QCoreApplication::sendEvent(w.grid(), &key);
    std::vector<bool> melt;
    QObject::connect(&w, &frmGlassesListWindow::popupRequested,
                     [&](const QPoint&, bool isMelt) { melt.push_back(isMelt); });
    emit w.grid()->cellRightClicked(1, 2, QPoint());
    emit w.grid()->cellRightClicked(1, 1, QPoint());
    EXPECT_EQ(prepared, (std::vector<int>{3, -2, 1}));
    EXPECT_EQ(melt, (std::vector<bool>{true, false}));

    // Rows selected together open a comparison from the selection's menu; a right click
    // outside the selection keeps the material's own menu.
    QAction* compare = w.selectionMenu()->findChild<QAction*>("mnuCompare");
    ASSERT_NE(compare, nullptr);
    const auto rows = QItemSelectionModel::Select | QItemSelectionModel::Rows;
    w.grid()->selectionModel()->select(model->index(0, 0), rows | QItemSelectionModel::Clear);
    EXPECT_FALSE(compare->isEnabled()) << "one row compares with nothing";
    w.grid()->selectionModel()->select(model->index(2, 0), rows);
    EXPECT_TRUE(compare->isEnabled());
    emit w.grid()->cellRightClicked(1, 2, QPoint());
    EXPECT_EQ(melt.size(), 3u) << "outside the selection: the material's menu";
    emit w.grid()->cellRightClicked(1, 3, QPoint());
    EXPECT_EQ(std::pair(melt.size(), unit.PopupIsSelection()), std::pair(size_t{3}, true));
    w.selectionMenu()->hide();
    compare->trigger();
    EXPECT_EQ(compared, (std::vector<int>{1, 3}));

    ASSERT_TRUE(list.CommitList({Record("N-SF11", "Schott")}));
    ASSERT_EQ(model->rowCount(), 1);
    EXPECT_EQ(model->index(0, 0).data().toString(), "N-SF11");
}

// The manage window's buttons and keys reach its unit: Sort sorts, Enter on a row reached by
// the keys opens it as a double click does, OK closes.
TEST_F(WindowsTest, ManageWindowSortsOpensAndClosesThroughItsButtonsAndKeys) {
    QMdiArea area;
    int edited = 0, closes = 0;
    frm2Manage unit(
        list, dialogs,
        {[&](int index, const MaterialRecord&) { edited = index; }, {}, {}, [&] { ++closes; }});
    frm2ManageWindow w(unit, nullptr, &area);
    unit.Display();
    dialogs.answers.push_back(MsgAnswer::Yes);
    w.button("comSort")->click();
    EXPECT_EQ(w.grid()->model()->index(0, 0).data().toString(), "BK7");
    KeyToRow(w.grid(), 2);
    PressKey(w.grid(), Qt::Key_Return);
    w.button("comOK")->click();
    EXPECT_EQ(std::pair(edited, closes), std::pair(3, 1));
}

// An open form that will not close (unsaved changes kept) is asked when its tool is released,
// when the end button is pressed and when the main window's close box is clicked, and each
// time the tool stays down and the window open; once it agrees, the close box ends the program.
TEST_F(WindowsTest, AFormThatWillNotCloseKeepsItsToolAndTheMainWindow) {
    FakeForm open;
    open.agree = false;
    forms.RegisterForm(kFormExport, &open);
    unload = [this] { mainWindow.close(); };
    mainUnit.Load(false, {false, false, false});
    mainWindow.show();
    mainWindow.ribTools(kFormExport)->click();
    mainWindow.ribTools(kFormExport)->click();
    EXPECT_TRUE(mainWindow.ribTools(kFormExport)->isChecked());
    mainWindow.ribEnd()->click();
    mainWindow.close();
    EXPECT_EQ(std::tuple(open.asked, mainWindow.isVisible(), forms.GetCurrentForm()),
              std::tuple(3, true, int(kFormExport)));
    open.agree = true;
    mainWindow.close();
    EXPECT_FALSE(mainWindow.isVisible());
}

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
    std::array<FakeForm, 8> counting;
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
    EXPECT_TRUE(Action("mnuQuit")->shortcuts().contains(QKeySequence(Qt::CTRL | Qt::Key_Q)));
    Action("mnuCopy")->trigger();
    Action("mnuPaste")->trigger();
    EXPECT_EQ(edits, (std::vector<EditCommand>{EditCommand::Copy, EditCommand::Paste}));
    Action("mnuAbout")->trigger();
    ASSERT_EQ(dialogs.boxes.size(), 1u);
    EXPECT_NE(dialogs.boxes[0].text.find("Version: 3.0.1"), std::string::npos);

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

TEST(QtFileFilter, PairsBecomeQtFilters) {
    EXPECT_EQ(QtFileFilter("GLZ files (*.glz)|*.glz|All files (*.*)|*.*"),
              "GLZ files (*.glz);;All files (*.*)");
}

}  // namespace
}  // namespace ostrel::gui

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    ostrel::gui::EditFinisher finisher;
    app.installEventFilter(&finisher);
    ::testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
