#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# Emits the interface definition and the side-by-side manifest in typelib/ from the class descriptions.
set -euo pipefail
cd "$(dirname "$0")/.."
source scripts/packages.sh
need_tests
build dev library_tests
VLGS_SOURCE_DIR=$PWD VLGS_UPDATE_TYPELIB=1 build/dev/library_tests --gtest_brief=1 --gtest_filter='InterfaceDefinition.*'
git status --short typelib
