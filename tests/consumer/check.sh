#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# Installs the build tree BINARY into a fresh folder and uses what stands there: a C++ program by find_package and
# by pkg-config, the Python module, the command line; and looks at what the library exports. Then pip installs the module
# from the build tree, without network. `check.sh SOURCE BINARY`
set -euo pipefail
source=$1
binary=$2
here=$source/tests/consumer
source "$here/expect.sh"
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
prefix=$work/prefix
cmake --install "$binary" --prefix "$prefix" >/dev/null
project=$source/samples/demo/demo.VLS
library=$(find "$prefix" -name libVlGeneralServices.so)

"$here/exports.py" "$library" "$prefix/include/VlGeneralServices"

cmake -S "$here/program" -B "$work/cmake" -G Ninja -DCMAKE_PREFIX_PATH="$prefix" >/dev/null
cmake --build "$work/cmake" >/dev/null
expect_program find_package "$work/cmake/consumer" "$project"

export PKG_CONFIG_PATH=$(dirname "$library")/pkgconfig
read -ra flags <<<"$(pkg-config --cflags --libs VlGeneralServices)"
[[ ${flags[*]} != *-std=* ]]
c++ -std=c++20 "$here/program/main.cpp" -o "$work/consumer" "${flags[@]}" -Wl,-rpath,"$(dirname "$library")"
expect_program pkg-config "$work/consumer" "$project"

older=$(c++ -std=c++17 -fsyntax-only "$here/program/main.cpp" "${flags[@]}" 2>&1 || true)
[[ $(grep -m 1 error: <<<"$older") == *"VlGeneralServices need C++20"* ]] ||
    { echo "C++17 gets another message: $older" >&2; exit 1; }

# Only the development files have the library's name without a version.
rm "$library"
module=$(find "$prefix" -path '*-packages/vlgs' -type d)
connection='import sys, vlgs; print(vlgs.Dispatch("VlGeneralServices.Files").BuildConnectionStringFromPath(sys.argv[1]))'
expect python env PYTHONPATH="$(dirname "$module")" python3 -c "$connection" "$project"
expect "command line" "$prefix/bin/vlgs" call Files.BuildConnectionStringFromPath "$project"

python3 -m venv "$work/venv"
"$work/venv/bin/pip" install -q --no-index --no-deps --disable-pip-version-check --config-settings tree="$binary" "$source"
rm -rf "$prefix"
expect pip env -u PYTHONPATH -u VLGS_LIBRARY -C "$work" "$work/venv/bin/python" -c "$connection" "$project"
