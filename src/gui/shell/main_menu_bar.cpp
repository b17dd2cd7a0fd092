#include "gui/shell/main_menu_bar.h"

#include <QAction>
#include <QApplication>
#include <QKeyEvent>
#include <QMainWindow>
#include <QMenu>
#include <QMenuBar>

#include "gui/platform/binders.h"

namespace ostrel::gui {

QKeySequence StandardSequence(MenuKey key) {
    switch (key) {
        case MenuKey::New:
            return QKeySequence(QKeySequence::New);
        case MenuKey::Open:
            return QKeySequence(QKeySequence::Open);
        case MenuKey::Save:
            return QKeySequence(QKeySequence::Save);
        case MenuKey::Quit:
            return QKeySequence(QKeySequence::Quit);
        case MenuKey::Cut:
            return QKeySequence(QKeySequence::Cut);
        case MenuKey::Copy:
            return QKeySequence(QKeySequence::Copy);
        case MenuKey::Paste:
            return QKeySequence(QKeySequence::Paste);
        case MenuKey::SelectAll:
            return QKeySequence(QKeySequence::SelectAll);
        case MenuKey::HelpContents:
            return QKeySequence(QKeySequence::HelpContents);
        case MenuKey::None:
            break;
    }
    return {};
}

QList<QKeySequence> ItemSequences(const MenuItem& item) {
    QList<QKeySequence> keys;
    if (QKeySequence k = StandardSequence(item.key); !k.isEmpty()) keys.push_back(k);
    // Quit also answers Ctrl+Q where the platform's standard is another key.
    if (item.key == MenuKey::Quit && !keys.contains(QKeySequence(Qt::CTRL | Qt::Key_Q)))
        keys.push_back(QKeySequence(Qt::CTRL | Qt::Key_Q));
    if (item.toolNumber > 0)
        keys.push_back(QKeySequence(Qt::CTRL | Qt::Key(Qt::Key_0 + item.toolNumber)));
    return keys;
}

void SendEditCommand(EditCommand command) {
    QWidget* target = QApplication::focusWidget();
    if (!target) return;
    QKeySequence::StandardKey key = QKeySequence::Copy;
    switch (command) {
        case EditCommand::Cut:
            key = QKeySequence::Cut;
            break;
        case EditCommand::Copy:
            key = QKeySequence::Copy;
            break;
        case EditCommand::Paste:
            key = QKeySequence::Paste;
            break;
        case EditCommand::SelectAll:
            key = QKeySequence::SelectAll;
            break;
    }
    const QKeySequence seq(key);
    if (seq.isEmpty()) return;
    const QKeyCombination combo = seq[0];
    QKeyEvent press(QEvent::KeyPress, combo.key(), combo.keyboardModifiers());
    QApplication::sendEvent(target, &press);
    QKeyEvent release(QEvent::KeyRelease, combo.key(), combo.keyboardModifiers());
    QApplication::sendEvent(target, &release);
}

QMenuBar* BuildMenuBar(QMainWindow* window, MainMenu& menu) {
    QMenuBar* bar = window->menuBar();
    // A bar built again (after items were added) replaces the menus it had.
    bar->clear();
    for (QMenu* old : bar->findChildren<QMenu*>(Qt::FindDirectChildrenOnly)) delete old;
    for (Menu* m : menu.menus) {
        QMenu* qm = bar->addMenu(ToQt(m->caption));
        qm->setObjectName(ToQt(m->name));
        qm->setToolTipsVisible(true);
        for (MenuItem* item : m->items) {
            if (item->separatorBefore) qm->addSeparator();
            QAction* a = qm->addAction(QString());
            a->setObjectName(ToQt(item->name));
            Bind(a, item->button);
            a->setShortcuts(ItemSequences(*item));
            // The keys reach the item wherever the focus is in the main window.
            a->setShortcutContext(Qt::ApplicationShortcut);
            QObject::connect(a, &QAction::triggered, window, [item] {
                if (item->command) item->command();
            });
        }
    }
    return bar;
}

}  // namespace ostrel::gui
