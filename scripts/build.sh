#!/usr/bin/env bash
# Configures and builds into build/ (or $OSTREL_BUILD_DIR), two jobs at a time.
set -euo pipefail
cd "$(dirname "$0")/.."
build_dir="${OSTREL_BUILD_DIR:-build}"
cmake -S . -B "$build_dir" -DCMAKE_BUILD_TYPE="${OSTREL_BUILD_TYPE:-Release}" "$@" >/dev/null
cmake --build "$build_dir" -j2
