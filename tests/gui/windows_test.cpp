// Each window built over its logic unit, one command driven, and the widgets checked to
// follow the unit's controls.
#include <gtest/gtest.h>

#include <QApplication>
#include <QContextMenuEvent>
#include <QDockWidget>
#include <QLabel>
#include <QMainWindow>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QMenu>
#include <QPushButton>
#include <QToolButton>

#include "core/material/frm_glasses_list.h"
#include "core/materialform/frm2_manage.h"
#include "core/materialform/frm3new.h"
#include "core/shell/frm_main_mdi.h"
#include "gui/material/frm_glasses_list_window.h"
#include "gui/materialform/frm2_manage_window.h"
#include "gui/materialform/frm3_new_window.h"
#include "gui/platform/edit_finisher.h"
#include "gui/platform/grid_view.h"
#include "gui/platform/qt_dialogs.h"
#include "gui/shell/frm_main_mdi_window.h"
#include "gui_fixture.h"
#include "mnemonics.h"
#include "user_input.h"

namespace ostrel::gui {
namespace {

class WindowsTest : public ::testing::Test, protected UnitEnv {
  protected:
    void SetUp() override {
        list.ListAdd(Record("F2", "Schott"), false);
        list.ListAdd(Record("BK7", "Schott", true), false);
        list.ListAdd(Record("ZK1", "Ohara"), false);
    }
};

// The tools on a first run are walked in the setup window's tests.
TEST_F(WindowsTest, MainWindowFollowsToolsPanelsAndPopup) {
    ManageForms forms(dialogs, {[] { return false; }, [] { return false; }, [] {}});
    HelpNotes notes(dialogs, [&] { return forms.GetCurrentForm(); });
    MemorySettingsStore settings;
    CNewMsg newMsg(dialogs, settings);
    frmMainMDI unit(forms, list, dialogs, notes, newMsg, "Version: 3.0.1", {});
    frmMainMDIWindow w(unit, nullptr);

    unit.Load(false, {true, false, false});
    EXPECT_EQ(w.windowTitle().toStdString(), frmMainMDI::CaptionText("Version: 3.0.1"));
    EXPECT_EQ(w.ribTools(4)->toolTip(), "Import data from text files [selected formats]");
    EXPECT_EQ(w.pnlInstalled(0)->text(), " KelmoraTD found");
    EXPECT_EQ(w.pnlInstalled(0)->palette().color(QPalette::Window),
              QColor(kStatusGreen.r, kStatusGreen.g, kStatusGreen.b));

    // A click on the tool opens no form here (none registered) but goes through the strip.
    w.ribTools(3)->click();
    EXPECT_EQ(forms.GetCurrentForm(), 3);
    EXPECT_TRUE(w.ribTools(3)->isChecked());

    unit.PrepForPopup(2, "BK7/Schott");
    const auto actions = w.mnuPopup()->actions();
    ASSERT_EQ(actions.size(), 3);
    EXPECT_EQ(actions[0]->text(), "&Duplicate   BK7/Schott");

    unit.HelpNote("Searching...", true);
    EXPECT_EQ(w.lblHelp()->text(), "Searching...");
    EXPECT_TRUE(w.lblHelp()->font().bold());
}

TEST_F(WindowsTest, FloatingListShowsTheListAndRefreshes) {
    QWidget owner;
    int prepared = 0;
    int lastPreparedRow = 0;
    frmGlassesList unit(list, {[] { return 0; },
                               [&](int row, const std::string&) {
                                   ++prepared;
                                   lastPreparedRow = row;
                               }});
    frmGlassesListWindow w(unit, nullptr, &owner);
    unit.Display();
    auto* model = w.grid()->model();
    ASSERT_EQ(model->rowCount(), 3);
    EXPECT_EQ(model->headerData(0, Qt::Horizontal).toString(), "Material");
    EXPECT_EQ(model->index(1, 0).data().toString(), "BK7");
    EXPECT_EQ(model->index(1, 0).data(Qt::BackgroundRole).value<QColor>(),
              QColor(kMeltRowColour.r, kMeltRowColour.g, kMeltRowColour.b));
    EXPECT_TRUE(w.isVisible());

    // The menu key opens the popup of the current row, as the window system places it: at the
    // middle of the current cell as the grid reports it.
    w.grid()->setCurrentIndex(model->index(2, 0));
    const QPoint at = w.grid()->inputMethodQuery(Qt::ImCursorRectangle).toRect().center();
    QContextMenuEvent key(QContextMenuEvent::Keyboard, at, w.grid()->mapToGlobal(at));
    QCoreApplication::sendEvent(w.grid(), &key);
    EXPECT_EQ(lastPreparedRow, 3);

    ASSERT_TRUE(list.CommitList({Record("N-SF11", "Schott")}));
    ASSERT_EQ(model->rowCount(), 1);
    EXPECT_EQ(model->index(0, 0).data().toString(), "N-SF11");

    int popups = 0;
    QObject::connect(&w, &frmGlassesListWindow::popupRequested, [&](const QPoint&) { ++popups; });
    emit w.grid()->cellRightClicked(1, 1, QPoint());
    EXPECT_EQ(prepared, 2);
    EXPECT_EQ(popups, 1);
}

// Docked at the side of the main window the list never covers a form; it can float, it comes
// back by the menu's action once closed, and a melt glass's row asks for the melt menu.
TEST_F(WindowsTest, DockedListNeverCoversAFormFloatsAndComesBack) {
    QMainWindow main;
    auto* area = new QMdiArea(&main);
    main.setCentralWidget(area);
    frmGlassesList unit(
        list,
        {[] { return 0; }, [](int, const std::string&) {}, [](int, const std::string&) {}, {}});
    frmGlassesListWindow w(unit, nullptr, &main);
    QDockWidget* dock = w.DockIn(&main);
    unit.Display();
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

    bool melt = false;
    QObject::connect(&w, &frmGlassesListWindow::popupRequested,
                     [&](const QPoint&, bool isMelt) { melt = isMelt; });
    emit w.grid()->cellRightClicked(1, 2, QPoint());
    EXPECT_TRUE(melt);
    emit w.grid()->cellRightClicked(1, 1, QPoint());
    EXPECT_FALSE(melt);
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

// A material form holding unsaved changes is asked before its tool is released, before the
// end button ends the program and before the main window's close box closes it: Cancel keeps
// everything, No lets it go. The question comes once for each attempt.
TEST_F(WindowsTest, UnsavedMaterialIsAskedAboutOnReleaseEndAndCloseBox) {
    enum Action { kRelease, kEnd, kCloseBox };
    for (const Action action : {kRelease, kEnd, kCloseBox}) {
        for (const MsgAnswer answer : {MsgAnswer::Cancel, MsgAnswer::No}) {
            SCOPED_TRACE(std::to_string(action) + (answer == MsgAnswer::No ? " no" : " cancel"));
            ManageForms forms(dialogs, {[] { return false; }, [] { return false; }, [] {}});
            HelpNotes notes(dialogs, [&] { return forms.GetCurrentForm(); });
            MemorySettingsStore settings;
            CNewMsg newMsg(dialogs, settings);
            frmMainMDIWindow* window = nullptr;
            frmMainMDI::Hooks hooks;
            hooks.unload = [&] { window->close(); };
            frmMainMDI unit(forms, list, dialogs, notes, newMsg, "Version: 3.0.1", hooks);
            frmMainMDIWindow w(unit, nullptr);
            window = &w;
            frm3New material(list, dialogs, {{}, [&] { forms.FormClosed(kFormNew); }, {}});
            frm3NewWindow materialWindow(material, nullptr, w.mdiArea());
            forms.RegisterForm(kFormNew, &material);
            unit.Load(false, {false, false, false});
            w.show();
            w.ribTools(kFormNew)->click();
            material.txtGenGlass.text = "Q-1";
            material.txtGenGlassChange();

            dialogs.boxes.clear();
            dialogs.answers = {answer};
            if (action == kRelease) w.ribTools(kFormNew)->click();
            if (action == kEnd) w.ribEnd()->click();
            if (action == kCloseBox) w.close();
            ASSERT_EQ(dialogs.boxes.size(), 1u);
            EXPECT_EQ(dialogs.boxes[0].text, "Save changes to Q-1?");
            const bool gone = answer == MsgAnswer::No;
            if (action == kRelease) {
                EXPECT_EQ(material.IsOpen(), !gone);
                EXPECT_EQ(w.ribTools(kFormNew)->isChecked(), !gone);
                EXPECT_EQ(forms.GetCurrentForm(), gone ? 0 : int(kFormNew));
            } else {
                EXPECT_EQ(w.isVisible(), !gone);
                EXPECT_TRUE(material.IsOpen()) << "only the end unloads it";
            }
            w.hide();
        }
    }
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
