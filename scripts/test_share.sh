#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# Prints how much test code there is for the code, in lines that are neither blank nor comment; generated tables are
# left out, and so are the programs in bench/, compare/, fuzz/ and torture/, which search rather than check. A third is
# the most there should be: `scripts/test_share.sh 33` fails above 33 %.
set -euo pipefail
cd "$(dirname "$0")/.."

# The lines of code in the tracked files below the folders whose names match an expression.
lines() {
    local expression=$1
    shift
    git ls-files -z -- "$@" | grep -zE "$expression" | grep -zvE 'generated|\.inc$' | xargs -0 awk '
        { sub(/^[ \t]+/, "") }
        /^$/ || /^(\/\/|\/\*|\*|#!)/ || (FILENAME ~ /\.(py|sh)$/ && /^#/) { next }
        { ++count }
        END { print count + 0 }'
}

code=$(lines '\.(h|cpp|py|c)$' src tools python)
tests=$(lines '\.(h|cpp|py|vbs|js|sh)$' tests)
awk -v code="$code" -v tests="$tests" -v most="${1:-100}" 'BEGIN {
    share = 100 * tests / code
    printf "%d lines of tests, %d of code: %.1f %%\n", tests, code, share
    exit share > most
}'
