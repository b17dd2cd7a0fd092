#include "gui/glassmap/glass_map_canvas.h"

#include <QElapsedTimer>
#include <QHelpEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QPainterPath>
#include <QPixmap>
#include <QToolTip>
#include <QWheelEvent>
#include <cmath>
#include <unordered_map>

#include "gui/platform/binders.h"

namespace ostrel::gui {

namespace {

QColor Rgb(uint32_t c) {
    return QColor((c >> 16) & 0xFF, (c >> 8) & 0xFF, c & 0xFF);
}

// One small picture per marker look, drawn once and stamped for every glass: thousands of
// glasses are drawn as quickly as the same number of copies.
const QPixmap& MarkerPixmap(const MapMarker& m, qreal dpr) {
    static std::unordered_map<uint64_t, QPixmap> cache;
    const uint64_t key = (static_cast<uint64_t>(m.colour) << 8) |
                         (static_cast<uint64_t>(m.kind) << 2) | (m.highlighted ? 2 : 0) |
                         (m.nearest ? 1 : 0);
    auto it = cache.find(key);
    if (it != cache.end() && it->second.devicePixelRatio() == dpr) return it->second;
    const int size = 16;
    QPixmap pm(static_cast<int>(size * dpr), static_cast<int>(size * dpr));
    pm.setDevicePixelRatio(dpr);
    pm.fill(Qt::transparent);
    QPainter p(&pm);
    p.setRenderHint(QPainter::Antialiasing);
    p.translate(size / 2.0, size / 2.0);
    QPen pen = m.highlighted ? QPen(Rgb(kHighlightColour), 2.5)
               : m.nearest   ? QPen(Qt::black, 1.5)
                             : QPen(Rgb(m.colour).darker(130), 0.6);
    p.setPen(pen);
    p.setBrush(Rgb(m.colour));
    switch (m.kind) {
        case GlassKind::Custom:
            p.drawRect(QRectF(-4, -4, 8, 8));
            break;
        case GlassKind::Melt: {
            QPainterPath d;
            d.moveTo(0, -5.5);
            d.lineTo(5.5, 0);
            d.lineTo(0, 5.5);
            d.lineTo(-5.5, 0);
            d.closeSubpath();
            p.drawPath(d);
            break;
        }
        default:
            p.drawEllipse(QPointF(0, 0), m.highlighted || m.nearest ? 4.0 : 3.0,
                          m.highlighted || m.nearest ? 4.0 : 3.0);
    }
    p.end();
    return cache[key] = pm;
}

}  // namespace

void PaintMapScene(QPainter& p, const MapScene& s) {
    p.fillRect(QRect(0, 0, s.width, s.height), Qt::white);
    const QRectF plot(QPointF(s.left, s.top), QPointF(s.right, s.bottom));
    QFont bold = p.font();
    bold.setBold(true);
    p.save();
    p.setFont(bold);
    p.drawText(QPointF(s.left, 20), ToQt(s.title));
    p.restore();
    p.setPen(QColor(0xE0, 0xE0, 0xE0));
    for (const MapTick& t : s.xTicks) p.drawLine(QPointF(t.pos, s.top), QPointF(t.pos, s.bottom));
    for (const MapTick& t : s.yTicks) p.drawLine(QPointF(s.left, t.pos), QPointF(s.right, t.pos));
    p.setPen(Qt::black);
    for (const MapTick& t : s.xTicks) {
        p.drawText(QRectF(t.pos - 30, s.bottom + 3, 60, 16), Qt::AlignHCenter | Qt::AlignTop,
                   ToQt(t.text));
    }
    for (const MapTick& t : s.yTicks) {
        p.drawText(QRectF(0, t.pos - 8, s.left - 5, 16), Qt::AlignRight | Qt::AlignVCenter,
                   ToQt(t.text));
    }
    p.drawText(QRectF(s.left, s.bottom + 20, s.right - s.left, 18), Qt::AlignHCenter,
               ToQt(s.xLabel));
    p.save();
    p.translate(14, (s.top + s.bottom) / 2);
    p.rotate(-90);
    p.drawText(QRectF(-60, -10, 120, 20), Qt::AlignCenter, ToQt(s.yLabel));
    p.restore();

    p.save();
    p.setClipRect(plot);
    p.setRenderHint(QPainter::Antialiasing);
    for (const MapLine& l : s.lines) {
        QPen pen = l.kind == MapLineKind::Normal        ? QPen(Qt::black, 1, Qt::DashLine)
                   : l.kind == MapLineKind::NearestLink ? QPen(QColor(0, 0, 0, 140), 0.8)
                                                        : QPen(Rgb(kMeltColour), 1.4);
        p.setPen(pen);
        p.drawLine(QPointF(l.x1, l.y1), QPointF(l.x2, l.y2));
    }
    const qreal dpr = p.device() ? p.device()->devicePixelRatioF() : 1.0;
    for (const MapMarker& m : s.markers) {
        p.drawPixmap(QPointF(m.x - 8, m.y - 8), MarkerPixmap(m, dpr));
    }
    p.restore();
    p.setPen(Qt::black);
    p.drawRect(plot);

    double y = s.top + 8;
    for (const MapLegendEntry& e : s.legend) {
        MapMarker m;
        m.kind = e.kind;
        m.colour = e.colour;
        p.drawPixmap(QPointF(s.right + 6, y - 8), MarkerPixmap(m, dpr));
        p.drawText(QPointF(s.right + 24, y + 4), ToQt(e.text));
        y += 18;
    }
}

GlassMapCanvas::GlassMapCanvas(frmGlassMap& unit, QWidget* parent) : QWidget(parent), unit_(unit) {
    setObjectName("picMap");
    setMouseTracking(true);
    setMinimumSize(420, 320);
    setAttribute(Qt::WA_OpaquePaintEvent);
    sub_ = unit_.picMap.Observe([this] { update(); });
}

void GlassMapCanvas::paintEvent(QPaintEvent*) {
    QElapsedTimer timer;
    timer.start();
    QPainter p(this);
    PaintMapScene(p, unit_.Scene());
    if (banding_) {
        p.setPen(QPen(Qt::darkBlue, 1, Qt::DashLine));
        p.setBrush(QColor(0, 0, 160, 30));
        p.drawRect(band_);
    }
    lastPaintMs_ = timer.nsecsElapsed() / 1e6;
}

void GlassMapCanvas::resizeEvent(QResizeEvent*) {
    unit_.SetPlotSize(width(), height());
}

void GlassMapCanvas::wheelEvent(QWheelEvent* e) {
    const double steps = e->angleDelta().y() / 120.0;
    if (steps == 0) return;
    unit_.ZoomAt(std::pow(1.25, steps), e->position().x(), e->position().y());
}

void GlassMapCanvas::mousePressEvent(QMouseEvent* e) {
    pressAt_ = lastAt_ = e->pos();
    moved_ = false;
    banding_ = e->button() == Qt::RightButton ||
               (e->button() == Qt::LeftButton && (e->modifiers() & Qt::ShiftModifier));
    panning_ = !banding_ && e->button() == Qt::LeftButton;
    band_ = QRect(pressAt_, pressAt_);
}

void GlassMapCanvas::mouseMoveEvent(QMouseEvent* e) {
    if ((e->pos() - pressAt_).manhattanLength() > 3) moved_ = true;
    if (panning_) {
        unit_.Pan(e->pos().x() - lastAt_.x(), e->pos().y() - lastAt_.y());
        lastAt_ = e->pos();
    } else if (banding_) {
        band_ = QRect(pressAt_, e->pos()).normalized();
        update();
    }
}

void GlassMapCanvas::mouseReleaseEvent(QMouseEvent* e) {
    if (banding_) {
        banding_ = false;
        unit_.ZoomToPixels(band_.left(), band_.top(), band_.right(), band_.bottom());
        update();
    } else if (panning_ && !moved_ && open_) {
        const int position = unit_.CustomPositionAt(e->pos().x(), e->pos().y());
        if (position > 0) open_(position);
    }
    panning_ = false;
}

bool GlassMapCanvas::event(QEvent* e) {
    if (e->type() == QEvent::ToolTip) {
        auto* help = static_cast<QHelpEvent*>(e);
        const int point = unit_.PointAt(help->pos().x(), help->pos().y());
        if (point >= 0) {
            QToolTip::showText(help->globalPos(), ToQt(unit_.PointTip(point)), this);
        } else {
            QToolTip::hideText();
        }
        return true;
    }
    return QWidget::event(e);
}

}  // namespace ostrel::gui
