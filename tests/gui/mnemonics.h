#pragma once
// The Alt letters of a form as the user meets them: those of its shown buttons, of labels
// that lead to a box, and of its tabs.
#include <QAbstractButton>
#include <QLabel>
#include <QMap>
#include <QStringList>
#include <QTabBar>

namespace ostrel::gui {

// The letters used more than once among what `form` shows now.
inline QStringList DuplicateMnemonics(QWidget* form) {
    QMap<QChar, int> count;
    auto add = [&count](const QString& text) {
        for (int i = 0; i + 1 < text.size(); ++i) {
            if (text[i] != '&') continue;
            if (text[i + 1] == '&') {
                ++i;
                continue;
            }
            ++count[text[i + 1].toUpper()];
            return;
        }
    };
    for (auto* b : form->findChildren<QAbstractButton*>()) {
        if (b->isVisibleTo(form)) add(b->text());
    }
    for (auto* l : form->findChildren<QLabel*>()) {
        if (l->isVisibleTo(form) && l->buddy()) add(l->text());
    }
    for (auto* t : form->findChildren<QTabBar*>()) {
        if (!t->isVisibleTo(form)) continue;
        for (int i = 0; i < t->count(); ++i) add(t->tabText(i));
    }
    QStringList twice;
    for (auto it = count.cbegin(); it != count.cend(); ++it) {
        if (it.value() > 1) twice << QString(it.key());
    }
    return twice;
}

}  // namespace ostrel::gui
