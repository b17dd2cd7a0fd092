#include "gui/glassmap/frm_compare_window.h"

#include <QCategoryAxis>
#include <QChart>
#include <QChartView>
#include <QFileDialog>
#include <QHBoxLayout>
#include <QLabel>
#include <QLegend>
#include <QLineEdit>
#include <QLineSeries>
#include <QListWidget>
#include <QPainter>
#include <QPixmap>
#include <QPushButton>
#include <QVBoxLayout>
#include <QValueAxis>
#include <cmath>

#include "core/platform/file_io.h"
#include "gui/platform/binders.h"
#include "gui/platform/chart_parts.h"

namespace ostrel::gui {

frmCompareWindow::frmCompareWindow(frmCompare& unit, QWidget* parent)
    : QWidget(parent, Qt::Window), unit_(unit) {
    setObjectName("frmCompare");
    setWindowTitle("Compare materials");
    auto* side = new QWidget(this);
    side->setFixedWidth(260);
    auto* sideCol = new QVBoxLayout(side);
    sideCol->setContentsMargins(0, 0, 0, 0);
    auto* lblMaterials = new QLabel("Materials (the first chosen is the reference of Δn)", side);
    lblMaterials->setWordWrap(true);
    sideCol->addWidget(lblMaterials);
    auto* lst = new QListWidget(side);
    lst->setObjectName("lstMaterials");
    Bind(lst, unit_.lstMaterials);
    connect(lst, &QListWidget::itemSelectionChanged, this, [this] { unit_.lstMaterialsClick(); });
    sideCol->addWidget(lst, 1);
    auto* widthRow = new QHBoxLayout;
    widthRow->addWidget(new QLabel("Width for transmission (mm)", side));
    auto* txtWidth = new QLineEdit(side);
    txtWidth->setObjectName("txtWidth");
    txtWidth->setMaximumWidth(70);
    Bind(txtWidth, unit_.txtWidth);
    connect(txtWidth, &QLineEdit::editingFinished, this, [this] { unit_.txtWidthChange(); });
    widthRow->addWidget(txtWidth);
    sideCol->addLayout(widthRow);
    auto* comSave = new QPushButton("Save image...", side);
    comSave->setObjectName("comSaveImage");
    auto* comCsv = new QPushButton("Save CSV...", side);
    comCsv->setObjectName("comSaveCsv");
    auto* saveRow = new QHBoxLayout;
    saveRow->addWidget(comSave);
    saveRow->addWidget(comCsv);
    sideCol->addLayout(saveRow);
    const auto save = [this](const char* name, const char* filter) {
        const QString path = QFileDialog::getSaveFileName(this, "Save", name, filter);
        if (!path.isEmpty() && !SaveTo(path))
            unit_.lblStatus.caption = "The file could not be written: " + FromQt(path);
    };
    connect(comSave, &QPushButton::clicked, this,
            [save] { save("compare.png", "PNG image (*.png);;SVG image (*.svg)"); });
    connect(comCsv, &QPushButton::clicked, this,
            [save] { save("compare.csv", "CSV file (*.csv)"); });

    auto* plots = new QVBoxLayout;
    for (auto*& v : views_) {
        auto* chart = new QChart;
        chart->setMargins(QMargins(4, 4, 4, 4));
        chart->legend()->setAlignment(Qt::AlignRight);
        v = new QChartView(chart, this);
        v->setRenderHint(QPainter::Antialiasing);
        v->setMinimumHeight(200);
        plots->addWidget(v, 1);
    }
    auto* lblStatus = new QLabel(this);
    lblStatus->setObjectName("lblStatus");
    Bind(lblStatus, unit_.lblStatus);
    plots->addWidget(lblStatus);

    auto* row = new QHBoxLayout(this);
    row->addWidget(side);
    row->addLayout(plots, 1);
    resize(1150, 820);
    sub_ = unit_.picPlots.Observe([this] { Redraw(); });
    Redraw();
}

void frmCompareWindow::Redraw() {
    const CompareCurves& c = unit_.Curves();
    const bool ok = unit_.HasCurves();
    const QString titles[3] = {
        "Index n(λ)", "Δn(λ) against " + (ok && !c.labels.empty() ? ToQt(c.labels[0]) : QString()),
        QString("Internal transmission (%) at %1 mm").arg(c.width)};
    for (int k = 0; k < 3; ++k) {
        QChart* chart = views_[k]->chart();
        chart->removeAllSeries();
        for (QAbstractAxis* a : chart->axes()) {
            chart->removeAxis(a);
            delete a;
        }
        chart->setTitle(titles[k]);
        // Every plot has the legend, so that the three plots line up.
        chart->legend()->setVisible(true);
        if (!ok) continue;
        const auto& xs = k == 2 ? c.transWave : c.wave;
        const auto& ys = k == 0 ? c.index : k == 1 ? c.delta : c.internal;
        auto* x = MakeAxis(chart, Qt::AlignBottom, "Wavelength (nm)", "%.0f");
        // The unit decides the range and the ticks with their texts, as in its SVG; a tick
        // near zero is zero, and reads so.
        const CompareAxis axis = CompareValueAxis(ys, kCompareValueFormats[k]);
        auto* y = MakeCategoryAxis(chart, Qt::AlignLeft, "");
        y->setRange(axis.lo, axis.hi);
        y->setStartValue(axis.lo);
        for (const AxisTick& t : axis.ticks) y->append(ToQt(t.text), t.value);
        for (size_t i = 0; i < ys.size(); ++i) {
            auto* s = new QLineSeries;
            s->setName(ToQt(c.labels[i]));
            const uint32_t col = CompareColour(static_cast<int>(i));
            s->setPen(QPen(QColor((col >> 16) & 0xFF, (col >> 8) & 0xFF, col & 0xFF), 1.6));
            for (size_t j = 0; j < xs.size() && j < ys[i].size(); ++j) {
                if (std::isfinite(ys[i][j])) s->append(xs[j], ys[i][j]);
            }
            Attach(chart, s, x, y);
        }
        const double x0 = xs.empty() ? 0 : xs.front(), x1 = xs.empty() ? 1 : xs.back();
        x->setRange(x0, x1);
        SetTickStep(x, NiceStep(x1 - x0, 8));
    }
}

int frmCompareWindow::CurveCount() const {
    int n = 0;
    for (auto* v : views_) n += static_cast<int>(v->chart()->series().size());
    return n;
}

bool frmCompareWindow::SaveTo(const QString& path) {
    FileError error;
    if (path.endsWith(".csv", Qt::CaseInsensitive)) {
        return unit_.HasCurves() &&
               WriteFileAtomic(FromQt(path), CompareCsv(unit_.Curves()), error);
    }
    if (path.endsWith(".svg", Qt::CaseInsensitive)) {
        return unit_.HasCurves() &&
               WriteFileAtomic(FromQt(path), CompareSvg(unit_.Curves(), 900, 1000), error);
    }
    QPixmap pm(views_[0]->width(), views_[0]->height() * 3);
    pm.fill(Qt::white);
    QPainter p(&pm);
    for (int k = 0; k < 3; ++k) {
        views_[k]->render(
            &p, QRectF(0, k * views_[0]->height(), views_[0]->width(), views_[0]->height()));
    }
    p.end();
    return pm.save(path, "PNG");
}

}  // namespace ostrel::gui
