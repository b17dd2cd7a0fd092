#include "gui/platform/clipboard_edit.h"

#include <QApplication>
#include <QClipboard>
#include <QLineEdit>
#include <QMimeData>
#include <QPlainTextEdit>
#include <QTextEdit>

#include "gui/platform/binders.h"
#include "gui/platform/grid_view.h"

namespace ostrel::gui {

bool QtClipboard::Clear() {
    QClipboard* c = QGuiApplication::clipboard();
    if (!c) return false;
    c->clear();
    return true;
}

bool QtClipboard::SetText(const std::string& text) {
    QClipboard* c = QGuiApplication::clipboard();
    if (!c) return false;
    const QString q = ToQt(text);
    c->setText(q);
    // The clipboard tells no failure itself: read the text back.
    return c->text() == q;
}

std::optional<std::string> QtClipboard::GetText() {
    QClipboard* c = QGuiApplication::clipboard();
    if (!c) return std::nullopt;
    return FromQt(c->text());
}

namespace {

// The grid that has the focus, also while the focus is on one of its parts.
GridView* FocusedGrid(QWidget* widget) {
    for (QWidget* w = widget; w; w = w->parentWidget()) {
        if (auto* g = qobject_cast<GridView*>(w)) return g;
        if (w->isWindow()) break;
    }
    return nullptr;
}

}  // namespace

std::string WidgetEditTarget::SelectedText() const {
    if (auto* e = qobject_cast<QLineEdit*>(widget_)) return FromQt(e->selectedText());
    if (auto* e = qobject_cast<QPlainTextEdit*>(widget_)) {
        return FromQt(e->textCursor().selectedText().replace(QChar::ParagraphSeparator, '\n'));
    }
    if (auto* e = qobject_cast<QTextEdit*>(widget_)) {
        return FromQt(e->textCursor().selectedText().replace(QChar::ParagraphSeparator, '\n'));
    }
    if (GridView* g = FocusedGrid(widget_)) return FromQt(g->SelectedClipText());
    return {};
}

bool WidgetEditTarget::ReplaceSelection(const std::string& text) {
    if (auto* e = qobject_cast<QLineEdit*>(widget_)) {
        if (e->isReadOnly()) return false;
        e->insert(ToQt(text));
        return true;
    }
    if (auto* e = qobject_cast<QPlainTextEdit*>(widget_)) {
        if (e->isReadOnly()) return false;
        e->insertPlainText(ToQt(text));
        return true;
    }
    if (auto* e = qobject_cast<QTextEdit*>(widget_)) {
        if (e->isReadOnly()) return false;
        e->insertPlainText(ToQt(text));
        return true;
    }
    if (GridView* g = FocusedGrid(widget_)) {
        // Cut empties the cells; paste writes at the active cell.
        if (text.empty()) {
            g->ClearSelectedCells();
            return true;
        }
        return g->PasteText(ToQt(text));
    }
    return false;
}

bool EditCopy(Dialogs& dialogs) {
    QtClipboard clip;
    WidgetEditTarget target(QApplication::focusWidget());
    return CSWindow(clip, dialogs).EditCopy(target);
}

bool EditCut(Dialogs& dialogs) {
    QtClipboard clip;
    WidgetEditTarget target(QApplication::focusWidget());
    return CSWindow(clip, dialogs).EditCut(target);
}

bool EditPaste(Dialogs& dialogs) {
    QtClipboard clip;
    WidgetEditTarget target(QApplication::focusWidget());
    return CSWindow(clip, dialogs).EditPaste(target);
}

void EditSelectAll() {
    QWidget* w = QApplication::focusWidget();
    if (auto* e = qobject_cast<QLineEdit*>(w)) return e->selectAll();
    if (auto* e = qobject_cast<QPlainTextEdit*>(w)) return e->selectAll();
    if (auto* e = qobject_cast<QTextEdit*>(w)) return e->selectAll();
    if (GridView* g = FocusedGrid(w)) g->selectAll();
}

void RunEditCommand(EditCommand command, Dialogs& dialogs) {
    switch (command) {
        case EditCommand::Cut:
            EditCut(dialogs);
            break;
        case EditCommand::Copy:
            EditCopy(dialogs);
            break;
        case EditCommand::Paste:
            EditPaste(dialogs);
            break;
        case EditCommand::SelectAll:
            EditSelectAll();
            break;
    }
}

}  // namespace ostrel::gui
