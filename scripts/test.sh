#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# Installs what is missing, builds, and runs the tests.
#
#   scripts/test.sh                    everything: clang, sanitize, windows, native
#   scripts/test.sh native [ARG…]      the native tests; further arguments go to ctest
#   scripts/test.sh clang [ARG…]       the same built with clang, without the programs of others
#   scripts/test.sh sanitize [ARG…]    the same under the address and undefined-behaviour sanitizers
#   scripts/test.sh windows            the Windows builds, under Wine
set -euo pipefail
cd "$(dirname "$0")/.."
source scripts/packages.sh

ctest_of() {
    local preset=$1
    shift
    echo "== $preset: build"
    build "$preset"
    echo "== $preset: tests"
    ctest --test-dir "build/$preset" --output-on-failure $([ ! -t 1 ] || echo --progress) -j "$(nproc)" "$@"
}

run() {
    case $1 in
    native) shift && need_tests && ctest_of dev "$@" ;;
    clang) shift && need_tests clang && ctest_of clang -E '^consumer\.' "$@" ;;
    sanitize) shift && need_tests && ctest_of sanitize "$@" ;;
    windows) scripts/test_windows.sh ;;
    *) echo "usage: scripts/test.sh [native|clang|sanitize|windows]" >&2 && exit 2 ;;
    esac
}

if [ $# -gt 0 ]; then
    run "$@"
else
    need_tests clang "${under_wine[@]}"
    for kind in clang sanitize windows native; do
        run "$kind"
    done
fi
