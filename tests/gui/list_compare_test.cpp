// Rows selected together in the list of materials open a comparison from the selection's
// menu; a right click outside the selection keeps the material's own menu.
#include <gtest/gtest.h>

#include <QAction>
#include <QItemSelectionModel>
#include <QMenu>

#include "core/material/frm_glasses_list.h"
#include "gui/material/frm_glasses_list_window.h"
#include "gui/platform/grid_view.h"
#include "gui_fixture.h"

namespace ostrel::gui {
namespace {

TEST(ListCompare, SelectedRowsOpenTheComparisonFromTheirMenu) {
    UnitEnv env;
    for (const char* name : {"F2", "BK7", "ZK1"}) env.list.ListAdd(Record(name, "Lab"), false);
    std::vector<int> compared;
    int materialMenus = 0;
    frmGlassesList unit(env.list, {[] { return 0; },
                                   [](int, const std::string&) {},
                                   {},
                                   [](const std::string&) {},
                                   [&](const std::vector<int>& rows) { compared = rows; }});
    frmGlassesListWindow window(unit, nullptr, nullptr);
    unit.Display();
    QObject::connect(&window, &frmGlassesListWindow::popupRequested,
                     [&](const QPoint&, bool) { ++materialMenus; });
    QAction* compare = window.selectionMenu()->findChild<QAction*>("mnuCompare");
    ASSERT_NE(compare, nullptr);

    // Ctrl+click on the first and third rows, as the view reports it.
    auto* model = window.grid()->model();
    auto* selection = window.grid()->selectionModel();
    const auto rows = QItemSelectionModel::Select | QItemSelectionModel::Rows;
    selection->select(model->index(0, 0),
                      QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
    EXPECT_FALSE(compare->isEnabled()) << "one row compares with nothing";
    selection->select(model->index(2, 0), rows);
    EXPECT_TRUE(compare->isEnabled());

    emit window.grid()->cellRightClicked(1, 2, QPoint());
    EXPECT_EQ(materialMenus, 1) << "outside the selection: the material's menu";
    emit window.grid()->cellRightClicked(1, 3, QPoint());
    EXPECT_EQ(materialMenus, 1);
    EXPECT_TRUE(unit.PopupIsSelection());
    window.selectionMenu()->hide();
    compare->trigger();
    EXPECT_EQ(compared, (std::vector<int>{1, 3}));
}

}  // namespace
}  // namespace ostrel::gui
