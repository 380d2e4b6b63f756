#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# Installs, uses and removes Debian's packages in a bare system, where the folder of the packages stands beside that of
# this script. `debian.sh PACKAGES SAMPLES`
set -euo pipefail
here=$(cd "$(dirname "$0")" && pwd)
source "$here/expect.sh"
packages=$(realpath "$1")
project=$(realpath "$2")/demo/demo.VLS
export DEBIAN_FRONTEND=noninteractive

# What stands in the system, but for the books that the package tools keep.
files() {
    find / -xdev \( -path /root -o -path /tmp -o -path /var/lib/apt -o -path /var/lib/dpkg -o -path /var/cache -o \
        -path /var/log -o -path /proc -o -path /dev \) -prune -o -print | sort
}

{ apt-get update && apt-get install -y --no-install-recommends g++ make cmake pkg-config python3; } >/tmp/log 2>&1 ||
    { tail /tmp/log && exit 1; }
files >/tmp/before
apt-get install -y --no-install-recommends "$packages"/*.deb >/tmp/log 2>&1 || { cat /tmp/log && exit 1; }
cd /tmp
cmake -S "$here/program" -B /tmp/cmake >/dev/null
cmake --build /tmp/cmake >/dev/null
expect_program "find_package" /tmp/cmake/consumer "$project"
# shellcheck disable=SC2046
c++ -std=c++20 "$here/program/main.cpp" -o /tmp/consumer $(pkg-config --cflags --libs VlGeneralServices)
expect_program "pkg-config" /tmp/consumer "$project"
expect "Python" python3 -c \
    'import sys, vlgs; print(vlgs.Dispatch("VlGeneralServices.Files").BuildConnectionStringFromPath(sys.argv[1]))' "$project"
expect "command line" vlgs call Files.BuildConnectionStringFromPath "$project"
# Only the development package has the library's name without a version.
apt-get purge -y libvlgeneralservices-dev >/tmp/log 2>&1
expect_program "without the development package" /tmp/consumer "$project"
apt-get purge -y '?name(vlg)' >/tmp/log 2>&1 || { cat /tmp/log && exit 1; }
files | diff /tmp/before - || { echo "Something stays behind" >&2 && exit 1; }
echo "removed: ok"
