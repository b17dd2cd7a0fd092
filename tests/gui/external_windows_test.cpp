// The update frame, the removal dialog and the archive form over a demo installation of the
// sibling programs: each driven through its widgets, and the files and the database checked.
// The import and backup windows opened and closed through the tool strip: a crafted file read
// through the import window, and a backup written through the backup window.

#include <filesystem>

#include "core/external/external_file.h"
#include "core/external/external_fixture.h"
#include "core/platform/settings_file.h"
#include "gui/external/frm2_manage_update_panel.h"
#include "gui/external/frm6_archive_window.h"
#include "gui/external/frm_glasses_del_ext_dialog.h"
#include "gui/import/frm4_import_window.h"
#include "gui/import/frm5_export_window.h"
#include "gui/materialform/frm2_manage_window.h"
#include "gui/platform/qt_settings_store.h"
#include "gui_fixture.h"

namespace ostrel::gui {
namespace {

namespace fs = std::filesystem;
using ostrel::testing::ReadFileBytes;
using ostrel::testing::ReadyMaterial;
using ostrel::testing::WriteFileBytes;

// N-BK7, K7, F2 and N-SF11 of Schott in the catalogue program; three ready custom materials.
class ExternalWindowsTest : public ostrel::testing::ExternalFixture {
  protected:
    // The manage form's window with its update frame; the removal form is handed to `remove`.
    void SetUp() override {
        ExternalFixture::SetUp();
        for (const char* name : {"GLASS A", "GLASS B", "GLASS C"})
            list.ListAdd(ReadyMaterial(name, "Lab"), false);
        manageWindow.AddPanel(panel);
        manage.Display();
    }

