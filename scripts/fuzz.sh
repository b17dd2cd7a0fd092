#!/usr/bin/env bash
# Builds the fuzz targets with clang and libFuzzer and runs each on its seeds.
#
#   scripts/fuzz.sh [-t SECONDS] [-r RUNS] [TARGET...]
#
# -t  time per target (default 20 s); -r  stop each target after RUNS executions instead.
# TARGET: custom_list external_file glz agf glc gla gls ini wave_list (default all).
# The build goes to build-fuzz (or $OSTREL_FUZZ_BUILD_DIR). Each target's corpus is a copy of
# its seeds in fuzz/seeds and, when the folder shared/data stands beside the repository, of
# the real catalogues of its format, under <build>/corpus/<target>; what the run adds stays
# there. Crashing inputs are written to <build>/artifacts. Stops at the first target that
# fails.
set -euo pipefail
cd "$(dirname "$0")/.."

seconds=20
runs=""
while getopts "t:r:" opt; do
    case "$opt" in
        t) seconds="$OPTARG" ;;
        r) runs="$OPTARG" ;;
        *) sed -n '2,13p' "$0" >&2; exit 2 ;;
    esac
done
shift $((OPTIND - 1))

all_targets=(custom_list external_file glz agf glc gla gls ini wave_list)
targets=("${@:-${all_targets[@]}}")
build_dir="${OSTREL_FUZZ_BUILD_DIR:-build-fuzz}"
shared_data="../shared/data"

cmake -S . -B "$build_dir" -DCMAKE_BUILD_TYPE=RelWithDebInfo -DCMAKE_CXX_COMPILER=clang++ \
    -DOSTREL_FUZZ=ON -DOSTREL_GUI=OFF -DOSTREL_TESTS=OFF -DOSTREL_BENCH=OFF >/dev/null
cmake --build "$build_dir" -j2 --target "${targets[@]/#/fuzz_}"

# Real catalogues that seed a target, found by extension (any case).
real_seeds() {
    [ -d "$shared_data" ] || return 0
    case "$1" in
        agf) find "$shared_data" -type f -iname '*.agf' ;;
        glc) find "$shared_data" -type f -iname '*.glc' ;;
    esac
}

# The longest input tried. The custom list needs room for two of its 12964-byte records and
# the byte that picks the layout; for the text formats a few kilobytes hold several glasses
# (longer seeds are cut there), which keeps each execution short.
max_len() {
    case "$1" in
        custom_list) echo 26000 ;;
        *) echo 4096 ;;
    esac
}

# The targets write each input to a file: a memory file system makes that about twenty
# times faster than a disk.
if [ -z "${TMPDIR:-}" ] && [ -d /dev/shm ] && [ -w /dev/shm ]; then export TMPDIR=/dev/shm; fi
export ASAN_OPTIONS="${ASAN_OPTIONS:-abort_on_error=1:detect_leaks=1}"
export UBSAN_OPTIONS="${UBSAN_OPTIONS:-halt_on_error=1:print_stacktrace=1}"

for target in "${targets[@]}"; do
    corpus="$build_dir/corpus/$target"
    artifacts="$build_dir/artifacts"
    mkdir -p "$corpus" "$artifacts"
    cp -f fuzz/seeds/"$target"/* "$corpus"/
    while IFS= read -r file; do
        cp -f "$file" "$corpus/real-$(basename "$(dirname "$file")")-$(basename "$file")"
    done < <(real_seeds "$target")
    options=(-max_total_time="$seconds")
    [ -n "$runs" ] && options=(-runs="$runs")
    [ -f "fuzz/dict/$target.dict" ] && options+=(-dict="fuzz/dict/$target.dict")
    limit="$seconds s"
    [ -n "$runs" ] && limit="$runs runs"
    echo "== fuzz_$target ($limit, $(ls "$corpus" | wc -l) inputs)"
    "$build_dir/fuzz/fuzz_$target" "${options[@]}" -max_len="$(max_len "$target")" -timeout=20 -rss_limit_mb=2048 \
        -print_final_stats=1 -artifact_prefix="$artifacts/$target-" "$corpus" 2>"$build_dir/fuzz_$target.log" || {
        tail -n 60 "$build_dir/fuzz_$target.log"
        echo "fuzz_$target failed; its log: $build_dir/fuzz_$target.log" >&2
        exit 1
    }
    grep -E '^(stat::number_of_executed_units|stat::peak_rss_mb)|^Done|cov:' \
        "$build_dir/fuzz_$target.log" | tail -n 3
done
