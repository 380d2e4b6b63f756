#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# Makes the wheel for other machines from a build tree: `wheel.sh TREE DIST`. Its name tells the oldest C library that
# it runs with, which follows from the names that its files ask for.
set -euo pipefail
source=$(dirname "$(cd "$(dirname "$0")" && pwd)")
tree=$(realpath "$1")
dist=$(realpath "$2")
mapfile -t libraries < <(find "$tree/lib" "$tree/python" -type f -name '*.so*')
versions() { objdump -T "${libraries[@]}" | grep -oE "$1_[0-9.]+" | sort -uV | tail -n 1; }
glibc=$(versions GLIBC)
# What that kind of machine is promised to have of the C++ library.
newest=$(printf '%s\n' GLIBCXX_3.4.29 "$(versions GLIBCXX)" | sort -V | tail -n 1)
[ "$newest" = GLIBCXX_3.4.29 ] || { echo "The wheel asks for $newest, which not every such machine has" >&2 && exit 1; }
platform=manylinux_$(sed 's/GLIBC_//; s/\./_/' <<<"$glibc")_$(uname -m)
PYTHONPATH=$source/packaging/python python3 -B -c \
    'import sys, build_backend as b; b.build_wheel(sys.argv[1], {"tree": sys.argv[2], "platform": sys.argv[3]})' \
    "$dist" "$tree" "$platform" >/dev/null