    FixedClock clock{45292.0};
    ErrorDisplayer errors{dir.path().string() + "/", dialogs, clock};
    GlassesList list{dir.path().string() + "/", errors};
    QMdiArea area;
    frm2Manage manage{list, dialogs, frm2Manage::Hooks{}};
    frm2ManageWindow manageWindow{manage, nullptr, &area};
    frm2ManageUpdate update = frm2ManageUpdate(frm2ManageUpdate::SourceOf(manage), setup, dialogs,
                                               [this](frmGlassesDelExt& del) { remove(del); });
    frm2ManageUpdatePanel* panel = new frm2ManageUpdatePanel(update);
    std::function<void(frmGlassesDelExt&)> remove = [](frmGlassesDelExt&) {};
};

TEST_F(ExternalWindowsTest, UpdateFrameShowsItsUnitAndSendsTheChosenRows) {
    EXPECT_TRUE(manageWindow.isAncestorOf(panel));
    EXPECT_EQ(
        std::tuple(panel->combo("cmbUpdateProg")->currentText(),
                   panel->button("comExtAddAll")->text(), panel->button("comExtRemove")->toolTip(),
                   panel->findChild<QLabel*>("lblSynch")->text()),
        std::tuple("Lumbrak3D/Sextane & KelmoraTD!", "U&pdate with all materials",
                   "Remove selected materials from databas of external program",
                   frm2ManageUpdate::kSynchNote));

    dialogs.answers = {MsgAnswer::OK};
    panel->button("comExtAddAll")->click();
    EXPECT_EQ(dialogs.boxes.back().text.rfind("Are you sure that you want to export all 3 ", 0),
              0u);

    // The selected grid row and the chosen target reach the question.
    panel->combo("cmbUpdateProg")->setCurrentIndex(0);
    manageWindow.grid()->selectRow(1);
    dialogs.answers = {MsgAnswer::No};
    panel->button("comExtAddSel")->click();
    EXPECT_EQ(dialogs.boxes.back().text,
              "Are you sure that you want to export GLASS B [Lab] to Lumbrak3D/Sextane");
}

TEST_F(ExternalWindowsTest, RemovalDialogListsAndRemovesFromTheDatabase) {
    dialogs.answers = {MsgAnswer::OK};
    panel->button("comExtSynch")->click();

    // Each showing of the removal form runs `drive` on the open modal dialog.
    std::function<void(frmGlassesDelExtDialog&)> drive;
    remove = [&](frmGlassesDelExt& del) {
        frmGlassesDelExtDialog dlg(del, &manageWindow);
        QTimer::singleShot(0, &dlg, [&] {
            drive(dlg);
            if (dlg.isVisible()) dlg.reject();  // never leave a test hanging
        });
        dlg.exec();
    };

    drive = [&](frmGlassesDelExtDialog& dlg) {
        dlg.option(1)->click();
        ASSERT_EQ(dlg.list()->count(), 3);
        EXPECT_EQ(dlg.list()->item(0)->text(), "GLASS A/Lab");
        dlg.list()->item(0)->setSelected(true);
        dlg.list()->item(2)->setSelected(true);
        dlg.option(1)->click();  // the same target again keeps the selection
        dlg.button("comDelSel")->click();
        EXPECT_EQ(dlg.result(), QDialog::Accepted);
    };
    panel->button("comExtRemove")->click();
    // Of the custom rows (s1 8) of the database, GLASS B is left.
    std::vector<DbRow> rows;
    DbError error;
    ASSERT_TRUE(Open()->FindRows(kTableCurrent, {{"s1", DbValue{int64_t{8}}}}, rows, error));
    ASSERT_EQ(rows.size(), 1u);
    EXPECT_EQ(DbText(rows[0].Field("GlassName")) + "/" + DbText(rows[0].Field("Source")),
              "GLASS B/Lab");

    // The close box cancels.
    drive = [&](frmGlassesDelExtDialog& dlg) {
        dlg.list()->item(0)->setSelected(true);
        dlg.close();
        EXPECT_EQ(dlg.result(), QDialog::Rejected);
    };
    EXPECT_FALSE(update.comExtRemoveClick());
}

TEST_F(ExternalWindowsTest, ArchiveFormMovesTheChosenGlassAndAsksBeforeAll) {
    ManageForms forms(dialogs, {[] { return true; }, [] { return false; }, [] {}});
    frm6Archive archive(setup, dialogs, [&forms] { forms.RibbonClick(kFormArchive, false); });
    frm6ArchiveWindow w(archive, nullptr, &area);
    forms.RegisterForm(kFormArchive, &archive);

    forms.RibbonClick(kFormArchive, true);
    ASSERT_FALSE(w.subWindow()->isHidden());
    auto* curr = w.gridCurr()->model();
    auto* arch = w.gridArchive()->model();
    EXPECT_EQ(curr->headerData(4, Qt::Horizontal, Qt::DisplayRole).toString(), "Status");
    ASSERT_EQ(curr->rowCount(), 4);

    // One row, reached with the keys from the top.
    KeyToRow(w.gridCurr(), RowOf(curr, "N-SF11"));
    w.button("comArchive")->click();
    // The choice does not pass on to the next glass: a second press moves nothing.
    w.button("comArchive")->click();
    EXPECT_TRUE(w.gridCurr()->selectionModel()->selectedRows().isEmpty());
    ASSERT_EQ(arch->rowCount(), 1);
    EXPECT_EQ(arch->index(0, 1).data().toString(), " N-SF11");

    // The corner button selects everything, which asks first.
    auto* corner = w.gridCurr()->findChild<QAbstractButton*>();
    ASSERT_NE(corner, nullptr);
    corner->click();
    dialogs.answers = {MsgAnswer::Cancel};
    w.button("comArchive")->click();
    EXPECT_EQ(dialogs.boxes.back().text, frm6Archive::kMsgArchiveAll);

    KeyToRow(w.gridArchive(), 0);
    w.button("comDeArchive")->click();
    EXPECT_EQ(arch->rowCount(), 0);
}

// With a data folder given, the windows keep their settings in the folder's own file, in
// the form the command line reads.
TEST(QtSettingsStoreTest, AGivenFileIsTheOneWrittenAndBothFrontEndsReadIt) {
    ostrel::testing::TempDir dir;
    const std::string path = SettingsFile::PathIn(dir.path().string());
    QtSettingsStore store(path);
    store.SaveSetting("B1SetupPathsTD", "KelmoraTD", "/opt/kelmora, new/");
    EXPECT_EQ(SettingsFile(path).GetSetting("B1SetupPathsTD", "KelmoraTD", ""),
              "/opt/kelmora, new/");
    SettingsFile(path).SaveSetting("B1SetupPathsTD", "FirstLoad1TD", "False");
    EXPECT_EQ(QtSettingsStore(path).GetSetting("B1SetupPathsTD", "FirstLoad1TD", ""), "False");
}

// Two Herzberger glasses (refitted), one Schott glass, and one formula that is passed over.
constexpr const char* kCraftedAgf =
    "NM H1 3 0 1.5 60 0 1\nCD 1.5 0.004 0 0.0001 0 0\nLD 0.4 1.0\n"
    "NM H2 3 0 1.5 60 0 1\nCD 1.5 0.004 0 0.0001 0 0\nLD 0.4 1.0\n"
    "NM S 1 0 1.5 60 0 1\nCD 2.27 -0.0101 0.0106 0.00017 -2e-6 1e-6\nLD 0.4 1.0\n"
    "NM X 4 0 1.5 60 0 1\nCD 1 0 0 0 0 0\nLD 0.4 1.0\n";

class ImportWindowsTest : public ::testing::Test, protected UnitEnv {
  protected:
    ImportWindowsTest() {
        area.resize(1200, 700);
        area.show();
    }

