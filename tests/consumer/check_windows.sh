#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# Installs the Windows build tree BINARY into the folder WORK, builds the consumer program against it and runs it under
# Wine. `check_windows.sh SOURCE BINARY TOOLCHAIN WORK`
set -euo pipefail
source=$1
binary=$2
toolchain=$3
work=$4
here=$source/tests/consumer
source "$here/expect.sh"
prefix=$work/prefix
rm -rf "$work"
cmake --install "$binary" --prefix "$prefix" >/dev/null
for file in bin/VlGeneralServices.dll bin/VlComRes.dll bin/VlGeneralServices.manifest lib/libVlGeneralServices.dll.a \
    include/VlGeneralServices/{Files,Interfaces}.h share/VlGeneralServices/typelib/VlGeneralServices.{idl,tlb} \
    share/VlGeneralServices/resources/VlComRes.de.txt; do
    [ -f "$prefix/$file" ] || { echo "$file is not installed" >&2; exit 1; }
done
"$here/exports.py" "$prefix/bin/VlGeneralServices.dll" "$prefix/include/VlGeneralServices"
"${toolchain#mingw-}-w64-mingw32-g++-posix" -std=c++17 -municode -static -isystem "$prefix/include" \
    "$source/samples/early_bound.cpp" -o "$work/early_bound.exe" -loleaut32 -lole32 -luuid
cmake -S "$here/program" -B "$work/program" -G Ninja --toolchain "$source/cmake/$toolchain.cmake" \
    -DCMAKE_PREFIX_PATH="$prefix" -DCMAKE_EXE_LINKER_FLAGS=-static >/dev/null
cmake --build "$work/program" >/dev/null
cp "$work/program/consumer.exe" "$prefix/bin"
expect_program "$toolchain, find_package" wine "$prefix/bin/consumer.exe" "$(winepath -w "$source/samples/demo/demo.VLS")"
