#!/usr/bin/env bash
# The checks that need no build: formatting and the arrows between the rooms.
set -euo pipefail
cd "$(dirname "$0")/.."
source scripts/packages.sh
need clang-format
git ls-files '*.cpp' '*.h' | grep -v generated | xargs clang-format --dry-run -Werror
scripts/check_layers.sh
