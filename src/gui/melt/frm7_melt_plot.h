#pragma once
// The read-only plot of the melt maker: the index of the melt minus that of its parent, the
// measured differences as points and the fitted difference as a line over the parent's
// waveband, the parts of the band beyond the measured pairs shaded. It draws what frm7Melt
// works out (DeltaPoints, DeltaCurve, ExtrapolatedRanges) and nothing else.
#include <QWidget>
#include <vector>

#include "core/melt/frm7melt.h"

class QAreaSeries;
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
              const std::vector<frm7Melt::DeltaPoint>& curve,
              const std::vector<WaveRange>& extrapolated = {});

    int MeasuredPointCount() const;
    int CurvePointCount() const;
    // The shaded parts as drawn, in nm.
    std::vector<WaveRange> ShadedRanges() const { return shaded_; }

  private:
    QChartView* view_;
    QLineSeries* curve_;
    QScatterSeries* measured_;
    QLineSeries* zero_;
    QAreaSeries* beyond_;
    std::vector<WaveRange> shaded_;
    QValueAxis* x_;
    QValueAxis* y_;
};

}  // namespace ostrel::gui
