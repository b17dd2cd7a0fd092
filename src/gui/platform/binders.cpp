#include "gui/platform/binders.h"

#include "core/platform/number_text.h"

#include <QAbstractButton>
#include <QAction>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QSignalBlocker>
#include <QTabWidget>
#include <QTimer>
#include <QWidget>
#include <algorithm>
#include <memory>
#include <vector>

namespace ostrel::gui {

namespace {

// Keeps an observation alive for as long as the QObject it is parented to.
class Binding : public QObject {
  public:
    Binding(QObject* owner, ControlBase& model, std::function<void()> apply)
        : QObject(owner), apply_(std::move(apply)) {
        apply_();
        sub_ = model.Observe([this] { apply_(); });
    }

  private:
    std::function<void()> apply_;
    Subscription sub_;
};

QColor ToQColor(const Colour& c) {
    return QColor(c.r, c.g, c.b);
}

std::function<void(const std::string&)>& NoteSink() {
    static std::function<void(const std::string&)> sink;
    return sink;
}

void ApplyCommon(QWidget* w, const Control& m) {
    w->setToolTip(ToQt(m.toolTip));
    w->setEnabled(m.enabled);
    // A widget without a parent is a window: its showing is the window's business.
    if (w->parentWidget()) w->setVisible(m.visible);
}

}  // namespace

QString ToQt(const std::string& utf8) {
    return QString::fromUtf8(utf8.data(), qsizetype(utf8.size()));
}
std::string FromQt(const QString& text) {
    return text.toUtf8().toStdString();
}

void Bind(QAbstractButton* button, Button& model) {
    new Binding(button, model, [button, &model] {
        button->setText(ToQt(model.caption));
        ApplyCommon(button, model);
        if (button->isCheckable()) button->setChecked(model.value);
    });
}

void Bind(QAction* action, Button& model) {
    new Binding(action, model, [action, &model] {
        action->setText(ToQt(model.caption));
        action->setToolTip(ToQt(model.toolTip));
        action->setEnabled(model.enabled);
        action->setVisible(model.visible);
        if (action->isCheckable()) action->setChecked(model.value);
    });
}

void Bind(QAbstractButton* box, CheckBox& model) {
    new Binding(box, model, [box, &model] {
        box->setText(ToQt(model.caption));
        ApplyCommon(box, model);
        box->setChecked(model.value);
    });
    QObject::connect(box, &QAbstractButton::toggled, box, [&model](bool on) { model.value = on; });
}

void Bind(QLabel* label, Label& model) {
    new Binding(label, model, [label, &model] {
        label->setText(ToQt(model.caption));
        QFont f = label->font();
        f.setBold(model.bold);
        label->setFont(f);
        ApplyCommon(label, model);
    });
}

void Bind(QLabel* panel, Panel& model) {
    panel->setAutoFillBackground(true);
    new Binding(panel, model, [panel, &model] {
        panel->setText(ToQt(model.caption));
        QPalette p = panel->palette();
        p.setColor(QPalette::Window, ToQColor(model.backColour));
        p.setColor(QPalette::WindowText, Qt::black);
        panel->setPalette(p);
        ApplyCommon(panel, model);
    });
}

void BindPanel(QWidget* panel, Panel& model) {
    panel->setAutoFillBackground(true);
    new Binding(panel, model, [panel, &model] {
        QPalette p = panel->palette();
        p.setColor(QPalette::Window, ToQColor(model.backColour));
        panel->setPalette(p);
        ApplyCommon(panel, model);
    });
}

void Bind(QLineEdit* edit, TextBox& model) {
    new Binding(edit, model, [edit, &model] {
        if (edit->text() != ToQt(model.text)) edit->setText(ToQt(model.text));
        edit->setReadOnly(model.locked);
        ApplyCommon(edit, model);
    });
    // A number typed or pasted with a decimal comma is taken with a point, where the user
    // sees it, as soon as a digit follows the comma.
    QObject::connect(edit, &QLineEdit::textEdited, edit, [edit, &model](const QString& t) {
        const std::string typed = FromQt(t);
        const std::string text = DecimalPointText(typed);
        if (text != typed) {
            const int at = edit->cursorPosition();
            edit->setText(ToQt(text));
            edit->setCursorPosition(at);
        }
        model.text = text;
    });
}

void Bind(QLineEdit* edit, NumberBox& model) {
    // The mark waits for the entry to end: a number half typed ("-", "1e") is no number yet.
    auto typing = std::make_shared<bool>(false);
    QObject::connect(edit, &QLineEdit::textEdited, edit, [typing] { *typing = true; });
    Bind(edit, static_cast<TextBox&>(model));
    const QPalette plain = edit->palette();
    auto mark = [edit, &model, typing, plain] {
        const bool ignored = !*typing && model.IsIgnoredEntry();
        QPalette p = plain;
        if (ignored) {
            p.setColor(QPalette::Base, ToQColor(kIgnoredEntryBack));
            p.setColor(QPalette::Text, ToQColor(kIgnoredEntryText));
        }
        edit->setPalette(p);
        edit->setToolTip(ToQt(ignored ? model.IgnoredEntryNote() : model.toolTip.get()));
    };
    new Binding(edit, model, mark);
    QObject::connect(edit, &QLineEdit::editingFinished, edit, [&model, typing, mark] {
        *typing = false;
        mark();
        if (model.IsIgnoredEntry()) EntryNote(model.IgnoredEntryNote());
    });
}

void SetEntryNoteSink(std::function<void(const std::string&)> sink) {
    NoteSink() = std::move(sink);
}

void EntryNote(const std::string& text) {
    if (NoteSink()) NoteSink()(text);
}

void Bind(QListWidget* list, ListControl& model) {
    list->setSelectionMode(model.multiSelect() ? QAbstractItemView::MultiSelection
                                               : QAbstractItemView::SingleSelection);
    new Binding(list, model, [list, &model] {
        const QSignalBlocker block(list);
        // The items are rebuilt only when their texts changed: a change of selection comes
        // back here while the list is still taking the user's click or key, and rebuilt
        // items would lose the row being made current.
        const auto& items = model.Items();
        bool same = list->count() == static_cast<int>(items.size());
        for (int i = 0; same && i < list->count(); ++i) {
            same = list->item(i)->text() == ToQt(items[static_cast<size_t>(i)]);
        }
        if (!same) {
            list->clear();
            for (const auto& item : items) list->addItem(ToQt(item));
        }
        for (int i = 0; i < model.ListCount(); ++i) list->item(i)->setSelected(model.Selected(i));
        if (model.listIndex() >= 0)
            list->setCurrentRow(model.listIndex(), QItemSelectionModel::NoUpdate);
        ApplyCommon(list, model);
    });
    QObject::connect(list, &QListWidget::itemSelectionChanged, list, [list, &model] {
        // Taken whole before the model hears of it: each change the model hears refreshes
        // the list from the model.
        std::vector<bool> selected(static_cast<size_t>(list->count()));
        for (int i = 0; i < list->count(); ++i)
            selected[static_cast<size_t>(i)] = list->item(i)->isSelected();
        if (!model.multiSelect()) {
            const auto row = std::find(selected.begin(), selected.end(), true);
            model.SetListIndex(row == selected.end() ? -1
                                                     : static_cast<int>(row - selected.begin()));
            return;
        }
        for (size_t i = 0; i < selected.size(); ++i)
            model.SetSelected(static_cast<int>(i), selected[i]);
    });
}

void OnPick(QListWidget* list, ListControl& model, std::function<void()> pick, bool queued) {
    QObject::connect(
        list, &QListWidget::itemSelectionChanged, list,
        [&model, pick = std::move(pick)] {
            if (model.listIndex() >= 0) pick();
        },
        queued ? Qt::QueuedConnection : Qt::AutoConnection);
}

void Bind(QComboBox* combo, ListControl& model) {
    new Binding(combo, model, [combo, &model] {
        const QSignalBlocker block(combo);
        combo->clear();
        for (const auto& item : model.Items()) combo->addItem(ToQt(item));
        combo->setCurrentIndex(model.listIndex());
        ApplyCommon(combo, model);
    });
    QObject::connect(combo, &QComboBox::currentIndexChanged, combo,
                     [&model](int i) { model.SetListIndex(i); });
}

void Bind(QTabWidget* tabs, TabStrip& model) {
    new Binding(tabs, model, [tabs, &model] {
        const QSignalBlocker block(tabs);
        tabs->setCurrentIndex(model.tab);
        ApplyCommon(tabs, model);
    });
    QObject::connect(tabs, &QTabWidget::currentChanged, tabs, [&model](int i) { model.tab = i; });
}

void Bind(QTimer* timer, Timer& model) {
    new Binding(timer, model, [timer, &model] {
        if (timer->interval() != model.interval) timer->setInterval(model.interval);
        if (model.enabled && !timer->isActive()) timer->start();
        if (!model.enabled && timer->isActive()) timer->stop();
    });
}

void BindWindow(QWidget* window, Control& model) {
    new Binding(window, model, [window, &model] {
        window->setWindowTitle(ToQt(model.caption));
        window->setEnabled(model.enabled);
        window->setVisible(model.visible);
    });
}

}  // namespace ostrel::gui
