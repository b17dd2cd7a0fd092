// The import and backup windows over their units, opened and closed through the tool
// strip: a crafted file read through the import window, and a backup written through the
// backup window to a scripted path.

#include <filesystem>

#include "gui/import/frm4_import_window.h"
#include "gui/import/frm5_export_window.h"
#include "gui_fixture.h"

namespace ostrel::gui {
namespace {

namespace fs = std::filesystem;
using ostrel::testing::ReadFileBytes;
using ostrel::testing::WriteFileBytes;

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
    EXPECT_EQ(w.button("comAddAll")->shortcut(), QKeySequence("Alt+M"));

    // Halfway through a read the bar is up, in thousandths; at the end it is gone.
    w.ShowProgress(50, 100);
    EXPECT_TRUE(w.progressBar()->isVisibleTo(&w));
    EXPECT_EQ(w.progressBar()->value(), 500);
    w.ShowProgress(100, 100);
    EXPECT_FALSE(w.progressBar()->isVisibleTo(&w));

    WriteFileBytes(dir / "crafted.agf", kCraftedAgf);
    dialogs.files.push_back((dir / "crafted.agf").string());
    dialogs.filters.push_back(frm4Import::kAGF);
    w.button("comImport")->click();
    auto* model = w.grid()->model();
    ASSERT_EQ(model->rowCount(), 3);
    EXPECT_EQ(model->index(2, 0).data().toString(), "S");
    EXPECT_FALSE(w.grid()->isColumnHidden(5)) << "the refit column shows after a refit";
    EXPECT_EQ(w.label("lblReFit")->text().toStdString(), unit.lblReFit.caption.get());
    EXPECT_EQ(w.subWindow()->windowTitle(), "Import material data from text file: crafted.agf");

    // A GLC file with nothing refitted: the column is hidden again.
    dialogs.files.push_back((fs::path(OSTREL_TEST_DATA) / "import" / "sample.glc").string());
    dialogs.filters.push_back(frm4Import::kGLC);
    w.button("comImport")->click();
    EXPECT_EQ(model->rowCount(), unit.ImportCount());
    EXPECT_TRUE(w.grid()->isColumnHidden(5));

    // Enter on a row reached by the keys reviews that glass, as a double click does.
    KeyToRow(w.grid(), 1);
    PressKey(w.grid(), Qt::Key_Enter);
    EXPECT_EQ(reviewed, model->index(1, 0).data().toString().toStdString());

    // A click in the grid picks the row that the add command takes.
    w.grid()->selectRow(0);
    w.button("comAddSel")->click();
    ASSERT_EQ(list.CustomCount(), 1);
    EXPECT_EQ(list.CustomList()[0].General.GlassName.Text(), "N-BK7");

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
    EXPECT_TRUE(w.subWindow()->isVisible());
    EXPECT_EQ(w.subWindow()->windowTitle(), "Backup material data");
    EXPECT_EQ(w.button("comExportAll")->shortcut(), QKeySequence("Alt+A"));

    auto* model = w.grid()->model();
    ASSERT_EQ(model->rowCount(), 2);
    EXPECT_EQ(model->index(1, 0).data().toString(), "MELT1");
    EXPECT_EQ(model->index(1, 0).data(Qt::BackgroundRole).value<QColor>(), QColor(255, 255, 128));

    const fs::path out = dir / "one.GLZ";
    dialogs.files.push_back(out.string());
    w.grid()->selectRow(0);
    w.button("comExportSel")->click();
    const std::string image = ReadFileBytes(out);
    EXPECT_NE(image.find("\"A*B\",\"Home\""), std::string::npos);
    EXPECT_EQ(image.find("MELT1"), std::string::npos);

    w.subWindow()->close();
    EXPECT_FALSE(w.subWindow()->isVisible());
    EXPECT_FALSE(forms.ribTools[kFormExport].value);
}

}  // namespace
}  // namespace ostrel::gui
