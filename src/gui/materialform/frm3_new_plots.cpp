#include "gui/materialform/frm3_new_plots.h"

#include <QCategoryAxis>
#include <QChart>
#include <QChartView>
#include <QLineSeries>
#include <QPainter>
#include <QScatterSeries>
#include <QVBoxLayout>
#include <QValueAxis>
#include <algorithm>
#include <cmath>

#include "gui/platform/chart_parts.h"
#include "gui/platform/plot_view.h"

namespace ostrel::gui {

namespace {

// Residuals are drawn in millionths of an index unit.
constexpr double kResidualScale = 1e6;
// Wavelengths take four digits: few enough ticks that every label is shown whole.
constexpr int kWaveTicks = 3;

QChartView* MakeView(QWidget* parent, QChart* chart) {
    chart->legend()->hide();
    chart->setMargins(QMargins(4, 4, 4, 4));
    chart->setBackgroundRoundness(0);
    auto* view = new PlotView(chart, parent);
    view->setMinimumSize(220, 140);
    return view;
}

// Sets a range around [lo, hi] on whole steps, never collapsing to nothing, with ticks at
// round numbers labelled with the decimals the step needs. A point at an end of the data
// keeps a margin from the frame, so no marker is cut in half.
void SetRange(QCategoryAxis* axis, double lo, double hi, double minSpan, int ticks = 5) {
    if (!(hi > lo) || hi - lo < minSpan) {
        const double mid = (lo + hi) / 2;
        lo = mid - minSpan / 2;
        hi = mid + minSpan / 2;
    }
    const double step = NiceStep(hi - lo, ticks);
    const double margin = (hi - lo) * 0.04;
    SetAxisStep(axis, step);
    axis->setRange(std::floor((lo - margin) / step) * step, std::ceil((hi + margin) / step) * step);
}

}  // namespace

IndexPlot::IndexPlot(QWidget* parent) : QWidget(parent) {
    auto* curveChart = new QChart();
    curveChart->setTitle(tr("Dispersion"));
    curveX_ = MakeStepAxis(curveChart, Qt::AlignBottom, tr("Wavelength [nm]"));
    curveY_ = MakeStepAxis(curveChart, Qt::AlignLeft, tr("Refractive index n"));
    curve_ = new QLineSeries(curveChart);
    curve_->setName(tr("Polynomial"));
    measured_ = new QScatterSeries(curveChart);
    measured_->setName(tr("Measured"));
    measured_->setMarkerSize(7);
    Attach(curveChart, curve_, curveX_, curveY_);
    Attach(curveChart, measured_, curveX_, curveY_);

    auto* resChart = new QChart();
    resChart->setTitle(tr("Residuals of the fit"));
    resX_ = MakeStepAxis(resChart, Qt::AlignBottom, tr("Wavelength [nm]"));
    resY_ = MakeStepAxis(resChart, Qt::AlignLeft, tr("Δn [10⁻⁶]"));
    zero_ = new QLineSeries(resChart);
    zero_->setPen(QPen(Qt::gray, 1, Qt::DashLine));
    residuals_ = new QScatterSeries(resChart);
    residuals_->setMarkerSize(7);
    Attach(resChart, zero_, resX_, resY_);
    Attach(resChart, residuals_, resX_, resY_);

    curveView_ = MakeView(this, curveChart);
    residualView_ = MakeView(this, resChart);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(curveView_, 3);
    layout->addWidget(residualView_, 2);
    Show({}, {});
}

void IndexPlot::Show(const std::vector<frm3New::CurvePoint>& curve,
                     const std::vector<frm3New::Residual>& points) {
    QList<QPointF> line, meas, res;
    double x0 = 1e300, x1 = -1e300, y0 = 1e300, y1 = -1e300, r0 = 0, r1 = 0;
    for (const auto& p : curve) {
        line.append({p.wave, p.value});
        x0 = std::min(x0, p.wave), x1 = std::max(x1, p.wave);
        y0 = std::min(y0, p.value), y1 = std::max(y1, p.value);
    }
    for (const auto& p : points) {
        meas.append({p.wave, p.measured});
        res.append({p.wave, p.error * kResidualScale});
        x0 = std::min(x0, p.wave), x1 = std::max(x1, p.wave);
        y0 = std::min(y0, p.measured), y1 = std::max(y1, p.measured);
        r0 = std::min(r0, p.error * kResidualScale), r1 = std::max(r1, p.error * kResidualScale);
    }
    curve_->replace(line);
    measured_->replace(meas);
    residuals_->replace(res);
    if (line.isEmpty() && meas.isEmpty()) {
        x0 = 400, x1 = 700, y0 = 1.5, y1 = 1.52;
    }
    zero_->replace(QList<QPointF>{{x0, 0.0}, {x1, 0.0}});
    SetRange(curveX_, x0, x1, 10, kWaveTicks);
    SetRange(resX_, x0, x1, 10, kWaveTicks);
    SetRange(curveY_, y0, y1, 0.001);
    const double r = std::max(std::fabs(r0), std::fabs(r1));
    SetRange(resY_, -r, r, 1.0);
}

int IndexPlot::CurvePointCount() const {
    return static_cast<int>(curve_->count());
}

int IndexPlot::MeasuredPointCount() const {
    return static_cast<int>(measured_->count());
}

int IndexPlot::ResidualPointCount() const {
    return static_cast<int>(residuals_->count());
}

TransPlot::TransPlot(QWidget* parent) : QWidget(parent) {
    auto* chart = new QChart();
    chart->setTitle(tr("Internal transmission at the sample thickness"));
    x_ = MakeStepAxis(chart, Qt::AlignBottom, tr("Wavelength [nm]"));
    y_ = MakeStepAxis(chart, Qt::AlignLeft, tr("Internal transmission [%]"));
    line_ = new QLineSeries(chart);
    points_ = new QScatterSeries(chart);
    points_->setMarkerSize(7);
    Attach(chart, line_, x_, y_);
    Attach(chart, points_, x_, y_);
    view_ = MakeView(this, chart);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(view_);
    Show({});
}

void TransPlot::Show(const std::vector<frm3New::CurvePoint>& points) {
    QList<QPointF> pts;
    double x0 = 1e300, x1 = -1e300, y1 = 100;
    for (const auto& p : points) {
        pts.append({p.wave, p.value});
        x0 = std::min(x0, p.wave), x1 = std::max(x1, p.wave);
        y1 = std::max(y1, p.value);
    }
    // The unit gives the longest wavelength first; a line is drawn left to right.
    std::sort(pts.begin(), pts.end(),
              [](const QPointF& a, const QPointF& b) { return a.x() < b.x(); });
    line_->replace(pts);
    points_->replace(pts);
    if (pts.isEmpty()) x0 = 300, x1 = 2500;
    SetRange(x_, x0, x1, 10, kWaveTicks);
    SetRange(y_, 0, y1, 100);
}

int TransPlot::PointCount() const {
    return static_cast<int>(points_->count());
}

}  // namespace ostrel::gui
