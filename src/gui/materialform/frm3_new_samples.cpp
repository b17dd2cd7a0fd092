#include "gui/materialform/frm3_new_samples.h"

#include <QAbstractItemModel>
#include <QApplication>
#include <QEventLoop>
#include <QMenu>
#include <QMessageBox>
#include <QPushButton>
#include <QTabWidget>
#include <QTimer>
#include <cmath>
#include <cstdio>
#include <memory>
#include <string>

#include "core/materialform/frm3new.h"
#include "core/shell/manage_forms.h"
#include "core/wave/pop_edit_param_wave.h"
#include "gui/materialform/frm3_new_plots.h"
#include "gui/materialform/frm3_new_window.h"
#include "gui/platform/grid_view.h"
#include "gui/platform/plot_view.h"
#include "gui/platform/qt_dialogs.h"
#include "gui/wave/pop_edit_param_wave_window.h"

namespace ostrel::gui {

namespace {

// A borosilicate crown: its published Sellmeier constants (wavelength in µm).
double CrownIndex(double nm) {
    const double l2 = (nm / 1000.0) * (nm / 1000.0);
    const double n2 = 1.0 + 1.03961212 * l2 / (l2 - 0.00600069867) +
                      0.231792344 * l2 / (l2 - 0.0200179144) + 1.01046945 * l2 / (l2 - 103.560653);
    return std::sqrt(n2);
}

QString Fixed(double v, int decimals) {
    return QString::number(v, 'f', decimals);
}

// Types a cell the way the user would, through the grid on screen.
void Type(GridView* view, int col, int row, const QString& text) {
    QAbstractItemModel* m = view->model();
    m->setData(m->index(row - 1, col - 1), text, Qt::EditRole);
}

// Lets the windows settle before a picture is taken.
void Settle(int ms) {
    QEventLoop loop;
    QTimer::singleShot(ms, &loop, &QEventLoop::quit);
    loop.exec();
}

void Choose(ListControl& list, int index, frm3New& unit, void (frm3New::*click)()) {
    list.SetListIndex(index);
    (unit.*click)();
}

// Answers the modal message box that begins with `text` with `button` once it is up.
void AnswerNextBox(const QString& text, QMessageBox::StandardButton button) {
    QTimer::singleShot(300, [text, button] {
        auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
        if (box && box->text().startsWith(text) && box->button(button))
            box->button(button)->click();
    });
}

// A question box as the program asks it, shown without waiting for an answer so that the
// screen can be taken, then closed.
void ShowQuestion(QWidget* owner, const std::string& text, MsgButtons buttons,
                  const std::function<void(const QString&)>& shot, const QString& file) {
    const std::unique_ptr<QMessageBox> box =
        MakeMessageBox(owner, text, buttons, MsgIcon::Question);
    box->show();
    Settle(700);
    shot(file);
    box->close();
}

}  // namespace

void ShowMaterialFormSamples(ManageForms& forms, frm3New& unit, frm3NewWindow& window,
                             popEditParamWave& picker, CSApplication* app, QWidget* owner,
                             QWidget* floating, const std::function<void(const QString&)>& shot) {
    // The floating list would cover the plots.
    const bool floatingShown = floating && floating->isVisible();
    if (floating) floating->hide();
    forms.RibbonClick(kFormNew, true);

    unit.txtGenGlass.text = "BK7-M12";
    unit.txtGenGlassChange();
    unit.txtGenSource.text = "Own melt";
    unit.txtGenSourceChange();

    // Index: sixteen catalogue lines from 2325 nm to 365 nm, fitted by Sellmeier.
    window.tabs()->setCurrentIndex(frm3New::kTabIndex);
    const double waves[] = {2325.42,  1970.09,  1529.582, 1060.0,   1013.98, 852.11,
                            706.5188, 656.2725, 643.8469, 587.5618, 546.074, 486.1327,
                            479.9914, 435.8343, 404.6561, 365.0146};
    // The polynomial first: choosing it refills the grid from the record.
    Choose(unit.cmbIndexPolyType, 1, unit, &frm3New::cmbIndexPolyTypeClick);
    GridView* index = window.grid("ssRefInd");
    int row = 1;
    for (double w : waves) {
        Type(index, 1, row, Fixed(w, 4));
        Type(index, 2, row, Fixed(CrownIndex(w), 7));
        ++row;
    }
    unit.comIndexFitClick();
    window.RefreshPlots();

    // Transmission: internal transmission of a 10 mm sample.
    Choose(unit.cmbTransType, 1, unit, &frm3New::cmbTransTypeClick);
    const double trans[][2] = {{2500, 66.5},  {2325.4, 79.3}, {1970.1, 93.3}, {1529.6, 99.2},
                               {1060, 99.9},  {700, 99.8},    {546.1, 99.8},  {460, 99.3},
                               {400, 99.7},   {380, 99.3},    {365, 98.8},    {350, 98.3},
                               {334.1, 95.7}, {320, 83.0},    {310, 49.0},    {300, 14.0}};
    GridView* transGrid = window.grid("ssTrans");
    row = 1;
    for (const auto& t : trans) {
        Type(transGrid, 1, row, Fixed(t[0], 1));
        Type(transGrid, 3, row, Fixed(t[1], 1));
        ++row;
    }
    unit.comTransSortClick();

    // Temperature data by the Schott model, and the density.
    Choose(unit.lstThermal, 2, unit, &frm3New::lstThermalClick);
    const char* therm[] = {"1.86e-6", "1.31e-8", "-1.37e-11", "4.34e-7", "6.27e-10", "0.17", "20"};
    for (int k = 0; k < 7; ++k) {
        unit.txtTherm[static_cast<size_t>(k)].text = therm[k];
        unit.txtThermValidate(k);
    }
    GridView* other = window.grid("ssOther");
    Type(other, 2, 1, "7.1");
    Type(other, 2, 3, "557");
    Type(other, 2, 9, "2.51");
    Type(other, 2, 10, "82");
    Type(other, 2, 22, "R");
    window.RefreshPlots();

    const char* files[] = {"frm3_new_general.png", "frm3_new_index.png", "frm3_new_trans.png",
                           "frm3_new_dndt.png", "frm3_new_other.png"};
    for (int tab = frm3New::kTabGeneral; tab <= frm3New::kTabOther; ++tab) {
        window.tabs()->setCurrentIndex(tab);
        Settle(700);
        shot(files[tab]);
    }

    // The residual plot's context menu, opened over the plot.
    window.tabs()->setCurrentIndex(frm3New::kTabIndex);
    Settle(300);
    if (auto* plot = qobject_cast<PlotView*>(window.indexPlot()->residualView())) {
        QMenu* menu = plot->MakeContextMenu();
        menu->popup(plot->mapToGlobal(plot->rect().center()));
        Settle(700);
        shot("plot_menu.png");
        menu->close();
        menu->deleteLater();
    }

    // The picker, opened on the index grid's d line. Its one-time notice is closed first.
    window.tabs()->setCurrentIndex(frm3New::kTabIndex);
    QTimer::singleShot(300, [] {
        if (QWidget* box = QApplication::activeModalWidget()) box->close();
    });
    picker.Load(587.5618f, 0);
    popEditParamWaveWindow box(picker, app, owner);
    box.show();
    Settle(700);
    shot("pop_edit_param_wave.png");
    box.hide();

    // The question of a close with unsaved changes, as the message box shows it.
    ShowQuestion(owner, unit.SaveQuestion(), MsgButtons::YesNoCancel, shot,
                 "frm3_save_changes.png");

    // A Schott Plus fit of sixteen exact points from 400 to 700 nm misses them by far: the
    // user declines it, and the question is shown again over the warning it leaves.
    Choose(unit.cmbIndexPolyType, 3, unit, &frm3New::cmbIndexPolyTypeClick);
    row = 1;
    for (int i = 0; i < 16; ++i) {
        const double w = 400.0 + 20.0 * i;
        Type(index, 1, row, Fixed(w, 4));
        Type(index, 2, row, Fixed(CrownIndex(w), 7));
        ++row;
    }
    AnswerNextBox("The fit does not represent the data", QMessageBox::No);
    unit.comIndexFitClick();
    window.RefreshPlots();
    const MeasuredData& m = unit.Record().Measured;
    ShowQuestion(owner, PoorFitQuestion(std::sqrt(m.FitError / unit.Record().General.IndexPoints)),
                 MsgButtons::YesNo, shot, "frm3_fit_warning.png");

    // Released with its changes dropped.
    AnswerNextBox("Save changes to", QMessageBox::No);
    forms.RibbonClick(kFormNew, false);
    if (floatingShown) floating->show();
}

}  // namespace ostrel::gui
