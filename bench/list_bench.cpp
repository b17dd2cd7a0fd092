// The custom list of 10,000 materials (about 130 MB): loading and saving it whole, reading
// one material of it, and the list command's work (the columns of every material). Each
// stands beside the plain file work it cannot beat: the load and the list beside reading the
// file into a buffer kept from one iteration to the next, one material beside reading its
// bytes alone, the save beside writing the same bytes.
#include <benchmark/benchmark.h>
#include <fcntl.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <string>
#include <vector>

#include "core/material/glasses_list.h"
#include "core/material/material_record_codec.h"
#include "core/platform/clock.h"
#include "core/platform/dialogs.h"
#include "core/platform/file_io.h"
#include "ratio_report.h"

namespace fs = std::filesystem;
using namespace ostrel;

namespace {

constexpr int kMaterials = 10000;
constexpr int kMiddle = kMaterials / 2;

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

    fs::path File() const { return fs::path(folder) / kCustomFileName; }

    std::string folder;
    QuietDialogs dialogs;
    SystemClock clock;
    std::unique_ptr<ErrorDisplayer> errors;
};

Fixture& Shared() {
    static Fixture f;
    return f;
}

void SetListBytes(benchmark::State& state) {
    state.SetBytesProcessed(state.iterations() * kMaterials *
                            static_cast<int64_t>(kMaterialRecordSize));
}

void BM_LoadCustomList(benchmark::State& state) {
    Fixture& f = Shared();
    for (auto _ : state) {
        GlassesList list(f.folder, *f.errors);
        list.LoadCustomFile();
        benchmark::DoNotOptimize(list.CustomCount());
    }
    SetListBytes(state);
}

// The file read into the same buffer every time: the cost of the bytes alone.
void BM_RawRead(benchmark::State& state) {
    Fixture& f = Shared();
    std::string buffer(kMaterials * kMaterialRecordSize + 1, '\0');
    for (auto _ : state) {
        const int fd = ::open(f.File().c_str(), O_RDONLY | O_CLOEXEC);
        size_t filled = 0;
        for (ssize_t n; (n = ::read(fd, buffer.data() + filled, buffer.size() - filled)) > 0;)
            filled += static_cast<size_t>(n);
        ::close(fd);
        benchmark::DoNotOptimize(filled);
    }
    SetListBytes(state);
}

// Material 5,000 as `show 5000` reads it.
void BM_ReadOneMaterial(benchmark::State& state) {
    Fixture& f = Shared();
    for (auto _ : state) {
        auto rec = GlassesList::ReadListedMaterial(f.folder, kMiddle);
        if (!rec) state.SkipWithError("material not read");
        benchmark::DoNotOptimize(rec);
    }
}

// The bytes of material 5,000 alone, read where they stand.
void BM_RawReadOneRecord(benchmark::State& state) {
    Fixture& f = Shared();
    MaterialImage image;
    for (auto _ : state) {
        const int fd = ::open(f.File().c_str(), O_RDONLY | O_CLOEXEC);
        const auto n = ::pread(fd, image.data(), image.size(),
                               static_cast<off_t>(kMiddle - 1) * kMaterialRecordSize);
        ::close(fd);
        benchmark::DoNotOptimize(n);
    }
}

// What `list` prints: position, name and source of every material, read as the command
// reads them.
void BM_ListColumns(benchmark::State& state) {
    Fixture& f = Shared();
    std::string out;
    for (auto _ : state) {
        out.clear();
        const auto entries = GlassesList::ReadListedSummaries(f.folder);
        if (!entries) state.SkipWithError("list not read");
        int position = 0;
        for (const auto& entry : *entries) {
            out += std::to_string(++position);
            out += '\t';
            out += entry.GlassName.Text();
            out += '\t';
            out += entry.Source.Text();
            out += '\n';
        }
        benchmark::DoNotOptimize(out.data());
    }
    SetListBytes(state);
}

void BM_SaveCustomList(benchmark::State& state) {
    Fixture& f = Shared();
    GlassesList list(f.folder, *f.errors);
    list.LoadCustomFile();
    for (auto _ : state) list.SaveCustomFile();
    SetListBytes(state);
}

void BM_RawWrite(benchmark::State& state) {
    Fixture& f = Shared();
    std::string content;
    FileError err;
    ReadWholeFile(f.File(), content, err);
    for (auto _ : state) WriteFileAtomic(fs::path(f.folder) / "raw.bin", content, err);
    state.SetBytesProcessed(state.iterations() * static_cast<int64_t>(content.size()));
}

}  // namespace

BENCHMARK(BM_RawRead)->Unit(benchmark::kMillisecond)->MinTime(2.0);
BENCHMARK(BM_LoadCustomList)->Unit(benchmark::kMillisecond)->MinTime(2.0);
BENCHMARK(BM_ListColumns)->Unit(benchmark::kMillisecond)->MinTime(2.0);
BENCHMARK(BM_RawReadOneRecord)->Unit(benchmark::kMillisecond)->MinTime(0.5);
BENCHMARK(BM_ReadOneMaterial)->Unit(benchmark::kMillisecond)->MinTime(0.5);
BENCHMARK(BM_RawWrite)->Unit(benchmark::kMillisecond)->MinTime(2.0);
BENCHMARK(BM_SaveCustomList)->Unit(benchmark::kMillisecond)->MinTime(2.0);

int main(int argc, char** argv) {
    return ostrel::bench::RunWithRatios(
        argc, argv,
        {{"custom list load, 10,000 materials", "BM_LoadCustomList", "BM_RawRead"},
         {"list command columns, 10,000 materials", "BM_ListColumns", "BM_RawRead"},
         {"one material of 10,000 (the 5,000th)", "BM_ReadOneMaterial", "BM_RawReadOneRecord"},
         {"custom list save, 10,000 materials", "BM_SaveCustomList", "BM_RawWrite"}});
}
