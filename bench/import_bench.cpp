// Reading the real catalogues: every AGF file of the 2020 set and every GLC file, beside a
// plain split of the same bytes into lines. The import is timed as the import form reads: the
// transmission tables of a staged glass are finished when it is added, so a second benchmark
// shows the read with the tables of every glass finished as well.
#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <map>
#include <sstream>
#include <string>
#include <vector>

#include "core/import/import_oslo_glc.h"
#include "core/import/import_zemax_agf.h"
#include "core/platform/text.h"
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

std::vector<fs::path> Catalogues() {
    std::vector<fs::path> out;
    for (const auto& dir : {kData / "agf" / "2020", kData / "glc"}) {
        if (!fs::exists(dir)) continue;
        for (const auto& e : fs::directory_iterator(dir)) out.push_back(e.path());
    }
    return out;
}

void ImportAll(benchmark::State& state, bool finishTables) {
    const auto files = Catalogues();
    QuietDialogs dialogs;
    ostrel::ImportOptions options;
    options.leaveTransTables = true;
    size_t glasses = 0;
    // One staging list and error list for every read, as the import form keeps them.
    std::vector<ostrel::MaterialRecord> recs;
    std::vector<float> errors;
    for (auto _ : state) {
        glasses = 0;
        for (const auto& p : files) {
            int count = 0, refits = 0;
            int16_t ok = 0;
            if (p.parent_path().filename() == "glc") {
                ostrel::CImportOsloGLC importer(dialogs, options);
                importer.ReadFile(p.string(), recs, count, refits, errors, ok);
            } else {
                ostrel::CImportZemaxAGF importer(dialogs, options);
                std::string errorText;
                importer.ReadFile(p.string(), p.filename().string(), recs, count, refits, errors,
                                  errorText, 8, ok);
            }
            if (finishTables) {
                for (auto& rec : recs) ostrel::FinishImportedTrans(rec);
            }
            glasses += static_cast<size_t>(count);
        }
        benchmark::DoNotOptimize(glasses);
    }
    state.counters["glasses"] = static_cast<double>(glasses);
}

void BM_ImportCatalogues(benchmark::State& state) {
    ImportAll(state, false);
}
BENCHMARK(BM_ImportCatalogues)->Unit(benchmark::kMillisecond);

void BM_ImportWithAllTables(benchmark::State& state) {
    ImportAll(state, true);
}
BENCHMARK(BM_ImportWithAllTables)->Unit(benchmark::kMillisecond);

void BM_PlainLineSplit(benchmark::State& state) {
    const auto files = Catalogues();
    for (auto _ : state) {
        size_t lines = 0;
        for (const auto& p : files) {
            std::ifstream in(p, std::ios::binary);
            std::stringstream ss;
            ss << in.rdbuf();
            lines += ostrel::SplitLines(ss.str()).size();
        }
        benchmark::DoNotOptimize(lines);
    }
}
BENCHMARK(BM_PlainLineSplit)->Unit(benchmark::kMillisecond);

}  // namespace

int main(int argc, char** argv) {
    return ostrel::bench::RunWithRatios(
        argc, argv,
        {{"import of every AGF and GLC file", "BM_ImportCatalogues", "BM_PlainLineSplit"}});
}
