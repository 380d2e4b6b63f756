#!/usr/bin/env bash
# Runs clang-tidy over the sources, or over the files named.
set -euo pipefail
cd "$(dirname "$0")/.."
source scripts/packages.sh
need_build
need_tests
need clang-tidy
cmake --preset dev -DCMAKE_EXPORT_COMPILE_COMMANDS=ON >/dev/null
if [ $# -eq 0 ]; then
    mapfile -t files < <(git ls-files 'src/*.cpp' 'tools/*.cpp' | grep -vE '/windows/|^src/com/')
    set -- "${files[@]}"
fi
printf '%s\n' "$@" | xargs -P "$(nproc)" -n 4 clang-tidy --quiet -p build/dev
