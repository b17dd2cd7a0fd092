// Input that reaches the program while it is busy is dropped, not run after the work.
#include <gtest/gtest.h>

#include <QApplication>
#include <QMouseEvent>
#include <QPushButton>

#include "gui/platform/qt_dialogs.h"

namespace ostrel::gui {
namespace {

// A click on the button's middle, queued as the window system would queue it.
void QueueClick(QPushButton& button) {
    const QPointF at = QRectF(button.rect()).center();
    const QPointF global = button.mapToGlobal(at);
    QCoreApplication::postEvent(
        &button, new QMouseEvent(QEvent::MouseButtonPress, at, global, Qt::LeftButton,
                                 Qt::LeftButton, Qt::NoModifier));
    QCoreApplication::postEvent(
        &button, new QMouseEvent(QEvent::MouseButtonRelease, at, global, Qt::LeftButton,
                                 Qt::NoButton, Qt::NoModifier));
}

TEST(BusyInput, ClicksQueuedDuringBusyWorkAreDroppedWhenItEnds) {
    QtDialogs dialogs;
    QPushButton button("Scan");
    button.resize(80, 30);
    button.show();
    int clicks = 0;
    QObject::connect(&button, &QPushButton::clicked, [&clicks] { ++clicks; });

    // Nested busy work: the clicks wait for the outer end and go there.
    dialogs.SetBusy(true);
    dialogs.SetBusy(true);
    QueueClick(button);
    dialogs.SetBusy(false);
    EXPECT_EQ(QApplication::overrideCursor() != nullptr, true);
    dialogs.SetBusy(false);
    QCoreApplication::processEvents();
    EXPECT_EQ(clicks, 0);
    EXPECT_EQ(QApplication::overrideCursor(), nullptr);

    // Once the program listens again, the same click acts.
    QueueClick(button);
    QCoreApplication::processEvents();
    EXPECT_EQ(clicks, 1);
}

}  // namespace
}  // namespace ostrel::gui
