#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# Writes the reference pages in docs/reference/ and the Python module's stub from the class descriptions.
set -euo pipefail
cd "$(dirname "$0")/.."
source scripts/packages.sh
need_build
build dev vlgs VlGeneralServices
mkdir -p docs/reference
rm -f docs/reference/*.md
build/dev/bin/vlgs describe --markdown > docs/reference/README.md
build/dev/bin/vlgs classes | while read -r class _; do
  build/dev/bin/vlgs describe --markdown "$class" > "docs/reference/$class.md"
done
PYTHONPATH=build/dev/python python3 scripts/python_stubs.py --write
