#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# Runs every fuzz target for some seconds each (30 when none are given): `scripts/fuzz.sh 3600` runs long. Each begins
# with the inputs in fuzz/corpus/<target>, and keeps what it finds besides in build/fuzz/corpus.
# Every run begins with the same seed. Built with clang's libFuzzer (versions 14 to 19); where that cannot be had, with a
# driver that feeds seeded random inputs, and the script says so.
set -euo pipefail
cd "$(dirname "$0")/.."
source scripts/packages.sh
seconds=${1:-30}
need_build
version=$(clang_version)
if need "clang-$version" "libclang-rt-$version-dev"; then
    export CXX=clang++-$version
else
    echo "No clang of version 14 to 19 with libFuzzer: the targets get seeded random inputs instead"
fi
build fuzz
for target in build/fuzz/fuzz/*Fuzz; do
    name=$(basename "$target")
    corpus=build/fuzz/corpus/$name
    mkdir -p "$corpus"
    log=build/fuzz/$name.log
    printf '%-28s' "$name"
    if "$target" -seed=20091 -max_total_time="$seconds" -max_len=65536 -timeout=20 -rss_limit_mb=4096 \
            -artifact_prefix=build/fuzz/ "$corpus" "fuzz/corpus/$name" >"$log" 2>&1; then
        echo "ok, $(grep -oE '[0-9]+ runs' "$log" | tail -1)"
    else
        echo "FAILED" && tail -n 40 "$log" && exit 1
    fi
done
