#pragma once
// Pieces shared by the plots of the windows: an axis with a plain title, a series on two
// axes, and round tick steps.
#include <QString>
#include <Qt>

#include "core/platform/plot_ticks.h"

class QAbstractSeries;
class QChart;
class QCategoryAxis;
class QValueAxis;

namespace ostrel::gui {

// A value axis on the given side of the chart, with a title in the normal weight.
QValueAxis* MakeAxis(QChart* chart, Qt::Alignment side, const QString& title, const char* format);
// The same with labels of the caller's own at the values it appends, each at its value.
QCategoryAxis* MakeCategoryAxis(QChart* chart, Qt::Alignment side, const QString& title);
// Adds the series to the chart on the two axes.
void Attach(QChart* chart, QAbstractSeries* series, QValueAxis* x, QValueAxis* y);
// Ticks at multiples of `step` from 0.
void SetTickStep(QValueAxis* axis, double step);
// A value axis ticked at the multiples of a step and labelled with the program's own texts
// (StepTicks), labelled anew whenever its range changes, as a zoom changes it.
QCategoryAxis* MakeStepAxis(QChart* chart, Qt::Alignment side, const QString& title);
// Sets the step of such an axis and labels it.
void SetAxisStep(QCategoryAxis* axis, double step);

}  // namespace ostrel::gui
