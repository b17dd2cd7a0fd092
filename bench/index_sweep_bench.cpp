// Index sweeps over the real catalogues: n at 1,000 wavelengths for every glass of every AGF
// file (the further formulas refitted to Schott as the import does on request), one glass at
// a time and one wavelength at a time, beside the same formulas as a plain scalar loop.
#include <benchmark/benchmark.h>

#include <cmath>
#include <filesystem>
#include <string>
#include <vector>

#include "core/import/import_zemax_agf.h"
#include "core/optics/index_from_polynomial.h"
#include "ratio_report.h"

namespace {

namespace fs = std::filesystem;
using ostrel::PolyCoefBlock;

const fs::path kData = OSTREL_SHARED_DATA;
constexpr int kWaves = 1000;

struct Glass {
    PolyCoefBlock coef{};
    int16_t type = 0;
};

const std::vector<Glass>& Glasses() {
    static const std::vector<Glass> glasses = [] {
        std::vector<Glass> out;
        ostrel::QuietDialogs dialogs;
        ostrel::ImportOptions options;
        options.refitOtherFormulas = true;
        options.leaveTransTables = true;
        std::vector<ostrel::MaterialRecord> recs;
        std::vector<float> errors;
        for (const char* set : {"2020", "newer", "legacy"}) {
            const fs::path dir = kData / "agf" / set;
            if (!fs::exists(dir)) continue;
            for (const auto& e : fs::directory_iterator(dir)) {
                ostrel::CImportZemaxAGF importer(dialogs, options);
                int count = 0, refits = 0;
                int16_t ok = 0;
                std::string errorText;
                recs.clear();
                importer.ReadFile(e.path().string(), e.path().filename().string(), recs, count,
                                  refits, errors, errorText, 8, ok);
                for (const auto& r : recs) out.push_back({r.General.PolyCoef, r.General.Polytype});
            }
        }
        return out;
    }();
    return glasses;
}

// 1,000 wavelengths from 300 to 2,500 nm, past the band of most glasses at both ends.
const std::vector<float>& Waves() {
    static const std::vector<float> waves = [] {
        std::vector<float> w(kWaves);
        for (int i = 0; i < kWaves; ++i) w[i] = 300.0f + 2200.0f * static_cast<float>(i) / kWaves;
        return w;
    }();
    return waves;
}

void BM_SweepByGlass(benchmark::State& state) {
    const auto& glasses = Glasses();
    const auto& waves = Waves();
    std::vector<double> n(waves.size());
    std::vector<int16_t> ok(waves.size());
    std::vector<ostrel::SweepWave> prepared(waves.size());
    for (auto _ : state) {
        // The wavelengths are made ready once for the whole sweep.
        for (size_t i = 0; i < waves.size(); ++i) prepared[i] = ostrel::PrepareWave(waves[i]);
        for (const Glass& g : glasses) {
            ostrel::IndexSweep(g.coef, g.type, prepared, n, ok);
            benchmark::DoNotOptimize(n.data());
            benchmark::DoNotOptimize(ok.data());
        }
    }
    int schott = 0;
    for (const Glass& g : glasses) schott += g.type == 1;
    state.counters["glasses"] = static_cast<double>(glasses.size());
    state.counters["schott"] = schott;
}
BENCHMARK(BM_SweepByGlass)->Unit(benchmark::kMillisecond);

void BM_SweepByWavelength(benchmark::State& state) {
    const auto& glasses = Glasses();
    const auto& waves = Waves();
    std::vector<double> n(glasses.size());
    std::vector<int16_t> ok(glasses.size());
    for (auto _ : state) {
        for (const float w : waves) {
            const ostrel::SweepWave wave = ostrel::PrepareWave(w);
            for (size_t g = 0; g < glasses.size(); ++g) {
                n[g] = ostrel::IndexAt(glasses[g].coef, wave, glasses[g].type, ok[g]);
            }
            benchmark::DoNotOptimize(n.data());
            benchmark::DoNotOptimize(ok.data());
        }
    }
}
BENCHMARK(BM_SweepByWavelength)->Unit(benchmark::kMillisecond);

// The physical limit: each formula written out once, powers by multiplication, the
// wavelength rounded to a float as the program does, a zero index where n squared is not
// positive.
double PlainIndex(const PolyCoefBlock& c, int16_t type, float waveNm) {
    const double l = static_cast<float>(static_cast<double>(waveNm) * 0.001);
    const double x = l * l;
    double v = 0;
    switch (type) {
        case 1: {
            const double x2 = x * x;
            v = c[0] + c[1] * x + c[2] / x + c[3] / x2 + c[4] / (x2 * x) + c[5] / (x2 * x2);
            break;
        }
        case 2:
            v = 1.0 + c[0] * x / (x - c[3]) + c[1] * x / (x - c[4]) + c[2] * x / (x - c[5]);
            break;
        default:
            return 0.0;
    }
    return v > 0.0 ? std::sqrt(v) : 0.0;
}

void BM_PlainLoopByGlass(benchmark::State& state) {
    const auto& glasses = Glasses();
    const auto& waves = Waves();
    std::vector<double> n(waves.size());
    for (auto _ : state) {
        for (const Glass& g : glasses) {
            for (size_t i = 0; i < waves.size(); ++i) n[i] = PlainIndex(g.coef, g.type, waves[i]);
            benchmark::DoNotOptimize(n.data());
        }
    }
}
BENCHMARK(BM_PlainLoopByGlass)->Unit(benchmark::kMillisecond);

void BM_PlainLoopByWavelength(benchmark::State& state) {
    const auto& glasses = Glasses();
    const auto& waves = Waves();
    std::vector<double> n(glasses.size());
    for (auto _ : state) {
        for (const float w : waves) {
            for (size_t g = 0; g < glasses.size(); ++g) {
                n[g] = PlainIndex(glasses[g].coef, glasses[g].type, w);
            }
            benchmark::DoNotOptimize(n.data());
        }
    }
}
BENCHMARK(BM_PlainLoopByWavelength)->Unit(benchmark::kMillisecond);

}  // namespace

int main(int argc, char** argv) {
    return ostrel::bench::RunWithRatios(
        argc, argv,
        {{"index sweep, one glass at a time", "BM_SweepByGlass", "BM_PlainLoopByGlass"},
         {"index sweep, one wavelength at a time", "BM_SweepByWavelength",
          "BM_PlainLoopByWavelength"}});
}
