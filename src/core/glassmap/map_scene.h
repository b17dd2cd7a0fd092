#pragma once
// What a glass map looks like on a surface of a given size, as plain shapes in pixels: the
// window paints it, the image files are written from it, so that every picture of the map
// is the same picture.
#include <cstdint>
#include <string>
#include <vector>

#include "core/glassmap/glass_map_data.h"

namespace ostrel {

// A part of the map in its own units: x is vd, y is nd or PgF.
struct MapRect {
    double xMin = 0, xMax = 0, yMin = 0, yMax = 0;
    bool operator==(const MapRect&) const = default;
};

struct MapMarker {
    double x = 0, y = 0;
    int point = -1;
    GlassKind kind = GlassKind::Catalogue;
    uint32_t colour = 0;  // 0xRRGGBB
    bool highlighted = false;
    bool nearest = false;
};

enum class MapLineKind { MeltLink, Normal, NearestLink };

struct MapLine {
    double x1 = 0, y1 = 0, x2 = 0, y2 = 0;
    MapLineKind kind = MapLineKind::MeltLink;
};

struct MapTick {
    double pos = 0;  // pixels along its axis
    std::string text;
};

struct MapLegendEntry {
    std::string text;
    uint32_t colour = 0;
    GlassKind kind = GlassKind::Catalogue;
};

struct MapScene {
    int width = 0, height = 0;
    // The plot area in pixels.
    double left = 0, top = 0, right = 0, bottom = 0;
    std::string title, xLabel, yLabel;
    std::vector<MapTick> xTicks, yTicks;
    std::vector<MapLine> lines;
    std::vector<MapMarker> markers;
    std::vector<MapLegendEntry> legend;
};

// Pixel margins round the plot area.
inline constexpr double kMapMarginLeft = 64, kMapMarginRight = 150, kMapMarginTop = 30,
                        kMapMarginBottom = 44;
// Colours of custom and melt glasses, of the highlight, and of the sources in turn.
inline constexpr uint32_t kCustomColour = 0xD00000, kMeltColour = 0x7A00B0,
                          kHighlightColour = 0xFF9900;
uint32_t SourceColour(int sourceIndex);

// Pixel of a map position in a plot area, vd decreasing to the right.
struct MapProjection {
    MapRect view;
    double left = 0, top = 0, right = 0, bottom = 0;
    double PixelX(double vd) const {
        return left + (view.xMax - vd) / (view.xMax - view.xMin) * (right - left);
    }
    double PixelY(double y) const {
        return bottom - (y - view.yMin) / (view.yMax - view.yMin) * (bottom - top);
    }
    double ValueX(double px) const {
        return view.xMax - (px - left) / (right - left) * (view.xMax - view.xMin);
    }
    double ValueY(double py) const {
        return view.yMin + (bottom - py) / (bottom - top) * (view.yMax - view.yMin);
    }
};

// The image as SVG text: one <circle> per catalogue glass, one <rect> per custom glass, one
// <path> diamond per melt glass, each with class "catalogue", "custom" or "melt".
std::string MapSceneSvg(const MapScene& scene);
// The image as PNG bytes, its texts (title, axis titles, tick values, legend) in the
// program's built-in font.
std::string MapScenePng(const MapScene& scene);

}  // namespace ostrel
