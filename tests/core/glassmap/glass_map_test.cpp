#include <gtest/gtest.h>

#include <cmath>
#include <tuple>

#include "core/external/kelmora_database.h"
#include "core/glassmap/frm_compare.h"
#include "core/glassmap/frm_glass_map.h"
#include "core/glassmap/glass_map_data.h"
#include "core/glassmap/map_scene.h"
#include "core/optics/crown.h"
#include "core/platform/settings_store.h"
#include "support/temp_dir.h"

namespace ostrel {
namespace {

GlassPoint Catalogue(const std::string& name, const std::string& source, double nd, double vd,
                     double pgf = 0, int sourceIndex = 0) {
    GlassPoint p;
    std::tie(p.name, p.source, p.nd, p.vd, p.pgf, p.sourceIndex) =
        std::tie(name, source, nd, vd, pgf, sourceIndex);
    return p;
}

MaterialRecord Custom(const std::string& name, const std::string& source, float nd, float vd,
                      float pgf = 0) {
    MaterialRecord r = ClearedMaterialRecord();
    r.General.GlassName.Set(name);
    r.General.Source.Set(source);
    r.Derived.nd = nd;
    r.Derived.vd = vd;
    r.Derived.PgF = pgf;
    return r;
}

MaterialRecord Melt(const std::string& name, const std::string& parent,
                    const std::string& parentSource, float nd, float vd) {
    MaterialRecord r = Custom(name, "MELTS", nd, vd);
    r.Melt.MeltFlag = -1;
    r.Melt.MeltParentName.Set(parent);
    r.Melt.MeltParentSource.Set(parentSource);
    return r;
}

int Count(const std::string& text, const std::string& what) {
    int n = 0;
    for (size_t at = text.find(what); at != std::string::npos; at = text.find(what, at + 1)) ++n;
    return n;
}

// Distances worked by hand: 0.01 in nd weighs like 1.0 in vd at the default scale.
TEST(NearestGlasses, DistanceAndOrder) {
    GlassMapData data;
    data.sources = {"A", "B"};
    data.points = {Catalogue("far", "A", 1.60, 40.0),            // dn 0.08 -> 8, dv 24 -> 25.30
                   Catalogue("nd-only", "A", 1.53, 64.0),        // dn 0.01 -> 1, dv 0 -> 1
                   Catalogue("vd-only", "B", 1.52, 62.0, 0, 1),  // 0, 2 -> 2
                   Catalogue("both", "A", 1.49, 60.0)};          // 3, 4 -> 5
    GlassPoint self = Catalogue("custom", "X", 1.52, 64.0);
    self.kind = GlassKind::Custom;  // a custom glass at the very spot is never a result
    data.points.push_back(self);

    // Scale, count, sources shown (empty: all) and the glasses found with their distances.
    const std::tuple<double, int, std::vector<bool>, std::vector<std::pair<std::string, double>>>
        cases[] = {{100, 3, {}, {{"nd-only", 1.0}, {"vd-only", 2.0}, {"both", 5.0}}},
                   {100,
                    9,
                    {},
                    {{"nd-only", 1.0}, {"vd-only", 2.0}, {"both", 5.0}, {"far", std::sqrt(640.0)}}},
                   // Source B switched off: its glass is not offered.
                   {100, 2, {true, false}, {{"nd-only", 1.0}, {"both", 5.0}}},
                   // A heavier nd weight: 0.01 in nd now counts as 5 in vd.
                   {500, 2, {}, {{"vd-only", 2.0}, {"nd-only", 5.0}}},
                   {100, 0, {}, {}}};
    for (const auto& [scale, count, sourceOn, expected] : cases) {
        SCOPED_TRACE(::testing::Message() << "scale " << scale << " count " << count);
        const auto near =
            NearestGlasses(data, 1.52, 64.0, count, scale, sourceOn.empty() ? nullptr : &sourceOn);
        ASSERT_EQ(near.size(), expected.size());
        for (size_t i = 0; i < near.size(); ++i) {
            EXPECT_EQ(data.points[near[i].point].name, expected[i].first);
            EXPECT_NEAR(near[i].distance, expected[i].second, 1e-9);
        }
    }
}

TEST(NormalLine, ThroughK7AndF2OfTheCatalogue) {
    const GlassPoint k7 = Catalogue("K7", "S", 1.51112, 60.41, 0.5422);
    const GlassPoint f2 = Catalogue(" f2 ", "S", 1.62004, 36.37, 0.5828);
    GlassPoint customK7 = Catalogue("K7", "MINE", 1.5, 70.0, 0.60);
    customK7.kind = GlassKind::Custom;

    const std::tuple<const char*, std::vector<GlassPoint>, bool> cases[] = {
        {"both", {k7, f2}, true},
        {"a custom K7 does not count", {customK7, k7, f2}, true},
        {"no F2", {k7}, false},
        {"F2 without PgF", {k7, Catalogue("F2", "T", 1.62, 36.4, 0)}, false}};
    for (const auto& [what, points, found] : cases) {
        SCOPED_TRACE(what);
        GlassMapData data;
        data.points = points;
        const auto line = FindNormalLine(data);
        ASSERT_EQ(line.has_value(), found);
        if (!line) continue;
        EXPECT_NEAR(line->At(60.41), 0.5422, 1e-12);
        EXPECT_NEAR(line->At(36.37), 0.5828, 1e-12);
        EXPECT_NEAR(line->b, -0.0406 / 24.04, 1e-12);
    }
}

TEST(GlassMapDatabase, LeftOutGlassesAreCountedAndCustomRowsNotShownTwiceOrTheListAlone) {
    testing::TempDir dir;
    DbError error;
    const auto db = CreateGlassDatabase((dir / "map.db").string(), error);
    ASSERT_TRUE(db) << error.message;
    // Id, kind, name, source, nd, vd and PgF of each row.
    const std::vector<DbValue> rows[] = {
        {1, 1, "K7", "Schott", 1.51112, 60.41, 0.5422},
        {2, 1, "F2", "Schott", 1.62004, 36.37, 0.5828},
        {3, 1, "S-BSL7", "Ohara", 1.51633, 64.14, 0.5352},
        {4, 1, "NO-ND", "Ohara", DbValue{}, 50.0, 0.55},       // Null nd
        {5, 1, "ZERO-VD", "Hoya", 1.6, 0.0, 0.55},             // vd 0
        {6, 1, "TEXT-ND", "Hoya", "n/a", 40.0, 0.55},          // not a number
        {7, 1, "NO-PGF", "Hoya", 1.7, 30.0, DbValue{}},        // on the Abbe diagram only
        {8, kCustomRowKind, "MY1", "LAB", 1.55, 55.0, 0.55}};  // the custom list's own copy
    const char* columns[] = {"GlassID", "s1", "GlassName", "Source", "nd", "vd", "PgF"};
    for (const auto& values : rows) {
        DbNewRow row;
        for (size_t i = 0; i < values.size(); ++i) row.emplace_back(columns[i], values[i]);
        ASSERT_TRUE(db->AddRow(kTableCurrent, row, error)) << error.message;
    }

    GlassMapData data;
    AddCustomPoints({Custom("MY1", "LAB", 1.55f, 55.0f, 0.55f), Custom("BLANK", "LAB", 0, 0),
                     Melt("MY1-M1", "k7", "SCHOTT", 1.512f, 60.3f)},
                    data);
    ASSERT_TRUE(AddCataloguePoints(*db, data, error)) << error.message;
    LinkMeltParents(data);

    EXPECT_EQ(std::tuple(data.leftOutCatalogue, data.leftOutCustom, data.sources),
              std::tuple(3, 1, (std::vector<std::string>{"Hoya", "Ohara", "Schott"})));
    ASSERT_EQ(data.points.size(), 6u);  // 2 custom + 4 catalogue
    ASSERT_EQ(std::tuple(data.points[1].kind, data.points[1].parent >= 0),
              std::tuple(GlassKind::Melt, true));
    EXPECT_EQ(data.points[data.points[1].parent].name, "K7");

    MemorySettingsStore settings;
    frmGlassMap form(settings);
    // Drawn before anything is loaded (a window shown early): the usual range of glasses.
    EXPECT_EQ(form.Scene().yTicks.front().text, "1.40");
    form.SetData(data);
    EXPECT_EQ(form.lblStatus.caption.get(),
              "4 catalogue and 2 custom glasses shown; 4 left out without a valid nd or vd "
              "(3 catalogue, 1 custom)");
    form.optViewClick(true);
    EXPECT_EQ(form.lblStatus.caption.get(),
              "3 catalogue and 1 custom glasses shown; 4 left out without a valid nd or vd "
              "(3 catalogue, 1 custom); 2 without PgF");
    EXPECT_EQ(settings.GetSetting(kGlassMapSection, "View", ""), "PgF");

    // Without the catalogue program the map shows the custom list and says why.
    form.optViewClick(false);
    form.Load({Custom("MY1", "LAB", 1.55f, 55.0f)}, "", false);
    EXPECT_EQ(form.lblStatus.caption.get(),
              "0 catalogue and 1 custom glasses shown. KelmoraTD was not found: the map shows "
              "the custom list alone.");
    EXPECT_FALSE(form.comNearest.enabled);
}

// The headless picture: one marker per shown glass, each kind with its own shape.
TEST(GlassMapForm, DrawingHoldsOneMarkerPerShownGlass) {
    GlassMapData data;
    data.sources = {"A", "B"};
    for (int i = 0; i < 30; ++i) {
        data.points.push_back(Catalogue("A" + std::to_string(i), "A", 1.5 + i * 0.01, 30 + i * 1.5,
                                        i % 3 ? 0.55 : 0, 0));
    }
    for (int i = 0; i < 12; ++i) {
        data.points.push_back(
            Catalogue("B" + std::to_string(i), "B", 1.6 + i * 0.01, 40 + i, 0.56, 1));
    }
    AddCustomPoints({Custom("C1", "LAB", 1.55f, 50.0f, 0.56f), Melt("M1", "A3", "A", 1.53f, 34.0f)},
                    data);
    LinkMeltParents(data);

    MemorySettingsStore settings;
    frmGlassMap form(settings);
    form.SetData(data);
    // What changes, the source switched off (-1: none), the PgF view, and the catalogue, custom
    // and melt markers and the melt links drawn.
    const std::tuple<const char*, int, bool, std::tuple<int, int, int, int>> steps[] = {
        {"all", -1, false, {42, 1, 1, 1}},
        {"source B off", 1, false, {30, 1, 1, 1}},
        {"PgF view leaves out glasses without PgF", -1, true, {20, 1, 0, 0}},
        {"source A off as well", 0, true, {0, 1, 0, 0}}};
    for (const auto& [what, sourceOff, pgfView, drawn] : steps) {
        SCOPED_TRACE(what);
        if (sourceOff >= 0) {
            form.chkSource[sourceOff]->value = false;
            form.chkSourceClick(sourceOff);
        }
        if (pgfView) form.optViewClick(true);
        const std::string svg = MapSceneSvg(form.Scene());
        EXPECT_EQ(std::tuple(Count(svg, "<circle class=\"catalogue\""),
                             Count(svg, "<rect class=\"custom\""),
                             Count(svg, "<path class=\"melt\""), Count(svg, "stroke=\"#7A00B0\"")),
                  drawn);
    }
}

TEST(GlassMapForm, ViewRunsDownInVdAndZoomKeepsThePointUnderTheMouse) {
    GlassMapData data;
    data.sources = {"A"};
    data.points = {Catalogue("HIGH", "A", 1.5, 80), Catalogue("LOW", "A", 1.9, 20),
                   Catalogue("MID", "A", 1.7, 50)};
    MemorySettingsStore settings;
    frmGlassMap form(settings);
    form.SetData(data);
    form.SetPlotSize(800, 600);
    MapScene s = form.Scene();
    ASSERT_EQ(s.markers.size(), 3u);
    // vd 80 left of vd 20, nd 1.5 below nd 1.9
    EXPECT_TRUE(s.markers[0].x < s.markers[1].x && s.markers[0].y > s.markers[1].y);

    const double mx = s.markers[2].x, my = s.markers[2].y;
    form.ZoomAt(4.0, mx + 3, my - 2);
    s = form.Scene();
    ASSERT_EQ(s.markers.size(), 1u);  // the others are outside the view now
    EXPECT_NEAR(s.markers[0].x, mx + 3 - 3 * 4.0, 1e-6);
    EXPECT_NEAR(s.markers[0].y, my - 2 + 2 * 4.0, 1e-6);
    EXPECT_EQ(form.PointAt(s.markers[0].x + 2, s.markers[0].y), 2);

    form.comResetClick();
    s = form.Scene();
    form.ZoomToPixels(s.markers[1].x - 10, s.markers[1].y - 10, s.markers[1].x + 10,
                      s.markers[1].y + 10);
    const size_t zoomed = form.Scene().markers.size();
    form.comResetClick();
    EXPECT_EQ(std::tuple(zoomed, form.Scene().markers.size()), std::tuple(1u, 3u));

    // A click opens a custom glass only.
    GlassMapData withCustom = data;
    AddCustomPoints({Custom("OWN", "LAB", 1.6f, 35.0f)}, withCustom);
    form.SetData(withCustom);
    s = form.Scene();
    ASSERT_EQ(s.markers.size(), 4u);
    EXPECT_EQ(std::tuple(form.CustomPositionAt(s.markers[3].x, s.markers[3].y),
                         form.CustomPositionAt(s.markers[0].x, s.markers[0].y)),
              std::tuple(1, 0));
    EXPECT_NE(form.PointTip(3).find("OWN\nSource: LAB (Custom)\nnd 1.60000   vd 35.00"),
              std::string::npos);

    for (auto [typed, point, found] :
         {std::tuple{"lo", 1, "LOW (A)"}, {"nothing", -1, "Not found"}}) {
        form.txtSearch.text = typed;
        form.txtSearchChange();
        EXPECT_EQ(std::tuple(form.highlighted(), form.lblSearch.caption.get()),
                  std::tuple(point, found));
    }
}

// Sellmeier glasses with the published coefficients of N-BK7 and F2.
CompareItem Sellmeier(const std::string& name, const PolyCoefBlock& c, int16_t lo, int16_t hi) {
    CompareItem it;
    it.rec = ClearedMaterialRecord();
    it.rec.General.GlassName.Set(name);
    it.rec.General.Source.Set("S");
    it.rec.General.Polytype = 2;
    it.rec.General.PolyCoef = c;
    it.rec.General.IndexWvMin = lo;
    it.rec.General.IndexWvMax = hi;
    it.rec.TransTable.fill(kNoTransData);
    it.label = name + " (S)";
    return it;
}

const PolyCoefBlock& kBK7 = testing::kNbk7Coef;
const PolyCoefBlock kF2 = {1.34533359,    0.209073176,  0.937357162,
                           0.00997743871, 0.0470450767, 111.886764};

TEST(CompareMaterials, CommonBandIndexDifferenceAndTransmissionOrTheReasonNot) {
    CompareItem bk7 = Sellmeier("N-BK7", kBK7, 310, 2500);
    CompareItem f2 = Sellmeier("F2", kF2, 365, 1014);
    bk7.rec.TransTable[17] = 0.01f;  // 400 nm, per mm
    f2.rec.TransTable[17] = 0.0f;
    CompareCurves c;
    std::string message;
    ASSERT_TRUE(CompareMaterials({&bk7, &f2}, 10.0f, 11, c, message)) << message;
    ASSERT_EQ(std::tuple(c.bandMin, c.bandMax, c.wave.size()), std::tuple(365, 1014, 11u));
    for (size_t k = 0; k < c.wave.size(); ++k) {
        const double a = testing::SellmeierIndex(kBK7, c.wave[k]),
                     b = testing::SellmeierIndex(kF2, c.wave[k]);
        EXPECT_NEAR(c.index[0][k], a, 2e-6);
        EXPECT_NEAR(c.delta[1][k], b - a, 4e-6);
        EXPECT_EQ(c.delta[0][k], 0.0);
    }
    EXPECT_NEAR(c.internal[0][17], 100 * std::exp(-0.1), 1e-4);
    EXPECT_TRUE(std::isnan(c.internal[0][16]));

    const std::string csv = CompareCsv(c);
    EXPECT_EQ(csv.substr(0, csv.find('\n')), "Wavelength (nm),n N-BK7 (S),n F2 (S),dn F2 (S)");
    EXPECT_NE(csv.find("\n400,90.48,100.00\n"), std::string::npos);
    EXPECT_NE(csv.find("\n390,,\n"), std::string::npos) << "no data is a blank field";
    EXPECT_EQ(Count(CompareSvg(c, 900, 900), "class=\"curve\""), 2 + 2 + 2);

    // Refused with the reason.
    const CompareItem shortBk7 = Sellmeier("N-BK7", kBK7, 310, 500);
    const CompareItem longF2 = Sellmeier("F2", kF2, 600, 1014);
    CompareItem broken = Sellmeier("BAD", kF2, 310, 2500);
    broken.rec.General.Polytype = 99;
    const std::pair<std::vector<const CompareItem*>, const char*> cases[] = {
        {{&shortBk7}, "Select two or more materials to compare."},
        {{&shortBk7, &longF2}, "The materials have no wavelength band of index data in common."},
        {{&shortBk7, &broken}, "The index of BAD (S) cannot be computed at 310 nm."}};
    for (const auto& [items, expected] : cases) {
        CompareCurves curves;
        std::string message;
        EXPECT_FALSE(CompareMaterials(items, 10, 20, curves, message));
        EXPECT_EQ(message, expected);
    }
}

// A plot's value axis spans the finite values with 5% margins; its tick at zero is zero and
// reads without a sign, though the ticks are counted up from below.
TEST(CompareTicks, ValueAxisPadsTheRangeAndReadsZeroWithoutSign) {
    const CompareAxis axis = CompareValueAxis({{-0.00033, std::nan("")}, {0.00012}}, "%.5f");
    EXPECT_DOUBLE_EQ(axis.lo, -0.0003525);
    EXPECT_DOUBLE_EQ(axis.hi, 0.0001425);
    std::string texts;
    for (const AxisTick& t : axis.ticks) texts += t.text + " ";
    EXPECT_EQ(texts, "-0.00030 -0.00020 -0.00010 0.00000 0.00010 ");
    EXPECT_EQ(axis.ticks.at(3).value, 0.0);
}

TEST(CompareForm, FirstChosenStaysTheReference) {
    frmCompare form({Sellmeier("A", kBK7, 310, 2500), Sellmeier("B", kF2, 310, 2500),
                     Sellmeier("C", kBK7, 400, 800)});
    form.SelectLabelled({"B (S)", "Z (S)", "A (S)"}, "no catalogue");
    ASSERT_TRUE(form.HasCurves());
    EXPECT_EQ(form.Curves().labels, (std::vector<std::string>{"B (S)", "A (S)"}));
    form.lstMaterials.SetSelected(2, true);
    form.lstMaterialsClick();
    EXPECT_EQ(std::tuple(form.Curves().labels, form.lblStatus.caption.get()),
              std::tuple(std::vector<std::string>{"B (S)", "A (S)", "C (S)"},
                         "3 materials compared over 400 - 800 nm"));
    form.SelectLabelled({"C (S)"}, "no catalogue");
    EXPECT_EQ(form.lblStatus.caption.get(), "no catalogue");
}

}  // namespace
}  // namespace ostrel
