#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# The checks that need no build: formatting, the line of licence and the arrows between the rooms.
set -euo pipefail
cd "$(dirname "$0")/.."
source scripts/packages.sh
clang_format=$(tool clang-format 14) # others lay out otherwise
git ls-files '*.cpp' '*.h' | grep -v generated | xargs "$clang_format" --dry-run -Werror
if git grep -L 'SPDX-License-Identifier' -- '*.cpp' '*.h' '*.py' '*.sh' '*.cmake' | grep .; then
    echo "These have no SPDX-License-Identifier" >&2
    exit 1
fi
scripts/check_layers.sh
