// Speed of the dispersion formulas and of the index fits: one index per form, and whole
// fits of 150 points (the most a material holds), reported as fits per second.
#include <benchmark/benchmark.h>

#include <cmath>
#include <string>

#include "core/optics/index_fit.h"
#include "core/optics/index_from_polynomial.h"

namespace {

using namespace ostrel;

// Coefficients of a crown glass in every form that can be evaluated.
PolyCoefBlock CoefficientsFor(int type) {
    switch (type) {
        case 1:
            return {2.2718929,    -1.0108077e-2, 1.0592509e-2,
                    2.0816965e-4, -7.6472538e-6, 4.9240991e-7};
        case 2:
            return {1.03961212, 0.231792344, 1.01046945, 0.00600069867, 0.0200179144, 103.560653};
        case 3:
            return {4.9e-7, -7.6e-6, 2.1e-4, 1.06e-2, 1.1e-2, 2.27, -1.0e-2, 1e-5, -1e-6, 1e-8};
        case 4:
            return {2.27, 1.2e-2, 1.5e-4};
        case 6:
            return {1.03961212,    0.231792344,  1.01046945, 0.0, 0.0,
                    0.00600069867, 0.0200179144, 103.560653, 1.0, 1.0};
        case 7:
            return {1.50, 4.0e-3, 2.0e-4};
        default:  // 8
            return {1.50, 4.0e-3, 1.0e-4, -1.0e-3, 1.0e-5, -1.0e-7};
    }
}

void BM_IndexFromPolynomial(benchmark::State& state) {
    const auto type = static_cast<int16_t>(state.range(0));
    const PolyCoefBlock coef = CoefficientsFor(type);
    float wave = 400.0f;
    for (auto _ : state) {
        int16_t ok = 0;
        benchmark::DoNotOptimize(IndexFromPolynomial(coef, wave, type, ok));
        benchmark::DoNotOptimize(ok);
        wave = wave > 2000.0f ? 400.0f : wave + 1.25f;
    }
    state.SetItemsProcessed(state.iterations());
    state.SetLabel(PolyTypeName(type).empty() ? "evaluation only" : PolyTypeName(type));
}
BENCHMARK(BM_IndexFromPolynomial)->Arg(1)->Arg(2)->Arg(3)->Arg(4)->Arg(6)->Arg(7)->Arg(8);

// 150 points of N-BK7 from 365 to 2325 nm, longest first, as the form stores them.
MeasuredData Nbk7Points() {
    MeasuredData m{};
    for (int i = 0; i < kMaxIndexPoints; ++i) {
        const double nm = 2325.0 - (2325.0 - 365.0) * i / (kMaxIndexPoints - 1);
        const double x = nm * nm * 1e-6;
        const double n =
            std::sqrt(1.0 + 1.03961212 * x / (x - 0.00600069867) +
                      0.231792344 * x / (x - 0.0200179144) + 1.01046945 * x / (x - 103.560653));
        m.IndexWave[i] = nm;
        m.IndexWaveUm[i] = nm * 0.001;
        m.IndexValue[i] = n;
        m.IndexSquared[i] = n * n;
        m.IndexWeight[i] = 1.0f;
    }
    return m;
}

void BM_FitSchott(benchmark::State& state) {
    const MeasuredData points = Nbk7Points();
    QuietDialogs dialogs;
    int64_t failures = 0;
    for (auto _ : state) {
        MeasuredData m = points;
        PolyCoefBlock coef{};
        std::string text;
        int16_t count = 0;
        if (FitSchott(count, kMaxIndexPoints, text, coef, m, dialogs) == 0) ++failures;
        benchmark::DoNotOptimize(coef);
    }
    state.SetItemsProcessed(state.iterations());
    state.counters["failures"] = static_cast<double>(failures);
}
BENCHMARK(BM_FitSchott);

void BM_FitSellmeier(benchmark::State& state) {
    const MeasuredData points = Nbk7Points();
    QuietDialogs dialogs;
    int64_t failures = 0;
    for (auto _ : state) {
        MeasuredData m = points;
        PolyCoefBlock coef{};
        std::string text;
        if (FitSellmeier(kMaxIndexPoints, 3, text, coef, m, PolyCoefBlock{}, 0, 0, dialogs) == 0) {
            ++failures;
        }
        benchmark::DoNotOptimize(coef);
    }
    state.SetItemsProcessed(state.iterations());
    state.counters["failures"] = static_cast<double>(failures);
}
BENCHMARK(BM_FitSellmeier);

}  // namespace

BENCHMARK_MAIN();
