#pragma once
// The glass map window without pixels: the catalogue glasses of the KelmoraTD database and
// the custom materials on the Abbe diagram (nd against vd) or the partial dispersion
// diagram (PgF against vd), vd decreasing to the right; sources switched on and off, a
// search that highlights a glass, the nearest catalogue glasses of a custom material, and
// the view's zoom and pan. The window paints Scene() and forwards the mouse.
#include <memory>
#include <string>
#include <vector>

#include "core/glassmap/glass_map_data.h"
#include "core/glassmap/map_scene.h"
#include "core/platform/controls.h"
#include "core/platform/settings_store.h"

namespace ostrel {

inline constexpr const char* kGlassMapSection = "GlassMap";
inline constexpr int kDefaultNearestCount = 5;

class frmGlassMap {
  public:
    explicit frmGlassMap(SettingsStore& settings);

    // Reads the custom list and, when the catalogue program was found, the current table of
    // its database. Without it the map shows the custom list alone and the status line says
    // why.
    void Load(const std::vector<MaterialRecord>& customList, const std::string& kelmoraFolder,
              bool kelmoraFound);
    // Shows the glasses given (for a list and catalogue read elsewhere).
    void SetData(GlassMapData data);
    const GlassMapData& Data() const { return data_; }

    CheckBox optAbbe{"Abbe diagram (nd / vd)"};
    CheckBox optPgF{"Partial dispersion (PgF / vd)"};
    // One per catalogue source, in the order of Data().sources; value true when shown.
    std::vector<std::unique_ptr<CheckBox>> chkSource;
    TextBox txtSearch;
    Label lblSearch;
    ListControl cmbCustom;  // the custom materials on the map; item data is the point
    NumberBox txtCount;
    NumberBox txtNdScale;
    Button comNearest{"Nearest"};
    ListControl lstNearest;  // item data is the point
    Button comReset{"Reset view"};
    Label lblStatus;
    // Notified whenever the picture changes.
    Picture picMap;

    // The view chosen in the window, remembered for the next time.
    void optViewClick(bool pgf);
    // The view for one picture (the command line), not remembered.
    void SetView(bool pgf);
    // The source's check box was set; the map follows.
    void chkSourceClick(int source);
    void txtSearchChange();
    void comNearestClick();
    void comResetClick();
    // The nd weight typed in: kept when it is a number above 0, stored in the settings.
    void txtNdScaleChange();

    // The surface the map is drawn on.
    void SetPlotSize(int width, int height);
    // Zooms by `factor` (above 1 zooms in) keeping the map position under the pixel.
    void ZoomAt(double factor, double px, double py);
    // Moves the map with the mouse by the pixels given.
    void Pan(double dx, double dy);
    // Shows the part of the map inside the rectangle dragged out (ignored when it is a few
    // pixels only).
    void ZoomToPixels(double x1, double y1, double x2, double y2);

    // The shown glass under the pixel (within a few pixels), -1 for none.
    int PointAt(double px, double py) const;
    // Name, source, nd, vd, PgF and glass code of a point.
    std::string PointTip(int point) const;
    // The custom list position of the custom or melt glass under the pixel, 0 for none.
    int CustomPositionAt(double px, double py) const;

    bool PointShown(int point) const;
    int ShownCount() const;
    int highlighted() const { return highlight_; }
    const std::vector<NearGlass>& nearest() const { return nearest_; }
    double ndScale() const { return ndScale_; }
    const MapRect& view() const { return view_; }
    MapScene Scene() const;
    // The whole map (every shown glass with a margin), what Reset shows.
    MapRect FullView() const;

  private:
    double YOf(const GlassPoint& p) const { return optPgF.value ? p.pgf : p.nd; }
    MapProjection Projection() const;
    void Rebuild();
    void UpdateStatus();
    void Changed();

    SettingsStore& settings_;
    GlassMapData data_;
    std::vector<bool> sourceOn_;
    int highlight_ = -1;
    std::vector<NearGlass> nearest_;
    int nearestFrom_ = -1;
    double ndScale_ = kDefaultNdScale;
    MapRect view_;
    int width_ = 800, height_ = 600;
};

}  // namespace ostrel
