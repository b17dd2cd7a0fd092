#!/usr/bin/env bash
# Sets everything up, builds, and runs every test (the windows are tested offscreen).
set -euo pipefail
cd "$(dirname "$0")/.."
bash scripts/setup.sh
OSTREL_BUILD_DIR="${OSTREL_BUILD_DIR:-build-test}" bash scripts/build.sh -DOSTREL_TESTS=ON
export QT_QPA_PLATFORM=offscreen
ctest --test-dir "${OSTREL_BUILD_DIR:-build-test}" --output-on-failure -j2
