#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# Builds the benchmarks with optimization and runs them, or those whose names are given, next to their peers:
# `scripts/bench.sh INI Store`.
set -euo pipefail
cd "$(dirname "$0")/.."
source scripts/packages.sh
need_build
need pkg-config libbenchmark-dev libgtest-dev libglib2.0-dev libinih-dev libcrypto++-dev html2text unixodbc-dev gnuplot-nox
build release
[ $# -gt 0 ] || set -- $(cd bench && ls -- *Bench.cpp | sed 's/Bench\.cpp//')
for name in "$@"; do
    echo "== $name"
    "build/release/bench/${name}Bench"
done
