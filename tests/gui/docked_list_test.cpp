// The list of materials docked at the side of the main window: it never covers a form, it
// can float, it comes back once closed, and a melt glass's row opens the melt menu.
#include <gtest/gtest.h>

#include <QAction>
#include <QCoreApplication>
#include <QDockWidget>
#include <QMainWindow>
#include <QMdiArea>
#include <QMdiSubWindow>

#include "core/material/frm_glasses_list.h"
#include "core/material/glasses_list.h"
#include "core/platform/clock.h"
#include "gui/material/frm_glasses_list_window.h"
#include "gui/platform/grid_view.h"
#include "support/scripted_dialogs.h"
#include "support/temp_dir.h"

namespace ostrel::gui {
namespace {

MaterialRecord Record(const char* name, bool melt) {
    MaterialRecord r;
    r.General.GlassName.Set(name);
    r.General.Source.Set("Schott");
    r.Melt.MeltFlag = melt ? kTrue : kFalse;
    return r;
}

TEST(DockedList, NeverCoversAFormFloatsAndComesBack) {
    ostrel::testing::TempDir dir;
    ostrel::testing::ScriptedDialogs dialogs;
    FixedClock clock{45292.0};
    ErrorDisplayer errors{dir.path().string() + "/", dialogs, clock};
    GlassesList list{dir.path().string() + "/", errors};
    list.ListAdd(Record("F2", false), false);
    list.ListAdd(Record("BK7 melt 1", true), false);

    QMainWindow main;
    auto* area = new QMdiArea(&main);
    main.setCentralWidget(area);
    frmGlassesList unit(
        list,
        {[] { return 0; }, [](int, const std::string&) {}, [](int, const std::string&) {}, {}});
    frmGlassesListWindow w(unit, nullptr, &main);
    QDockWidget* dock = w.DockIn(&main);
    unit.Display();
    QMdiSubWindow* form = area->addSubWindow(new QWidget);
    main.resize(900, 600);
    main.show();
    form->showMaximized();
    QCoreApplication::processEvents();

    const QRect listRect(w.mapToGlobal(QPoint(0, 0)), w.size());
    const QRect formRect(form->mapToGlobal(QPoint(0, 0)), form->size());
    EXPECT_TRUE(w.isVisible());
    EXPECT_FALSE(listRect.intersects(formRect));
    EXPECT_GT(listRect.left(), formRect.left()) << "at the right side";

    dock->setFloating(true);
    EXPECT_TRUE(dock->isFloating());
    dock->setFloating(false);
    dock->close();
    EXPECT_FALSE(w.isVisible());
    dock->toggleViewAction()->trigger();
    EXPECT_TRUE(w.isVisible()) << "the menu's action brings it back";

    bool melt = false;
    QObject::connect(&w, &frmGlassesListWindow::popupRequested,
                     [&](const QPoint&, bool isMelt) { melt = isMelt; });
    emit w.grid()->cellRightClicked(1, 2, QPoint());
    EXPECT_TRUE(melt);
    emit w.grid()->cellRightClicked(1, 1, QPoint());
    EXPECT_FALSE(melt);
}

}  // namespace
}  // namespace ostrel::gui
