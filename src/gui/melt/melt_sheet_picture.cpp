#include "gui/melt/melt_sheet_picture.h"

#include <QPainter>
#include <algorithm>

namespace ostrel::gui {

QPixmap MeltSheetPicture(int width, int height) {
    QPixmap pix(width, height);
    pix.fill(Qt::transparent);
    QPainter p(&pix);
    p.setRenderHint(QPainter::Antialiasing);
    // A sheet with a folded corner.
    const double w = width - 1, h = height - 1, fold = std::min(w, h) * 0.22;
    const QPointF sheet[] = {{0.5, 0.5}, {w - fold, 0.5}, {w, fold}, {w, h}, {0.5, h}};
    p.setPen(QPen(QColor(90, 90, 90), 1));
    p.setBrush(QColor(252, 252, 244));
    p.drawPolygon(sheet, 5);
    const QPointF corner[] = {{w - fold, 0.5}, {w - fold, fold}, {w, fold}};
    p.setBrush(QColor(220, 220, 210));
    p.drawPolygon(corner, 3);
    // A heading in the maker's red, then rows of figures in two columns.
    p.setPen(Qt::NoPen);
    p.setBrush(QColor(180, 30, 30));
    p.drawRect(QRectF(w * 0.12, h * 0.1, w * 0.45, std::max(1.5, h * 0.07)));
    p.setBrush(QColor(70, 70, 110));
    const int rows = height >= 60 ? 9 : 4;
    for (int r = 0; r < rows; ++r) {
        const double y = h * 0.28 + r * (h * 0.62 / rows);
        const double bar = std::max(1.0, h * 0.035);
        p.drawRect(QRectF(w * 0.12, y, w * 0.28, bar));
        p.drawRect(QRectF(w * 0.52, y, w * 0.34, bar));
    }
    return pix;
}

}  // namespace ostrel::gui
