#include "gui/platform/chart_parts.h"

#include <QCategoryAxis>
#include <QChart>
#include <QValueAxis>
#include <cmath>

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

void SetStepLabels(QValueAxis* axis, double step) {
    const int decimals = step >= 1 ? 0 : std::min(6, int(std::ceil(-std::log10(step) - 1e-9)));
    axis->setLabelFormat(QString("%.%1f").arg(decimals));
}

}  // namespace ostrel::gui
