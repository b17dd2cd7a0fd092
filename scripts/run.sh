#!/usr/bin/env bash
# Sets everything up, builds and starts Ostrel. Without sibling programs installed, the
# first start creates a demonstration installation of them (a small glass catalogue and
# database) in the data folder, so that every feature can be tried.
set -euo pipefail
cd "$(dirname "$0")/.."
bash scripts/setup.sh
OSTREL_BUILD_DIR="${OSTREL_BUILD_DIR:-build}" bash scripts/build.sh -DOSTREL_TESTS=OFF
build_dir="${OSTREL_BUILD_DIR:-build}"
data_dir="${XDG_DATA_HOME:-$HOME/.local/share}/Ostrel"
mkdir -p "$data_dir"
if [ ! -d "$data_dir/demo" ] && "$build_dir/src/cli/ostrel-cli" --help 2>/dev/null | grep -q '^ *demo'; then
    "$build_dir/src/cli/ostrel-cli" --data-dir "$data_dir" demo "$data_dir/demo" || true
fi
if [ -z "${DISPLAY:-}" ] && [ -z "${WAYLAND_DISPLAY:-}" ]; then
    echo "No display found: starting under a virtual X server (xvfb-run)."
    exec xvfb-run -a -s "-screen 0 1600x1000x24" "$build_dir/src/app/ostrel" --data-dir "$data_dir" "$@"
fi
exec "$build_dir/src/app/ostrel" --data-dir "$data_dir" "$@"
