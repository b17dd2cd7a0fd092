#pragma once
// The comparison window, bound to frmCompare: the materials to choose from, the width of the
// transmission, and three plots (n(λ), Δn(λ) against the first, internal transmission) with
// one legend.
#include <QWidget>

#include "core/glassmap/frm_compare.h"

class QChart;
class QChartView;

namespace ostrel::gui {

class frmCompareWindow : public QWidget {
    Q_OBJECT
  public:
    explicit frmCompareWindow(frmCompare& unit, QWidget* parent = nullptr);

    // Writes the plots as PNG or SVG, or the numbers as CSV, by the file's extension.
    bool SaveTo(const QString& path);
    int CurveCount() const;

  private:
    void Redraw();

    frmCompare& unit_;
    QChartView* views_[3] = {};
    Subscription sub_;
};

}  // namespace ostrel::gui
