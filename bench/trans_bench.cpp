// Speed of the transmission resampling: one coefficient by bisection and interpolation, and
// the whole 41-entry table, for curves of a few points up to the full 150.
#include <benchmark/benchmark.h>

#include <array>
#include <cmath>

#include "core/optics/trans_calcs.h"

namespace {

using ostrel::kMaxTransPoints;

struct Curve {
    std::array<float, kMaxTransPoints> waves{};
    std::array<float, kMaxTransPoints> absorbs{};
};

// A plausible glass edge: points evenly spaced from 2500 down to 250 nm, descending, the
// coefficient rising steeply towards the ultraviolet.
Curve MakeCurve(int points) {
    Curve c;
    for (int i = 0; i < points; ++i) {
        const float wave = 2500.0f - 2250.0f * static_cast<float>(i) / (points - 1);
        c.waves[i] = wave;
        c.absorbs[i] = 0.0005f + 2.0f * std::exp(-(wave - 250.0f) / 25.0f);
    }
    return c;
}

void BM_AbsorbAtWave(benchmark::State& state) {
    const Curve c = MakeCurve(static_cast<int>(state.range(0)));
    float wave = 250.0f;
    for (auto _ : state) {
        benchmark::DoNotOptimize(ostrel::AbsorbAtWave(wave, c.waves, c.absorbs, 10.0f));
        wave = wave >= 2500.0f ? 250.0f : wave + 7.3f;
    }
}
BENCHMARK(BM_AbsorbAtWave)->Arg(10)->Arg(41)->Arg(150);

void BM_FillTransTable(benchmark::State& state) {
    const Curve c = MakeCurve(static_cast<int>(state.range(0)));
    std::array<float, ostrel::kTransTableSize> table{};
    for (auto _ : state) {
        ostrel::FillTransTable(table, 10.0f, c.waves, c.absorbs);
        benchmark::DoNotOptimize(table.data());
        benchmark::ClobberMemory();
    }
    state.SetItemsProcessed(state.iterations() * ostrel::kTransTableSize);
}
BENCHMARK(BM_FillTransTable)->Arg(10)->Arg(41)->Arg(150);

}  // namespace

BENCHMARK_MAIN();
