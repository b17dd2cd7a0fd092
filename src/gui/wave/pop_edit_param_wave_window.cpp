#include "gui/wave/pop_edit_param_wave_window.h"

#include <QCheckBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QTabWidget>
#include <QVBoxLayout>

#include "gui/platform/binders.h"
#include "gui/platform/form_widgets.h"
#include "gui/platform/grid_view.h"

namespace ostrel::gui {

namespace {
constexpr const char* kFormName = "popEditParamWave";
constexpr const char* kGridNames[3] = {"ssWavesFraun", "ssWavesLaser", "ssWavesCustom"};
}  // namespace

popEditParamWaveWindow::popEditParamWaveWindow(popEditParamWave& unit, CSApplication* app,
                                               QWidget* parent)
    : UnitDialog({[&unit] { return unit.Visible(); }, [&unit] { return unit.ResultOk() != 0; },
                  [&unit] { unit.comCancelClick(); }},
                 app, kFormName, parent),
      unit_(unit) {
    setWindowTitle(ToQt(unit_.form.caption));
    auto* layout = new QVBoxLayout(this);

    auto* caption = new QLabel(this);
    caption->setObjectName("lblWave");
    Bind(caption, unit_.lblWave);
    layout->addWidget(caption);

    tabs_ = new QTabWidget(this);
    tabs_->setObjectName("tabWaveSel");
    for (int t = 0; t < 3; ++t) {
        auto* view = new GridView(tabs_);
        view->setObjectName(kGridNames[t]);
        view->Bind(unit_.GridOf(t));
        view->setEditTriggers(QAbstractItemView::NoEditTriggers);
        view->setSelectionBehavior(QAbstractItemView::SelectRows);
        view->verticalHeader()->hide();
        view->horizontalHeader()->setStretchLastSection(true);
        // The wavelengths are blank padded so that their decimal points line up.
        view->setFont(QFont("Monospace"));
        view->resizeColumnsToContents();
        view->setColumnWidth(0, view->columnWidth(0) + 12);
        view->setColumnWidth(1, std::max(view->columnWidth(1) + 12, 130));
        connect(view, &QAbstractItemView::doubleClicked, this, [this, t](const QModelIndex& i) {
            unit_.ssWavesDblClick(t, i.row() + 1);
            FollowUnit();
        });
        // The caller's wavelength, marked by the unit as the active row, is in sight.
        view->scrollTo(view->model()->index(unit_.GridOf(t).ActiveRow() - 1, 0),
                       QAbstractItemView::PositionAtCenter);
        grids_[t] = view;
        tabs_->addTab(view, ToQt(unit_.tabCaptions[static_cast<size_t>(t)]));
    }
    Bind(tabs_, unit_.tabWaveSel);
    // With a buddy the label shows "&&" as one "&".
    caption->setBuddy(tabs_);
    // The grid in front has the focus, so that its active row (the caller's wavelength)
    // is marked.
    connect(tabs_, &QTabWidget::currentChanged, this, [this](int tab) {
        unit_.tabWaveSelChange(tab);
        if (tab >= 0 && tab < 3) grids_[tab]->setFocus();
    });
    layout->addWidget(tabs_, 1);

    multi_ = new QCheckBox(this);
    multi_->setObjectName("chkMultiWaves");
    Bind(multi_, unit_.chkMultiWaves);
    connect(multi_, &QCheckBox::clicked, this, [this] { unit_.chkMultiWavesClick(); });
    layout->addWidget(multi_);

    layout->addLayout(OkCancelRow(unit_));

    const int tab = unit_.tabWaveSel.tab;
    if (tab >= 0 && tab < 3) grids_[tab]->setFocus();
    PlaceBox(QSize(440, 520));
}

void popEditParamWaveWindow::ShowModal(popEditParamWave& unit, CSApplication* app,
                                       QWidget* parent) {
    popEditParamWaveWindow box(unit, app, parent);
    box.exec();
}

}  // namespace ostrel::gui
