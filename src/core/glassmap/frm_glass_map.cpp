#include "core/glassmap/frm_glass_map.h"

#include <algorithm>
#include <cmath>
#include <cstdio>

#include "core/external/kelmora_database.h"
#include "core/optics/glass_code.h"
#include "core/platform/number_text.h"
#include "core/platform/plot_ticks.h"
#include "core/platform/sqlite_database.h"
#include "core/platform/text.h"

namespace ostrel {

namespace {

std::string Fmt(const char* format, double v) {
    char buf[64];
    std::snprintf(buf, sizeof buf, format, v);
    return buf;
}

// Pixels within which a click or hover takes a glass.
constexpr double kHitPixels = 6.0;

}  // namespace

frmGlassMap::frmGlassMap(SettingsStore& settings) : settings_(settings) {
    const std::string view = settings_.GetSetting(kGlassMapSection, "View", "Abbe");
    optAbbe.value = view != "PgF";
    optPgF.value = view == "PgF";
    char* end = nullptr;
    const std::string scale =
        settings_.GetSetting(kGlassMapSection, "NdScale", Fmt("%g", kDefaultNdScale));
    const double s = std::strtod(scale.c_str(), &end);
    if (end != scale.c_str() && std::isfinite(s) && s > 0) ndScale_ = s;
    txtNdScale.ShowNumber(Fmt("%g", ndScale_));
    txtCount.text =
        settings_.GetSetting(kGlassMapSection, "Count", std::to_string(kDefaultNearestCount));
    txtCount.countsAs = std::to_string(kDefaultNearestCount);
    txtSearch.toolTip = "Type a glass name to find it on the map";
    txtNdScale.toolTip =
        "Weight of nd in the distance: a difference of 1/scale in nd counts as 1 in vd";
    view_ = FullView();
}

void frmGlassMap::Load(const std::vector<MaterialRecord>& customList,
                       const std::string& kelmoraFolder, bool kelmoraFound) {
    GlassMapData data;
    AddCustomPoints(customList, data);
    if (!kelmoraFound) {
        data.catalogueNote = "KelmoraTD was not found: the map shows the custom list alone.";
    } else {
        DbError error;
        auto db = OpenSqliteDatabase(GlassDatabasePath(kelmoraFolder), false, error);
        if (!db || !AddCataloguePoints(*db, data, error)) {
            data.catalogueNote = "The KelmoraTD database could not be read (" + error.message +
                                 "): the map shows the custom list alone.";
        }
    }
    LinkMeltParents(data);
    SetData(std::move(data));
}

void frmGlassMap::SetData(GlassMapData data) {
    data_ = std::move(data);
    sourceOn_.assign(data_.sources.size(), true);
    chkSource.clear();
    for (const std::string& s : data_.sources) {
        auto box = std::make_unique<CheckBox>(s.empty() ? "(no source)" : s);
        box->value = true;
        chkSource.push_back(std::move(box));
    }
    cmbCustom.Clear();
    for (size_t i = 0; i < data_.points.size(); ++i) {
        const GlassPoint& p = data_.points[i];
        if (p.kind != GlassKind::Catalogue) {
            cmbCustom.AddItem(p.name + " (" + p.source + ")", static_cast<int64_t>(i));
        }
    }
    if (cmbCustom.ListCount() > 0) cmbCustom.SetListIndex(0);
    comNearest.enabled = cmbCustom.ListCount() > 0 && data_.catalogueRead;
    highlight_ = -1;
    nearest_.clear();
    nearestFrom_ = -1;
    lstNearest.Clear();
    view_ = FullView();
    Changed();
}

bool frmGlassMap::PointShown(int point) const {
    if (point < 0 || static_cast<size_t>(point) >= data_.points.size()) return false;
    const GlassPoint& p = data_.points[point];
    if (p.kind == GlassKind::Catalogue && p.sourceIndex >= 0 &&
        static_cast<size_t>(p.sourceIndex) < sourceOn_.size() && !sourceOn_[p.sourceIndex])
        return false;
    return !optPgF.value || p.pgf != 0.0;
}

int frmGlassMap::ShownCount() const {
    int n = 0;
    for (size_t i = 0; i < data_.points.size(); ++i) n += PointShown(static_cast<int>(i));
    return n;
}

MapRect frmGlassMap::FullView() const {
    MapRect r;
    bool any = false;
    for (size_t i = 0; i < data_.points.size(); ++i) {
        if (!PointShown(static_cast<int>(i))) continue;
        const GlassPoint& p = data_.points[i];
        const double y = YOf(p);
        if (!any) {
            r = {p.vd, p.vd, y, y};
            any = true;
        }
        r.xMin = std::min(r.xMin, p.vd);
        r.xMax = std::max(r.xMax, p.vd);
        r.yMin = std::min(r.yMin, y);
        r.yMax = std::max(r.yMax, y);
    }
    // An empty map shows the usual range of optical glasses.
    if (!any) return optPgF.value ? MapRect{15, 95, 0.50, 0.65} : MapRect{15, 95, 1.40, 2.00};
    const double dx = std::max(r.xMax - r.xMin, 10.0) * 0.06;
    const double dy = std::max(r.yMax - r.yMin, optPgF.value ? 0.02 : 0.1) * 0.06;
    return {r.xMin - dx, r.xMax + dx, r.yMin - dy, r.yMax + dy};
}

MapProjection frmGlassMap::Projection() const {
    MapProjection p;
    p.view = view_;
    p.left = kMapMarginLeft;
    p.top = kMapMarginTop;
    p.right = std::max(p.left + 10, width_ - kMapMarginRight);
    p.bottom = std::max(p.top + 10, height_ - kMapMarginBottom);
    return p;
}

void frmGlassMap::Changed() {
    UpdateStatus();
    picMap.NotifyChanged();
}

void frmGlassMap::UpdateStatus() {
    int catalogue = 0, custom = 0, noPgF = 0;
    for (size_t i = 0; i < data_.points.size(); ++i) {
        const GlassPoint& p = data_.points[i];
        if (optPgF.value && p.pgf == 0.0) ++noPgF;
        if (!PointShown(static_cast<int>(i))) continue;
        (p.kind == GlassKind::Catalogue ? catalogue : custom)++;
    }
    std::string s = std::to_string(catalogue) + " catalogue and " + std::to_string(custom) +
                    " custom glasses shown";
    const int left = data_.leftOutCatalogue + data_.leftOutCustom;
    if (left > 0) {
        s += "; " + std::to_string(left) + " left out without a valid nd or vd (" +
             std::to_string(data_.leftOutCatalogue) + " catalogue, " +
             std::to_string(data_.leftOutCustom) + " custom)";
    }
    if (noPgF > 0) s += "; " + std::to_string(noPgF) + " without PgF";
    if (!data_.catalogueNote.empty()) s += ". " + data_.catalogueNote;
    lblStatus.caption = s;
}

void frmGlassMap::optViewClick(bool pgf) {
    SetView(pgf);
    settings_.SaveSetting(kGlassMapSection, "View", pgf ? "PgF" : "Abbe");
}

void frmGlassMap::SetView(bool pgf) {
    optPgF.value = pgf;
    optAbbe.value = !pgf;
    view_ = FullView();
    Changed();
}

void frmGlassMap::chkSourceClick(int source) {
    if (source < 0 || static_cast<size_t>(source) >= chkSource.size()) return;
    sourceOn_[source] = chkSource[source]->value;
    if (nearestFrom_ >= 0) comNearestClick();
    Changed();
}

void frmGlassMap::txtSearchChange() {
    const std::string want = UpperAscii(txtSearch.text.get());
    highlight_ = -1;
    if (!want.empty()) {
        int starts = -1, contains = -1;
        for (size_t i = 0; i < data_.points.size() && highlight_ < 0; ++i) {
            const std::string name = UpperAscii(data_.points[i].name);
            if (name == want) {
                highlight_ = static_cast<int>(i);
            } else if (starts < 0 && name.rfind(want, 0) == 0) {
                starts = static_cast<int>(i);
            } else if (contains < 0 && name.find(want) != std::string::npos) {
                contains = static_cast<int>(i);
            }
        }
        if (highlight_ < 0) highlight_ = starts >= 0 ? starts : contains;
    }
    if (highlight_ >= 0) {
        const GlassPoint& p = data_.points[highlight_];
        lblSearch.caption = p.name + " (" + p.source + ")" +
                            (PointShown(highlight_) ? "" : ": its source is switched off");
        // A glass found outside the view is brought to its middle.
        const double y = YOf(p);
        if (PointShown(highlight_) &&
            (p.vd < view_.xMin || p.vd > view_.xMax || y < view_.yMin || y > view_.yMax)) {
            const double hx = (view_.xMax - view_.xMin) / 2, hy = (view_.yMax - view_.yMin) / 2;
            view_ = {p.vd - hx, p.vd + hx, y - hy, y + hy};
        }
    } else {
        lblSearch.caption = want.empty() ? "" : "Not found";
    }
    Changed();
}

void frmGlassMap::txtNdScaleChange() {
    const std::string t = txtNdScale.text;
    if (!IsValidNumber(t)) return;  // kept as typed, the last scale stands
    const double s = Val(t);
    if (!std::isfinite(s) || s <= 0) return;
    ndScale_ = s;
    txtNdScale.countsAs = Fmt("%g", s);
    settings_.SaveSetting(kGlassMapSection, "NdScale", Fmt("%g", s));
    if (nearestFrom_ >= 0) comNearestClick();
}

void frmGlassMap::comNearestClick() {
    lstNearest.Clear();
    nearest_.clear();
    nearestFrom_ = -1;
    const int item = cmbCustom.listIndex();
    if (item < 0) {
        Changed();
        return;
    }
    const int from = static_cast<int>(cmbCustom.ItemData(item));
    const std::string typed = txtCount.text;
    int count = IsValidNumber(typed) ? static_cast<int>(std::min(Val(typed), 1000.0)) : 0;
    if (count < 1 || count > 100) count = kDefaultNearestCount;
    txtCount.text = std::to_string(count);
    settings_.SaveSetting(kGlassMapSection, "Count", std::to_string(count));
    const GlassPoint& p = data_.points[from];
    nearest_ = NearestGlasses(data_, p.nd, p.vd, count, ndScale_, &sourceOn_);
    nearestFrom_ = from;
    for (const NearGlass& n : nearest_) {
        const GlassPoint& q = data_.points[n.point];
        lstNearest.AddItem(q.name + " (" + q.source + ")  " + Fmt("%.3f", n.distance), n.point);
    }
    Changed();
}

void frmGlassMap::comResetClick() {
    view_ = FullView();
    Changed();
}

void frmGlassMap::SetPlotSize(int width, int height) {
    width_ = std::max(width, 200);
    height_ = std::max(height, 150);
}

void frmGlassMap::ZoomAt(double factor, double px, double py) {
    if (!(factor > 0) || !std::isfinite(factor)) return;
    const MapProjection pr = Projection();
    const double x = pr.ValueX(px), y = pr.ValueY(py);
    MapRect r{x - (x - view_.xMin) / factor, x + (view_.xMax - x) / factor,
              y - (y - view_.yMin) / factor, y + (view_.yMax - y) / factor};
    // The view stays between a thousandth of a vd unit wide and ten times the whole map.
    const MapRect full = FullView();
    const double w = r.xMax - r.xMin, fw = full.xMax - full.xMin;
    if (w < 1e-3 || w > 10 * fw) return;
    view_ = r;
    Changed();
}

void frmGlassMap::Pan(double dx, double dy) {
    const MapProjection pr = Projection();
    const double ux = (view_.xMax - view_.xMin) / (pr.right - pr.left);
    const double uy = (view_.yMax - view_.yMin) / (pr.bottom - pr.top);
    // Dragging right brings higher vd into view (vd decreases to the right).
    view_.xMin += dx * ux;
    view_.xMax += dx * ux;
    view_.yMin += dy * uy;
    view_.yMax += dy * uy;
    Changed();
}

void frmGlassMap::ZoomToPixels(double x1, double y1, double x2, double y2) {
    if (std::abs(x2 - x1) < 5 || std::abs(y2 - y1) < 5) return;
    const MapProjection pr = Projection();
    const double a = pr.ValueX(x1), b = pr.ValueX(x2), c = pr.ValueY(y1), d = pr.ValueY(y2);
    view_ = {std::min(a, b), std::max(a, b), std::min(c, d), std::max(c, d)};
    Changed();
}

int frmGlassMap::PointAt(double px, double py) const {
    const MapProjection pr = Projection();
    int best = -1;
    double bestD = kHitPixels * kHitPixels;
    for (size_t i = 0; i < data_.points.size(); ++i) {
        if (!PointShown(static_cast<int>(i))) continue;
        const GlassPoint& p = data_.points[i];
        const double dx = pr.PixelX(p.vd) - px, dy = pr.PixelY(YOf(p)) - py;
        const double d = dx * dx + dy * dy;
        // Custom glasses are drawn on top, so they win a tie.
        if (d < bestD || (d == bestD && p.kind != GlassKind::Catalogue)) {
            bestD = d;
            best = static_cast<int>(i);
        }
    }
    return best;
}

std::string frmGlassMap::PointTip(int point) const {
    if (point < 0 || static_cast<size_t>(point) >= data_.points.size()) return {};
    const GlassPoint& p = data_.points[point];
    const int32_t code =
        p.glassCode != 0 ? p.glassCode : GlassCodeOf(p.nd, static_cast<float>(p.vd));
    std::string t = p.name + "\nSource: " + (p.source.empty() ? "-" : p.source) + " (" +
                    KindName(p.kind) + ")\nnd " + Fmt("%.5f", p.nd) + "   vd " + Fmt("%.2f", p.vd) +
                    "\nPgF " + (p.pgf != 0.0 ? Fmt("%.4f", p.pgf) : "-") + "\nCode " +
                    std::to_string(code);
    if (p.kind == GlassKind::Melt) t += "\nMelt of " + p.parentName + " (" + p.parentSource + ")";
    return t;
}

int frmGlassMap::CustomPositionAt(double px, double py) const {
    const int i = PointAt(px, py);
    return i >= 0 && data_.points[i].kind != GlassKind::Catalogue ? data_.points[i].listPosition
                                                                  : 0;
}

MapScene frmGlassMap::Scene() const {
    const MapProjection pr = Projection();
    MapScene s;
    s.width = width_;
    s.height = height_;
    s.left = pr.left;
    s.top = pr.top;
    s.right = pr.right;
    s.bottom = pr.bottom;
    const bool pgf = optPgF.value;
    s.title = pgf ? "Partial dispersion diagram" : "Abbe diagram";
    s.xLabel = "vd";
    s.yLabel = pgf ? "PgF" : "nd";
    const double xSpan = view_.xMax - view_.xMin, ySpan = view_.yMax - view_.yMin;
    const int xDecimals = xSpan < 5 ? 1 : 0;
    // Two to five decimals, enough to tell the ticks apart; five for a view with no height.
    const double wanted = std::ceil(-std::log10(ySpan / 8));
    const int yDecimals = std::isnan(wanted) ? 5 : static_cast<int>(std::clamp(wanted, 2.0, 5.0));
    for (double t : NiceTicks(view_.xMin, view_.xMax, 8)) {
        s.xTicks.push_back({pr.PixelX(t), Fmt(xDecimals ? "%.1f" : "%.0f", t)});
    }
    for (double t : NiceTicks(view_.yMin, view_.yMax, 8)) {
        char fmt[8];
        std::snprintf(fmt, sizeof fmt, "%%.%df", yDecimals);
        s.yTicks.push_back({pr.PixelY(t), Fmt(fmt, t)});
    }
    if (pgf) {
        if (const auto line = FindNormalLine(data_)) {
            s.lines.push_back({pr.PixelX(view_.xMin), pr.PixelY(line->At(view_.xMin)),
                               pr.PixelX(view_.xMax), pr.PixelY(line->At(view_.xMax)),
                               MapLineKind::Normal});
        }
    }
    const auto inside = [&](double vd, double y) {
        return vd >= view_.xMin && vd <= view_.xMax && y >= view_.yMin && y <= view_.yMax;
    };
    s.markers.reserve(data_.points.size());
    std::vector<MapMarker> top;
    for (size_t i = 0; i < data_.points.size(); ++i) {
        const int index = static_cast<int>(i);
        if (!PointShown(index)) continue;
        const GlassPoint& p = data_.points[i];
        const double y = YOf(p);
        if (p.kind == GlassKind::Melt && p.parent >= 0 && PointShown(p.parent)) {
            const GlassPoint& q = data_.points[p.parent];
            s.lines.push_back({pr.PixelX(p.vd), pr.PixelY(y), pr.PixelX(q.vd), pr.PixelY(YOf(q)),
                               MapLineKind::MeltLink});
        }
        if (!inside(p.vd, y)) continue;
        MapMarker m;
        m.x = pr.PixelX(p.vd);
        m.y = pr.PixelY(y);
        m.point = index;
        m.kind = p.kind;
        m.colour = p.kind == GlassKind::Custom ? kCustomColour
                   : p.kind == GlassKind::Melt ? kMeltColour
                                               : SourceColour(p.sourceIndex);
        m.highlighted = index == highlight_;
        m.nearest = std::any_of(nearest_.begin(), nearest_.end(),
                                [&](const NearGlass& n) { return n.point == index; });
        (p.kind == GlassKind::Catalogue && !m.highlighted && !m.nearest ? s.markers : top)
            .push_back(m);
    }
    if (nearestFrom_ >= 0 && PointShown(nearestFrom_)) {
        const GlassPoint& f = data_.points[nearestFrom_];
        for (const NearGlass& n : nearest_) {
            const GlassPoint& q = data_.points[n.point];
            if (!PointShown(n.point)) continue;
            s.lines.push_back({pr.PixelX(f.vd), pr.PixelY(YOf(f)), pr.PixelX(q.vd),
                               pr.PixelY(YOf(q)), MapLineKind::NearestLink});
        }
    }
    // Custom, melt, nearest and highlighted glasses are drawn over the catalogue.
    // Of those, the nearest catalogue glasses first, then the custom and melt glasses, the
    // highlighted glass last of all.
    const auto layer = [](const MapMarker& m) {
        return m.highlighted ? 2 : m.kind == GlassKind::Catalogue ? 0 : 1;
    };
    std::stable_sort(top.begin(), top.end(),
                     [&](const MapMarker& a, const MapMarker& b) { return layer(a) < layer(b); });
    s.markers.insert(s.markers.end(), top.begin(), top.end());
    for (size_t i = 0; i < data_.sources.size(); ++i) {
        if (sourceOn_[i]) {
            s.legend.push_back({data_.sources[i].empty() ? "(no source)" : data_.sources[i],
                                SourceColour(static_cast<int>(i)), GlassKind::Catalogue});
        }
    }
    s.legend.push_back({"Custom", kCustomColour, GlassKind::Custom});
    s.legend.push_back({"Melt", kMeltColour, GlassKind::Melt});
    return s;
}

}  // namespace ostrel
