#pragma once
// The read-only plot of the melt maker: the index of the melt minus that of its parent, the
// measured differences as points and the fitted difference as a line over the parent's
// waveband. It draws what frm7Melt works out (DeltaPoints, DeltaCurve) and nothing else.
#include <QWidget>
#include <vector>

#include "core/melt/frm7melt.h"

class QChartView;
class QLineSeries;
class QScatterSeries;
class QValueAxis;

namespace ostrel::gui {

class MeltDeltaPlot : public QWidget {
    Q_OBJECT
  public:
    explicit MeltDeltaPlot(QWidget* parent = nullptr);
    void Show(const std::vector<frm7Melt::DeltaPoint>& points,
              const std::vector<frm7Melt::DeltaPoint>& curve);

    int MeasuredPointCount() const;
    int CurvePointCount() const;

  private:
    QChartView* view_;
    QLineSeries* curve_;
    QScatterSeries* measured_;
    QLineSeries* zero_;
    QValueAxis* x_;
    QValueAxis* y_;
};

}  // namespace ostrel::gui
