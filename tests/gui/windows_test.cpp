// Each window built over its logic unit, one command driven, and the widgets checked to
// follow the unit's controls.
#include <gtest/gtest.h>

#include <QApplication>
#include <QContextMenuEvent>
#include <QLabel>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QMenu>
#include <QPushButton>
#include <QToolButton>

#include "core/material/frm_glasses_list.h"
#include "core/material/glasses_list.h"
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
#include "mnemonics.h"
#include "support/scripted_dialogs.h"
#include "support/temp_dir.h"
#include "user_input.h"

namespace ostrel::gui {
namespace {

using ostrel::testing::ScriptedDialogs;
using ostrel::testing::TempDir;

MaterialRecord Record(const std::string& name, const std::string& source, bool melt = false) {
    MaterialRecord r = ClearedMaterialRecord();
    r.General.GlassName.Set(name);
    r.General.Source.Set(source);
    r.Melt.MeltFlag = melt ? kTrue : kFalse;
    return r;
}

class WindowsTest : public ::testing::Test {
  protected:
    void SetUp() override {
        list.ListAdd(Record("F2", "Schott"), false);
        list.ListAdd(Record("BK7", "Schott", true), false);
        list.ListAdd(Record("ZK1", "Ohara"), false);
    }

    TempDir dir;
    ScriptedDialogs dialogs;
    FixedClock clock{45292.0};
    ErrorDisplayer errors{dir.path().string() + "/", dialogs, clock};
    GlassesList list{dir.path().string() + "/", errors};
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
    EXPECT_EQ(actions[2]->text(), "De&lete");

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

TEST_F(WindowsTest, GridEditGoesThroughTheModelAndTheChangeHandler) {
    Grid g(2, 2);
    g.SetColumnFloat(1, 2, 0, 10);
    g.SetColumnLocked(2, true);
    GridView view;
    std::vector<std::pair<int, int>> changes;
    view.Bind(g, [&](int c, int r) { changes.emplace_back(c, r); });
    auto* m = view.model();
    EXPECT_TRUE(m->setData(m->index(1, 0), "3.14159", Qt::EditRole));
    EXPECT_FALSE(m->setData(m->index(1, 0), "12", Qt::EditRole)) << "above the limit";
    EXPECT_FALSE(m->flags(m->index(0, 1)) & Qt::ItemIsEditable);
    EXPECT_EQ(m->index(1, 0).data().toString(), "3.14159") << "the cell's text, as entered";
    EXPECT_EQ(g.Text(1, 2), "3.14159");
    EXPECT_EQ(changes, (std::vector<std::pair<int, int>>{{1, 2}}));

    g.SetSelection({1, 1, 2, 2});
    EXPECT_TRUE(view.selectionModel()->isSelected(m->index(1, 1)));
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
