// Each window built over its logic unit, one command driven, and the widgets checked to
// follow the unit's controls.

#include "core/platform/maker.h"
#include "gui/material/frm_glasses_list_window.h"
#include "gui/materialform/frm2_manage_window.h"
#include "gui/platform/edit_finisher.h"
#include "gui/platform/qt_dialogs.h"
#include "gui_fixture.h"

namespace ostrel::gui {
namespace {

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
    EXPECT_EQ(w.windowTitle(), "Ostrel for Lumbrak3D/SextaneTD & KelmoraTD");
    mainUnit.Load(false, {true, false, true});
    EXPECT_EQ(w.windowTitle().toStdString(),
              std::string(maker::kName) + " - Ostrel for Lumbrak & KelmoraTD:   Version: 3.0.1");
    EXPECT_EQ(w.ribTools(4)->toolTip(), "Import data from text files [selected formats]");
    const char* panels[] = {" KelmoraTD found", " Lumbrak3D not found", " SextaneTD found"};
    for (int i = 0; i < 3; ++i) {
        const Colour c = i == 1 ? kStatusRed : kStatusGreen;
        EXPECT_EQ(w.pnlInstalled(i)->text(), panels[i]);
        EXPECT_EQ(w.pnlInstalled(i)->palette().color(QPalette::Window), QColor(c.r, c.g, c.b));
    }
    for (int n = 1; n <= 7; ++n) EXPECT_TRUE(w.ribTools(n)->isEnabled()) << n;
    // Without Kelmora the archive tool is refused and goes back up.
    w.ribTools(kFormArchive)->click();
    EXPECT_FALSE(w.ribTools(kFormArchive)->isChecked());
    EXPECT_EQ(forms.GetCurrentForm(), 0);
    ASSERT_EQ(dialogs.boxes.size(), 1u);
    EXPECT_EQ(dialogs.boxes[0].text,
              "You cannot use the 'Archive' form until Kelmora is installed!");
    EXPECT_EQ(dialogs.boxes[0].icon, MsgIcon::Information);

    for (QWidget* tool :
         {static_cast<QWidget*>(w.ribTools(3)), static_cast<QWidget*>(w.ribEnd())}) {
        QEvent enter(QEvent::Enter);
        QCoreApplication::sendEvent(tool, &enter);
    }
    ASSERT_EQ(dialogs.helpNotes.size(), 2u);
    EXPECT_EQ(dialogs.helpNotes[0].rfind("Form to create a new material, ", 0), 0u);
    EXPECT_EQ(dialogs.helpNotes[1], "");

    mainUnit.PrepForPopup(2, "BK7/Schott");
    const auto actions = w.mnuPopup()->actions();
    ASSERT_EQ(actions.size(), 3);
    EXPECT_EQ(actions[0]->text(), "&Duplicate   BK7/Schott");

    mainUnit.HelpNote("Searching...", true);
    EXPECT_EQ(w.lblHelp()->text(), "Searching...");
    EXPECT_TRUE(w.lblHelp()->font().bold());
}

// Docked at the side of the main window the list shows the list and never covers a form; it
// follows changes of the list, can float, comes back by the menu's action once closed, and a
// row asks for its popup by the mouse or the menu key, the melt menu for a melt glass.
TEST_F(WindowsTest, DockedListShowsTheListBesideTheFormsAndAsksForPopups) {
    QMainWindow main;
    auto* area = new QMdiArea(&main);
    main.setCentralWidget(area);
    std::vector<int> prepared;
    frmGlassesList unit(
        list, {[] { return 0; }, [&](int row, const std::string&) { prepared.push_back(row); },
               [&](int row, const std::string&) { prepared.push_back(-row); }});
    frmGlassesListWindow w(unit, nullptr, &main);
    QDockWidget* dock = w.DockIn(&main);
    unit.Display();
    auto* model = w.grid()->model();
    ASSERT_EQ(model->rowCount(), 3);
    EXPECT_EQ(model->index(1, 0).data().toString(), "BK7");
    EXPECT_EQ(model->index(1, 0).data(Qt::BackgroundRole).value<QColor>(),
              QColor(kMeltRowColour.r, kMeltRowColour.g, kMeltRowColour.b));
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

    dock->setFloating(true);
    EXPECT_TRUE(dock->isFloating());
    dock->setFloating(false);
    dock->close();
    EXPECT_FALSE(w.isVisible());
    dock->toggleViewAction()->trigger();
    EXPECT_TRUE(w.isVisible());

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

    ASSERT_TRUE(list.CommitList({Record("N-SF11", "Schott")}));
    ASSERT_EQ(model->rowCount(), 1);
    EXPECT_EQ(model->index(0, 0).data().toString(), "N-SF11");
}

TEST_F(WindowsTest, ManageFormShowsHidesAndSortsThroughItsButtons) {
    QMdiArea area;
    int closes = 0;
    int edited = 0;
    frm2Manage unit(
        list, dialogs,
        {[&](int index, const MaterialRecord&) { edited = index; }, {}, {}, [&] { ++closes; }});
    frm2ManageWindow w(unit, nullptr, &area);
    EXPECT_TRUE(w.subWindow()->isHidden());
    unit.Display();
    EXPECT_FALSE(w.subWindow()->isHidden());
    EXPECT_EQ(w.subWindow()->windowTitle(), "Manage materials in Ostrel database");
    EXPECT_EQ(DuplicateMnemonics(&w), QStringList());
    EXPECT_TRUE(w.grid()->isColumnHidden(frm2Manage::kColIndex - 1));

    dialogs.answers.push_back(MsgAnswer::Yes);
    w.button("comSort")->click();
    auto* model = w.grid()->model();
    EXPECT_EQ(model->index(0, 0).data().toString(), "BK7");
    EXPECT_EQ(model->index(2, 0).data().toString(), "ZK1");

    // Enter on a row reached by the keys opens it, as a double click does.
    KeyToRow(w.grid(), 2);
    PressKey(w.grid(), Qt::Key_Return);
    EXPECT_EQ(edited, 3);

    w.button("comOK")->click();
    EXPECT_EQ(closes, 1);
    unit.ForceUnload();
    EXPECT_TRUE(w.subWindow()->isHidden());
}

// An open form that will not close (unsaved changes kept) is asked when its tool is released,
// when the end button is pressed and when the main window's close box is clicked, and each
// time the tool stays down and the window open; once it agrees, the close box ends the program.
TEST_F(WindowsTest, AFormThatWillNotCloseKeepsItsToolAndTheMainWindow) {
    struct Refusing : WorkingForm {
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
    unload = [this] { mainWindow.close(); };
    mainUnit.Load(false, {false, false, false});
    mainWindow.show();
    mainWindow.ribTools(kFormExport)->click();
    mainWindow.ribTools(kFormExport)->click();
    EXPECT_TRUE(mainWindow.ribTools(kFormExport)->isChecked());
    mainWindow.ribEnd()->click();
    mainWindow.close();
    EXPECT_EQ(open.asked, 3);
    EXPECT_TRUE(mainWindow.isVisible());
    EXPECT_EQ(forms.GetCurrentForm(), int(kFormExport));
    open.agree = true;
    mainWindow.close();
    EXPECT_FALSE(mainWindow.isVisible());
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
