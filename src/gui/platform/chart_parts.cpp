#include "gui/platform/chart_parts.h"

#include <QCategoryAxis>
#include <QChart>
#include <QValueAxis>

namespace ostrel::gui {

namespace {

// Titles the axis in the normal weight and puts it on the given side of the chart.
void Place(QChart* chart, QAbstractAxis* axis, Qt::Alignment side, const QString& title) {
    axis->setTitleText(title);
    QFont f = axis->titleFont();
    f.setBold(false);
    axis->setTitleFont(f);
    chart->addAxis(axis, side);
}

constexpr const char* kStepProperty = "ostrelTickStep";

// Labels the axis anew at the multiples of its step within its range.
void Relabel(QCategoryAxis* axis) {
    const double step = axis->property(kStepProperty).toDouble();
    for (const QString& label : axis->categoriesLabels()) axis->remove(label);
    axis->setStartValue(axis->min());
    for (const StepTick& t : StepTicks(axis->min(), axis->max(), step)) {
        axis->append(QString::fromStdString(t.text), t.value);
    }
}

}  // namespace

QValueAxis* MakeAxis(QChart* chart, Qt::Alignment side, const QString& title, const char* format) {
    auto* axis = new QValueAxis(chart);
    axis->setLabelFormat(format);
    Place(chart, axis, side, title);
    return axis;
}

QCategoryAxis* MakeCategoryAxis(QChart* chart, Qt::Alignment side, const QString& title) {
    auto* axis = new QCategoryAxis(chart);
    axis->setLabelsPosition(QCategoryAxis::AxisLabelsPositionOnValue);
    Place(chart, axis, side, title);
    return axis;
}

void Attach(QChart* chart, QAbstractSeries* series, QValueAxis* x, QValueAxis* y) {
    chart->addSeries(series);
    series->attachAxis(x);
    series->attachAxis(y);
}

void SetTickStep(QValueAxis* axis, double step) {
    axis->setTickType(QValueAxis::TicksDynamic);
    axis->setTickAnchor(0.0);
    axis->setTickInterval(step);
}

QCategoryAxis* MakeStepAxis(QChart* chart, Qt::Alignment side, const QString& title) {
    QCategoryAxis* axis = MakeCategoryAxis(chart, side, title);
    QObject::connect(axis, &QValueAxis::rangeChanged, axis, [axis] { Relabel(axis); });
    return axis;
}

void SetAxisStep(QCategoryAxis* axis, double step) {
    axis->setProperty(kStepProperty, step);
    Relabel(axis);
}

}  // namespace ostrel::gui
