#pragma once
// The glass map window, bound to frmGlassMap: the view, the sources, the search, the nearest
// catalogue glasses of a custom material, and the map itself.
#include <QWidget>
#include <functional>
#include <vector>

#include "core/glassmap/frm_glass_map.h"

class QLabel;
class QVBoxLayout;

namespace ostrel::gui {

class GlassMapCanvas;

class frmGlassMapWindow : public QWidget {
    Q_OBJECT
  public:
    struct Hooks {
        // Opens the custom material at a list position in its form.
        std::function<void(int)> openMaterial;
        // Opens the comparison with the materials of these labels ("name (source)").
        std::function<void(const std::vector<std::string>&)> compare;
    };
    frmGlassMapWindow(frmGlassMap& unit, Hooks hooks, QWidget* parent = nullptr);

    // Builds the source check boxes anew; called after the unit has loaded.
    void RebuildSources();
    GlassMapCanvas* canvas() const { return canvas_; }
    // Writes the map as PNG (drawn as on screen) or SVG, by the file's extension.
    bool SaveImage(const QString& path);

  private:
    void comSaveImageClick();
    void comCompareClick();

    frmGlassMap& unit_;
    Hooks hooks_;
    GlassMapCanvas* canvas_ = nullptr;
    QVBoxLayout* sourceBox_ = nullptr;
    std::vector<QWidget*> sourceWidgets_;
};

}  // namespace ostrel::gui
