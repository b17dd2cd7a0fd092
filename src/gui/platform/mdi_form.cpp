#include "gui/platform/mdi_form.h"

#include <QEvent>
#include <QIcon>
#include <QMdiArea>
#include <QMdiSubWindow>

namespace ostrel::gui {

namespace {

// Turns the close box of the sub-window it watches into the form's close command.
class CloseBox : public QObject {
  public:
    CloseBox(QMdiSubWindow* sub, std::function<bool()> isOpen, std::function<void()> close)
        : QObject(sub), sub_(sub), isOpen_(std::move(isOpen)), close_(std::move(close)) {}

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override {
        if (watched == sub_ && event->type() == QEvent::Close && isOpen_()) {
            event->ignore();
            close_();
            return true;
        }
        return QObject::eventFilter(watched, event);
    }

  private:
    QMdiSubWindow* sub_;
    std::function<bool()> isOpen_;
    std::function<void()> close_;
};

}  // namespace

QMdiSubWindow* AddFormSubWindow(QMdiArea* area, QWidget* form, const QIcon& icon,
                                const QString& title, QSize size, std::function<bool()> isOpen,
                                std::function<void()> close, bool atLeast) {
    QMdiSubWindow* sub = area->addSubWindow(form);
    sub->setWindowIcon(icon);
    sub->installEventFilter(new CloseBox(sub, std::move(isOpen), std::move(close)));
    if (atLeast) {
        sub->setWindowTitle(title);
        sub->resize(sub->sizeHint().expandedTo(size));
    } else {
        sub->resize(size);
        sub->setWindowTitle(title);
    }
    sub->hide();
    return sub;
}

}  // namespace ostrel::gui
