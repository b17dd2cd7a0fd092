#pragma once
// The glass map's drawing surface: paints frmGlassMap::Scene() and forwards the mouse to the
// unit (wheel zoom, drag to pan, right-drag or Shift-drag to zoom into a rectangle, hover for
// a glass's figures, click on a custom glass to open it).
#include <QPoint>
#include <QRect>
#include <QWidget>
#include <functional>

#include "core/glassmap/frm_glass_map.h"

class QPainter;

namespace ostrel::gui {

// Paints a map scene (the window and the PNG file use the same drawing).
void PaintMapScene(QPainter& painter, const MapScene& scene);

class GlassMapCanvas : public QWidget {
    Q_OBJECT
  public:
    GlassMapCanvas(frmGlassMap& unit, QWidget* parent = nullptr);
    // Called with the custom list position of a custom or melt glass clicked.
    void SetOpenMaterial(std::function<void(int)> open) { open_ = std::move(open); }
    // How long the last paint took, in milliseconds.
    double lastPaintMs() const { return lastPaintMs_; }

  protected:
    void paintEvent(QPaintEvent*) override;
    void resizeEvent(QResizeEvent*) override;
    void wheelEvent(QWheelEvent*) override;
    void mousePressEvent(QMouseEvent*) override;
    void mouseMoveEvent(QMouseEvent*) override;
    void mouseReleaseEvent(QMouseEvent*) override;
    bool event(QEvent*) override;

  private:
    frmGlassMap& unit_;
    std::function<void(int)> open_;
    Subscription sub_;
    QPoint pressAt_, lastAt_;
    bool panning_ = false, banding_ = false, moved_ = false;
    QRect band_;
    double lastPaintMs_ = 0;
};

}  // namespace ostrel::gui
