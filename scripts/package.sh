#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# Makes what a release carries into dist/, the same bytes from the same commit: so far the archive of the sources, and
# the checksums of everything there.
set -euo pipefail
cd "$(dirname "$0")/.."
version=$(sed -nE 's/^project\(.* VERSION ([0-9.]+) .*/\1/p' CMakeLists.txt)
name=VlGeneralServices-$version
rm -rf dist
mkdir dist
git diff --quiet HEAD || echo "What is not committed is left out" >&2
git archive --format=tar --prefix="$name/" HEAD | gzip -9n >"dist/$name.tar.gz"
(cd dist && sha256sum -- * >SHA256SUMS)
cat dist/SHA256SUMS
