#include "gui/platform/mdi_form.h"

#include <QEvent>
#include <QIcon>
#include <QKeyEvent>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QPushButton>

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

// Enter and Escape in a form, when the widget with the focus has no use for them, press the
// form's default button and its cancel button ("comCancel", else the "comOK" that closes),
// as they do in a dialog.
class FormKeys : public QObject {
  public:
    explicit FormKeys(QWidget* form) : QObject(form), form_(form) {}

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override {
        if (watched != form_ || event->type() != QEvent::KeyPress) return false;
        auto* key = static_cast<QKeyEvent*>(event);
        const Qt::KeyboardModifiers mods = key->modifiers() & ~Qt::KeypadModifier;
        if (mods != Qt::NoModifier) return false;
        QPushButton* button = nullptr;
        if (key->key() == Qt::Key_Return || key->key() == Qt::Key_Enter) {
            for (QPushButton* b : form_->findChildren<QPushButton*>()) {
                if (b->isDefault()) button = b;
            }
        } else if (key->key() == Qt::Key_Escape) {
            button = form_->findChild<QPushButton*>("comCancel");
            if (!Usable(button)) button = form_->findChild<QPushButton*>("comOK");
        }
        if (!Usable(button)) return false;
        button->click();
        return true;
    }

  private:
    static bool Usable(QPushButton* b) { return b && b->isVisible() && b->isEnabled(); }
    QWidget* form_;
};

}  // namespace

void InstallFormKeys(QWidget* form) {
    form->installEventFilter(new FormKeys(form));
}

QMdiSubWindow* AddFormSubWindow(QMdiArea* area, QWidget* form, const QIcon& icon,
                                const QString& title, QSize size, std::function<bool()> isOpen,
                                std::function<void()> close, bool atLeast) {
    QMdiSubWindow* sub = area->addSubWindow(form);
    sub->setWindowIcon(icon);
    sub->installEventFilter(new CloseBox(sub, std::move(isOpen), std::move(close)));
    InstallFormKeys(form);
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
