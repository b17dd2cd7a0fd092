// Loading and saving a custom list of 10,000 materials (about 130 MB), beside reading and
// writing the same bytes raw. The load should stay within twice the raw read.
#include <benchmark/benchmark.h>

#include <cstdlib>
#include <filesystem>
#include <string>

#include "core/material/glasses_list.h"
#include "core/material/material_record_codec.h"
#include "core/platform/clock.h"
#include "core/platform/dialogs.h"
#include "core/platform/file_io.h"

namespace fs = std::filesystem;
using namespace ostrel;

namespace {

constexpr int kMaterials = 10000;

struct Fixture {
    Fixture() {
        std::string pattern = (fs::temp_directory_path() / "ostrel-bench-XXXXXX").string();
        folder = mkdtemp(pattern.data());
        errors = std::make_unique<ErrorDisplayer>(folder, dialogs, clock);
        GlassesList list(folder, *errors);
        std::vector<MaterialRecord> recs;
        recs.reserve(kMaterials);
        for (int i = 0; i < kMaterials; ++i) {
            MaterialRecord r = ClearedMaterialRecord();
            r.General.GlassName.Set("GLASS-" + std::to_string(i));
            r.General.Source.Set("BENCH");
            r.General.Polytype = 2;
            for (int k = 0; k < 150; ++k) {
                r.Measured.IndexWave[k] = 2500.0 - 10.0 * k;
                r.Measured.IndexValue[k] = 1.5 + 1e-5 * k;
            }
            recs.push_back(r);
        }
        list.ReplaceList(std::move(recs));
        list.SaveCustomFile();
    }
    ~Fixture() { fs::remove_all(folder); }

    std::string folder;
    QuietDialogs dialogs;
    SystemClock clock;
    std::unique_ptr<ErrorDisplayer> errors;
};

Fixture& Shared() {
    static Fixture f;
    return f;
}

void BM_LoadCustomList(benchmark::State& state) {
    Fixture& f = Shared();
    for (auto _ : state) {
        GlassesList list(f.folder, *f.errors);
        list.LoadCustomFile();
        benchmark::DoNotOptimize(list.CustomCount());
    }
    state.SetBytesProcessed(state.iterations() * kMaterials *
                            static_cast<int64_t>(kMaterialRecordSize));
}

void BM_RawRead(benchmark::State& state) {
    Fixture& f = Shared();
    for (auto _ : state) {
        std::string content;
        FileError err;
        ReadWholeFile(fs::path(f.folder) / kCustomFileName, content, err);
        benchmark::DoNotOptimize(content.data());
    }
    state.SetBytesProcessed(state.iterations() * kMaterials *
                            static_cast<int64_t>(kMaterialRecordSize));
}

void BM_SaveCustomList(benchmark::State& state) {
    Fixture& f = Shared();
    GlassesList list(f.folder, *f.errors);
    list.LoadCustomFile();
    for (auto _ : state) list.SaveCustomFile();
    state.SetBytesProcessed(state.iterations() * kMaterials *
                            static_cast<int64_t>(kMaterialRecordSize));
}

void BM_RawWrite(benchmark::State& state) {
    Fixture& f = Shared();
    std::string content;
    FileError err;
    ReadWholeFile(fs::path(f.folder) / kCustomFileName, content, err);
    for (auto _ : state) WriteFileAtomic(fs::path(f.folder) / "raw.bin", content, err);
    state.SetBytesProcessed(state.iterations() * static_cast<int64_t>(content.size()));
}

}  // namespace

BENCHMARK(BM_RawRead)->Unit(benchmark::kMillisecond)->MinTime(2.0);
BENCHMARK(BM_LoadCustomList)->Unit(benchmark::kMillisecond)->MinTime(2.0);
BENCHMARK(BM_RawWrite)->Unit(benchmark::kMillisecond)->MinTime(2.0);
BENCHMARK(BM_SaveCustomList)->Unit(benchmark::kMillisecond)->MinTime(2.0);
BENCHMARK_MAIN();
