#!/usr/bin/env bash
# Puts one small fault at a time into a scratch copy of the tree (a git worktree of HEAD),
# rebuilds, runs every test and reports whether the suite caught it. A fault the suite lets
# through is a hole in the tests. Usage: scripts/fault_check.sh [faults-file]
# The scratch tree goes to $TMPDIR (/tmp unless set); set TMPDIR beside the checkout to let
# a compiler cache that is told the checkout's parent folder reuse what it built before.
# Each line of the faults file: file | perl substitution | what the fault does
set -euo pipefail
root="$(cd "$(dirname "$0")/.." && pwd)"
faults="${1:-$root/scripts/faults.txt}"
scratch="$(mktemp -d "${TMPDIR:-/tmp}/ostrel-faults.XXXXXX")"
trap 'git -C "$root" worktree remove --force "$scratch/tree" >/dev/null 2>&1 || true; rm -rf "$scratch"' EXIT
git -C "$root" worktree add --detach "$scratch/tree" HEAD >/dev/null
# The real catalogues beside the checkout, so that the tests reading them run here too.
[ -d "$root/../shared" ] && ln -s "$root/../shared" "$scratch/shared"
cd "$scratch/tree"
launcher=()
command -v ccache >/dev/null && launcher=(-DCMAKE_CXX_COMPILER_LAUNCHER=ccache)
cmake -S . -B build -DCMAKE_BUILD_TYPE=Release -DOSTREL_TESTS=ON "${launcher[@]}" >/dev/null
cmake --build build -j2 >/dev/null
missed=0
while IFS='|' read -r file edit what; do
    file="$(xargs <<<"$file")"
    [ -z "$file" ] || [ "${file:0:1}" = "#" ] && continue
    edit="$(sed 's/^ *//; s/ *$//' <<<"$edit")"
    cp "$file" "$scratch/original"
    perl -0pi -e "$edit" "$file"
    if cmp -s "$file" "$scratch/original"; then
        printf 'NOT APPLIED  %-44s %s\n' "$file" "$what"
        missed=1
        continue
    fi
    if ! cmake --build build -j2 >"$scratch/build.log" 2>&1; then
        result="caught (does not build)"
    elif (cd build && QT_QPA_PLATFORM=offscreen ctest -j2 --timeout 300 >"$scratch/test.log" 2>&1); then
        result="MISSED"
        missed=1
    else
        result="caught by $(grep -c '\*\*\*Failed\|\*\*\*Exception\|\*\*\*Timeout' "$scratch/test.log") tests"
    fi
    printf '%-24s %-44s %s\n' "$result" "$file" "$what"
    cp "$scratch/original" "$file"
done <"$faults"
cmake --build build -j2 >/dev/null
exit "$missed"
