#!/usr/bin/env bash
# Sets everything up, builds, and runs every test (the windows are tested offscreen); then
# builds the tests again with AddressSanitizer and UndefinedBehaviorSanitizer and runs them
# all, and runs each fuzz target for a short time on its seeds.
#
# Build folders: build-test (or $OSTREL_BUILD_DIR), and beside it <that>-asan and
# <that>-fuzz (or $OSTREL_ASAN_BUILD_DIR and $OSTREL_FUZZ_BUILD_DIR). OSTREL_FUZZ_SECONDS
# sets the time per fuzz target (20 s); OSTREL_SANITIZE_STEPS=0 stops after the plain suite.
set -euo pipefail
cd "$(dirname "$0")/.."
bash scripts/setup.sh
build_dir="${OSTREL_BUILD_DIR:-build-test}"
asan_dir="${OSTREL_ASAN_BUILD_DIR:-$build_dir-asan}"
fuzz_dir="${OSTREL_FUZZ_BUILD_DIR:-$build_dir-fuzz}"
export QT_QPA_PLATFORM=offscreen

echo "== Tests"
OSTREL_BUILD_DIR="$build_dir" bash scripts/build.sh -DOSTREL_TESTS=ON
ctest --test-dir "$build_dir" --output-on-failure -j2
[ "${OSTREL_SANITIZE_STEPS:-1}" = 0 ] && exit 0

echo "== Tests with AddressSanitizer and UndefinedBehaviorSanitizer"
# Leaks are looked for; those of the system libraries under Qt are listed in the
# suppressions file. Any report fails the test that caused it. The test programs already
# run while they are built (to list their tests), so the options hold for the build too.
export ASAN_OPTIONS="detect_leaks=1:check_initialization_order=1:strict_init_order=1"
export LSAN_OPTIONS="suppressions=$PWD/scripts/lsan.supp:print_suppressions=0"
export UBSAN_OPTIONS="halt_on_error=1:print_stacktrace=1"
# Built with clang, as the fuzz targets are.
OSTREL_BUILD_DIR="$asan_dir" bash scripts/build.sh -DOSTREL_TESTS=ON -DOSTREL_SANITIZE=ON \
    -DCMAKE_CXX_COMPILER=clang++
ctest --test-dir "$asan_dir" --output-on-failure -j2
unset ASAN_OPTIONS LSAN_OPTIONS UBSAN_OPTIONS

echo "== Fuzzing"
OSTREL_FUZZ_BUILD_DIR="$fuzz_dir" bash scripts/fuzz.sh -t "${OSTREL_FUZZ_SECONDS:-20}"
