// The glass map and comparison windows offscreen: what the user works with is bound to the
// units, and the pictures saved hold what is drawn.

#include "gui/glassmap/frm_compare_window.h"
#include "gui/glassmap/frm_glass_map_window.h"
#include "gui/glassmap/glass_map_canvas.h"
#include "gui_fixture.h"

namespace ostrel {
namespace {

// `count` catalogue glasses over three sources, and one custom glass last.
GlassMapData SampleMap(int count) {
    GlassMapData data;
    data.sources = {"North", "South", "West"};
    for (int i = 0; i <= count; ++i) {
        GlassPoint p;
        p.name = QString("G%1").arg(i).toStdString();
        p.sourceIndex = i % 3;
        p.source = data.sources[p.sourceIndex];
        p.vd = 20 + (i * 37) % 70;
        p.nd = 1.45 + 0.0016 * i;
        p.pgf = 0.64 - 0.0016 * p.vd;
        data.points.push_back(p);
    }
    GlassPoint& custom = data.points.back();
    custom.name = "MINE";
    custom.source = "LAB";
    custom.kind = GlassKind::Custom;
    custom.listPosition = 1;
    return data;
}

TEST(GlassMapWindow, SourcesSearchAndSavedPictures) {
    MemorySettingsStore settings;
    frmGlassMap unit(settings);
    unit.SetData(SampleMap(300));
    int opened = 0;
    gui::frmGlassMapWindow window(unit, {[&](int p) { opened = p; }, {}});
    window.show();
    QApplication::processEvents();

    auto boxes = window.findChildren<QCheckBox*>();
    ASSERT_EQ(boxes.size(), 3);
    boxes[1]->click();
    EXPECT_FALSE(unit.chkSource[1]->value.get());
    EXPECT_EQ(unit.ShownCount(), 201);
    auto* search = window.findChild<QLineEdit*>("txtSearch");
    search->setText("mine");
    emit search->textEdited("mine");
    EXPECT_EQ(unit.highlighted(), 300);

    testing::TempDir dir;
    const QString png = QString::fromStdString((dir / "map.png").string());
    ASSERT_TRUE(window.SaveImage(png));
    QImage image(png);
    EXPECT_EQ(image.width(), window.canvas()->width());
    ASSERT_TRUE(window.SaveImage(QString::fromStdString((dir / "map.svg").string())));
    const std::string svg = testing::ReadFileBytes(dir / "map.svg");
    size_t circles = 0;
    for (size_t at = svg.find("<circle class=\"catalogue\""); at != std::string::npos;
         at = svg.find("<circle class=\"catalogue\"", at + 1))
        ++circles;
    EXPECT_EQ(circles, 200u);
    if (const char* shot = std::getenv("OSTREL_SHOT")) window.grab().save(shot);
}

TEST(CompareWindow, ThreePlotsOneCurvePerMaterial) {
    std::vector<CompareItem> items;
    for (const char* name : {"A", "B", "C"}) {
        CompareItem it;
        it.rec = ClearedMaterialRecord();
        it.rec.General.Polytype = 2;
        it.rec.General.PolyCoef = {1.04, 0.23, 1.01, 0.006, 0.02, 103.6};
        it.rec.General.PolyCoef[0] += name[0] * 0.01;
        it.rec.General.IndexWvMin = 400;
        it.rec.General.IndexWvMax = 1000;
        it.rec.TransTable.fill(0.001f);
        it.label = name;
        items.push_back(it);
    }
    frmCompare unit(items);
    gui::frmCompareWindow window(unit);
    window.show();
    unit.SelectMaterials({0, 2});
    QApplication::processEvents();
    EXPECT_EQ(window.CurveCount(), 6);
    testing::TempDir dir;
    ASSERT_TRUE(window.SaveTo(QString::fromStdString((dir / "c.csv").string())));
    EXPECT_EQ(testing::ReadFileBytes(dir / "c.csv").substr(0, 27), "Wavelength (nm),n A,n C,dn ");
    ASSERT_TRUE(window.SaveTo(QString::fromStdString((dir / "c.png").string())));
    EXPECT_FALSE(QImage(QString::fromStdString((dir / "c.png").string())).isNull());
}

}  // namespace
}  // namespace ostrel
