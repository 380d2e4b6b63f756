#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# Makes what a release carries into dist/, from what is committed, the same bytes from the same commit: the archive of the
# sources, Debian's packages, the wheel, the archive and the installer packages for Windows, and the checksums of all.
set -euo pipefail
cd "$(dirname "$0")/.."
source scripts/packages.sh
need_compiler git dpkg-dev python3-dev "${for_windows[@]}" wixl msitools faketime zip
version=$(sed -nE 's/^project\(.* VERSION ([0-9.]+) .*/\1/p' CMakeLists.txt)
name=VlGeneralServices-$version
dist=$PWD/dist
build=$PWD/build/package
rm -rf "$dist" "$build"
mkdir -p "$dist" "$build"
SOURCE_DATE_EPOCH=$(git log -1 --format=%ct HEAD)
export SOURCE_DATE_EPOCH
export LC_ALL=C TZ=UTC

echo "== sources"
git diff --quiet HEAD || echo "What is not committed is left out" >&2
git archive --format=tar --prefix="$name/" HEAD | gzip -9n >"$dist/$name.tar.gz"
tar -C "$build" -xf "$dist/$name.tar.gz"
source=$build/$name

# configured TREE OPTION…: builds in a folder below build/package. Messages and assertions name sources from their root.
configured() {
    local tree=$build/$1
    shift
    if ! { cmake -S "$source" -B "$tree" -G Ninja -DCMAKE_BUILD_TYPE=Release -DCMAKE_BUILD_WITH_INSTALL_RPATH=ON \
        ${launcher:+-DCMAKE_CXX_COMPILER_LAUNCHER=$launcher} "$@" && cmake --build "$tree"; } 2>&1 |
        log_of_build "$tree.log"; then
        tail -n 50 "$tree.log"
        return 1
    fi
}
launcher=$(command -v ccache || true)
map="-ffile-prefix-map=$source=. -ffile-prefix-map=$build=build"

echo "== Linux"
flags() { DEB_BUILD_MAINT_OPTIONS=hardening=+all dpkg-buildflags --get "$1" | sed -E 's/(^| )-(g|ffile-prefix-map=[^ ]*)( |$)/ /g'; }
linux_flags="$(flags CXXFLAGS) $(flags CPPFLAGS) $map"
configured linux -DCMAKE_INSTALL_PREFIX=/usr -DCMAKE_INSTALL_LIBDIR="lib/$(dpkg-architecture -qDEB_HOST_MULTIARCH)" \
    -DVLGS_PYTHON_DIR=lib/python3/dist-packages -DPython3_EXECUTABLE=/usr/bin/python3 -DCMAKE_CXX_FLAGS="$linux_flags" \
    -DCMAKE_SHARED_LINKER_FLAGS="$(flags LDFLAGS)" -DCMAKE_MODULE_LINKER_FLAGS="$(flags LDFLAGS)" \
    -DCMAKE_EXE_LINKER_FLAGS="$(flags LDFLAGS) -pie"
"$source/packaging/debian.sh" "$build/linux" "$dist"
"$source/packaging/wheel.sh" "$build/linux" "$dist"

echo "== Windows"
for kind in x64:x86_64 x86:i686; do
    configured "${kind%:*}" --toolchain "$source/cmake/mingw-${kind#*:}.cmake" -DCMAKE_CXX_FLAGS_RELEASE="-O2 -DNDEBUG $map" \
        "-DVLGS_WIDL_LAUNCHER=faketime;-f;$(date -d "@$SOURCE_DATE_EPOCH" '+%Y-%m-%d %H:%M:%S')"
done
"$source/packaging/windows.sh" "$build/x64" "$build/x86" "$dist"

(cd "$dist" && sha256sum -- * >SHA256SUMS)
cat "$dist/SHA256SUMS"
