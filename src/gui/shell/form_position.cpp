#include "gui/shell/form_position.h"

#include <QGuiApplication>
#include <QMdiSubWindow>
#include <QScreen>
#include <QWidget>
#include <algorithm>

#include "core/platform/controls.h"
#include "core/shell/cs_application.h"
#include "gui/platform/binders.h"

namespace ostrel::gui {

namespace {

// Where a form lives: a child form inside its frame's client area, any other window on
// the screen's free area.
QRect Room(const QWidget* w) {
    if (!w->isWindow() && w->parentWidget()) return QRect(QPoint(0, 0), w->parentWidget()->size());
    QScreen* screen = w->screen() ? w->screen() : QGuiApplication::primaryScreen();
    return screen ? screen->availableGeometry() : QRect();
}

}  // namespace

void RestoreFormPosition(QWidget* w, const CSApplication* app, const std::string& formName,
                         bool mainForm) {
    if (!app) return;
    const QRect avail = Room(w);
    if (avail.isEmpty()) return;
    // A form shown for the first time keeps its own size where there is room for it; on a
    // smaller screen or frame it starts at the size of the room, so that it is seen whole.
    const FormRect present{w->x(), w->y(), std::min(w->width(), avail.width()),
                           std::min(w->height(), avail.height())};
    const FormRect r =
        app->ThisFormPosnGet(formName, mainForm, false, present, {avail.width(), avail.height()});
    w->setGeometry(avail.left() + r.left, avail.top() + r.top, r.width, r.height);
}

void SaveFormPosition(QWidget* w, CSApplication* app, const std::string& formName) {
    if (!app) return;
    const QPoint origin = Room(w).topLeft();
    const QRect g = w->geometry();
    app->ThisFormPosnSave(formName,
                          {g.left() - origin.x(), g.top() - origin.y(), g.width(), g.height()});
}

void FollowFormVisible(QMdiSubWindow* sub, const Control& form, CSApplication* app,
                       const std::string& formName, const std::function<void()>& beforeShow,
                       const std::function<void()>& afterShow) {
    sub->setWindowTitle(ToQt(form.caption));
    if (form.visible && sub->isHidden()) {
        RestoreFormPosition(sub, app, formName, false);
        if (beforeShow) beforeShow();
        sub->show();
        sub->setFocus();
        if (afterShow) afterShow();
    } else if (!form.visible && !sub->isHidden()) {
        SaveFormPosition(sub, app, formName);
        sub->hide();
    }
}

}  // namespace ostrel::gui
