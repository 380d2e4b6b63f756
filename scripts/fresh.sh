#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# Proves that a newcomer can build here: makes a bare Debian below build/fresh, clones what is committed into it and
# runs the demo and all tests, first as root, who installs what the scripts ask for, then, native, as an ordinary user;
# on bookworm, where releases are made, it makes the packages too, uses them, and makes them again.
# Needs root and an hour or two; a step's output stands in build/fresh/SUITE.log.
#
#   scripts/fresh.sh [bookworm|trixie]              everything
#   scripts/fresh.sh [bookworm|trixie] COMMAND…     this command alone, as root, in the clone
set -euo pipefail
cd "$(dirname "$0")/.."
source scripts/packages.sh
source scripts/bare_root.sh
suite=${1:-bookworm}
shift || true
need git
echo "== $suite: a bare system"
bare_root "$suite"
log=$root.log

clone() {
    git clone -q --no-hardlinks . "$root$1/VlGeneralServices"
}

# step USER COMMAND…
step() {
    local began=$SECONDS user=$1
    shift
    if ! inside "$root" "$user" bash -c 'cd VlGeneralServices && "$@"' step "$@" >"$log" 2>&1; then
        tail -n 60 "$log"
        echo "FAILED: $suite, $user: $*"
        exit 1
    fi
    grep -E 'tests passed|32-bit Wine' "$log" || true
    echo "== $suite, $user: $*: ok, $(((SECONDS - began + 30) / 60)) min"
}

clone /root
if [ $# -gt 0 ]; then
    step root "$@"
    exit
fi
step root ./scripts/demo.sh
step root ./scripts/test.sh
chroot "$root" useradd --create-home user
clone /home/user
chroot "$root" chown -R user: /home/user
step user ./scripts/demo.sh
step user ./scripts/test.sh native
if [ "$suite" = bookworm ]; then
    step root ./scripts/package.sh
    step root ./scripts/test_packages.sh
fi
