#include "core/glassmap/frm_compare.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <limits>

#include "core/external/kelmora_database.h"
#include "core/glassmap/map_scene.h"
#include "core/optics/index_from_polynomial.h"
#include "core/optics/trans_calcs.h"
#include "core/platform/number_text.h"
#include "core/platform/plot_ticks.h"
#include "core/platform/sqlite_database.h"

namespace ostrel {

namespace {

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

std::string Fmt(const char* format, double v) {
    char buf[64];
    std::snprintf(buf, sizeof buf, format, v);
    return buf;
}

std::string CsvField(const std::string& s) {
    if (s.find_first_of(",\"\n") == std::string::npos) return s;
    std::string o = "\"";
    for (char c : s) o += c == '"' ? std::string("\"\"") : std::string(1, c);
    return o + "\"";
}

std::string XmlText(const std::string& s) {
    std::string o;
    for (char c : s) {
        if (c == '&')
            o += "&amp;";
        else if (c == '<')
            o += "&lt;";
        else if (c == '>')
            o += "&gt;";
        else
            o += c;
    }
    return o;
}

std::string ColourText(uint32_t c) {
    char b[8];
    std::snprintf(b, sizeof b, "#%06X", static_cast<unsigned>(c & 0xFFFFFF));
    return b;
}

}  // namespace

CompareAxis CompareValueAxis(const std::vector<std::vector<double>>& ys, const char* format) {
    CompareAxis axis;
    double lo = std::numeric_limits<double>::infinity(), hi = -lo;
    for (const auto& s : ys)
        for (double v : s)
            if (std::isfinite(v)) lo = std::min(lo, v), hi = std::max(hi, v);
    if (!std::isfinite(lo)) lo = 0, hi = 1;
    if (hi - lo < 1e-9) lo -= 0.5e-3, hi += 0.5e-3;
    const double pad = (hi - lo) * 0.05;
    axis.lo = lo - pad;
    axis.hi = hi + pad;
    for (double t : NiceTicks(axis.lo, axis.hi, 5)) axis.ticks.push_back({t, Fmt(format, t)});
    return axis;
}

namespace {

// One plot of the SVG: a frame at (x, y, w, h) over the given x and y ranges.
void SvgPanel(std::string& o, double x, double y, double w, double h, const std::string& title,
              const std::string& xLabel, const std::vector<double>& xs,
              const std::vector<std::vector<double>>& ys, const char* yFormat) {
    const CompareAxis axis = CompareValueAxis(ys, yFormat);
    const double lo = axis.lo, hi = axis.hi;
    const double x0 = xs.empty() ? 0 : xs.front(), x1 = xs.empty() ? 1 : xs.back();
    const auto px = [&](double v) { return x + (v - x0) / (x1 - x0) * w; };
    const auto py = [&](double v) { return y + h - (v - lo) / (hi - lo) * h; };
    o += "<text x=\"" + Fmt("%.1f", x) + "\" y=\"" + Fmt("%.1f", y - 6) +
         "\" font-weight=\"bold\">" + XmlText(title) + "</text>\n";
    o += "<rect x=\"" + Fmt("%.1f", x) + "\" y=\"" + Fmt("%.1f", y) + "\" width=\"" +
         Fmt("%.1f", w) + "\" height=\"" + Fmt("%.1f", h) + "\" fill=\"none\" stroke=\"#000\"/>\n";
    for (double t : NiceTicks(x0, x1, 8)) {
        o += "<line x1=\"" + Fmt("%.1f", px(t)) + "\" y1=\"" + Fmt("%.1f", y) + "\" x2=\"" +
             Fmt("%.1f", px(t)) + "\" y2=\"" + Fmt("%.1f", y + h) + "\" stroke=\"#E0E0E0\"/>\n";
        o += "<text x=\"" + Fmt("%.1f", px(t)) + "\" y=\"" + Fmt("%.1f", y + h + 14) +
             "\" text-anchor=\"middle\">" + Fmt("%.0f", t) + "</text>\n";
    }
    for (const AxisTick& t : axis.ticks) {
        o += "<line x1=\"" + Fmt("%.1f", x) + "\" y1=\"" + Fmt("%.1f", py(t.value)) + "\" x2=\"" +
             Fmt("%.1f", x + w) + "\" y2=\"" + Fmt("%.1f", py(t.value)) +
             "\" stroke=\"#E0E0E0\"/>\n";
        o += "<text x=\"" + Fmt("%.1f", x - 4) + "\" y=\"" + Fmt("%.1f", py(t.value) + 4) +
             "\" text-anchor=\"end\">" + t.text + "</text>\n";
    }
    o += "<text x=\"" + Fmt("%.1f", x + w / 2) + "\" y=\"" + Fmt("%.1f", y + h + 28) +
         "\" text-anchor=\"middle\">" + XmlText(xLabel) + "</text>\n";
    for (size_t i = 0; i < ys.size(); ++i) {
        std::string d;
        bool pen = false;
        for (size_t k = 0; k < xs.size() && k < ys[i].size(); ++k) {
            if (!std::isfinite(ys[i][k])) {
                pen = false;
                continue;
            }
            d += (pen ? "L" : "M") + Fmt("%.1f", px(xs[k])) + " " + Fmt("%.1f", py(ys[i][k]));
            pen = true;
        }
        if (d.empty()) continue;
        o += "<path class=\"curve\" d=\"" + d + "\" fill=\"none\" stroke=\"" +
             ColourText(CompareColour(static_cast<int>(i))) + "\" stroke-width=\"1.5\"/>\n";
    }
}

}  // namespace

std::string CompareLabel(const MaterialRecord& rec) {
    return rec.General.GlassName.Text() + " (" + rec.General.Source.Text() + ")";
}

uint32_t CompareColour(int i) {
    static constexpr uint32_t kColours[] = {0x000000, 0xD00000, 0x1F77B4, 0x2CA02C,
                                            0xFF7F0E, 0x7A00B0, 0x8C564B, 0x17BECF};
    return kColours[static_cast<size_t>(i) % (sizeof kColours / sizeof kColours[0])];
}

std::vector<CompareItem> CompareItems(const std::vector<MaterialRecord>& customList,
                                      const std::string& kelmoraFolder, bool kelmoraFound,
                                      std::string& note) {
    std::vector<CompareItem> items;
    for (const MaterialRecord& r : customList) items.push_back({CompareLabel(r), r, false});
    note.clear();
    if (!kelmoraFound) {
        note = "KelmoraTD was not found: only the custom list can be compared.";
        return items;
    }
    DbError error;
    auto db = OpenSqliteDatabase(GlassDatabasePath(kelmoraFolder), false, error);
    std::vector<DbRow> rows;
    if (!db || !db->FindRows(kTableCurrent, {}, rows, error)) {
        note = "The KelmoraTD database could not be read (" + error.message +
               "): only the custom list can be compared.";
        return items;
    }
    for (const DbRow& row : rows) {
        bool ok = false;
        if (DbNumber(row.Field("s1"), ok) == kCustomRowKind && ok) continue;
        MaterialRecord rec = ClearedMaterialRecord();
        DbError rowError;
        if (!ReadGlassRow(row, rec, rowError)) continue;
        items.push_back({CompareLabel(rec), std::move(rec), true});
    }
    return items;
}

void IndexBand(const MaterialRecord& rec, double& lo, double& hi) {
    lo = rec.General.IndexWvMin;
    hi = rec.General.IndexWvMax;
    if (!(lo > 0) || !(hi > lo)) {
        lo = 365;
        hi = 1014;
    }
}

bool CompareMaterials(const std::vector<const CompareItem*>& items, float width, int samples,
                      CompareCurves& c, std::string& message) {
    c = CompareCurves{};
    c.width = width;
    if (items.size() < 2) {
        message = "Select two or more materials to compare.";
        return false;
    }
    double lo = 0, hi = std::numeric_limits<double>::infinity();
    for (const CompareItem* it : items) {
        double a, b;
        IndexBand(it->rec, a, b);
        lo = std::max(lo, a);
        hi = std::min(hi, b);
        c.labels.push_back(it->label);
    }
    if (!(hi > lo)) {
        message = "The materials have no wavelength band of index data in common.";
        return false;
    }
    c.bandMin = lo;
    c.bandMax = hi;
    samples = std::max(samples, 2);
    for (int k = 0; k < samples; ++k) c.wave.push_back(lo + (hi - lo) * k / (samples - 1));
    for (const CompareItem* it : items) {
        std::vector<double> n;
        for (double w : c.wave) {
            int16_t ok = 0;
            const double v = IndexFromPolynomial(it->rec.General.PolyCoef, static_cast<float>(w),
                                                 it->rec.General.Polytype, ok);
            if (!ok || !std::isfinite(v)) {
                message = "The index of " + it->label + " cannot be computed at " + Fmt("%.0f", w) +
                          " nm.";
                return false;
            }
            n.push_back(v);
        }
        c.index.push_back(std::move(n));
    }
    for (const auto& n : c.index) {
        std::vector<double> d;
        for (size_t k = 0; k < n.size(); ++k) d.push_back(n[k] - c.index[0][k]);
        c.delta.push_back(std::move(d));
    }
    c.transWave.assign(TransTableWave.begin(), TransTableWave.end());
    for (const CompareItem* it : items) {
        std::vector<double> t;
        for (size_t i = 0; i < TransTableWave.size(); ++i) {
            const float alpha = it->rec.TransTable[i];
            t.push_back(alpha == kNoTransData || !(alpha >= 0) || !(width > 0)
                            ? kNaN
                            : InternalFromAbsorb(width, alpha));
        }
        c.internal.push_back(std::move(t));
    }
    message.clear();
    return true;
}

std::string CompareCsv(const CompareCurves& c) {
    std::string o = "Wavelength (nm)";
    for (const auto& l : c.labels) o += "," + CsvField("n " + l);
    for (size_t i = 1; i < c.labels.size(); ++i) o += "," + CsvField("dn " + c.labels[i]);
    o += "\n";
    for (size_t k = 0; k < c.wave.size(); ++k) {
        o += Fmt("%.1f", c.wave[k]);
        for (const auto& n : c.index) o += "," + Fmt("%.6f", n[k]);
        for (size_t i = 1; i < c.delta.size(); ++i) o += "," + Fmt("%.6f", c.delta[i][k]);
        o += "\n";
    }
    o += "\nWavelength (nm)";
    for (const auto& l : c.labels)
        o += "," + CsvField("Internal transmission % at " + Fmt("%g", c.width) + " mm " + l);
    o += "\n";
    for (size_t k = 0; k < c.transWave.size(); ++k) {
        o += Fmt("%g", c.transWave[k]);
        for (const auto& t : c.internal) o += "," + (std::isfinite(t[k]) ? Fmt("%.2f", t[k]) : "");
        o += "\n";
    }
    return o;
}

std::string CompareSvg(const CompareCurves& c, int width, int height) {
    std::string o = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n";
    o += "<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"" + std::to_string(width) +
         "\" height=\"" + std::to_string(height) +
         "\" font-family=\"sans-serif\" font-size=\"11\">\n<rect width=\"100%\" height=\"100%\" "
         "fill=\"#FFFFFF\"/>\n";
    const double left = 70, right = 200, top = 30, gap = 56;
    const double w = width - left - right;
    const double h = (height - top - 3 * gap + 20) / 3.0;
    SvgPanel(o, left, top, w, h, "Index n(λ)", "Wavelength (nm)", c.wave, c.index,
             kCompareValueFormats[0]);
    SvgPanel(o, left, top + h + gap, w, h,
             "Δn(λ) against " + (c.labels.empty() ? std::string() : c.labels[0]), "Wavelength (nm)",
             c.wave, c.delta, kCompareValueFormats[1]);
    SvgPanel(o, left, top + 2 * (h + gap), w, h,
             "Internal transmission (%) at " + Fmt("%g", c.width) + " mm", "Wavelength (nm)",
             c.transWave, c.internal, kCompareValueFormats[2]);
    for (size_t i = 0; i < c.labels.size(); ++i) {
        const double y = top + 10 + 18.0 * static_cast<double>(i);
        o += "<line class=\"legend\" x1=\"" + Fmt("%.1f", left + w + 14) + "\" y1=\"" +
             Fmt("%.1f", y) + "\" x2=\"" + Fmt("%.1f", left + w + 34) + "\" y2=\"" +
             Fmt("%.1f", y) + "\" stroke=\"" + ColourText(CompareColour(static_cast<int>(i))) +
             "\" stroke-width=\"2\"/>\n";
        o += "<text x=\"" + Fmt("%.1f", left + w + 40) + "\" y=\"" + Fmt("%.1f", y + 4) + "\">" +
             XmlText(c.labels[i]) + "</text>\n";
    }
    o += "</svg>\n";
    return o;
}

frmCompare::frmCompare(std::vector<CompareItem> items) : items_(std::move(items)) {
    for (const CompareItem& it : items_) lstMaterials.AddItem(it.label);
    txtWidth.ShowNumber("10");
    lblStatus.caption = "Select two or more materials to compare.";
}

void frmCompare::SelectMaterials(const std::vector<int>& positions) {
    for (int i = 0; i < lstMaterials.ListCount(); ++i) lstMaterials.SetSelected(i, false);
    order_.clear();
    for (int p : positions) {
        if (p < 0 || p >= lstMaterials.ListCount()) continue;
        if (std::find(order_.begin(), order_.end(), p) != order_.end()) continue;
        lstMaterials.SetSelected(p, true);
        order_.push_back(p);
    }
    Recompute();
}

void frmCompare::SelectLabelled(const std::vector<std::string>& labels, const std::string& note) {
    std::vector<int> chosen;
    for (const std::string& label : labels) {
        for (size_t i = 0; i < items_.size(); ++i) {
            if (items_[i].label == label) {
                chosen.push_back(static_cast<int>(i));
                break;
            }
        }
    }
    SelectMaterials(chosen);
    if (!note.empty() && chosen.size() < 2) lblStatus.caption = note;
}

void frmCompare::lstMaterialsClick() {
    // The order of choosing is kept: materials still selected stay where they were and new
    // ones follow, so the reference of Δn does not move while others are added.
    std::vector<int> kept;
    for (int p : order_)
        if (lstMaterials.Selected(p)) kept.push_back(p);
    for (int p : lstMaterials.SelectedIndexes())
        if (std::find(kept.begin(), kept.end(), p) == kept.end()) kept.push_back(p);
    order_ = kept;
    Recompute();
}

void frmCompare::txtWidthChange() {
    Recompute();
}

void frmCompare::Recompute() {
    std::vector<const CompareItem*> chosen;
    for (int p : order_) chosen.push_back(&items_[static_cast<size_t>(p)]);
    const std::string t = txtWidth.text;
    double width = IsValidNumber(t) ? Val(t) : 0;
    if (!std::isfinite(width) || width <= 0) width = 10;
    std::string message;
    ok_ = CompareMaterials(chosen, static_cast<float>(width), 200, curves_, message);
    lblStatus.caption = ok_ ? std::to_string(chosen.size()) + " materials compared over " +
                                  Fmt("%.0f", curves_.bandMin) + " - " +
                                  Fmt("%.0f", curves_.bandMax) + " nm"
                            : message;
    picPlots.NotifyChanged();
}

}  // namespace ostrel
