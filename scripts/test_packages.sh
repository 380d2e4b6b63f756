#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# Installs, uses and removes what scripts/package.sh has made in dist/.
#
#   scripts/test_packages.sh [KIND…]      everything, or these:
#   wheel    the wheel, and what `pip install .` builds, in a fresh virtual environment without network
#   windows  the archive and the installer package for Windows, under Wine
#   debian   Debian's packages, in a bare system (as root)
#   source   the archive of the sources: builds it and runs the native tests
#   again    makes everything once more and compares the bytes
set -euo pipefail
cd "$(dirname "$0")/.."
source scripts/packages.sh
source scripts/bare_root.sh
source tests/consumer/expect.sh
version=$(sed -nE 's/^project\(.* VERSION ([0-9.]+) .*/\1/p' CMakeLists.txt)
name=VlGeneralServices-$version
dist=$PWD/dist
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
connection='import sys, vlgs; print(vlgs.Dispatch("VlGeneralServices.Files").BuildConnectionStringFromPath(sys.argv[1]))'

wheel() {
    need_build python3-venv
    python3 -m venv "$work/venv"
    cp -r samples "$work"
    local from
    for from in "$dist"/vlgs-*.whl .; do
        "$work/venv/bin/pip" install -q --no-index --disable-pip-version-check "$from"
        (cd "$work" && expect "pip install ${from##*/}" env -u VLGS_LIBRARY venv/bin/python -c "$connection" samples/demo/demo.VLS)
        "$work/venv/bin/pip" uninstall -q -y vlgs
        [ -z "$(find "$work/venv" -ipath '*vlg*')" ] || { find "$work/venv" -ipath '*vlg*' && return 1; }
    done
}

debian() {
    need lintian
    lintian --allow-root --fail-on error,warning "$dist"/*.deb
    bare_root bookworm packages
    mkdir "$root/root/packages"
    cp "$dist"/*.deb "$root/root/packages"
    cp -r tests/consumer samples "$root/root"
    inside "$root" root consumer/debian.sh packages samples
}

from_sources() {
    tar -C "$work" -xf "$dist/$name.tar.gz"
    "$work/$name/scripts/test.sh" native
}

again() {
    cp "$dist/SHA256SUMS" "$work"
    scripts/package.sh >/dev/null
    diff "$work/SHA256SUMS" "$dist/SHA256SUMS"
}

[ $# -gt 0 ] || set -- wheel windows debian source again
for kind in "$@"; do
    echo "== $kind"
    case $kind in
    wheel | debian | again) $kind ;;
    windows) scripts/test_installers.sh ;;
    source) from_sources ;;
    *) echo "usage: scripts/test_packages.sh [wheel|windows|debian|source|again]…" >&2 && exit 2 ;;
    esac
done
