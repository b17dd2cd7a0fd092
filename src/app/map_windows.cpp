#include "map_windows.h"

#include <QApplication>
#include <QBoxLayout>
#include <QToolButton>

#include "core/external/bas1_setup.h"
#include "core/material/frm_glasses_list.h"
#include "core/material/glasses_list.h"
#include "core/shell/main_menu.h"
#include "gui/shell/frm_main_mdi_window.h"

namespace ostrel {

MapWindows::MapWindows(GlassesList& list, Bas1Setup& setup, SettingsStore& settings,
                       gui::frmMainMDIWindow& mainWindow, EditHook editNew, EditHook editMelt)
    : list_(list),
      setup_(setup),
      mainWindow_(mainWindow),
      glassMap_(settings),
      glassMapWindow_(glassMap_,
                      {[this, editNew, editMelt](int position) {
                           MaterialRecord rec;
                           if (!list_.GetMaterial(position, rec)) return;
                           if (rec.Melt.MeltFlag != 0) {
                               editMelt(position, rec);
                           } else {
                               editNew(position, rec);
                           }
                       },
                       [this](const std::vector<std::string>& labels) { OpenCompare(labels); }},
                      &mainWindow) {}

QWidget* MapWindows::CompareOf(const std::vector<MaterialRecord>& materials,
                               const std::vector<std::string>& labels) {
    std::string note;
    compareWindow_.reset();
    compare_ = std::make_unique<frmCompare>(
        CompareItems(materials, setup_.GetPathKelmora(), setup_.GetKelmoraFound(), note));
    compareWindow_ = std::make_unique<gui::frmCompareWindow>(*compare_, &mainWindow_);
    compare_->SelectLabelled(labels, note);
    compareWindow_->show();
    compareWindow_->raise();
    return compareWindow_.get();
}

void MapWindows::OpenCompare(const std::vector<std::string>& labels) {
    CompareOf(list_.CustomList(), labels);
}

void MapWindows::CompareSelected(const std::vector<int>& positions) {
    std::vector<std::string> labels;
    for (int position : positions) {
        MaterialRecord rec;
        if (list_.GetMaterial(position, rec)) labels.push_back(CompareLabel(rec));
    }
    OpenCompare(labels);
}

void MapWindows::OpenGlassMap() {
    glassMap_.Load(list_.CustomList(), setup_.GetPathKelmora(), setup_.GetKelmoraFound());
    glassMapWindow_.RebuildSources();
    glassMapWindow_.show();
    glassMapWindow_.raise();
    glassMapWindow_.activateWindow();
}

void MapWindows::AddToolButton() {
    QWidget* end = mainWindow_.ribEnd();
    auto* strip = qobject_cast<QBoxLayout*>(end->parentWidget()->layout());
    if (!strip) return;
    auto* comGlassMap = new QToolButton(end->parentWidget());
    comGlassMap->setObjectName("comGlassMap");
    // The program's own prism: the file-view icon is the import tool's already.
    comGlassMap->setIcon(QApplication::windowIcon());
    comGlassMap->setIconSize(mainWindow_.ribEnd()->iconSize());
    comGlassMap->setAutoRaise(mainWindow_.ribEnd()->autoRaise());
    comGlassMap->setToolTip("Glass map: the custom glasses among the catalogue's");
    QObject::connect(comGlassMap, &QToolButton::clicked, &mainWindow_, [this] { OpenGlassMap(); });
    strip->insertWidget(strip->indexOf(end), comGlassMap);
}

void MapWindows::AddMenuItems(MainMenu& menu, frmGlassesList& glassesList) {
    menu.AddItem(
        menu.mnuTools, "mnuGlassMap", "&Glass map",
        "The custom glasses among the catalogue's, on the Abbe and partial dispersion diagrams",
        MenuKey::None, [this] { OpenGlassMap(); });
    MenuItem& compareItem =
        menu.AddItem(menu.mnuMaterials, "mnuCompare", glassesList.mnuCompare.caption,
                     glassesList.mnuCompare.toolTip, MenuKey::None,
                     [&glassesList] { glassesList.mnuCompareClick(); });
    compareItem.separatorBefore = true;
    compareSub_ = glassesList.mnuCompare.Observe([&compareItem, &glassesList] {
        compareItem.button.enabled = glassesList.mnuCompare.enabled.get();
    });
    compareItem.button.enabled = glassesList.mnuCompare.enabled.get();
}

}  // namespace ostrel
