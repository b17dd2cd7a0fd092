#!/usr/bin/env bash
# Sets everything up, builds the programs without the tests, and makes the Debian package
# build-package/ostrel_<version>_<arch>.deb (or in $OSTREL_BUILD_DIR). Install it with
#   sudo apt-get install ./build-package/ostrel_*.deb
set -euo pipefail
cd "$(dirname "$0")/.."
bash scripts/setup.sh
build_dir="${OSTREL_BUILD_DIR:-build-package}"
OSTREL_BUILD_DIR="$build_dir" bash scripts/build.sh -DOSTREL_TESTS=OFF
rm -f "$build_dir"/ostrel_*.deb
cpack --config "$build_dir/CPackConfig.cmake" -B "$build_dir" >/dev/null
rm -rf "$build_dir/_CPack_Packages"
ls "$build_dir"/ostrel_*.deb
