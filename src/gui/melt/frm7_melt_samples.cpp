#include "gui/melt/frm7_melt_samples.h"

#include <QAbstractItemModel>
#include <QApplication>
#include <QFile>
#include <QMdiSubWindow>
#include <QMessageBox>
#include <QTemporaryDir>
#include <QTimer>
#include <cstdio>
#include <memory>

#include "core/external/bas1_setup.h"
#include "core/external/demo_installation.h"
#include "core/melt/frm7melt.h"
#include "core/melt/glass_melt.h"
#include "core/melt/pop_melt_parent.h"
#include "core/melt/pop_melt_schott.h"
#include "core/optics/index_from_polynomial.h"
#include "core/platform/install_paths.h"
#include "core/platform/settings_store.h"
#include "core/platform/text.h"
#include "core/shell/manage_forms.h"
#include "gui/melt/frm7_melt_window.h"
#include "gui/melt/pop_melt_parent_dialog.h"
#include "gui/melt/pop_melt_schott_dialog.h"
#include "gui/platform/binders.h"
#include "gui/platform/grid_view.h"
#include "gui/platform/qt_dialogs.h"

namespace ostrel::gui {

namespace {

// The sheet lines of a melt: C, C', d, e, F, F', g.
constexpr float kLines[] = {656.273f, 643.847f, 587.562f, 546.074f, 486.133f, 479.991f, 435.834f};

// A melt a little denser than its catalogue glass, a little more dispersive in the blue.
double MeltOffset(double nm) {
    return 1.2e-4 + 6e-8 * (656.273 - nm) + 1.1e-10 * (656.273 - nm) * (656.273 - nm);
}

// Closes the notice that opening a form shows once.
void CloseNoticeSoon() {
    QTimer::singleShot(300, [] {
        if (QWidget* box = QApplication::activeModalWidget()) box->close();
    });
}

void Type(GridView* view, int col, int row, const QString& text) {
    QAbstractItemModel* m = view->model();
    m->setData(m->index(row - 1, col - 1), text, Qt::EditRole);
}

}  // namespace

QString FindDemoCatalogue() {
    // The catalogue the program is installed with, or staged in its build folder.
    return QString::fromStdString(InstalledDemoCatalogue());
}

void ShowMeltFormSamples(ManageForms& forms, frm7Melt& unit, frm7MeltWindow& window,
                         Dialogs& dialogs, CNewMsg& newMsg, CSApplication* app, QWidget* owner,
                         QWidget* floating, const std::function<void(const QString&)>& shot) {
    QFile csv(FindDemoCatalogue());
    QTemporaryDir tmp;
    if (!csv.open(QIODevice::ReadOnly) || !tmp.isValid()) return;
    std::vector<DemoGlass> glasses;
    std::string message;
    if (!ParseDemoCatalogue(FromQt(QString::fromUtf8(csv.readAll())), glasses, message)) return;
    MemorySettingsStore demoSettings;
    if (!CreateDemoInstallation(FromQt(tmp.path()), glasses, demoSettings, message)) return;
    Bas1Setup demo(demoSettings, dialogs);
    demo.LoadPaths();

    // The floating list would cover the plot.
    const bool floatingShown = floating && floating->isVisible();
    if (floating) floating->hide();

    // The parent: N-BK7 of the first maker, picked in the picker as the user would.
    popMeltParent picker(dialogs, demoSettings, demo.GetPathKelmora(),
                         GenericMakerNames(demo.GetPathLumbrak()));
    if (!picker.Load()) {
        if (floatingShown) floating->show();
        return;
    }
    for (int i = 0; i < picker.lstMakers.ListCount(); ++i) {
        if (UpperAscii(picker.lstMakers.List(i)) == "SCHOTT") picker.lstMakers.SetListIndex(i);
    }
    if (picker.lstMakers.listIndex() < 0) picker.lstMakers.SetListIndex(0);
    picker.lstMakersClick();
    for (int r = 1; r <= picker.ssGlasses.MaxRows(); ++r) {
        if (VbTrimCopy(picker.ssGlasses.Text(2, r)) == "N-BK7") picker.ssGlassesClick(2, r);
    }
    {
        popMeltParentDialog box(picker, app, owner);
        box.show();
        shot("pop_melt_parent.png");
        box.hide();
    }
    picker.comOKClick();

    // The melt: its code and the seven lines of a sheet, typed into the grid and fitted.
    CloseNoticeSoon();
    forms.RibbonClick(kFormMelt, true);
    window.subWindow()->move(8, 8);
    unit.SetParent(picker.PickedRecord());
    unit.txtMeltCode.text = "m1234";
    unit.txtMeltCodeValidate();
    const MaterialRecord& parent = unit.ParentRecord();
    int row = 1;
    for (float w : kLines) {
        int16_t ok = 0;
        const double n =
            IndexFromPolynomial(parent.General.PolyCoef, w, parent.General.Polytype, ok) +
            MeltOffset(w);
        Type(window.grid(), 2, row, QString::number(w, 'f', 4));
        Type(window.grid(), 3, row, QString::number(n, 'f', 7));
        ++row;
    }
    unit.comIndexFitClick();
    window.RefreshPlot();
    shot("frm7_melt.png");

    // Four visible lines only, against the parent's band of 300 to 2500 nm: the plot shades
    // the parts beyond the pairs, and the comparison report marks their rows.
    unit.comClearClick();
    row = 1;
    for (float w : {kLines[0], kLines[2], kLines[4], kLines[6]}) {
        int16_t ok = 0;
        const double n =
            IndexFromPolynomial(parent.General.PolyCoef, w, parent.General.Polytype, ok) +
            (row % 2 ? 2e-5 : -2e-5);
        Type(window.grid(), 2, row, QString::number(w, 'f', 4));
        Type(window.grid(), 3, row, QString::number(n, 'f', 7));
        ++row;
    }
    unit.comIndexFitClick();
    window.RefreshPlot();
    {
        const std::unique_ptr<QMessageBox> report = MakeMessageBox(
            owner, unit.ComparisonReport(), MsgButtons::OK, MsgIcon::None, "Melt Maker");
        report->setModal(false);
        report->show();
        // In the top left corner, clear of the lower half of the plot.
        report->move(0, 0);
        shot("frm7_melt_shaded.png");
    }

    // The sheet, started from the parent's figures.
    popMeltSchott sheet(dialogs, newMsg);
    CloseNoticeSoon();
    sheet.Load(unit.MeltRecord());
    sheet.pctSchottClick();
    {
        popMeltSchottDialog box(sheet, app, owner);
        box.adjustSize();
        if (owner) box.move(owner->geometry().center() - box.rect().center());
        box.show();
        shot("pop_melt_schott.png");
        box.hide();
    }
    sheet.comCancelClick();
    // The sample melt goes unsaved and without a question.
    unit.ForceUnload();
    if (floatingShown) floating->show();
}

}  // namespace ostrel::gui
