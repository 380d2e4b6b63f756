#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# Runs clang-tidy over everything that is compiled, or over the files named. It takes the commands of the build with
# clang, since it does not know every option of other compilers.
set -euo pipefail
cd "$(dirname "$0")/.."
source scripts/packages.sh
need_tests clang
CLANG_TIDY=$(tool clang-tidy 14)
export CLANG_TIDY
cmake --preset clang >/dev/null
scripts/tidy.py build/clang "$@"
