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
need_build "${under_wine[@]}"
build windows-x64 CompareConversions

WINEPREFIX=$(mktemp -d)
export WINEPREFIX WINEDEBUG=-all WINEDLLOVERRIDES="mscoree,mshtml=;winemenubuilder.exe=d"
trap 'wineserver -k 2>/dev/null || true; wineserver -w 2>/dev/null || true; rm -rf "$WINEPREFIX"' EXIT
wine wineboot -i >/dev/null 2>&1
wine build/windows-x64/bin/CompareConversions.exe "${1:-100000}"
