#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# Tells how many lines ran, as clang counts them: for each fuzz target alone, of the files that it is for (`Covers` in its
# source), then of each room in src/, for the tests in C++ and the targets together. (Python and other programs cannot load
# a library with the fuzzer's counters.) Left out are generated tables, and headers, whose lines are mostly descriptions
# that the compiler evaluates. Each target begins with what scripts/fuzz.sh has found and runs for some seconds (10 when
# none are given). Lines that nothing runs stand in build/coverage/uncovered.txt. Ends with status 1 below 85 %.
set -euo pipefail
cd "$(dirname "$0")/.."
source scripts/packages.sh
seconds=${1:-10}
version=$(clang_version)
need_tests "clang-$version" "llvm-$version" "libclang-rt-$version-dev"
CXX=clang++-$version build coverage
folder=$PWD/build/coverage
rm -rf "$folder/profiles"
export LLVM_PROFILE_FILE=$folder/profiles/%8m.profraw
export VLGS_SOURCE_DIR=$PWD VLGS_BINARY_DIR=$folder
for program in "$folder"/*_tests; do
    "$program" --gtest_brief=1 >"$program.log" 2>&1 || echo "$(basename "$program") fails"
done
left_out=(-ignore-filename-regex='/(tests|fuzz|bench|torture|tools|python)/|generated|\.h$')
objects=()
for target in "$folder"/fuzz/*Fuzz; do
    name=$(basename "$target")
    mkdir -p "build/fuzz/corpus/$name"
    LLVM_PROFILE_FILE=$folder/profiles/$name.profraw \
        "$target" -seed=20091 -max_total_time="$seconds" -timeout=60 "build/fuzz/corpus/$name" "fuzz/corpus/$name" \
        >/dev/null 2>&1 || echo "$name fails"
    "llvm-profdata-$version" merge -sparse "$folder/profiles/$name.profraw" -o "$folder/$name.profdata"
    read -ra covers < <(sed -n 's|^// Covers: ||p' "fuzz/$name.cpp") ||
        { echo "fuzz/$name.cpp does not say what it covers" && exit 1; }
    "llvm-cov-$version" export -summary-only "${left_out[@]}" -instr-profile="$folder/$name.profdata" "$target" |
        scripts/coverage_report.py "$name" "${covers[@]}"
    objects+=(-object "$target")
done
for program in "$folder"/*_tests; do
    objects+=(-object "$program")
done
"llvm-profdata-$version" merge -sparse "$folder"/profiles/*.profraw -o "$folder/all.profdata"
shown=("${left_out[@]}" -instr-profile="$folder/all.profdata" "${objects[@]:1}")
"llvm-cov-$version" show "${shown[@]}" -show-instantiations=false |
    awk '/^\/.*:$/ { file = $0 } /^ *[0-9]+\| *0\|/ { print file $0 }' >"$folder/uncovered.txt"
"llvm-cov-$version" export -summary-only "${shown[@]}" | scripts/coverage_report.py
