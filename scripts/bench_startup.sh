#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# How long the command line takes from its start to its end, next to a C++ program that only prints a line and to
# crudini. `scripts/bench_startup.sh [VLGS]`: the program to measure, without one that of the release build.
set -euo pipefail
cd "$(dirname "$0")/.."
source scripts/packages.sh
need_build
need hyperfine crudini
[ $# -gt 0 ] || build release vlgs
vlgs=${1:-build/release/bin/vlgs}
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
printf '#include <iostream>\nint main() { std::cout << "VlGeneralServices.Files\\n"; }\n' >"$work/empty.cpp"
g++ -O2 -o "$work/empty" "$work/empty.cpp"
cp samples/demo/demo.VLS "$work/demo.ini"
hyperfine -N --warmup 20 --runs "${RUNS:-300}" --export-json "$work/times.json" \
    -n 'empty program' "$work/empty" \
    -n 'vlgs version' "$vlgs version" \
    -n 'vlgs call Files.ClassName' "$vlgs call Files.ClassName" \
    -n 'vlgs ini get' "$vlgs ini get $work/demo.ini ODBC DRIVER" \
    -n 'crudini --get' "crudini --get $work/demo.ini ODBC DRIVER" >/dev/null 2>&1
python3 - "$work/times.json" <<'END'
import json, sys
rows = json.load(open(sys.argv[1]))["results"]
for row in rows:
    print(f'{row["command"]:28} {row["min"] * 1000:7.2f} ms at best, {row["median"] * 1000:7.2f} ms in the middle, '
          f'{row["min"] / rows[0]["min"]:6.2f} times the empty program')
END
