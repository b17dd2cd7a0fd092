// Speed of the dispersion formulas and of the index fits: one index per form, and whole fits
// of 20 and 150 points (150 is the most a material holds), reported as fits per second, the
// linear fits beside the plain loops of their normal equations on the same points.
#include <benchmark/benchmark.h>

#include <cmath>
#include <string>
#include <vector>

#include "core/optics/index_fit.h"
#include "core/optics/index_from_polynomial.h"
#include "ratio_report.h"

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

// Points of N-BK7 from 365 to 2325 nm, longest first, as the form stores them.
MeasuredData Nbk7Points(int count) {
    MeasuredData m{};
    for (int i = 0; i < count; ++i) {
        const double nm = 2325.0 - (2325.0 - 365.0) * i / (count - 1);
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

using LinearFit = int16_t (*)(int16_t&, int16_t, std::string&, PolyCoefBlock&, MeasuredData&,
                              Dialogs&);

void TimeLinearFit(benchmark::State& state, LinearFit fit) {
    const int count = static_cast<int>(state.range(0));
    const MeasuredData points = Nbk7Points(count);
    QuietDialogs dialogs;
    int64_t failures = 0;
    MeasuredData m = points;
    std::string text;
    for (auto _ : state) {
        PolyCoefBlock coef{};
        text.clear();
        int16_t coefficients = 0;
        if (fit(coefficients, static_cast<int16_t>(count), text, coef, m, dialogs) == 0) {
            ++failures;
        }
        benchmark::DoNotOptimize(coef);
        benchmark::DoNotOptimize(m);
    }
    state.SetItemsProcessed(state.iterations());
    state.counters["failures"] = static_cast<double>(failures);
}

void BM_FitCauchy(benchmark::State& state) {
    TimeLinearFit(state, &FitCauchy);
}
void BM_FitSchott(benchmark::State& state) {
    TimeLinearFit(state, &FitSchott);
}
void BM_FitSchottPlus(benchmark::State& state) {
    TimeLinearFit(state, &FitSchottPlus);
}
BENCHMARK(BM_FitCauchy)->Arg(20)->Arg(150);
BENCHMARK(BM_FitSchott)->Arg(20)->Arg(150);
BENCHMARK(BM_FitSchottPlus)->Arg(20)->Arg(150);

// The plain work of a linear fit: the basis powers of x = lambda^2 by multiplication, the
// weighted normal equations summed point by point, a plain Gauss-Jordan solve and the index
// and residual of every point. No library, nothing kept between fits.
template <int M>
double PlainNormalFit(const MeasuredData& m, int count, int lowest, double (&a)[M]) {
    double n[M][M + 1] = {};
    for (int p = 0; p < count; ++p) {
        const double x = m.IndexWaveUm[p] * m.IndexWaveUm[p];
        double basis[M];
        double power = 1.0;
        for (int k = 0; k > lowest; --k) power /= x;
        for (int i = 0; i < M; ++i, power *= x) basis[i] = power;
        const double w = m.IndexWeight[p];
        for (int i = 0; i < M; ++i) {
            for (int j = 0; j < M; ++j) n[i][j] += w * basis[i] * basis[j];
            n[i][M] += w * basis[i] * m.IndexSquared[p];
        }
    }
    for (int c = 0; c < M; ++c) {
        const double pivot = n[c][c];
        for (int j = c; j <= M; ++j) n[c][j] /= pivot;
        for (int r = 0; r < M; ++r) {
            if (r == c) continue;
            const double t = n[r][c];
            for (int j = c; j <= M; ++j) n[r][j] -= t * n[c][j];
        }
    }
    for (int i = 0; i < M; ++i) a[i] = n[i][M];
    double error = 0.0;
    for (int p = 0; p < count; ++p) {
        const double x = m.IndexWaveUm[p] * m.IndexWaveUm[p];
        double power = 1.0;
        for (int k = 0; k > lowest; --k) power /= x;
        double nSquared = 0.0;
        for (int i = 0; i < M; ++i, power *= x) nSquared += a[i] * power;
        const double residual = m.IndexValue[p] - std::sqrt(nSquared);
        error += residual * residual;
    }
    return error;
}

template <int M, int Lowest>
void BM_PlainNormalFit(benchmark::State& state) {
    const int count = static_cast<int>(state.range(0));
    const MeasuredData points = Nbk7Points(count);
    for (auto _ : state) {
        double a[M];
        benchmark::DoNotOptimize(PlainNormalFit<M>(points, count, Lowest, a));
        benchmark::DoNotOptimize(a);
    }
    state.SetItemsProcessed(state.iterations());
}
BENCHMARK(BM_PlainNormalFit<3, -2>)->Name("BM_PlainCauchy")->Arg(20)->Arg(150);
BENCHMARK(BM_PlainNormalFit<6, -4>)->Name("BM_PlainSchott")->Arg(20)->Arg(150);
BENCHMARK(BM_PlainNormalFit<10, -5>)->Name("BM_PlainSchottPlus")->Arg(20)->Arg(150);

void BM_FitSellmeier(benchmark::State& state) {
    const MeasuredData points = Nbk7Points(kMaxIndexPoints);
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

int main(int argc, char** argv) {
    std::vector<bench::RatioPair> pairs;
    for (const char* form : {"Cauchy", "Schott", "SchottPlus"}) {
        for (const char* points : {"20", "150"}) {
            pairs.push_back({std::string(form) + " fit, " + points + " points",
                             std::string("BM_Fit") + form + "/" + points,
                             std::string("BM_Plain") + form + "/" + points});
        }
    }
    return bench::RunWithRatios(argc, argv, pairs);
}
