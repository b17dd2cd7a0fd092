// Reading the real catalogues as import forms stage them, beside the plain reading of the
// same bytes into lines and words. The 75 AGF files are the main workload; the 16 GLC files,
// which hold a whole glass on one line of some 70 numbers, are measured on their own and with
// the AGF files. A further benchmark takes every staged glass out of staging as well (its full
// record built with its transmission tables, derived data and glass code). Each benchmark
// reports the peak memory of its own runs.
#include <benchmark/benchmark.h>
#include <malloc.h>

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include "core/import/import_oslo_glc.h"
#include "core/import/import_text.h"
#include "core/import/import_zemax_agf.h"
#include "core/platform/file_io.h"
#include "ratio_report.h"

namespace {

namespace fs = std::filesystem;

// The shared catalogues stand beside the source tree.
const fs::path kData = OSTREL_SHARED_DATA;

class QuietDialogs : public ostrel::Dialogs {
  public:
    ostrel::MsgAnswer MsgBox(const std::string&, ostrel::MsgButtons, ostrel::MsgIcon,
                             const std::string&) override {
        return ostrel::MsgAnswer::OK;
    }
    std::optional<std::string> InputBox(const std::string&, const std::string&,
                                        const std::string&) override {
        return std::nullopt;
    }
    std::optional<std::string> FileOpen(const ostrel::FileDialogSpec&) override { return {}; }
    std::optional<std::string> FileSave(const ostrel::FileDialogSpec&) override { return {}; }
    void SetBusy(bool) override {}
    void HelpNote(const std::string&, bool) override {}
    bool OpenUrl(const std::string&) override { return false; }
};

enum class Family { Agf, Glc, All };

std::vector<fs::path> Catalogues(Family family) {
    std::vector<fs::path> dirs;
    if (family != Family::Glc) {
        dirs = {kData / "agf" / "2020", kData / "agf" / "newer", kData / "agf" / "legacy"};
    }
    if (family != Family::Agf) dirs.push_back(kData / "glc");
    std::vector<fs::path> out;
    for (const auto& dir : dirs) {
        if (!fs::exists(dir)) continue;
        for (const auto& e : fs::directory_iterator(dir)) out.push_back(e.path());
    }
    return out;
}

// The peak resident memory of the process from the last PeakReset on, in MB (the kernel's
// high-water mark, which writing 5 to clear_refs brings down to the present size). Memory a
// benchmark before has freed is first given back, so that it does not count.
void PeakReset() {
    malloc_trim(0);
    std::ofstream("/proc/self/clear_refs") << "5";
}
double PeakMegabytes() {
    std::ifstream status("/proc/self/status");
    std::string word;
    while (status >> word) {
        if (word == "VmHWM:") {
            double kb = 0;
            status >> kb;
            return kb / 1024.0;
        }
    }
    return 0;
}

void ImportAll(benchmark::State& state, Family family, bool takeOut) {
    const auto files = Catalogues(family);
    QuietDialogs dialogs;
    ostrel::ImportOptions options;
    size_t glasses = 0;
    PeakReset();
    for (auto _ : state) {
        glasses = 0;
        // Every file has a staging list of its own, kept until all are read.
        std::vector<std::vector<ostrel::StagedGlass>> staged(files.size());
        for (size_t f = 0; f < files.size(); ++f) {
            const fs::path& p = files[f];
            int count = 0, refits = 0;
            int16_t ok = 0;
            std::vector<float> errors;
            if (p.parent_path().filename() == "glc") {
                ostrel::CImportOsloGLC importer(dialogs, options);
                importer.ReadFile(p.string(), staged[f], count, refits, errors, ok);
            } else {
                ostrel::CImportZemaxAGF importer(dialogs, options);
                std::string errorText;
                importer.ReadFile(p.string(), p.filename().string(), staged[f], count, refits,
                                  errors, errorText, 8, ok);
            }
            if (takeOut) {
                for (const auto& glass : staged[f]) {
                    const ostrel::MaterialRecord rec = ostrel::LeaveStaging(glass);
                    benchmark::DoNotOptimize(rec);
                }
            }
            glasses += static_cast<size_t>(count);
        }
        benchmark::DoNotOptimize(glasses);
    }
    state.counters["glasses"] = static_cast<double>(glasses);
    state.counters["peak_MB"] = PeakMegabytes();
}

void BM_Import(benchmark::State& state, Family family) {
    ImportAll(state, family, false);
}
BENCHMARK_CAPTURE(BM_Import, agf, Family::Agf)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(BM_Import, glc, Family::Glc)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(BM_Import, all, Family::All)->Unit(benchmark::kMillisecond);

void BM_ImportWithAllTables(benchmark::State& state) {
    ImportAll(state, Family::All, true);
}
BENCHMARK(BM_ImportWithAllTables)->Unit(benchmark::kMillisecond);

// The least any reading can do: the files read and decoded, and every line split into its
// words, line after line, without a list of the lines.
void BM_LineAndWordSplit(benchmark::State& state, Family family) {
    const auto files = Catalogues(family);
    std::vector<std::string_view> words;
    PeakReset();
    for (auto _ : state) {
        size_t count = 0;
        for (const auto& p : files) {
            std::string bytes;
            ostrel::FileError error;
            if (!ostrel::ReadWholeFile(p, bytes, error)) continue;
            const std::string text = ostrel::DecodeTextFile(std::move(bytes));
            for (size_t at = 0; at < text.size();) {
                const size_t end = ostrel::LineEnd(text, at);
                ostrel::SplitBlanks(std::string_view(text.data() + at, end - at), words);
                count += words.size();
                at = ostrel::NextLineStart(text, end);
            }
        }
        benchmark::DoNotOptimize(count);
    }
    state.counters["peak_MB"] = PeakMegabytes();
}
BENCHMARK_CAPTURE(BM_LineAndWordSplit, agf, Family::Agf)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(BM_LineAndWordSplit, glc, Family::Glc)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(BM_LineAndWordSplit, all, Family::All)->Unit(benchmark::kMillisecond);

}  // namespace

int main(int argc, char** argv) {
    return ostrel::bench::RunWithRatios(
        argc, argv,
        {{"import of the 75 AGF files", "BM_Import/agf", "BM_LineAndWordSplit/agf"},
         {"import of the 16 GLC files", "BM_Import/glc", "BM_LineAndWordSplit/glc"},
         {"import of all 91 files", "BM_Import/all", "BM_LineAndWordSplit/all"},
         {"import of all 91 files, all taken out", "BM_ImportWithAllTables",
          "BM_LineAndWordSplit/all"}});
}
