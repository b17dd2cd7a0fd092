#!/usr/bin/env bash
# Builds the benchmarks (Release) and runs every one of them, then prints one table of the
# workloads: fastest time, fastest time of its baseline and the ratio.
# Usage: bench/run_all.sh [build-folder] [repetitions]
set -euo pipefail
root="$(cd "$(dirname "$0")/.." && pwd)"
build="${1:-$root/build-bench}"
reps="${2:-5}"
launcher=()
command -v ccache >/dev/null && launcher=(-DCMAKE_CXX_COMPILER_LAUNCHER=ccache)
cmake -S "$root" -B "$build" -DCMAKE_BUILD_TYPE=Release -DOSTREL_BENCH=ON -DOSTREL_TESTS=OFF \
    "${launcher[@]}" >/dev/null
cmake --build "$build" -j2 >/dev/null
lines=()
for program in "$build"/bench/*_bench; do
    [ -x "$program" ] || continue
    echo "== $(basename "$program")" >&2
    out="$("$program" --benchmark_repetitions="$reps" --benchmark_enable_random_interleaving=true \
        --benchmark_report_aggregates_only=false --benchmark_color=false 2>&1)" || {
        echo "$out" >&2
        exit 1
    }
    while IFS= read -r line; do lines+=("$line"); done < <(grep '^ratio |' <<<"$out" || true)
done
printf '\n%-46s %12s %12s %8s\n' workload time baseline ratio
for line in "${lines[@]}"; do
    IFS='|' read -r _ work time base ratio <<<"$line"
    printf '%-46s %12s %12s %8s\n' "$(xargs <<<"$work")" "$(xargs <<<"$time")" \
        "$(xargs <<<"$base")" "$(xargs <<<"$ratio")"
done
