#!/usr/bin/env bash
# Prints the lines of the tests, the lines of the code (src and bench) and the tests' share.
# Blank lines and comment lines (// ..., and /* ... */ blocks) are left out of both alike.
set -euo pipefail
cd "$(dirname "$0")/.."
count() {
    find "$@" -type f \( -name '*.cpp' -o -name '*.h' \) -print0 | xargs -0 cat | awk '
        /^[[:space:]]*\/\*/ { block = 1 }
        block { if (/\*\//) block = 0; next }
        /^[[:space:]]*$/ || /^[[:space:]]*\/\// { next }
        { n++ }
        END { print n + 0 }'
}
tests=$(count tests)
code=$(count src bench)
echo "test lines: $tests"
echo "code lines: $code"
awk -v t="$tests" -v c="$code" 'BEGIN { printf "share: %.1f%% of the code\n", 100 * t / c }'
