#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# Compares the run time's conversions with the operating system's own under Wine, in every locale of the test:
#
#   scripts/compare_conversions.sh            100000 generated inputs for each locale
#   scripts/compare_conversions.sh COUNT      so many
#
# A short run is one of the tests that scripts/test_windows.sh runs. Known differences and their reasons stand in
# compare/KnownDifferences.h.
set -euo pipefail
cd "$(dirname "$0")/.."
source scripts/packages.sh
source scripts/wine.sh
need_build "${under_wine[@]}"
build windows-x64 CompareConversions

prefix=$(mktemp -d)
trap 'end_wine; rm -rf "$prefix"' EXIT
new_prefix "$prefix"
wine build/windows-x64/bin/CompareConversions.exe "${1:-100000}"
