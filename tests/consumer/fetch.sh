#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# A project that fetches the sources builds the library as its own, here a static one, and installs it; a second one
# uses that. `fetch.sh SOURCE WORK`
set -euo pipefail
source=$1
work=$2
here=$source/tests/consumer
source "$here/expect.sh"
project=$source/samples/demo/demo.VLS
launcher=$(command -v ccache || true)

cmake -S "$here/program" -B "$work/fetched" -G Ninja -DVLGS_SOURCE="$source" -DBUILD_SHARED_LIBS=OFF \
    -DVLGS_INSTALL=ON -DCMAKE_CXX_FLAGS=-O0 ${launcher:+-DCMAKE_CXX_COMPILER_LAUNCHER=$launcher} >/dev/null
cmake --build "$work/fetched" >/dev/null
expect_program FetchContent "$work/fetched/consumer" "$project"

rm -rf "$work/prefix" "$work/static"
cmake --install "$work/fetched" --prefix "$work/prefix" >/dev/null
cmake -S "$here/program" -B "$work/static" -G Ninja -DCMAKE_PREFIX_PATH="$work/prefix" >/dev/null
cmake --build "$work/static" >/dev/null
# The program alone, far from the files of the message texts.
alone=$(mktemp -d)
trap 'rm -rf "$alone"' EXIT
cp "$work/static/consumer" "$alone"
expect_program "static library" "$alone/consumer" "$project"
