#pragma once
// The read-only plots of the material form: the fitted index curve with the measured points
// and their residuals, and the internal transmission. They draw what the form's unit works
// out (IndexCurve, IndexResiduals, TransCurve) and nothing else.
#include <QWidget>
#include <vector>

#include "core/materialform/frm3new.h"

class QChart;
class QChartView;
class QLineSeries;
class QScatterSeries;
class QCategoryAxis;

namespace ostrel::gui {

class IndexPlot : public QWidget {
    Q_OBJECT
  public:
    explicit IndexPlot(QWidget* parent = nullptr);
    void Show(const std::vector<frm3New::CurvePoint>& curve,
              const std::vector<frm3New::Residual>& points);

    int CurvePointCount() const;
    int MeasuredPointCount() const;
    int ResidualPointCount() const;
    QChartView* residualView() const { return residualView_; }

  private:
    QChartView* curveView_;
    QChartView* residualView_;
    QLineSeries* curve_;
    QScatterSeries* measured_;
    QScatterSeries* residuals_;
    QLineSeries* zero_;
    QCategoryAxis* curveX_;
    QCategoryAxis* curveY_;
    QCategoryAxis* resX_;
    QCategoryAxis* resY_;
};

class TransPlot : public QWidget {
    Q_OBJECT
  public:
    explicit TransPlot(QWidget* parent = nullptr);
    void Show(const std::vector<frm3New::CurvePoint>& points);

    int PointCount() const;

  private:
    QChartView* view_;
    QLineSeries* line_;
    QScatterSeries* points_;
    QCategoryAxis* x_;
    QCategoryAxis* y_;
};

}  // namespace ostrel::gui
