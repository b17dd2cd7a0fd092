#pragma once
// A small built-in font for the pictures written without a window system: glyphs of 5 by 7
// pixels for printable ASCII, drawn at a whole-number scale into any raster by a callback.
#include <array>
#include <cstdint>
#include <functional>
#include <string_view>

namespace ostrel {

inline constexpr int kGlyphWidth = 5, kGlyphHeight = 7;
// From one character's left edge to the next's, in pixels at scale 1.
inline constexpr int kGlyphAdvance = 6;

// The rows of a glyph, top first; bit 4 is the leftmost column. A character outside
// printable ASCII (a byte of a UTF-8 sequence included) draws as '?'.
const std::array<uint8_t, kGlyphHeight>& Glyph(char c);

// The characters drawn for UTF-8 text: one per character, '?' for those outside ASCII.
std::string_view::size_type GlyphCount(std::string_view utf8);
// Width and height in pixels of the text drawn at `scale`.
int TextWidth(std::string_view utf8, int scale);
inline int TextHeight(int scale) {
    return kGlyphHeight * scale;
}

// Draws the text with its top left corner at (x, y), calling plot(x, y) for each pixel
// set. Turned, the text reads upwards from (x, y), its tops to the left.
void DrawText(std::string_view utf8, int x, int y, int scale,
              const std::function<void(int, int)>& plot, bool turned = false);

}  // namespace ostrel
