// Every form as the keyboard meets it: Tab visits its controls in reading order (left to
// right, top to bottom, a column at a time, a grid as one stop) and each Alt letter leads to
// one control only, on every tab of the form. A form of the main area, maximised, fills it.
#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QApplication>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QTabWidget>
#include <functional>
#include <memory>

#include "core/external/bas1_setup.h"
#include "core/external/frm1setup.h"
#include "core/external/frm2_manage_update.h"
#include "core/external/frm6_archive.h"
#include "core/external/frm_glasses_del_ext.h"
#include "core/glassmap/frm_compare.h"
#include "core/glassmap/frm_glass_map.h"
#include "core/import/frm4_import.h"
#include "core/import/frm5_export.h"
#include "core/materialform/frm2_manage.h"
#include "core/materialform/frm3new.h"
#include "core/melt/frm7melt.h"
#include "core/melt/pop_melt_parent.h"
#include "core/melt/pop_melt_schott.h"
#include "core/wave/pop_edit_param_wave.h"
#include "gui/external/frm1_setup_window.h"
#include "gui/external/frm2_manage_update_panel.h"
#include "gui/external/frm6_archive_window.h"
#include "gui/external/frm_glasses_del_ext_dialog.h"
#include "gui/glassmap/frm_compare_window.h"
#include "gui/glassmap/frm_glass_map_window.h"
#include "gui/import/frm4_import_window.h"
#include "gui/import/frm5_export_window.h"
#include "gui/materialform/frm2_manage_window.h"
#include "gui/materialform/frm3_new_window.h"
#include "gui/melt/frm7_melt_window.h"
#include "gui/melt/pop_melt_parent_dialog.h"
#include "gui/melt/pop_melt_schott_dialog.h"
#include "gui/wave/pop_edit_param_wave_window.h"
#include "gui_fixture.h"

namespace ostrel::gui {
namespace {

// The controls Tab stops at in `form`, in the order Tab visits them.
std::vector<QWidget*> TabStops(QWidget* form) {
    std::vector<QWidget*> stops;
    for (QWidget* w = form->nextInFocusChain(); w && w != form; w = w->nextInFocusChain()) {
        if (!form->isAncestorOf(w) || !w->isVisibleTo(form) || !w->isEnabled()) continue;
        if (!(w->focusPolicy() & Qt::TabFocus) || w->focusProxy()) continue;
        stops.push_back(w);
    }
    return stops;
}

QRect InForm(QWidget* w, QWidget* form) {
    return QRect(w->mapTo(form, QPoint(0, 0)), w->size());
}

QString Name(QWidget* w) {
    if (!w->objectName().isEmpty()) return w->objectName();
    if (auto* b = qobject_cast<QAbstractButton*>(w)) return b->text();
    return w->metaObject()->className();
}

// The steps of the Tab order that go against reading order: a stop that lies wholly above
// the one before it, unless it starts a column to the right of it; or one on the same line
// that lies to the left of it.
QStringList OutOfOrder(QWidget* form) {
    QStringList wrong;
    const auto stops = TabStops(form);
    for (size_t i = 1; i < stops.size(); ++i) {
        const QRect a = InForm(stops[i - 1], form), b = InForm(stops[i], form);
        const bool above = b.bottom() < a.top();
        const bool sameLine = !above && b.top() <= a.bottom() && a.top() <= b.bottom();
        const bool newColumn = b.left() > a.right();
        if ((above && !newColumn) || (sameLine && b.right() < a.left()))
            wrong << Name(stops[i - 1]) + " -> " + Name(stops[i]);
    }
    return wrong;
}

class FormKeys : public ::testing::Test, protected UnitEnv {
  protected:
    // Shows the form and checks it on each of its tabs.
    void Check(const char* what, QWidget* form) {
        SCOPED_TRACE(what);
        form->show();
        // A form of the main area, maximised, fills it.
        if (auto* sub = qobject_cast<QMdiSubWindow*>(form->parentWidget())) {
            sub->showMaximized();
            QApplication::processEvents();
            EXPECT_EQ(sub->geometry(), sub->mdiArea()->viewport()->rect());
        }
        QApplication::processEvents();
        auto* tabs = form->findChild<QTabWidget*>();
        const int pages = tabs ? tabs->count() : 1;
        for (int page = 0; page < pages; ++page) {
            if (tabs) tabs->setCurrentIndex(page);
            QApplication::processEvents();
            EXPECT_EQ(OutOfOrder(form).join(", ").toStdString(), "") << "tab " << page;
            EXPECT_EQ(DuplicateMnemonics(form).join(" ").toStdString(), "") << "tab " << page;
        }
    }

    QMdiArea area;
    Bas1Setup setup{settings, dialogs};
};

TEST_F(FormKeys, TabFollowsTheLayoutAndAltLettersAreUniqueInEveryForm) {
    area.resize(1300, 900);
    area.show();
    frm1Setup setupForm(setup, dialogs, {});
    frm1SetupWindow setupWindow(setupForm, nullptr, &area);
    Check("setup", &setupWindow);

    frm2Manage manage(list, dialogs, {});
    frm2ManageWindow manageWindow(manage, nullptr, &area);
    frm2ManageUpdate update(frm2ManageUpdate::SourceOf(manage), setup, dialogs);
    manageWindow.AddPanel(new frm2ManageUpdatePanel(update));
    Check("manage", &manageWindow);

    popEditParamWave picker(dialogs, newMsg, Folder(), {});
    frm3New material(list, dialogs, {});
    frm3NewWindow materialWindow(material, nullptr, &area);
    material.DisplayNew();
    Check("material", &materialWindow);
    popEditParamWaveWindow pickerWindow(picker, nullptr, nullptr);
    Check("wavelengths", &pickerWindow);

    frm4Import import(list, dialogs, settings, newMsg, Folder(), {});
    frm4ImportWindow importWindow(import, nullptr, &area);
    Check("import", &importWindow);
    frm5Export backup(list, dialogs, clock, {});
    frm5ExportWindow backupWindow(backup, nullptr, &area);
    Check("backup", &backupWindow);
    frm6Archive archive(setup, dialogs, {});
    frm6ArchiveWindow archiveWindow(archive, nullptr, &area);
    Check("archive", &archiveWindow);
    frmGlassesDelExt removal(setup, dialogs);
    frmGlassesDelExtDialog removalBox(removal, nullptr);
    Check("removal", &removalBox);

    frm7Melt melt(list, dialogs, newMsg, Folder(), {});
    frm7MeltWindow meltWindow(melt, nullptr, &area);
    melt.DisplayNew(false);
    Check("melt", &meltWindow);
    popMeltParent parent(dialogs, settings, Folder(), {}, {});
    popMeltParentDialog parentBox(parent, nullptr, nullptr);
    Check("melt parent", &parentBox);
    popMeltSchott sheet(dialogs, newMsg, {});
    popMeltSchottDialog sheetBox(sheet, nullptr, nullptr);
    Check("melt sheet", &sheetBox);

    frmGlassMap map(settings);
    frmGlassMapWindow mapWindow(map, {});
    Check("glass map", &mapWindow);
    frmCompare compare(std::vector<CompareItem>{});
    frmCompareWindow compareWindow(compare);
    Check("compare", &compareWindow);
}

}  // namespace
}  // namespace ostrel::gui
