#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# Kills processes that store something, lets system calls fail, fills disks, crowds the registry, the locks and the
# classes, and prints one table of what was lost (torture/run.py). Two minutes when none are given:
#
#   scripts/torture.sh 30              everything
#   scripts/torture.sh 5 kills full    what has one of these words in its name
#
# Ends with status 1 unless nothing was lost.
set -euo pipefail
cd "$(dirname "$0")/.."
source scripts/packages.sh
source scripts/wine.sh
need_build strace
build dev Worker LockTaker Classes
build threads Classes
options=(--build build/dev --threads build/threads)
if command -v wine >/dev/null && command -v x86_64-w64-mingw32-g++-posix >/dev/null; then
    build windows-x64 VlGeneralServices VlComRes ComLoops
    prefix=$(mktemp -d)
    trap 'end_wine; rm -rf "$prefix"' EXIT
    new_prefix "$prefix"
    options+=(--windows build/windows-x64)
fi
python3 torture/run.py "${options[@]}" "${@:-2}"
