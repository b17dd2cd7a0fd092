#pragma once
// The view every plot of the program is shown in: the values under the pointer in a tool tip,
// wheel zoom about the pointer, and a context menu to reset the zoom and save the picture
// (PNG, and SVG where the program was built with Qt's SVG module).
#include <QChartView>

class QMenu;

namespace ostrel::gui {

class PlotView : public QChartView {
    Q_OBJECT
  public:
    explicit PlotView(QChart* chart, QWidget* parent = nullptr);

    // The context menu, "Reset zoom" and "Save image...".
    QMenu* MakeContextMenu();
    // Writes the plot as a picture; the name's suffix (.png or .svg) chooses the kind.
    bool SaveImage(const QString& path);
    // What the tool tip says at a point of the view: the nearest drawn point within a few
    // pixels, else the axes' values under the pointer; empty outside the plot area.
    QString ValuesAt(const QPoint& pos) const;
    void ZoomAt(const QPoint& pos, double factor);
    void ResetZoom();

  protected:
    void wheelEvent(QWheelEvent* e) override;
    void mouseMoveEvent(QMouseEvent* e) override;
    void contextMenuEvent(QContextMenuEvent* e) override;

  private:
    void AskAndSave();
};

}  // namespace ostrel::gui
