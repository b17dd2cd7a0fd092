#include "gui/platform/edit_finisher.h"

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QApplication>
#include <QEvent>
#include <QLineEdit>
#include <QPointer>

namespace ostrel::gui {

void FinishEditUnderWay() {
    auto* edit = qobject_cast<QLineEdit*>(QApplication::focusWidget());
    if (!edit || edit->isReadOnly()) return;
    QAbstractItemView* grid = nullptr;
    for (QWidget* w = edit->parentWidget(); w && !grid; w = w->parentWidget()) {
        grid = qobject_cast<QAbstractItemView*>(w);
    }
    QPointer<QLineEdit> keep(edit);
    // Losing the focus ends the edit the way the box itself ends it: the value is checked and
    // taken, a grid's cell editor hands its text to the cell and closes.
    edit->clearFocus();
    if (grid) {
        grid->setFocus(Qt::OtherFocusReason);
    } else if (keep && keep->isVisible()) {
        keep->setFocus(Qt::OtherFocusReason);
    }
}

bool EditFinisher::eventFilter(QObject* target, QEvent* event) {
    switch (event->type()) {
        case QEvent::Shortcut:
            FinishEditUnderWay();
            break;
        case QEvent::MouseButtonPress:
            // A button that takes the focus on a click ends the edit itself.
            if (auto* button = qobject_cast<QAbstractButton*>(target);
                button && !(button->focusPolicy() & Qt::ClickFocus)) {
                FinishEditUnderWay();
            }
            break;
        case QEvent::Close:
            // Closing a window asks about unsaved changes; the edit in it is one of them.
            if (auto* window = qobject_cast<QWidget*>(target)) {
                QWidget* focus = QApplication::focusWidget();
                if (focus && window->isAncestorOf(focus)) FinishEditUnderWay();
            }
            break;
        default:
            break;
    }
    return false;
}

}  // namespace ostrel::gui
