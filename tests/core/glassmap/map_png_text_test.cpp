// The map's PNG, written without a window system, carries its texts: each label area holds
// text pixels with its text and none without.
#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <tuple>
#include <vector>

#include "core/glassmap/bitmap_font.h"
#include "core/glassmap/map_scene.h"

namespace ostrel {
namespace {

uint32_t Big32(const std::string& s, size_t at) {
    uint32_t v = 0;
    for (size_t i = 0; i < 4; ++i) v = (v << 8) | static_cast<uint8_t>(s[at + i]);
    return v;
}

// The RGB rows of a PNG whose image data are stored deflate blocks, as the map writer
// writes them; empty when the file is not of that form.
std::vector<std::string> PngRows(const std::string& png, int& width) {
    std::string zlib;
    int height = 0;
    for (size_t at = 8; at + 12 <= png.size();) {
        const uint32_t len = Big32(png, at);
        const std::string type = png.substr(at + 4, 4);
        if (type == "IHDR") {
            width = static_cast<int>(Big32(png, at + 8));
            height = static_cast<int>(Big32(png, at + 12));
        }
        if (type == "IDAT") zlib += png.substr(at + 8, len);
        at += 12 + len;
    }
    std::string raw;
    for (size_t at = 2; at + 5 <= zlib.size();) {
        const bool last = zlib[at] & 1;
        const size_t n = static_cast<uint8_t>(zlib[at + 1]) | static_cast<uint8_t>(zlib[at + 2])
                                                                  << 8;
        raw += zlib.substr(at + 5, n);
        at += 5 + n;
        if (last) break;
    }
    std::vector<std::string> rows;
    const size_t stride = static_cast<size_t>(width) * 3 + 1;
    if (raw.size() != stride * static_cast<size_t>(height)) return rows;
    for (int y = 0; y < height; ++y) rows.push_back(raw.substr(y * stride + 1, stride - 1));
    return rows;
}

int BlackPixels(const std::vector<std::string>& rows, int x1, int y1, int x2, int y2) {
    int n = 0;
    for (int y = y1; y < y2; ++y) {
        for (int x = x1; x < x2; ++x) {
            const char* p = &rows[static_cast<size_t>(y)][static_cast<size_t>(x) * 3];
            n += p[0] == 0 && p[1] == 0 && p[2] == 0;
        }
    }
    return n;
}

MapScene Scene(bool texts) {
    MapScene s;
    std::tie(s.width, s.height, s.left, s.top) =
        std::tuple(800, 600, kMapMarginLeft, kMapMarginTop);
    std::tie(s.right, s.bottom) =
        std::tuple(s.width - kMapMarginRight, s.height - kMapMarginBottom);
    const std::string none;
    s.title = texts ? "Abbe diagram" : none;
    s.xLabel = texts ? "vd" : none;
    s.yLabel = texts ? "nd" : none;
    s.xTicks = {{200, texts ? "60" : none}, {400, texts ? "40" : none}};
    s.yTicks = {{100, texts ? "1.80" : none}, {400, texts ? "1.50" : none}};
    s.legend = {{texts ? "Custom" : none, kCustomColour, GlassKind::Custom}};
    return s;
}

TEST(MapPng, EachLabelAreaHoldsItsText) {
    int width = 0;
    const auto with = PngRows(MapScenePng(Scene(true)), width);
    const auto without = PngRows(MapScenePng(Scene(false)), width);
    ASSERT_EQ(with.size(), 600u);
    ASSERT_EQ(without.size(), 600u);
    const int left = static_cast<int>(kMapMarginLeft), top = static_cast<int>(kMapMarginTop);
    const int right = 800 - static_cast<int>(kMapMarginRight);
    const int bottom = 600 - static_cast<int>(kMapMarginBottom);
    const std::tuple<const char*, int, int, int, int> areas[] = {
        {"title", left, 0, right, top - 2},
        {"x tick values", 180, bottom + 2, 420, bottom + 16},
        {"x axis title", left, bottom + 16, right, 600},
        {"y tick values", 26, 90, left - 2, 410},
        {"y axis title", 0, top, 24, bottom},
        {"legend", right + 20, top, 800, top + 16}};
    for (const auto& [what, x1, y1, x2, y2] : areas) {
        EXPECT_GT(BlackPixels(with, x1, y1, x2, y2), 10) << what;
        EXPECT_EQ(BlackPixels(without, x1, y1, x2, y2), 0) << what;
    }
}

TEST(BitmapFont, CharactersOutsideAsciiDrawAsOneQuestionMarkEach) {
    EXPECT_EQ(TextWidth("\xCE\xBD"
                        "d",
                        2),
              TextWidth("?d", 2));  // a Greek nu
    EXPECT_EQ(Glyph('\x7F'), Glyph('?'));
    EXPECT_NE(Glyph('8'), Glyph('B'));
    int drawn = 0;
    DrawText("\xCE\xBD", 0, 0, 1, [&](int, int) { ++drawn; });
    int question = 0;
    DrawText("?", 0, 0, 1, [&](int, int) { ++question; });
    EXPECT_EQ(drawn, question);
}

}  // namespace
}  // namespace ostrel