    ManageForms forms{dialogs, {[] { return false; }, [] { return false; }, [] {}}};
    QMdiArea area;
};

TEST_F(ImportWindowsTest, ImportWindowShowsTheReadAndClosesThroughTheStrip) {
    frm4ImportWindow* window = nullptr;
    frm4Import::Hooks hooks;
    std::string reviewed;
    hooks.reviewInNewForm = [&](const MaterialRecord& r) { reviewed = r.General.GlassName.Text(); };
    hooks.progress = [&](size_t done, size_t total) { window->ShowProgress(done, total); };
    hooks.close = [&] { forms.RibbonClick(kFormImport, false); };
    frm4Import unit(list, dialogs, settings, newMsg, dir.path().string(), hooks);
    frm4ImportWindow w(unit, nullptr, &area);
    window = &w;
    forms.RegisterForm(kFormImport, &unit);

    forms.RibbonClick(kFormImport, true);
    EXPECT_TRUE(w.subWindow()->isVisible());

    // Halfway through a read the bar is up, in thousandths; at the end it is gone.
    w.ShowProgress(50, 100);
    EXPECT_TRUE(w.progressBar()->isVisibleTo(&w));
    EXPECT_EQ(w.progressBar()->value(), 500);
    w.ShowProgress(100, 100);
    EXPECT_FALSE(w.progressBar()->isVisibleTo(&w));

    EXPECT_TRUE(w.grid()->isColumnHidden(5)) << "no refit column before a refit";
    WriteFileBytes(dir / "crafted.agf", kCraftedAgf);
    dialogs.files.push_back((dir / "crafted.agf").string());
    dialogs.filters.push_back(frm4Import::kAGF);
    w.button("comImport")->click();
    auto* model = w.grid()->model();
    ASSERT_EQ(model->rowCount(), 3);
    EXPECT_FALSE(w.grid()->isColumnHidden(5)) << "the refit column shows after a refit";
    EXPECT_EQ(w.subWindow()->windowTitle(), "Import material data from text file: crafted.agf");

    // Enter on a row reached by the keys reviews that glass, as a double click does.
    KeyToRow(w.grid(), 1);
    PressKey(w.grid(), Qt::Key_Enter);
    EXPECT_EQ(reviewed, model->index(1, 0).data().toString().toStdString());

    // A click in the grid picks the row that the add command takes.
    w.grid()->selectRow(0);
    w.button("comAddSel")->click();
    ASSERT_EQ(list.CustomCount(), 1);
    EXPECT_EQ(list.CustomList()[0].General.GlassName.Text(), "H1");

    w.button("comOK")->click();
    EXPECT_FALSE(w.subWindow()->isVisible());
    EXPECT_EQ(forms.GetCurrentForm(), kNoForm);
}

TEST_F(ImportWindowsTest, BackupWindowWritesTheSelectedGlass) {
    list.ListAdd(Record("A*B", "Home"), false);
    list.ListAdd(Record("MELT1", "Home", true), false);

    frm5Export unit(list, dialogs, clock, [&] { forms.RibbonClick(kFormExport, false); });
    frm5ExportWindow w(unit, nullptr, &area);
    forms.RegisterForm(kFormExport, &unit);
    forms.RibbonClick(kFormExport, true);
    const fs::path out = dir / "one.GLZ";
    dialogs.files.push_back(out.string());
    w.grid()->selectRow(0);
    w.button("comExportSel")->click();
    const std::string image = ReadFileBytes(out);
    EXPECT_NE(image.find("\"A*B\",\"Home\""), std::string::npos);
    EXPECT_EQ(image.find("MELT1"), std::string::npos);
}

}  // namespace
}  // namespace ostrel::gui
