#pragma once
// The user's own mouse and keyboard, sent to widgets as the window system delivers them, so that
// a test sees the signals in the order a real click or key gives them.
#include <QCoreApplication>
#include <QFocusEvent>
#include <QKeyEvent>
#include <QListWidget>
#include <QMouseEvent>

namespace ostrel::gui {

// A left click at `at` in `w`.
inline void ClickAt(QWidget* w, QPointF at) {
    for (QEvent::Type type : {QEvent::MouseButtonPress, QEvent::MouseButtonRelease}) {
        QMouseEvent click(type, at, w->mapToGlobal(at), Qt::LeftButton,
                          type == QEvent::MouseButtonPress ? Qt::LeftButton : Qt::NoButton,
                          Qt::NoModifier);
        QCoreApplication::sendEvent(w, &click);
    }
}

// A left click on the middle of a list's item.
inline void ClickItem(QListWidget* list, QListWidgetItem* item) {
    ClickAt(list->viewport(), QRectF(list->visualItemRect(item)).center());
}

inline void PressKey(QWidget* to, int key, Qt::KeyboardModifiers mods = Qt::NoModifier) {
    QKeyEvent press(QEvent::KeyPress, key, mods);
    QCoreApplication::sendEvent(to, &press);
}

// Typed characters, one key press each.
inline void TypeText(QWidget* to, const QString& text) {
    for (const QChar c : text) {
        QKeyEvent press(QEvent::KeyPress, 0, Qt::NoModifier, QString(c));
        QCoreApplication::sendEvent(to, &press);
    }
}

// A left click on the middle of a widget.
inline void ClickWidget(QWidget* w) {
    ClickAt(w, QRectF(w->rect()).center());
}

// The focus arriving by Tab.
inline void TabInto(QWidget* to) {
    QFocusEvent tabIn(QEvent::FocusIn, Qt::TabFocusReason);
    QCoreApplication::sendEvent(to, &tabIn);
}

// Ctrl+End, Ctrl+Home, then Down to the row (0-based) of a grid.
inline void KeyToRow(QWidget* grid, int row) {
    PressKey(grid, Qt::Key_End, Qt::ControlModifier);
    PressKey(grid, Qt::Key_Home, Qt::ControlModifier);
    for (int r = 0; r < row; ++r) PressKey(grid, Qt::Key_Down);
}

}  // namespace ostrel::gui
