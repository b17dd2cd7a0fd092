// The glass map over 10,000 catalogue glasses: the nearest-glass lookup (aim: under 1 ms),
// the map's picture after a zoom (aim: the whole redraw under 50 ms), and, when the desktop
// program is built, the painting of that picture as the window does it.
#include <benchmark/benchmark.h>

#include <random>

#include "core/glassmap/frm_glass_map.h"
#include "core/glassmap/map_scene.h"
#include "core/platform/settings_store.h"

#ifdef OSTREL_BENCH_GUI
#include <QApplication>
#include <QImage>
#include <QPainter>

#include "gui/glassmap/glass_map_canvas.h"
#endif

using namespace ostrel;

namespace {

constexpr int kGlasses = 10000;

GlassMapData Catalogue() {
    GlassMapData data;
    data.sources = {"A", "B", "C", "D", "E", "F", "G", "H"};
    std::mt19937 rng(11);
    std::uniform_real_distribution<double> vd(18, 95), nd(1.42, 2.05);
    for (int i = 0; i < kGlasses; ++i) {
        GlassPoint p;
        p.name = "G" + std::to_string(i);
        p.sourceIndex = i % 8;
        p.source = data.sources[p.sourceIndex];
        p.vd = vd(rng);
        p.nd = nd(rng);
        p.pgf = 0.64 - 0.0016 * p.vd;
        data.points.push_back(std::move(p));
    }
    return data;
}

void BM_NearestGlasses(benchmark::State& state) {
    const GlassMapData data = Catalogue();
    double nd = 1.5, vd = 60;
    for (auto _ : state) {
        auto near = NearestGlasses(data, nd, vd, static_cast<int>(state.range(0)), 100.0);
        benchmark::DoNotOptimize(near);
        nd += 1e-6;
    }
}
BENCHMARK(BM_NearestGlasses)->Arg(5)->Arg(50)->Unit(benchmark::kMicrosecond);

// A zoom step and the picture the window then paints, as shapes.
void BM_SceneAfterZoom(benchmark::State& state) {
    MemorySettingsStore settings;
    frmGlassMap form(settings);
    form.SetData(Catalogue());
    form.SetPlotSize(1200, 800);
    if (state.range(0)) form.optViewClick(true);
    double factor = 1.1;
    for (auto _ : state) {
        form.ZoomAt(factor, 600, 400);
        factor = 1.0 / factor;
        const MapScene scene = form.Scene();
        benchmark::DoNotOptimize(scene.markers.data());
    }
}
BENCHMARK(BM_SceneAfterZoom)->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond);

void BM_SvgOfWholeMap(benchmark::State& state) {
    MemorySettingsStore settings;
    frmGlassMap form(settings);
    form.SetData(Catalogue());
    for (auto _ : state) {
        const std::string svg = MapSceneSvg(form.Scene());
        benchmark::DoNotOptimize(svg.data());
    }
}
BENCHMARK(BM_SvgOfWholeMap)->Unit(benchmark::kMillisecond);

#ifdef OSTREL_BENCH_GUI
// The whole redraw after a zoom: the scene and its painting into a window-sized image.
void BM_RedrawAfterZoom(benchmark::State& state) {
    MemorySettingsStore settings;
    frmGlassMap form(settings);
    form.SetData(Catalogue());
    form.SetPlotSize(1200, 800);
    QImage image(1200, 800, QImage::Format_ARGB32_Premultiplied);
    double factor = 1.1;
    for (auto _ : state) {
        form.ZoomAt(factor, 600, 400);
        factor = 1.0 / factor;
        QPainter p(&image);
        gui::PaintMapScene(p, form.Scene());
    }
}
BENCHMARK(BM_RedrawAfterZoom)->Unit(benchmark::kMillisecond);
#endif

}  // namespace

int main(int argc, char** argv) {
#ifdef OSTREL_BENCH_GUI
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
#endif
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
