#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# Builds the COM server for Windows, 64 and 32 bit, and proves it under Wine with a fresh prefix.
#
#   scripts/test_windows.sh            everything
#   scripts/test_windows.sh x64        one of the builds
set -euo pipefail
cd "$(dirname "$0")/.."
source scripts/packages.sh
source scripts/wine.sh
source scripts/wine32.sh
source scripts/windows_files.sh

work=$(mktemp -d)
trap 'end_wine; rm -rf "$work"' EXIT
failed=0

fail() {
    echo "FAILED: $*"
    failed=1
}

# The registered classes, interfaces and libraries of the machine and of the user, and whatever has our name.
registry() {
    registry_files |
        awk '/^\[/ { kept = /^\[Software\\\\Classes/ } kept || /[Vv]lGeneralServices|VlgsScriptTest/'
}

# Registers with the given arguments of regsvr32, uses, unregisters, and compares the registry.
round_trip() {
    local title=$1 before=$work/before after=$work/after
    shift
    registry >"$before"
    wine regsvr32 /s "$@" "$dll" || fail "$title: register"
    if [ $# -eq 0 ]; then
        run_scripts "$title"
    else
        # Wine looks for classes in the machine's part alone, so these are only looked at.
        registry | grep '^\[Software.*VlGeneralServices.Files' >/dev/null || fail "$title: nothing is registered"
        echo "-- $title: registered, not used: Wine does not look there"
    fi
    wine regsvr32 /s /u "$@" "$dll" || fail "$title: unregister"
    registry >"$after"
    if ! diff "$before" "$after" >"$work/difference"; then
        head -20 "$work/difference"
        fail "$title: something stays in the registry"
    fi
}

# A copy that was registered later keeps its entries when the first is unregistered.
two_copies() {
    local title=$1 copy=$work/copy/VlGeneralServices.dll
    mkdir -p "$work/copy"
    cp "$dll" "$copy"
    registry >"$work/before"
    wine regsvr32 /s "$dll" && wine regsvr32 /s "$copy" || fail "$title: register"
    registry >"$work/both"
    wine regsvr32 /s /u "$dll" || fail "$title: unregister the first"
    registry | diff "$work/both" - || fail "$title: the second copy has lost entries"
    wine regsvr32 /s /u "$copy" || fail "$title: unregister the second"
    registry | diff "$work/before" - || fail "$title: something stays in the registry"
}

run_scripts() {
    local script
    for script in tests/com/LateBound.vbs tests/com/LateBound.js; do
        echo "-- $1: $(basename "$script")"
        # An error that the script does not catch ends it without a word.
        wine cscript //nologo "$(winepath -w "$script")" | tee "$work/output"
        grep -q 'checks, 0 failed' "$work/output" || fail "$1: $script"
    done
    echo "-- $1: samples"
    local project
    project=$(winepath -w samples/demo/demo.VLS)
    for script in connection.vbs connection.js; do
        wine cscript //nologo "$(winepath -w "samples/$script")" "$project" 12/31/2009 | tr -d '\r' >"$work/output"
        cat "$work/output"
        grep -q '^DRIVER=' "$work/output" && grep -qx 2009-12-31 "$work/output" || fail "$1: samples/$script"
    done
    wine "$bin/early_bound.exe" "$project" | grep -q '^DRIVER=' || fail "$1: samples/early_bound.cpp"
    wine "$bin/VlgsEarlyBound.exe" || fail "$1: early bound"
    wine "$bin/VlgsTypeLibrary.exe" || fail "$1: type library"
    # A thread that hangs as it ends is what this program is for.
    timeout 300 wine "$bin/VlgsThreads.exe" || fail "$1: threads"
}

# tests/com/left_out.txt names what cannot run here, and why.
native_tests() {
    local program name filter
    echo "Left out:"
    grep -v '^#' tests/com/left_out.txt | sed 's/^/    /; s/  /: /'
    for program in "$1"/*_tests.exe; do
        name=$(basename "$program" .exe)
        filter=$(sed -n "s/^$name \([^ ]*\) .*/\1/p" tests/com/left_out.txt | paste -sd:)
        echo "-- $name"
        # A program whose Wine goes away ends without a word, and with success.
        wine "$program" --gtest_brief=1 --gtest_filter="-$filter" | tee "$work/output" &&
            grep -q '^\[  PASSED  \]' "$work/output" || fail "$name"
    done
}

prove() {
    local preset=$1
    bin=$PWD/build/$preset/bin
    dll=$bin/VlGeneralServices.dll
    new_prefix "$work/prefix" "${preset#windows-}"
    # On Windows the root of a drive is hidden and a system folder.
    python3 -c 'import os, sys; os.setxattr(sys.argv[1], "user.DOSATTRIB", b"0x16")' "$WINEPREFIX/drive_c" ||
        echo "-- the root of drive C: has no attributes: this file system has none"
    wine reg add 'HKCU\Software\Classes' /f >/dev/null 2>&1 # as every user of Windows has it
    # The script host registers itself when it runs first.
    wine cscript //nologo "$(winepath -w samples/connection.vbs)" >/dev/null || true
    export VLGS_SOURCE_DIR=$PWD VLGS_BINARY_DIR=$PWD/build/$preset
    round_trip "$preset, machine"
    round_trip "$preset, user" /n /i:user
    two_copies "$preset, two copies"
    cp "$bin/vlgs.exe" "$work"
    { wine "$work/vlgs.exe" call Files.RetrieveINIFile 'C:\no\such.ini' 2>&1 || true; } |
        grep '^error 53.*VlComRes.dll' ||
        fail "$preset: the missing file of the texts is not named"
    echo "-- $preset, manifest without registration"
    wine "$bin/VlgsManifestClient.exe" || fail "$preset: manifest"
    native_tests "$bin"
    wine "$bin/CompareConversions.exe" >"$work/output" || { cat "$work/output" && fail "$preset: conversions"; }
    wine "$bin/ComBench.exe" || fail "$preset: speed"
    # In 32 bits no exception passes from one statically linked module to another.
    [ "$preset" != windows-x64 ] ||
        tests/consumer/check_windows.sh "$PWD" "$PWD/build/$preset" mingw-x86_64 "$work/consumer" ||
        fail "$preset: installed tree"
    end_wine
}

need_build "${under_wine[@]}"
if [ "${1:-}" = prove ]; then # from below, with the 32-bit Wine
    prove "$2"
    exit $failed
fi
for kind in ${1:-x64 x86}; do
    echo "== windows-$kind: build"
    build "windows-$kind"
done
for kind in ${1:-x64 x86}; do
    check_windows_files "build/windows-$kind/bin"
    echo "== windows-$kind: Wine"
    if [ "$kind" = x64 ]; then
        prove windows-x64
    else
        run_with_wine32 scripts/test_windows.sh prove windows-x86 || failed=1
    fi
done
exit $failed
