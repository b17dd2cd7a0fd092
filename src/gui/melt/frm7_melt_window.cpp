#include "gui/melt/frm7_melt_window.h"

#include <QApplication>
#include <QClipboard>
#include <QEvent>
#include <QEventLoop>
#include <QFrame>
#include <QGroupBox>
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
#include <QTimer>
#include <QVBoxLayout>

#include "gui/melt/frm7_melt_plot.h"
#include "gui/melt/melt_sheet_picture.h"
#include "gui/platform/binders.h"
#include "gui/platform/form_widgets.h"
#include "gui/platform/grid_view.h"
#include "gui/platform/mdi_form.h"
#include "gui/shell/form_position.h"

namespace ostrel::gui {

namespace {

constexpr const char* kFormName = "frm7Melt";
constexpr int kCurveSamples = 200;

}  // namespace

frm7MeltWindow::frm7MeltWindow(frm7Melt& unit, CSApplication* app, QMdiArea* area)
    : unit_(unit), app_(app) {
    setObjectName(kFormName);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(6, 6, 6, 6);

    // The parent and the melt's name, its code, polynomial, status and glass code.
    auto* head = new QHBoxLayout();
    head->addWidget(MakeButton(this, "comParent", unit_.comParent, &frm7Melt::comParentClick));
    QLabel* name = MakeLabel(this, "lblMeltName", unit_.lblMeltName);
    QFont bold = name->font();
    bold.setBold(true);
    bold.setPointSizeF(bold.pointSizeF() * 1.15);
    name->setFont(bold);
    head->addWidget(name, 1);
    layout->addLayout(head);

    auto* codeRow = new QHBoxLayout();
    QLabel* gen = MakeLabel(this, "lblGen", unit_.lblGen);
    code_ = new QLineEdit(this);
    code_->setObjectName("txtMeltCode");
    code_->setMaxLength(frm7Melt::kCodeLength);
    code_->setMaximumWidth(code_->fontMetrics().horizontalAdvance(QString(18, 'M')));
    Bind(code_, unit_.txtMeltCode);
    gen->setBuddy(code_);
    // Enter and leaving the box both end an entry.
    connect(code_, &QLineEdit::editingFinished, this, [this] {
        unit_.txtMeltCodeValidate();
        RefreshPlot();
    });
    code_->installEventFilter(this);
    codeRow->addWidget(gen);
    codeRow->addWidget(code_);
    codeRow->addSpacing(12);
    QLabel* poly = MakePanel(this, "pnlPolyType", unit_.pnlPolyType);
    poly->setMinimumWidth(poly->fontMetrics().horizontalAdvance("Sellmeier Plus") + 24);
    codeRow->addWidget(poly);
    QLabel* status = MakePanel(this, "pnlStatus", unit_.pnlStatus);
    status->setMinimumWidth(status->fontMetrics().horizontalAdvance("Index: NOT Ready") + 24);
    codeRow->addWidget(status);
    codeRow->addSpacing(12);
    codeRow->addWidget(new QLabel(tr("Glass code:"), this));
    QLabel* glassCode = MakeLabel(this, "lblGlassCode", unit_.lblGlassCode);
    glassCode->setFrameShape(QFrame::StyledPanel);
    glassCode->setFrameShadow(QFrame::Sunken);
    glassCode->setMinimumWidth(80);
    glassCode->setAlignment(Qt::AlignCenter);
    glassCode->setTextInteractionFlags(Qt::TextSelectableByMouse);
    codeRow->addWidget(glassCode);
    codeRow->addStretch(1);
    layout->addLayout(codeRow);

    // The pairs on the left, the side panel with the wavebands and the plot on the right.
    auto* split = new QSplitter(Qt::Horizontal, this);
    split->setChildrenCollapsible(false);
    auto* left = new QWidget(split);
    auto* col = new QVBoxLayout(left);
    col->setContentsMargins(0, 0, 0, 0);
    grid_ = new GridView(left);
    grid_->setObjectName("ssRefInd");
    grid_->Bind(unit_.ssRefInd, [this](int c, int r) {
        unit_.ssRefIndChange(c, r);
        RefreshPlot();
    });
    grid_->SetPasteHandler([this](const std::string& text) {
        if (!unit_.comClipPaste.enabled) return;
        unit_.comClipPasteClick(text);
        RefreshPlot();
    });
    grid_->verticalHeader()->setMinimumWidth(28);
    // The long headings wrap onto three lines so that the six columns stay in sight.
    QHeaderView* header = grid_->horizontalHeader();
    header->setDefaultAlignment(Qt::Alignment(Qt::AlignCenter | Qt::TextWordWrap));
    header->setMinimumHeight(header->fontMetrics().lineSpacing() * 3 + 8);
    auto fit = [this] {
        const int number = grid_->fontMetrics().horizontalAdvance("00000.00000") + 16;
        grid_->setColumnWidth(0, grid_->fontMetrics().horizontalAdvance("MM") + 12);
        for (int c = 1; c < grid_->model()->columnCount(); ++c) grid_->setColumnWidth(c, number);
    };
    connect(grid_->gridModel(), &GridTableModel::layoutReset, grid_, fit);
    fit();
    col->addWidget(grid_, 1);
    QLabel* error = MakeLabel(left, "lblError", unit_.lblError);
    error->setTextInteractionFlags(Qt::TextSelectableByMouse);
    col->addWidget(error);

    auto* gridButtons = new QHBoxLayout();
    gridButtons->addWidget(
        MakeButton(left, "comIndexSort", unit_.comIndexSort, &frm7Melt::comIndexSortClick));
    QPushButton* paste = MakeButton(left, "comClipPaste", unit_.comClipPaste, nullptr);
    connect(paste, &QPushButton::clicked, this, [this] {
        unit_.comClipPasteClick(FromQt(QApplication::clipboard()->text()));
        RefreshPlot();
    });
    gridButtons->addWidget(paste);
    gridButtons->addWidget(MakeButton(left, "comClear", unit_.comClear, &frm7Melt::comClearClick));
    gridButtons->addWidget(MakeButton(left, "comWaveSelRefInd", unit_.comWaveSelRefInd,
                                      &frm7Melt::comWaveSelRefIndClick));
    gridButtons->addStretch(1);
    col->addLayout(gridButtons);
    auto* fitButtons = new QHBoxLayout();
    fitButtons->addWidget(
        MakeButton(left, "comIndexFit", unit_.comIndexFit, &frm7Melt::comIndexFitClick));
    fitButtons->addWidget(MakeButton(left, "comShowDispConsts", unit_.comShowDispConsts,
                                     &frm7Melt::comShowDispConstsClick));
    fitButtons->addWidget(
        MakeButton(left, "comShowIndex", unit_.comShowIndex, &frm7Melt::comShowIndexClick));
    fitButtons->addStretch(1);
    col->addLayout(fitButtons);

    split->addWidget(left);
    split->addWidget(BuildSide());
    split->setStretchFactor(0, 0);
    split->setStretchFactor(1, 1);
    split->setSizes({600, 440});
    layout->addWidget(split, 1);

    auto* commands = new QHBoxLayout();
    QPushButton* add = MakeButton(this, "comAdd", unit_.comAdd, &frm7Melt::comAddClick);
    add->setDefault(true);  // Enter saves, as the form's default command
    commands->addWidget(add);
    commands->addStretch(1);
    commands->addWidget(MakeButton(this, "comOK", unit_.comOK, &frm7Melt::comOKClick));
    layout->addLayout(commands);

    sub_ = AddFormSubWindow(
        area, this, QIcon(MeltSheetPicture(16, 16)), ToQt(unit_.form.caption), QSize(1040, 650),
        [this] { return unit_.IsOpen(); }, [this] { unit_.comOKClick(); });
    subs_[0] = unit_.form.Observe([this] { sub_->setWindowTitle(ToQt(unit_.form.caption)); });
    // The plot follows the readiness of the index, whatever changed it.
    subs_[1] = unit_.pnlStatus.Observe([this] { RefreshPlot(); });
}

QWidget* frm7MeltWindow::BuildSide() {
    auto* side = new QWidget(this);
    side->setObjectName("pnlSide");
    BindPanel(side, unit_.pnlSide);
    auto* layout = new QVBoxLayout(side);
    layout->setContentsMargins(4, 0, 0, 0);

    auto* top = new QHBoxLayout();
    auto* bands = new QGroupBox(tr("Wavebands"), side);
    bands->setObjectName("fraWaveBand");
    BindPanel(bands, unit_.fraWaveBand);
    auto* bandLayout = new QHBoxLayout(bands);
    auto* list = new QListWidget(bands);
    list->setObjectName("lstWaveBand");
    Bind(list, unit_.lstWaveBand);
    list->setMaximumHeight(list->fontMetrics().height() * 6);
    list->setMinimumWidth(list->fontMetrics().horizontalAdvance("Schott - standard") + 30);
    // Tabbing into the list picks no band and leaves the wavelengths in the grid alone.
    OnPick(list, unit_.lstWaveBand, [this] {
        unit_.lstWaveBandClick();
        RefreshPlot();
    });
    bandLayout->addWidget(list, 1);
    auto* bandButtons = new QVBoxLayout();
    bandButtons->addWidget(
        MakeButton(bands, "comWaveBand", unit_.comWaveBand, &frm7Melt::comWaveBandClick));
    bandButtons->addStretch(1);
    bandLayout->addLayout(bandButtons);
    top->addWidget(bands, 1);

    QPushButton* sheet =
        MakeButton(side, "comMeltSchott", unit_.comMeltSchott, &frm7Melt::comMeltSchottClick);
    sheet->setIcon(QIcon(MeltSheetPicture(36, 44)));
    sheet->setIconSize(QSize(36, 44));
    sheet->setFixedSize(52, 60);
    top->addWidget(sheet, 0, Qt::AlignTop);
    layout->addLayout(top);

    plot_ = new MeltDeltaPlot(side);
    plot_->setObjectName("pltDelta");
    layout->addWidget(plot_, 1);
    return side;
}

QPushButton* frm7MeltWindow::MakeButton(QWidget* parent, const char* name, Button& model,
                                        void (frm7Melt::*click)()) {
    QPushButton* b = gui::MakeButton(parent, name, model);
    b->setAutoDefault(false);
    if (click) {
        connect(b, &QPushButton::clicked, this, [this, click] {
            (unit_.*click)();
            RefreshPlot();
        });
    }
    return b;
}

void frm7MeltWindow::ShowForm(bool modal) {
    if (sub_->isHidden()) {
        RestoreFormPosition(sub_, app_, kFormName, false);
        sub_->show();
    }
    RefreshPlot();
    sub_->raise();
    sub_->setFocus();
    if (modal && !modalLoop_) {
        QEventLoop loop;
        modalLoop_ = &loop;
        loop.exec();
        modalLoop_ = nullptr;
    }
}

void frm7MeltWindow::CloseForm() {
    if (!sub_->isHidden()) {
        SaveFormPosition(sub_, app_, kFormName);
        sub_->hide();
    }
    if (modalLoop_) modalLoop_->quit();
}

void frm7MeltWindow::RefreshPlot() {
    if (plot_) {
        plot_->Show(unit_.DeltaPoints(), unit_.DeltaCurve(kCurveSamples),
                    unit_.ExtrapolatedRanges());
    }
}

QPushButton* frm7MeltWindow::button(const char* name) const {
    return findChild<QPushButton*>(name);
}

QLabel* frm7MeltWindow::label(const char* name) const {
    return findChild<QLabel*>(name);
}

QLineEdit* frm7MeltWindow::edit(const char* name) const {
    return findChild<QLineEdit*>(name);
}

QListWidget* frm7MeltWindow::list(const char* name) const {
    return findChild<QListWidget*>(name);
}

bool frm7MeltWindow::eventFilter(QObject* watched, QEvent* event) {
    // Entering the melt code box selects all of it.
    if (watched == code_ && event->type() == QEvent::FocusIn) {
        QTimer::singleShot(0, code_, [this] { code_->selectAll(); });
    }
    return QWidget::eventFilter(watched, event);
}

}  // namespace ostrel::gui
