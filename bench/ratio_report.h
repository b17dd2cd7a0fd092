// Every benchmark program ends with the same table lines: a workload, its fastest time, the
// fastest time of its baseline (the plain work it cannot beat) and their ratio. The line form
// "ratio | workload | time | baseline | ratio" is what bench/run_all.sh collects.
#pragma once

#include <benchmark/benchmark.h>

#include <malloc.h>

#include <algorithm>
#include <cstdio>
#include <map>
#include <string>
#include <vector>

namespace ostrel::bench {

// A workload and its baseline, both named as the console shows them ("BM_Fit/150").
struct RatioPair {
    std::string workload;
    std::string benchmark;
    std::string baseline;
};

// The console report, keeping the fastest run of each benchmark.
// Without colour: a reporter handed to the library does not follow --benchmark_color, and the
// colour codes it would print lead the first table line, which run_all.sh then misses.
class RatioReporter : public benchmark::ConsoleReporter {
  public:
    RatioReporter() : ConsoleReporter(OO_Tabular) {}
    void ReportRuns(const std::vector<Run>& runs) override {
        ConsoleReporter::ReportRuns(runs);
        for (const Run& run : runs) {
            if (run.run_type != Run::RT_Iteration || run.error_occurred) continue;
            std::string name = run.run_name.function_name;
            if (!run.run_name.args.empty()) name += "/" + run.run_name.args;
            const double seconds =
                run.GetAdjustedRealTime() / benchmark::GetTimeUnitMultiplier(run.time_unit);
            const auto found = fastest.find(name);
            fastest[name] = found == fastest.end() ? seconds : std::min(found->second, seconds);
        }
    }
    std::map<std::string, double> fastest;  // seconds per iteration
};

// Runs the benchmarks chosen on the command line, then prints one table line per pair whose
// two benchmarks both ran.
inline int RunWithRatios(int argc, char** argv, const std::vector<RatioPair>& pairs) {
    // The allocator raises its thresholds for mapping and for giving memory back as large
    // blocks come and go, so that a benchmark's time would depend on which ran before it.
    // They are fixed from the start at the highest values it would raise them to.
    mallopt(M_MMAP_THRESHOLD, 32 * 1024 * 1024);
    mallopt(M_TRIM_THRESHOLD, 64 * 1024 * 1024);
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 1;
    RatioReporter reporter;
    benchmark::RunSpecifiedBenchmarks(&reporter);
    benchmark::Shutdown();
    // The console report leaves its colour reset at the start of a line of its own; the table
    // starts on a fresh line so that every one of its lines begins with "ratio |".
    std::fflush(stdout);
    std::printf("\n");
    for (const RatioPair& p : pairs) {
        const auto work = reporter.fastest.find(p.benchmark);
        const auto base = reporter.fastest.find(p.baseline);
        if (work == reporter.fastest.end() || base == reporter.fastest.end() || base->second <= 0)
            continue;
        std::printf("ratio | %s | %.4g ms | %.4g ms | %.2fx\n", p.workload.c_str(),
                    work->second * 1e3, base->second * 1e3, work->second / base->second);
    }
    return 0;
}

}  // namespace ostrel::bench
