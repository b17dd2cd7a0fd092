#include "gui/platform/plot_view.h"

#include <QContextMenuEvent>
#include <QFileDialog>
#include <QMenu>
#include <QMessageBox>
#include <QPainter>
#include <QToolTip>
#include <QValueAxis>
#include <QWheelEvent>
#include <QXYSeries>
#include <cmath>
#ifdef OSTREL_HAVE_SVG
#include <QSvgGenerator>
#endif

namespace ostrel::gui {

namespace {

QValueAxis* ValueAxis(QChart* chart, Qt::Orientation o) {
    const auto axes = chart->axes(o);
    return axes.isEmpty() ? nullptr : qobject_cast<QValueAxis*>(axes.first());
}

QString AxisLine(QValueAxis* axis, double value) {
    const QString title = axis && !axis->titleText().isEmpty() ? axis->titleText() : QString();
    const QString number = QString::number(value, 'g', 7);
    return title.isEmpty() ? number : title + ": " + number;
}

}  // namespace

PlotView::PlotView(QChart* chart, QWidget* parent) : QChartView(chart, parent) {
    setRenderHint(QPainter::Antialiasing);
    setMouseTracking(true);
}

QString PlotView::ValuesAt(const QPoint& pos) const {
    QChart* c = chart();
    const QPointF at = c->mapFromScene(mapToScene(pos));
    // The nearest drawn point within a few pixels gives its own values.
    constexpr double kNear = 6.0;
    double best = kNear * kNear;
    QPointF value;
    bool found = false;
    for (QAbstractSeries* s : c->series()) {
        auto* xy = qobject_cast<QXYSeries*>(s);
        if (!xy || !xy->isVisible()) continue;
        for (const QPointF& p : xy->points()) {
            const QPointF d = c->mapToPosition(p, xy) - at;
            const double dd = d.x() * d.x() + d.y() * d.y();
            if (dd <= best) best = dd, value = p, found = true;
        }
    }
    if (!found) {
        if (!c->plotArea().contains(at)) return {};
        value = c->mapToValue(at);
    }
    return AxisLine(ValueAxis(c, Qt::Horizontal), value.x()) + "\n" +
           AxisLine(ValueAxis(c, Qt::Vertical), value.y());
}

void PlotView::ZoomAt(const QPoint& pos, double factor) {
    QChart* c = chart();
    const QRectF plot = c->plotArea();
    const QPointF p = c->mapFromScene(mapToScene(pos));
    if (!plot.contains(p) || factor <= 0) return;
    // The point under the pointer stays where it is.
    const QRectF r(p.x() - (p.x() - plot.left()) / factor, p.y() - (p.y() - plot.top()) / factor,
                   plot.width() / factor, plot.height() / factor);
    c->zoomIn(r);
}

void PlotView::ResetZoom() {
    if (chart()->isZoomed()) chart()->zoomReset();
}

void PlotView::wheelEvent(QWheelEvent* e) {
    const double steps = e->angleDelta().y() / 120.0;
    if (steps == 0) return QChartView::wheelEvent(e);
    ZoomAt(e->position().toPoint(), std::pow(1.25, steps));
    e->accept();
}

void PlotView::mouseMoveEvent(QMouseEvent* e) {
    const QString text = ValuesAt(e->position().toPoint());
    if (text.isEmpty()) {
        QToolTip::hideText();
    } else {
        QToolTip::showText(e->globalPosition().toPoint(), text, this);
    }
    QChartView::mouseMoveEvent(e);
}

QMenu* PlotView::MakeContextMenu() {
    auto* menu = new QMenu(this);
    QAction* reset = menu->addAction(tr("Reset zoom"), this, &PlotView::ResetZoom);
    reset->setEnabled(chart()->isZoomed());
    menu->addSeparator();
    menu->addAction(tr("Save image..."), this, &PlotView::AskAndSave);
    return menu;
}

void PlotView::contextMenuEvent(QContextMenuEvent* e) {
    QMenu* menu = MakeContextMenu();
    menu->setAttribute(Qt::WA_DeleteOnClose);
    menu->popup(e->globalPos());
    e->accept();
}

bool PlotView::SaveImage(const QString& path) {
    if (path.endsWith(".svg", Qt::CaseInsensitive)) {
#ifdef OSTREL_HAVE_SVG
        QSvgGenerator svg;
        svg.setFileName(path);
        svg.setSize(size());
        svg.setViewBox(rect());
        svg.setTitle(chart()->title());
        QPainter painter;
        if (!painter.begin(&svg)) return false;
        render(&painter, QRectF(rect()), rect());
        return painter.end();
#else
        return false;
#endif
    }
    // Pictures are drawn at twice the screen's size, sharp on paper and on a scaled screen.
    const qreal scale = 2.0;
    QImage image(size() * scale, QImage::Format_ARGB32_Premultiplied);
    image.setDevicePixelRatio(scale);
    image.fill(Qt::white);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    render(&painter, QRectF(rect()), rect());
    painter.end();
    return image.save(path, "PNG");
}

void PlotView::AskAndSave() {
    QString filters = tr("PNG image (*.png)");
#ifdef OSTREL_HAVE_SVG
    filters += ";;" + tr("SVG image (*.svg)");
#endif
    QFileDialog dialog(this, tr("Save image"), QString(), filters);
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.setDefaultSuffix("png");
    dialog.resize(800, 520);
    if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty()) return;
    QString path = dialog.selectedFiles().first();
    if (dialog.selectedNameFilter().contains("*.svg") &&
        !path.endsWith(".svg", Qt::CaseInsensitive))
        path += ".svg";
    if (!SaveImage(path)) {
        QMessageBox::warning(this, tr("Save image"),
                             tr("The picture could not be written to %1.").arg(path));
    }
}

}  // namespace ostrel::gui
