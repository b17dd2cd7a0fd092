#pragma once
// What the window tests stand on: a fresh folder with its list of materials, scripted answers,
// a fixed clock and settings in memory; a record by name; a modal box run with the user's
// action queued inside its loop; the user's mouse and keys; the Alt letters a form shows.
#include <gtest/gtest.h>

#include <QtWidgets>
#include <functional>
#include <memory>
#include <string>

#include "core/material/glasses_list.h"
#include "core/platform/clock.h"
#include "core/platform/error_display.h"
#include "core/platform/settings_store.h"
#include "core/shell/frm_main_mdi.h"
#include "core/shell/new_msg.h"
#include "gui/platform/binders.h"
#include "gui/platform/grid_view.h"
#include "gui/shell/frm_main_mdi_window.h"
#include "support/scripted_dialogs.h"
#include "support/temp_dir.h"

namespace ostrel::gui {

using ostrel::testing::ScriptedDialogs;
using ostrel::testing::TempDir;

struct UnitEnv {
    explicit UnitEnv(double today = 45292.0) : clock(today) {}
    std::string Folder() const { return dir.path().string() + "/"; }

    TempDir dir;
    ScriptedDialogs dialogs;
    FixedClock clock;
    ErrorDisplayer errors{Folder(), dialogs, clock};
    GlassesList list{Folder(), errors};
    MemorySettingsStore settings;
    CNewMsg newMsg{dialogs, settings};
};

// The main window and its tool strip over the same folder, wired as the program wires them.
struct MainEnv : UnitEnv {
    std::function<bool()> kelmoraFound = [] { return false; };
    std::function<bool()> firstLoad = [] { return false; };
    std::function<void()> unload = [] {};
    ManageForms forms{dialogs,
                      {[this] { return kelmoraFound(); }, [this] { return firstLoad(); }, [] {}}};
    HelpNotes notes{dialogs, [this] { return forms.GetCurrentForm(); }};
    frmMainMDI mainUnit{
        forms, list, dialogs, notes, newMsg, "Version: 3.0.1", {{}, {}, {}, [this] { unload(); }}};
    frmMainMDIWindow mainWindow{mainUnit, nullptr};
};

inline MaterialRecord Record(const std::string& name, const std::string& source,
                             bool melt = false) {
    MaterialRecord r = ClearedMaterialRecord();
    r.General.GlassName.Set(name);
    r.General.Source.Set(source);
    r.Melt.MeltFlag = melt ? kTrue : kFalse;
    return r;
}

// The box over `unit` shown modally; a test that forgot to close it has it closed.
template <class Box, class Unit>
int RunModal(Unit& unit, const std::function<void(Box&)>& action) {
    Box box(unit, nullptr, nullptr);
    QTimer::singleShot(0, &box, [&] {
        action(box);
        if (box.isVisible()) box.close();
    });
    return box.exec();
}

inline QColor Rgb(const Colour& c) {
    return QColor(c.r, c.g, c.b);
}

// The back colour of a panel.
inline QColor Back(const QWidget* panel) {
    return panel->palette().color(QPalette::Window);
}

// `text` entered into the cell (1-based) of a grid on screen, as its editor hands it over.
inline void TypeInto(QAbstractItemView* grid, int col, int row, const QString& text) {
    QAbstractItemModel* m = grid->model();
    ASSERT_TRUE(m->setData(m->index(row - 1, col - 1), text, Qt::EditRole))
        << col << "," << row << " " << text.toStdString();
}

// The first row whose second column reads `text`, blanks aside; -1 for none.
inline int RowOf(const QAbstractItemModel* m, const QString& text) {
    for (int r = 0; r < m->rowCount(); ++r)
        if (m->index(r, 1).data().toString().trimmed() == text) return r;
    return -1;
}

// The user's own mouse and keyboard, sent to widgets as the window system delivers them, so that
// a test sees the signals in the order a real click or key gives them.
// A left click at `at` in `w`, sent at once or queued as the window system queues it.
inline void ClickAt(QWidget* w, QPointF at, bool queued = false) {
    for (QEvent::Type type : {QEvent::MouseButtonPress, QEvent::MouseButtonRelease}) {
        auto click = std::make_unique<QMouseEvent>(
            type, at, w->mapToGlobal(at), Qt::LeftButton,
            type == QEvent::MouseButtonPress ? Qt::LeftButton : Qt::NoButton, Qt::NoModifier);
        if (queued)
            QCoreApplication::postEvent(w, click.release());
        else
            QCoreApplication::sendEvent(w, click.get());
    }
}

// A left click on the middle of a list's item.
inline void ClickItem(QListWidget* list, QListWidgetItem* item) {
    ClickAt(list->viewport(), QRectF(list->visualItemRect(item)).center());
}

inline void PressKey(QWidget* to, int key, Qt::KeyboardModifiers mods = Qt::NoModifier) {
    QKeyEvent press(QEvent::KeyPress, key, mods);
    QCoreApplication::sendEvent(to, &press);
}

// Typed characters, one key press each.
inline void TypeText(QWidget* to, const QString& text) {
    for (const QChar c : text) {
        QKeyEvent press(QEvent::KeyPress, 0, Qt::NoModifier, QString(c));
        QCoreApplication::sendEvent(to, &press);
    }
}

// A left click on the middle of a widget.
inline void ClickWidget(QWidget* w, bool queued = false) {
    ClickAt(w, QRectF(w->rect()).center(), queued);
}

// Ctrl+End, Ctrl+Home, then Down to the row (0-based) of a grid.
inline void KeyToRow(QWidget* grid, int row) {
    PressKey(grid, Qt::Key_End, Qt::ControlModifier);
    PressKey(grid, Qt::Key_Home, Qt::ControlModifier);
    for (int r = 0; r < row; ++r) PressKey(grid, Qt::Key_Down);
}

// The Alt letters of a form as the user meets them: those of its shown buttons, of labels
// that lead to a box, and of its tabs.
// The letters used more than once among what `form` shows now.
inline QStringList DuplicateMnemonics(QWidget* form) {
    QStringList keys, twice;
    const auto add = [&](const QString& text) {
        if (const QKeySequence key = QKeySequence::mnemonic(text); !key.isEmpty())
            keys << key.toString().right(1);
    };
    for (auto* b : form->findChildren<QAbstractButton*>())
        if (b->isVisibleTo(form)) add(b->text());
    for (auto* l : form->findChildren<QLabel*>())
        if (l->isVisibleTo(form) && l->buddy()) add(l->text());
    for (auto* t : form->findChildren<QTabBar*>())
        for (int i = 0; t->isVisibleTo(form) && i < t->count(); ++i) add(t->tabText(i));
    for (const QString& key : keys)
        if (keys.count(key) > 1 && !twice.contains(key)) twice << key;
    return twice;
}

}  // namespace ostrel::gui
