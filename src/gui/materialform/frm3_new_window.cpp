#include "gui/materialform/frm3_new_window.h"

#include <QApplication>
#include <QClipboard>
#include <QComboBox>
#include <QFormLayout>
#include <QFrame>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QPushButton>
#include <QSplitter>
#include <QStyle>
#include <QTabWidget>
#include <QVBoxLayout>
#include <algorithm>

#include "gui/materialform/frm3_new_plots.h"
#include "gui/platform/binders.h"
#include "gui/platform/form_widgets.h"
#include "gui/platform/grid_view.h"
#include "gui/platform/mdi_form.h"
#include "gui/shell/form_position.h"

namespace ostrel::gui {

namespace {

constexpr const char* kFormName = "frm3New";
// Tab captions in the order of frm3New::Tab; the letters after "&" are free of the buttons'.
constexpr const char* kTabCaptions[5] = {"&General", "&Index", "&Trans", "&dn/dt", "&Other"};
constexpr int kCurveSamples = 200;

GridView* MakeGrid(QWidget* parent, const char* name, Grid& grid,
                   std::function<void(int, int)> changed) {
    auto* view = new GridView(parent);
    view->setObjectName(name);
    view->Bind(grid, std::move(changed));
    view->horizontalHeader()->setMinimumSectionSize(48);
    view->verticalHeader()->setMinimumWidth(28);
    return view;
}

// Columns as wide as their headings and texts, and at least as wide as `sample`, again
// after each rebuild of the grid.
void FitColumns(GridView* view, const QString& sample) {
    const int least = view->fontMetrics().horizontalAdvance(sample) + 16;
    auto fit = [view, least] {
        view->resizeColumnsToContents();
        for (int c = 0; c < view->model()->columnCount(); ++c)
            view->setColumnWidth(c, std::max(view->columnWidth(c) + 10, least));
    };
    QObject::connect(view->gridModel(), &GridTableModel::layoutReset, view, fit);
    fit();
}

QLabel* Caption(QWidget* parent, const QString& text, QWidget* buddy) {
    auto* label = new QLabel(text, parent);
    label->setBuddy(buddy);
    return label;
}

}  // namespace

frm3NewWindow::frm3NewWindow(frm3New& unit, CSApplication* app, QMdiArea* area)
    : unit_(unit), app_(app) {
    setObjectName(kFormName);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(6, 6, 6, 6);

    // The material and its glass code above the tabs.
    auto* head = new QHBoxLayout();
    QLabel* source = MakeLabel(this, "lblGlassSource", unit_.lblGlassSource);
    QFont bold = source->font();
    bold.setBold(true);
    bold.setPointSizeF(bold.pointSizeF() * 1.15);
    source->setFont(bold);
    head->addWidget(source, 1);
    head->addWidget(new QLabel(tr("Glass code:"), this));
    QLabel* code = MakeLabel(this, "lblGlassCode", unit_.lblGlassCode);
    code->setFrameShape(QFrame::StyledPanel);
    code->setFrameShadow(QFrame::Sunken);
    code->setMinimumWidth(80);
    code->setAlignment(Qt::AlignCenter);
    code->setTextInteractionFlags(Qt::TextSelectableByMouse);
    head->addWidget(code);
    layout->addLayout(head);

    tabs_ = new QTabWidget(this);
    tabs_->setObjectName("tabProperties");
    tabs_->addTab(BuildGeneralTab(), kTabCaptions[frm3New::kTabGeneral]);
    tabs_->addTab(BuildIndexTab(), kTabCaptions[frm3New::kTabIndex]);
    tabs_->addTab(BuildTransTab(), kTabCaptions[frm3New::kTabTrans]);
    tabs_->addTab(BuildDndtTab(), kTabCaptions[frm3New::kTabDndt]);
    tabs_->addTab(BuildOtherTab(), kTabCaptions[frm3New::kTabOther]);
    Bind(tabs_, unit_.tabProperties);
    connect(tabs_, &QTabWidget::currentChanged, this, [this](int tab) {
        unit_.tabPropertiesChange(tab);
        RefreshPlots();
    });
    layout->addWidget(tabs_, 1);

    // The readiness of the five sections.
    auto* status = new QHBoxLayout();
    status->setSpacing(4);
    for (size_t i = 0; i < unit_.pnlStatus.size(); ++i) {
        status->addWidget(MakePanel(this, QString("pnlStatus%1").arg(i), unit_.pnlStatus[i]), 1);
    }
    layout->addLayout(status);

    auto* commands = new QHBoxLayout();
    QPushButton* add = MakeButton(this, "comAdd", unit_.comAdd, &frm3New::comAddClick);
    add->setDefault(true);  // Enter saves, as the form's default command
    commands->addWidget(add);
    QPushButton* paste = MakeButton(this, "comClipPaste", unit_.comClipPaste, nullptr);
    connect(paste, &QPushButton::clicked, this, [this] {
        unit_.comClipPasteClick(FromQt(QApplication::clipboard()->text()));
        RefreshPlots();
    });
    commands->addWidget(paste);
    commands->addWidget(MakeButton(this, "comClear", unit_.comClear, &frm3New::comClearClick));
    commands->addWidget(MakeButton(this, "comWaveSelRefInd", unit_.comWaveSelRefInd,
                                   &frm3New::comWaveSelRefIndClick));
    commands->addWidget(MakeButton(this, "comMelt", unit_.comMelt, &frm3New::comMeltClick));
    commands->addStretch(1);
    commands->addWidget(MakeButton(this, "comOK", unit_.comOK, &frm3New::comOKClick));
    layout->addLayout(commands);

    sub_ = AddFormSubWindow(
        area, this, style()->standardIcon(QStyle::SP_FileDialogContentsView),
        ToQt(unit_.form.caption), QSize(980, 620), [this]() -> bool { return unit_.form.visible; },
        [this] { unit_.comOKClick(); });
    subs_[0] = unit_.form.Observe([this] { FollowForm(); });
    // The plots follow the readiness of the index and of the transmission table, whatever
    // changed them (a fit, a check of coefficients, a new record shown).
    subs_[1] = unit_.pnlStatus[frm3New::kTabIndex].Observe([this] { RefreshPlots(); });
    subs_[2] = unit_.pnlStatus[frm3New::kTabTrans].Observe([this] { RefreshPlots(); });
    FollowForm();
}

QPushButton* frm3NewWindow::MakeButton(QWidget* parent, const char* name, Button& model,
                                       void (frm3New::*click)()) {
    QPushButton* b = gui::MakeButton(parent, name, model);
    b->setAutoDefault(false);
    if (click) {
        connect(b, &QPushButton::clicked, this, [this, click] {
            (unit_.*click)();
            RefreshPlots();
        });
    }
    return b;
}

QComboBox* frm3NewWindow::MakeCombo(QWidget* parent, const char* name, ListControl& model,
                                    void (frm3New::*click)()) {
    auto* combo = new QComboBox(parent);
    combo->setObjectName(name);
    Bind(combo, model);
    // The binding has set the list index by the time the user's choice arrives here.
    connect(combo, &QComboBox::activated, this, [this, click] {
        (unit_.*click)();
        RefreshPlots();
    });
    return combo;
}

QWidget* frm3NewWindow::BuildGeneralTab() {
    auto* page = new QWidget(this);
    auto* form = new QFormLayout();
    form->setFieldGrowthPolicy(QFormLayout::FieldsStayAtSizeHint);
    auto* glass = new QLineEdit(page);
    glass->setObjectName("txtGenGlass");
    // No length limit on the boxes: an over-long name reaches the form's check, which
    // refuses it with the count, instead of being cut short without a word.
    glass->setMinimumWidth(glass->fontMetrics().horizontalAdvance(QString(32, 'M')) / 2 + 40);
    Bind(glass, unit_.txtGenGlass);
    connect(glass, &QLineEdit::textEdited, this, [this] { unit_.txtGenGlassChange(); });
    auto* source = new QLineEdit(page);
    source->setObjectName("txtGenSource");
    source->setMinimumWidth(glass->minimumWidth());
    Bind(source, unit_.txtGenSource);
    connect(source, &QLineEdit::textEdited, this, [this] { unit_.txtGenSourceChange(); });
    form->addRow(Caption(page, tr("&Name:"), glass), glass);
    form->addRow(Caption(page, tr("Sou&rce:"), source), source);

    auto* layout = new QVBoxLayout(page);
    layout->addLayout(form);
    layout->addWidget(MakeLabel(page, "lblGenNew", unit_.lblGenNew));
    layout->addStretch(1);
    return page;
}

QWidget* frm3NewWindow::BuildIndexTab() {
    auto* page = new QWidget(this);
    auto* split = new QSplitter(Qt::Horizontal, page);
    split->setChildrenCollapsible(false);

    auto* left = new QWidget(split);
    auto* col = new QVBoxLayout(left);
    col->setContentsMargins(0, 0, 0, 0);
    auto* choices = new QGridLayout();
    QComboBox* dataType = MakeCombo(left, "cmbIndexDataType", unit_.cmbIndexDataType,
                                    &frm3New::cmbIndexDataTypeClick);
    QComboBox* polyType = MakeCombo(left, "cmbIndexPolyType", unit_.cmbIndexPolyType,
                                    &frm3New::cmbIndexPolyTypeClick);
    choices->addWidget(Caption(left, tr("D&ata:"), dataType), 0, 0);
    choices->addWidget(dataType, 0, 1);
    choices->addWidget(Caption(left, tr("Pol&ynomial:"), polyType), 1, 0);
    choices->addWidget(polyType, 1, 1);
    choices->addWidget(MakeLabel(left, "lblIndexMinDataPoints", unit_.lblIndexMinDataPoints), 1, 2);
    choices->setColumnStretch(2, 1);
    col->addLayout(choices);

    GridView* grid = MakeGrid(left, "ssRefInd", unit_.ssRefInd, [this](int c, int r) {
        unit_.ssRefIndChange(c, r);
        RefreshPlots();
    });
    FitColumns(grid, "-0.0000000");
    grid->SetPasteHandler([this](const std::string& text) {
        if (!unit_.comClipPaste.enabled) return;
        unit_.comClipPasteClick(text);
        RefreshPlots();
    });
    col->addWidget(grid, 1);

    auto* buttons = new QHBoxLayout();
    buttons->addWidget(
        MakeButton(left, "comIndexSort", unit_.comIndexSort, &frm3New::comIndexSortClick));
    buttons->addWidget(
        MakeButton(left, "comIndexFit", unit_.comIndexFit, &frm3New::comIndexFitClick));
    buttons->addWidget(
        MakeButton(left, "comIndexShow", unit_.comIndexShow, &frm3New::comIndexShowClick));
    buttons->addStretch(1);
    col->addLayout(buttons);
    QLabel* error = MakeLabel(left, "lblError", unit_.lblError);
    error->setTextInteractionFlags(Qt::TextSelectableByMouse);
    // A fit that does not represent its data comes in bold; it is shown as a warning.
    subs_[3] = unit_.lblError.Observe(
        [this, error] { error->setStyleSheet(unit_.lblError.bold ? "color: #b00000;" : ""); });
    col->addWidget(error);

    indexPlot_ = new IndexPlot(split);
    split->addWidget(left);
    split->addWidget(indexPlot_);
    split->setStretchFactor(0, 0);
    split->setStretchFactor(1, 1);
    split->setSizes({520, 420});

    auto* layout = new QVBoxLayout(page);
    layout->addWidget(split);
    return page;
}

QWidget* frm3NewWindow::BuildTransTab() {
    auto* page = new QWidget(this);
    auto* layout = new QVBoxLayout(page);

    auto* top = new QHBoxLayout();
    QComboBox* type =
        MakeCombo(page, "cmbTransType", unit_.cmbTransType, &frm3New::cmbTransTypeClick);
    QComboBox* disp =
        MakeCombo(page, "cmbTransDisp", unit_.cmbTransDisp, &frm3New::cmbTransDispClick);
    auto* width = new QLineEdit(page);
    width->setObjectName("txtTransGlassWidth");
    width->setMaximumWidth(width->fontMetrics().horizontalAdvance("0000000.0") + 16);
    Bind(width, unit_.txtTransGlassWidth);
    connect(width, &QLineEdit::editingFinished, this, [this] {
        unit_.txtTransGlassWidthValidate();
        RefreshPlots();
    });
    top->addWidget(Caption(page, tr("D&ata:"), type));
    top->addWidget(type);
    top->addSpacing(8);
    top->addWidget(Caption(page, tr("Sho&w as:"), disp));
    top->addWidget(disp);
    top->addSpacing(8);
    top->addWidget(Caption(page, tr("Thic&kness [mm]:"), width));
    top->addWidget(width);
    top->addSpacing(8);
    top->addWidget(
        MakeButton(page, "comTransSort", unit_.comTransSort, &frm3New::comTransSortClick));
    top->addStretch(1);
    layout->addLayout(top);

    auto* split = new QSplitter(Qt::Horizontal, page);
    split->setChildrenCollapsible(false);
    GridView* grid = MakeGrid(split, "ssTrans", unit_.ssTrans, [this](int c, int r) {
        unit_.ssTransChange(c, r);
        RefreshPlots();
    });
    FitColumns(grid, "0000.0000");
    grid->SetPasteHandler([this](const std::string& text) {
        if (!unit_.comClipPaste.enabled) return;
        unit_.comClipPasteClick(text);
        RefreshPlots();
    });
    transPlot_ = new TransPlot(split);
    split->addWidget(grid);
    split->addWidget(transPlot_);
    split->setStretchFactor(1, 1);
    split->setSizes({520, 420});
    layout->addWidget(split, 1);
    return page;
}

QWidget* frm3NewWindow::BuildDndtTab() {
    auto* page = new QWidget(this);
    auto* layout = new QVBoxLayout(page);
    layout->addWidget(MakeLabel(page, "lblThermHeading", unit_.lblThermHeading));

    auto* list = new QListWidget(page);
    list->setObjectName("lstThermal");
    Bind(list, unit_.lstThermal);
    list->setMaximumWidth(list->fontMetrics().horizontalAdvance("Schott Sellmeier equation") + 40);
    list->setFixedHeight(list->sizeHintForRow(0) * 3 + 2 * list->frameWidth() + 4);
    OnPick(list, unit_.lstThermal, [this] { unit_.lstThermalClick(); });
    layout->addWidget(list);

    auto* boxes = new QGridLayout();
    for (size_t k = 0; k < unit_.txtTherm.size(); ++k) {
        auto* edit = new QLineEdit(page);
        edit->setObjectName(QString("txtTherm%1").arg(k));
        edit->setMaximumWidth(edit->fontMetrics().horizontalAdvance("-0.000e+00") * 2);
        Bind(edit, unit_.txtTherm[k]);
        const int box = static_cast<int>(k);
        connect(edit, &QLineEdit::editingFinished, this,
                [this, box] { unit_.txtThermValidate(box); });
        QLabel* label = MakeLabel(page, "", unit_.lblTherm[k]);
        label->setObjectName(QString("lblTherm%1").arg(k));
        label->setBuddy(edit);
        boxes->addWidget(label, box, 0);
        boxes->addWidget(edit, box, 1);
    }
    boxes->setColumnStretch(2, 1);
    layout->addLayout(boxes);
    layout->addWidget(MakeLabel(page, "lblDnDtLinear", unit_.lblDnDtLinear));
    layout->addStretch(1);
    return page;
}

QWidget* frm3NewWindow::BuildOtherTab() {
    auto* page = new QWidget(this);
    auto* layout = new QVBoxLayout(page);
    GridView* grid = MakeGrid(page, "ssOther", unit_.ssOther,
                              [this](int c, int r) { unit_.ssOtherChange(c, r); });
    FitColumns(grid, "0000000000000000");
    grid->horizontalHeader()->setStretchLastSection(true);
    layout->addWidget(grid);
    return page;
}

void frm3NewWindow::RefreshPlots() {
    if (indexPlot_) indexPlot_->Show(unit_.IndexCurve(kCurveSamples), unit_.IndexResiduals());
    if (transPlot_) transPlot_->Show(unit_.TransCurve());
}

void frm3NewWindow::FollowForm() {
    FollowFormVisible(sub_, unit_.form, app_, kFormName, [this] { RefreshPlots(); });
}

GridView* frm3NewWindow::grid(const char* name) const {
    return findChild<GridView*>(name);
}

QPushButton* frm3NewWindow::button(const char* name) const {
    return findChild<QPushButton*>(name);
}

QLabel* frm3NewWindow::label(const char* name) const {
    return findChild<QLabel*>(name);
}

QLineEdit* frm3NewWindow::edit(const char* name) const {
    return findChild<QLineEdit*>(name);
}

QComboBox* frm3NewWindow::combo(const char* name) const {
    return findChild<QComboBox*>(name);
}

}  // namespace ostrel::gui
