#!/usr/bin/env bash
# Installs the build tree BINARY into a fresh folder and uses what stands there: a C++ program by find_package and
# by pkg-config, the Python module, the command line. `check.sh SOURCE BINARY`
set -euo pipefail
source=$1
binary=$2
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
prefix=$work/prefix
cmake --install "$binary" --prefix "$prefix" >/dev/null
project=$source/samples/demo/demo.VLS

export PKG_CONFIG_PATH
PKG_CONFIG_PATH=$(dirname "$(find "$prefix" -name VlGeneralServices.pc)")
expected="DRIVER=Microsoft Access Driver (*.mdb);DBQ="
check() { # NAME COMMAND…
    local name=$1 output
    shift
    output=$("$@")
    [[ $output == *"$expected"* ]] || { echo "$name printed: $output" >&2; exit 1; }
    echo "$name: ok"
}

cmake -S "$source/tests/consumer/program" -B "$work/cmake" -DCMAKE_PREFIX_PATH="$prefix" >/dev/null
cmake --build "$work/cmake" >/dev/null
check find_package "$work/cmake/consumer" "$project"

read -ra flags <<<"$(pkg-config --cflags --libs VlGeneralServices)"
c++ "$source/tests/consumer/program/main.cpp" -o "$work/consumer" "${flags[@]}" \
    -Wl,-rpath,"$(dirname "$(find "$prefix" -name 'libVlGeneralServices.so' | head -n 1)")"
check pkg-config "$work/consumer" "$project"

check python env PYTHONPATH="$(dirname "$(dirname "$(find "$prefix" -path '*vlgs/__init__.py')")")" python3 -c \
    'import sys, vlgs; print(vlgs.Dispatch("VlGeneralServices.Files").BuildConnectionStringFromPath(sys.argv[1]))' \
    "$project"
check "command line" "$prefix/bin/vlgs" call Files.BuildConnectionStringFromPath "$project"
