#include "gui/platform/elided_label.h"

#include <QHelpEvent>
#include <QPainter>
#include <QStyle>
#include <QToolTip>

namespace ostrel::gui {

ElidedLabel::ElidedLabel(QWidget* parent) : QLabel(parent) {
    setTextFormat(Qt::PlainText);
    setWordWrap(false);
    setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
}

QString ElidedLabel::ShownText() const {
    const int width = contentsRect().width() - 2 * margin() - std::max(indent(), 0);
    QString line = text();
    line.replace('\n', ' ');
    return fontMetrics().elidedText(line, Qt::ElideRight, std::max(width, 0));
}

QSize ElidedLabel::sizeHint() const {
    const QMargins m = contentsMargins();
    return {fontMetrics().horizontalAdvance(text()) + m.left() + m.right() + 2 * margin(),
            fontMetrics().height() + m.top() + m.bottom() + 2 * margin() + 4};
}

QSize ElidedLabel::minimumSizeHint() const {
    return {fontMetrics().averageCharWidth() * 8, sizeHint().height()};
}

void ElidedLabel::paintEvent(QPaintEvent* e) {
    QFrame::paintEvent(e);
    QPainter painter(this);
    const QRect r =
        contentsRect().adjusted(margin() + std::max(indent(), 0), margin(), -margin(), -margin());
    style()->drawItemText(&painter, r, int(alignment() | Qt::AlignVCenter) & ~Qt::AlignTop,
                          palette(), isEnabled(), ShownText(), foregroundRole());
}

bool ElidedLabel::event(QEvent* e) {
    // The whole text in the tool tip, when the line cannot show it.
    if (e->type() == QEvent::ToolTip && toolTip().isEmpty()) {
        auto* help = static_cast<QHelpEvent*>(e);
        if (ShownText() != text()) {
            QToolTip::showText(help->globalPos(), text(), this);
        } else {
            QToolTip::hideText();
        }
        return true;
    }
    return QLabel::event(e);
}

}  // namespace ostrel::gui
