#include "core/glassmap/map_scene.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>

#include "core/glassmap/bitmap_font.h"

namespace ostrel {

namespace {

std::string Hex(uint32_t c) {
    char buf[8];
    std::snprintf(buf, sizeof buf, "#%06X", static_cast<unsigned>(c & 0xFFFFFF));
    return buf;
}

std::string Num(double v) {
    char buf[32];
    std::snprintf(buf, sizeof buf, "%.1f", v);
    return buf;
}

std::string Escaped(const std::string& s) {
    std::string out;
    for (char c : s) {
        switch (c) {
            case '&':
                out += "&amp;";
                break;
            case '<':
                out += "&lt;";
                break;
            case '>':
                out += "&gt;";
                break;
            case '"':
                out += "&quot;";
                break;
            default:
                out += c;
        }
    }
    return out;
}

const char* ClassOf(GlassKind kind) {
    switch (kind) {
        case GlassKind::Custom:
            return "custom";
        case GlassKind::Melt:
            return "melt";
        default:
            return "catalogue";
    }
}

std::string MarkerSvg(const MapMarker& m) {
    const std::string x = Num(m.x), y = Num(m.y);
    std::string stroke = m.highlighted
                             ? " stroke=\"" + Hex(kHighlightColour) + "\" stroke-width=\"3\""
                         : m.nearest ? " stroke=\"#000000\" stroke-width=\"1.5\""
                                     : "";
    switch (m.kind) {
        case GlassKind::Custom:
            return "<rect class=\"custom\" x=\"" + Num(m.x - 4) + "\" y=\"" + Num(m.y - 4) +
                   "\" width=\"8\" height=\"8\" fill=\"" + Hex(m.colour) + "\"" + stroke + "/>\n";
        case GlassKind::Melt:
            return "<path class=\"melt\" d=\"M" + Num(m.x) + " " + Num(m.y - 5) + "L" +
                   Num(m.x + 5) + " " + y + "L" + x + " " + Num(m.y + 5) + "L" + Num(m.x - 5) +
                   " " + y + "Z\" fill=\"" + Hex(m.colour) + "\"" + stroke + "/>\n";
        default:
            return "<circle class=\"catalogue\" cx=\"" + x + "\" cy=\"" + y + "\" r=\"3\" fill=\"" +
                   Hex(m.colour) + "\"" + stroke + "/>\n";
    }
}

// --- a small raster for the PNG file ---

struct Canvas {
    int w, h;
    std::vector<uint8_t> rgb;
    Canvas(int width, int height)
        : w(width), h(height), rgb(static_cast<size_t>(width) * height * 3, 255) {}
    void Set(int x, int y, uint32_t c) {
        if (x < 0 || y < 0 || x >= w || y >= h) return;
        uint8_t* p = &rgb[(static_cast<size_t>(y) * w + x) * 3];
        p[0] = static_cast<uint8_t>(c >> 16);
        p[1] = static_cast<uint8_t>(c >> 8);
        p[2] = static_cast<uint8_t>(c);
    }
    void Line(double x1, double y1, double x2, double y2, uint32_t c) {
        const int n = static_cast<int>(std::max(std::abs(x2 - x1), std::abs(y2 - y1))) + 1;
        if (n > 20000) return;
        for (int i = 0; i <= n; ++i) {
            const double t = static_cast<double>(i) / n;
            Set(static_cast<int>(std::lround(x1 + t * (x2 - x1))),
                static_cast<int>(std::lround(y1 + t * (y2 - y1))), c);
        }
    }
    // Text at (x, y), placed by `alignX` (0 left, 1 centre, 2 right) and `alignY` (0 top,
    // 1 centre).
    void Text(const std::string& text, double x, double y, int scale, int alignX, int alignY,
              uint32_t c = 0x000000) {
        const int width = TextWidth(text, scale);
        const int left = static_cast<int>(std::lround(x)) - width * alignX / 2;
        const int top = static_cast<int>(std::lround(y)) - TextHeight(scale) * alignY / 2;
        DrawText(text, left, top, scale, [&](int px, int py) { Set(px, py, c); });
    }
    // Text reading upwards, centred on (x, y) along its line, its tops at x.
    void TurnedText(const std::string& text, double x, double y, int scale, uint32_t c = 0) {
        const int width = TextWidth(text, scale);
        DrawText(
            text, static_cast<int>(std::lround(x)), static_cast<int>(std::lround(y)) + width / 2,
            scale, [&](int px, int py) { Set(px, py, c); }, true);
    }
    void Marker(const MapMarker& m) {
        const int cx = static_cast<int>(std::lround(m.x)), cy = static_cast<int>(std::lround(m.y));
        const int r = m.kind == GlassKind::Catalogue ? 3 : 5;
        const int ring = m.highlighted || m.nearest ? 2 : 0;
        for (int dy = -r - ring; dy <= r + ring; ++dy) {
            for (int dx = -r - ring; dx <= r + ring; ++dx) {
                const int d = m.kind == GlassKind::Catalogue ? dx * dx + dy * dy
                              : m.kind == GlassKind::Melt
                                  ? (std::abs(dx) + std::abs(dy)) * (std::abs(dx) + std::abs(dy))
                                  : std::max(dx * dx, dy * dy);
                if (d <= r * r) {
                    Set(cx + dx, cy + dy, m.colour);
                } else if (d <= (r + ring) * (r + ring)) {
                    Set(cx + dx, cy + dy, m.highlighted ? kHighlightColour : 0x000000);
                }
            }
        }
    }
};

uint32_t Crc32(const uint8_t* data, size_t n, uint32_t crc = 0) {
    static const auto table = [] {
        std::array<uint32_t, 256> t{};
        for (uint32_t i = 0; i < 256; ++i) {
            uint32_t c = i;
            for (int k = 0; k < 8; ++k) c = (c & 1) ? 0xEDB88320u ^ (c >> 1) : c >> 1;
            t[i] = c;
        }
        return t;
    }();
    crc = ~crc;
    for (size_t i = 0; i < n; ++i) crc = table[(crc ^ data[i]) & 0xFF] ^ (crc >> 8);
    return ~crc;
}

void Put32(std::string& out, uint32_t v) {
    for (int s = 24; s >= 0; s -= 8) out += static_cast<char>((v >> s) & 0xFF);
}

void Chunk(std::string& out, const char* type, const std::string& body) {
    Put32(out, static_cast<uint32_t>(body.size()));
    std::string typed = std::string(type, 4) + body;
    out += typed;
    Put32(out, Crc32(reinterpret_cast<const uint8_t*>(typed.data()), typed.size()));
}

}  // namespace

uint32_t SourceColour(int sourceIndex) {
    static constexpr uint32_t kPalette[] = {0x1F77B4, 0x2CA02C, 0xFF7F0E, 0x17BECF,
                                            0x8C564B, 0xE377C2, 0x7F7F7F, 0xBCBD22,
                                            0x393B79, 0x637939, 0x8C6D31, 0x843C39};
    constexpr int n = sizeof kPalette / sizeof kPalette[0];
    return kPalette[((sourceIndex % n) + n) % n];
}

std::string MapSceneSvg(const MapScene& s) {
    std::string o;
    o += "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n";
    o += "<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"" + std::to_string(s.width) +
         "\" height=\"" + std::to_string(s.height) + "\" viewBox=\"0 0 " + std::to_string(s.width) +
         " " + std::to_string(s.height) + "\" font-family=\"sans-serif\" font-size=\"11\">\n";
    o += "<rect width=\"100%\" height=\"100%\" fill=\"#FFFFFF\"/>\n";
    o += "<text x=\"" + Num(s.left) + "\" y=\"18\" font-size=\"13\" font-weight=\"bold\">" +
         Escaped(s.title) + "</text>\n";
    o += "<rect x=\"" + Num(s.left) + "\" y=\"" + Num(s.top) + "\" width=\"" +
         Num(s.right - s.left) + "\" height=\"" + Num(s.bottom - s.top) +
         "\" fill=\"none\" stroke=\"#000000\"/>\n";
    for (const MapTick& t : s.xTicks) {
        o += "<line x1=\"" + Num(t.pos) + "\" y1=\"" + Num(s.top) + "\" x2=\"" + Num(t.pos) +
             "\" y2=\"" + Num(s.bottom) + "\" stroke=\"#E0E0E0\"/>\n";
        o += "<text x=\"" + Num(t.pos) + "\" y=\"" + Num(s.bottom + 15) +
             "\" text-anchor=\"middle\">" + Escaped(t.text) + "</text>\n";
    }
    for (const MapTick& t : s.yTicks) {
        o += "<line x1=\"" + Num(s.left) + "\" y1=\"" + Num(t.pos) + "\" x2=\"" + Num(s.right) +
             "\" y2=\"" + Num(t.pos) + "\" stroke=\"#E0E0E0\"/>\n";
        o += "<text x=\"" + Num(s.left - 5) + "\" y=\"" + Num(t.pos + 4) +
             "\" text-anchor=\"end\">" + Escaped(t.text) + "</text>\n";
    }
    o += "<text x=\"" + Num((s.left + s.right) / 2) + "\" y=\"" + Num(s.bottom + 34) +
         "\" text-anchor=\"middle\">" + Escaped(s.xLabel) + "</text>\n";
    o += "<text transform=\"translate(16 " + Num((s.top + s.bottom) / 2) +
         ") rotate(-90)\" text-anchor=\"middle\">" + Escaped(s.yLabel) + "</text>\n";
    o += "<svg x=\"" + Num(s.left) + "\" y=\"" + Num(s.top) + "\" width=\"" +
         Num(s.right - s.left) + "\" height=\"" + Num(s.bottom - s.top) + "\" viewBox=\"" +
         Num(s.left) + " " + Num(s.top) + " " + Num(s.right - s.left) + " " +
         Num(s.bottom - s.top) + "\">\n";
    for (const MapLine& l : s.lines) {
        const char* style =
            l.kind == MapLineKind::Normal        ? "stroke=\"#000000\" stroke-dasharray=\"6 4\""
            : l.kind == MapLineKind::NearestLink ? "stroke=\"#000000\" stroke-width=\"0.6\""
                                                 : "stroke=\"#7A00B0\" stroke-width=\"1.2\"";
        o += "<line x1=\"" + Num(l.x1) + "\" y1=\"" + Num(l.y1) + "\" x2=\"" + Num(l.x2) +
             "\" y2=\"" + Num(l.y2) + "\" " + style + "/>\n";
    }
    for (const MapMarker& m : s.markers) o += MarkerSvg(m);
    o += "</svg>\n";
    double y = s.top + 8;
    const double x = s.right + 14;
    for (const MapLegendEntry& e : s.legend) {
        MapMarker m;
        m.x = x;
        m.y = y;
        m.kind = e.kind;
        m.colour = e.colour;
        std::string shape = MarkerSvg(m);
        shape.replace(shape.find("class=\"") + 7, std::string(ClassOf(e.kind)).size(),
                      std::string("legend-") + ClassOf(e.kind));
        o += shape;
        o += "<text x=\"" + Num(x + 10) + "\" y=\"" + Num(y + 4) + "\">" + Escaped(e.text) +
             "</text>\n";
        y += 18;
    }
    o += "</svg>\n";
    return o;
}

std::string MapScenePng(const MapScene& s) {
    const int w = std::max(1, s.width), h = std::max(1, s.height);
    Canvas c(w, h);
    for (const MapTick& t : s.xTicks) c.Line(t.pos, s.top, t.pos, s.bottom, 0xE0E0E0);
    for (const MapTick& t : s.yTicks) c.Line(s.left, t.pos, s.right, t.pos, 0xE0E0E0);
    Canvas plot = c;
    for (const MapLine& l : s.lines) {
        plot.Line(l.x1, l.y1, l.x2, l.y2, l.kind == MapLineKind::MeltLink ? kMeltColour : 0x000000);
    }
    for (const MapMarker& m : s.markers) plot.Marker(m);
    // Only the plot area takes the drawing; the frame goes round it.
    for (int y = 0; y < h; ++y) {
        for (int x = 0; x < w; ++x) {
            if (x >= s.left && x <= s.right && y >= s.top && y <= s.bottom) {
                const size_t i = (static_cast<size_t>(y) * w + x) * 3;
                std::copy_n(&plot.rgb[i], 3, &c.rgb[i]);
            }
        }
    }
    c.Line(s.left, s.top, s.right, s.top, 0);
    c.Line(s.left, s.bottom, s.right, s.bottom, 0);
    c.Line(s.left, s.top, s.left, s.bottom, 0);
    c.Line(s.right, s.top, s.right, s.bottom, 0);
    double ly = s.top + 8;
    for (const MapLegendEntry& e : s.legend) {
        MapMarker m;
        m.x = s.right + 14;
        m.y = ly;
        m.kind = e.kind;
        m.colour = e.colour;
        c.Marker(m);
        c.Text(e.text, m.x + 10, ly, 1, 0, 1);
        ly += 18;
    }
    c.Text(s.title, s.left, 8, 2, 0, 0);
    for (const MapTick& t : s.xTicks) c.Text(t.text, t.pos, s.bottom + 6, 1, 1, 0);
    for (const MapTick& t : s.yTicks) c.Text(t.text, s.left - 5, t.pos, 1, 2, 1);
    c.Text(s.xLabel, (s.left + s.right) / 2, s.bottom + 20, 2, 1, 0);
    c.TurnedText(s.yLabel, 8, (s.top + s.bottom) / 2, 2);

    // Scan lines with filter byte 0, in stored (uncompressed) deflate blocks.
    std::string raw;
    raw.reserve(static_cast<size_t>(h) * (w * 3 + 1));
    for (int y = 0; y < h; ++y) {
        raw += '\0';
        raw.append(reinterpret_cast<const char*>(&c.rgb[static_cast<size_t>(y) * w * 3]),
                   static_cast<size_t>(w) * 3);
    }
    std::string z = "\x78\x01";
    uint32_t a = 1, b = 0;
    for (unsigned char ch : raw) {
        a = (a + ch) % 65521;
        b = (b + a) % 65521;
    }
    for (size_t pos = 0; pos < raw.size() || pos == 0; pos += 65535) {
        const size_t n = std::min<size_t>(65535, raw.size() - pos);
        const bool last = pos + n >= raw.size();
        z += static_cast<char>(last ? 1 : 0);
        z += static_cast<char>(n & 0xFF);
        z += static_cast<char>(n >> 8);
        z += static_cast<char>(~n & 0xFF);
        z += static_cast<char>((~n >> 8) & 0xFF);
        z.append(raw, pos, n);
        if (last) break;
    }
    Put32(z, (b << 16) | a);

    std::string png = "\x89PNG\r\n\x1a\n";
    std::string ihdr;
    Put32(ihdr, static_cast<uint32_t>(w));
    Put32(ihdr, static_cast<uint32_t>(h));
    ihdr += std::string("\x08\x02\x00\x00\x00", 5);
    Chunk(png, "IHDR", ihdr);
    Chunk(png, "IDAT", z);
    Chunk(png, "IEND", "");
    return png;
}

}  // namespace ostrel
