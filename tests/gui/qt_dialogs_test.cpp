// The answers of the Qt dialogs: input that reaches the program while it is busy is dropped, not
// run after the work; a message text longer than the screen can show scrolls, and the buttons
// stay in reach.

#include "gui/platform/qt_dialogs.h"
#include "gui_fixture.h"

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

TEST(MessageBox, ALongTextScrollsWholeAndTheButtonsStayOnTheScreen) {
    std::string names;
    for (int i = 0; i < 400; ++i)
        names += (i ? ", " : "") + ("N-GLASS" + std::to_string(i) + "/SCHOTT");
    const std::string longText = "The following materials are already in your collection:\n\n" +
                                 names + "\n\nDo you want to overwrite the existing data?";
    const std::string shortText = "Do you want to overwrite the existing data?";
    for (const std::string& text : {longText, shortText}) {
        const bool isLong = text.size() > 1200;
        QtDialogs dialogs;
        QRect frame, room;
        QString scrolledText;
        bool scrolls = false;
        QTimer::singleShot(0, [&] {
            auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
            if (!box) return;
            frame = box->frameGeometry();
            room = box->screen()->availableGeometry();
            if (auto* label = box->findChild<QLabel*>("longMessageText"))
                scrolledText = label->text();
            scrolls = box->findChild<QScrollArea*>("longMessageScroll") != nullptr;
            box->button(QMessageBox::No)->click();
        });
        EXPECT_EQ(dialogs.MsgBox(text, MsgButtons::YesNo, MsgIcon::Question, {}), MsgAnswer::No);
        EXPECT_EQ(scrolls, isLong);
        if (isLong) {
            EXPECT_EQ(FromQt(scrolledText), text);
            EXPECT_LE(frame.height(), room.height());
        }
    }
}

}  // namespace
}  // namespace ostrel::gui
