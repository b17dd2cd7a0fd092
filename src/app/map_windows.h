#pragma once
// The glass map and the comparison of materials: windows of their own beside the main window,
// opened from its tool strip, the Tools and Materials menus and the list's menu. Each opening
// reads the list and the catalogue database afresh.
#include <QPointer>
#include <QWidget>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "core/glassmap/frm_compare.h"
#include "core/glassmap/frm_glass_map.h"
#include "core/platform/controls.h"
#include "gui/glassmap/frm_compare_window.h"
#include "gui/glassmap/frm_glass_map_window.h"

namespace ostrel {

class Bas1Setup;
class GlassesList;
class MainMenu;
class frmGlassesList;
struct MaterialRecord;
namespace gui {
class frmMainMDIWindow;
}

class MapWindows {
  public:
    using EditHook = std::function<void(int, const MaterialRecord&)>;
    MapWindows(GlassesList& list, Bas1Setup& setup, SettingsStore& settings,
               gui::frmMainMDIWindow& mainWindow, EditHook editNew, EditHook editMelt);

    // Compares these materials, those with the given labels selected; returns the window.
    QWidget* CompareOf(const std::vector<MaterialRecord>& materials,
                       const std::vector<std::string>& labels);
    // The custom materials, those with the given labels selected.
    void OpenCompare(const std::vector<std::string>& labels);
    // The custom materials at these positions of the list.
    void CompareSelected(const std::vector<int>& positions);
    void CloseCompare() { compareWindow_.reset(); }
    void OpenGlassMap();

    // The map's tool button before the end button of the tool strip, outside the numbered
    // tools of the forms; the map and the comparison in the menus.
    void AddToolButton();
    void AddMenuItems(MainMenu& menu, frmGlassesList& glassesList);

    frmGlassMap& GlassMap() { return glassMap_; }
    gui::frmGlassMapWindow& GlassMapWindow() { return glassMapWindow_; }

  private:
    GlassesList& list_;
    Bas1Setup& setup_;
    gui::frmMainMDIWindow& mainWindow_;
    frmGlassMap glassMap_;
    gui::frmGlassMapWindow glassMapWindow_;
    std::unique_ptr<frmCompare> compare_;
    std::unique_ptr<gui::frmCompareWindow> compareWindow_;
    Subscription compareSub_;
};

}  // namespace ostrel
