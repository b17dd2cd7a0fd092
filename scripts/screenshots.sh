#!/usr/bin/env bash
# Builds the program and retakes the pictures in docs/screenshots: a demonstration
# installation in a scratch folder, a few custom materials, and the picture tour on a virtual
# 1400x900 screen. An AGF catalogue for the import form may be given (default: the infrared
# catalogue of the real data set beside the checkout, when present).
set -euo pipefail
cd "$(dirname "$0")/.."
bash scripts/setup.sh
build_dir="${OSTREL_BUILD_DIR:-build}"
OSTREL_BUILD_DIR="$build_dir" bash scripts/build.sh -DOSTREL_TESTS=OFF
catalogue="${1:-../shared/data/agf/2020/INFRARED.AGF}"
scratch="$(mktemp -d)"
trap 'rm -rf "$scratch"' EXIT
"$build_dir/src/cli/ostrel-cli" --data-dir "$scratch/data" demo "$scratch/demo" >/dev/null
# The one-time notices are taken as read, so that none stops the tour.
cat >>"$scratch/data/Settings.ini" <<'INI'

[CNM_NewUserMsg]
ImportPolyRefit=True
MeltMaker=True
WaveSelector=True
popMeltSchott=True
INI
args=(--data-dir "$scratch/data" --screenshots docs/screenshots)
[ -f "$catalogue" ] && args+=(--screenshot-import "$catalogue")
xvfb-run -a -s "-screen 0 1400x900x24" "$build_dir/src/app/ostrel" "${args[@]}"
