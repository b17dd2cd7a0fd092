#pragma once
// What the window tests stand on: a fresh folder with its list of materials, scripted answers,
// a fixed clock and settings in memory; a record by name; a modal box run with the user's
// action queued inside its loop.
#include <QTimer>
#include <functional>
#include <string>

#include "core/material/glasses_list.h"
#include "core/platform/clock.h"
#include "core/platform/error_display.h"
#include "core/platform/settings_store.h"
#include "core/shell/new_msg.h"
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

}  // namespace ostrel::gui
