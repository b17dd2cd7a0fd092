#include "gui/melt/frm7_melt_plot.h"

#include <QAreaSeries>
#include <QChart>
#include <QChartView>
#include <QLegend>
#include <QLegendMarker>
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

// Differences are drawn in millionths of an index unit.
constexpr double kScale = 1e6;

// A range around [lo, hi] that never collapses to nothing, on round numbers.
void SetRange(QValueAxis* axis, double lo, double hi, double minSpan) {
    if (!(hi > lo) || hi - lo < minSpan) {
        const double mid = (lo + hi) / 2;
        lo = mid - minSpan / 2;
        hi = mid + minSpan / 2;
    }
    const double pad = (hi - lo) * 0.08;
    axis->setRange(lo - pad, hi + pad);
    axis->applyNiceNumbers();
}

// The wavelength axis over [lo, hi] with a small margin, so that a point at either end is
// drawn whole inside the frame, ticked at round steps.
void SetWaveRange(QValueAxis* axis, double lo, double hi) {
    if (!(hi > lo + 10)) {
        lo -= 50;
        hi += 50;
    }
    const double margin = (hi - lo) * 0.02;
    axis->setRange(lo - margin, hi + margin);
    SetTickStep(axis, NiceStep(hi - lo, 5));
}

}  // namespace

MeltDeltaPlot::MeltDeltaPlot(QWidget* parent) : QWidget(parent) {
    auto* chart = new QChart();
    chart->setTitle(tr("Melt minus parent"));
    chart->legend()->setAlignment(Qt::AlignBottom);
    chart->setMargins(QMargins(4, 4, 4, 4));
    chart->setBackgroundRoundness(0);
    x_ = MakeAxis(chart, Qt::AlignBottom, tr("Wavelength [nm]"), "%.0f");
    y_ = MakeAxis(chart, Qt::AlignLeft, tr("Δn [10⁻⁶]"), "%.0f");
    zero_ = new QLineSeries(chart);
    zero_->setPen(QPen(Qt::gray, 1, Qt::DashLine));
    // One area for all shaded parts: its upper edge drops to the lower one between them.
    beyond_ = new QAreaSeries(new QLineSeries(chart), new QLineSeries(chart));
    beyond_->setName(tr("Extrapolated"));
    beyond_->setPen(Qt::NoPen);
    beyond_->setBrush(QColor(150, 150, 150, 60));
    curve_ = new QLineSeries(chart);
    curve_->setName(tr("Fitted"));
    curve_->setPen(QPen(QColor(0, 90, 170), 2));
    measured_ = new QScatterSeries(chart);
    measured_->setName(tr("Measured"));
    measured_->setMarkerSize(8);
    measured_->setColor(QColor(200, 60, 30));
    Attach(chart, beyond_, x_, y_);
    Attach(chart, zero_, x_, y_);
    Attach(chart, curve_, x_, y_);
    Attach(chart, measured_, x_, y_);
    chart->legend()->markers(zero_).first()->setVisible(false);

    view_ = new PlotView(chart, this);
    view_->setMinimumSize(260, 200);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(view_);
    Show({}, {});
}

void MeltDeltaPlot::Show(const std::vector<frm7Melt::DeltaPoint>& points,
                         const std::vector<frm7Melt::DeltaPoint>& curve,
                         const std::vector<WaveRange>& extrapolated) {
    QList<QPointF> line, meas;
    double x0 = 1e300, x1 = -1e300, y0 = 0, y1 = 0;
    auto take = [&](const frm7Melt::DeltaPoint& p, QList<QPointF>& into) {
        const double y = p.delta * kScale;
        into.append({p.wave, y});
        x0 = std::min(x0, p.wave), x1 = std::max(x1, p.wave);
        y0 = std::min(y0, y), y1 = std::max(y1, y);
    };
    for (const auto& p : curve) take(p, line);
    for (const auto& p : points) take(p, meas);
    curve_->replace(line);
    measured_->replace(meas);
    if (line.isEmpty() && meas.isEmpty()) x0 = 400, x1 = 700;
    zero_->replace(QList<QPointF>{{x0, 0.0}, {x1, 0.0}});
    SetWaveRange(x_, x0, x1);
    SetRange(y_, y0, y1, 10);

    // The shaded parts fill the plot's height.
    const double top = y_->max(), bottom = y_->min();
    QList<QPointF> upper, lower;
    for (const auto& r : extrapolated) {
        upper.append({{r.from, bottom}, {r.from, top}, {r.to, top}, {r.to, bottom}});
        lower.append({{r.from, bottom}, {r.to, bottom}});
    }
    beyond_->upperSeries()->replace(upper);
    beyond_->lowerSeries()->replace(lower);
    beyond_->setVisible(!extrapolated.empty());
    shaded_ = extrapolated;
}

int MeltDeltaPlot::MeasuredPointCount() const {
    return static_cast<int>(measured_->count());
}

int MeltDeltaPlot::CurvePointCount() const {
    return static_cast<int>(curve_->count());
}

}  // namespace ostrel::gui
