#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# Tells how many lines of each room in src/ the tests in C++ and the fuzz targets run together, as clang counts them.
# (Python and other programs cannot load a library with the fuzzer's counters.) Left out are generated tables, and
# headers, whose lines are mostly descriptions that the compiler evaluates. Each target runs for some seconds (10 when
# none are given). Lines that nothing runs stand in build/coverage/uncovered.txt. Ends with status 1
# below 85 %.
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
objects=()
for target in "$folder"/fuzz/*Fuzz; do
    name=$(basename "$target")
    mkdir -p "build/fuzz/corpus/$name"
    "$target" -seed=20091 -max_total_time="$seconds" -timeout=60 "build/fuzz/corpus/$name" "fuzz/corpus/$name" \
        >/dev/null 2>&1 || echo "$name fails"
    objects+=(-object "$target")
done
for program in "$folder"/*_tests; do
    objects+=(-object "$program")
done
"llvm-profdata-$version" merge -sparse "$folder"/profiles/*.profraw -o "$folder/all.profdata"
shown=(-instr-profile="$folder/all.profdata" -ignore-filename-regex='/(tests|fuzz|bench|torture|tools|python)/|generated|\.h$'
       "${objects[@]:1}")
"llvm-cov-$version" show "${shown[@]}" -show-instantiations=false |
    awk '/^\/.*:$/ { file = $0 } /^ *[0-9]+\| *0\|/ { print file $0 }' >"$folder/uncovered.txt"
"llvm-cov-$version" export -summary-only "${shown[@]}" | python3 -c '
import collections, json, sys
rooms = collections.Counter(), collections.Counter()
for file in json.load(sys.stdin)["data"][0]["files"]:
    room = file["filename"].split("/src/")[-1].split("/")[0]
    for name in (room, "all"):
        for counter, key in zip(rooms, ("covered", "count")):
            counter[name] += file["summary"]["lines"][key]
for room, count in sorted(rooms[1].items()):
    print(f"{room:12} {rooms[0][room]:6} of {count:6} lines {100 * rooms[0][room] / count:6.1f} %")
sys.exit(rooms[0]["all"] < 0.85 * rooms[1]["all"])'
