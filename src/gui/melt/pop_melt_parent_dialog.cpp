#include "gui/melt/pop_melt_parent_dialog.h"

#include <QComboBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QVBoxLayout>

#include "gui/platform/binders.h"
#include "gui/platform/form_widgets.h"
#include "gui/platform/grid_view.h"

namespace ostrel::gui {

namespace {
constexpr const char* kFormName = "popMeltParent";
}  // namespace

popMeltParentDialog::popMeltParentDialog(popMeltParent& unit, CSApplication* app, QWidget* parent)
    : UnitDialog({[&unit] { return unit.IsOpen(); }, [&unit] { return unit.Accepted(); },
                  [&unit] { unit.comCancelClick(); }},
                 app, kFormName, parent),
      unit_(unit) {
    setWindowTitle(ToQt(unit_.form.caption));
    auto* layout = new QVBoxLayout(this);

    makers_ = new QListWidget(this);
    makers_->setObjectName("lstMakers");
    Bind(makers_, unit_.lstMakers);
    makers_->setMaximumHeight(makers_->fontMetrics().height() * 7);
    // The unit refills the list as it answers: the answer comes after the list's own event.
    OnPick(
        makers_, unit_.lstMakers, [this] { unit_.lstMakersClick(); }, true);
    layout->addWidget(makers_);

    auto* help = new QLabel(this);
    help->setObjectName("lblHelp");
    Bind(help, unit_.lblHelp);
    help->setWordWrap(true);
    layout->addWidget(help);

    sort_ = new QComboBox(this);
    sort_->setObjectName("cmbSortOrder");
    Bind(sort_, unit_.cmbSortOrder);
    connect(sort_, &QComboBox::activated, this, [this] { unit_.cmbSortOrderClick(); });
    auto* sortRow = new QHBoxLayout();
    sortRow->addWidget(sort_);
    sortRow->addStretch(1);
    layout->addLayout(sortRow);

    grid_ = new GridView(this);
    grid_->setObjectName("ssGlasses");
    grid_->Bind(unit_.ssGlasses);
    grid_->setEditTriggers(QAbstractItemView::NoEditTriggers);
    grid_->setSelectionBehavior(QAbstractItemView::SelectRows);
    grid_->setSelectionMode(QAbstractItemView::SingleSelection);
    grid_->verticalHeader()->hide();
    grid_->horizontalHeader()->setStretchLastSection(true);
    auto fit = [this] {
        grid_->resizeColumnsToContents();
        for (int c = 0; c < grid_->model()->columnCount(); ++c)
            grid_->setColumnWidth(c, grid_->columnWidth(c) + 14);
    };
    connect(grid_->gridModel(), &GridTableModel::layoutReset, grid_, fit);
    fit();
    connect(grid_, &QAbstractItemView::clicked, this,
            [this](const QModelIndex& i) { unit_.ssGlassesClick(i.column() + 1, i.row() + 1); });
    connect(grid_, &GridView::cellKeyed, this,
            [this](int col, int row) { unit_.ssGlassesClick(col, row); });
    gridShown_ =
        unit_.ssGlassesView.Observe([this] { grid_->setVisible(unit_.ssGlassesView.visible); });
    grid_->setVisible(unit_.ssGlassesView.visible);
    layout->addWidget(grid_, 1);

    auto* selected = new QLabel(this);
    selected->setObjectName("lblSelGlass");
    Bind(selected, unit_.lblSelGlass);
    layout->addWidget(selected);

    layout->addLayout(OkCancelRow(unit_));

    PlaceBox(QSize(520, 560));
}

void popMeltParentDialog::ShowModal(popMeltParent& unit, CSApplication* app, QWidget* parent) {
    popMeltParentDialog box(unit, app, parent);
    box.exec();
}

}  // namespace ostrel::gui
