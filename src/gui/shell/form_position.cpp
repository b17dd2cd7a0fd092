#include "gui/shell/form_position.h"

#include <QGuiApplication>
#include <QScreen>
#include <QWidget>

#include "core/shell/cs_application.h"

namespace ostrel::gui {

void RestoreFormPosition(QWidget* w, const CSApplication* app, const std::string& formName,
                         bool mainForm) {
    if (!app) return;
    QScreen* screen = w->screen() ? w->screen() : QGuiApplication::primaryScreen();
    if (!screen) return;
    const QRect avail = screen->availableGeometry();
    const FormRect present{w->x(), w->y(), w->width(), w->height()};
    const FormRect r =
        app->ThisFormPosnGet(formName, mainForm, false, present, {avail.width(), avail.height()});
    w->setGeometry(avail.left() + r.left, avail.top() + r.top, r.width, r.height);
}

void SaveFormPosition(QWidget* w, CSApplication* app, const std::string& formName) {
    if (!app) return;
    QScreen* screen = w->screen() ? w->screen() : QGuiApplication::primaryScreen();
    const QPoint origin = screen ? screen->availableGeometry().topLeft() : QPoint();
    const QRect g = w->geometry();
    app->ThisFormPosnSave(formName,
                          {g.left() - origin.x(), g.top() - origin.y(), g.width(), g.height()});
}

}  // namespace ostrel::gui
