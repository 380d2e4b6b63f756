#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# Builds the benchmarks with optimization and runs them, or those whose names are given, next to their peers:
# `scripts/bench.sh INI Store`.
set -euo pipefail
cd "$(dirname "$0")/.."
source scripts/packages.sh
need_build pkg-config libbenchmark-dev libglib2.0-dev libinih-dev libcrypto++-dev html2text unixodbc-dev gnuplot-nox \
    pybind11-dev
build release
[ $# -gt 0 ] || set -- $(cd bench && ls -- *Bench.* | sed 's/Bench\..*//')
for name in "$@"; do
    echo "== $name"
    if [ "$name" = Python ]; then
        PYTHONPATH=build/release/python:build/release/bench python3 bench/PythonBench.py
    else
        "build/release/bench/${name}Bench"
    fi
done
