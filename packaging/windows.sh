#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# Makes the archive for Windows and the installer packages from the build trees of both word sizes:
# `windows.sh X64TREE X86TREE DIST`. SOURCE_DATE_EPOCH is the time of all that they hold.
set -euo pipefail
here=$(cd "$(dirname "$0")" && pwd)
source=$(dirname "$here")
dist=$(realpath "$3")
version=$(sed -n 's/^CMAKE_PROJECT_VERSION:STATIC=//p' "$1/CMakeCache.txt")
name=VlGeneralServices-$version
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
umask 022

# A text as Windows' own editors of all times show it.
text() { sed "s/@VERSION@/$version/g; s/\$/\r/" "$1"; }

stage() {
    local tree=$1 folder=$2
    mkdir -p "$folder"
    cp "$tree"/bin/{VlGeneralServices.dll,VlComRes.dll,vlgs.exe} "$tree/typelib/VlGeneralServices.tlb" "$folder"
    text "$tree/bin/VlGeneralServices.manifest" >"$folder/VlGeneralServices.manifest"
}

installer() {
    local arch=$1 folder=$work/msi-$1
    cp -r "$work/$name/$arch" "$folder"
    cp "$work/$name"/{LICENSE,README}.txt "$folder"
    find "$folder" -exec touch -d "@$SOURCE_DATE_EPOCH" {} +
    "$here/windows/installer.py" "$arch" >"$folder/installer.wxs"
    local to=$dist/$name-$arch.msi code
    # The package's identifier follows from what is in it; the tools would make one at random, of the hour.
    code=$(cd "$folder" && sha256sum -- * | sha256sum |
        sed -E 's/^(.{8})(.{4})(.{4})(.{4})(.{12}).*/{\U\1-\2-\3-\4-\5}/')
    local then=(env TZ=UTC faketime -f "$(date -u -d "@$SOURCE_DATE_EPOCH" '+%Y-%m-%d %H:%M:%S')")
    (cd "$folder" && "${then[@]}" wixl --arch "$arch" -o "$to" installer.wxs)
    # Windows replaces a file that has a version only by one that the package gives a version, too.
    local file
    for file in $(sed -nE 's/.*<File Id="([^"]*)" Name="[^"]*\.(dll|exe)".*/\1/p' "$folder/installer.wxs"); do
        "${then[@]}" msibuild "$to" -q "UPDATE \`File\` SET \`Version\`='$version', \`Language\`='0' WHERE \`File\`='$file'" \
            "DELETE FROM \`MsiFileHash\` WHERE \`File_\`='$file'"
    done
    local template=$([ "$arch" = x64 ] && echo x64 || echo Intel)
    "${then[@]}" msibuild "$to" -s "VlGeneralServices $version" "the VlGeneralServices authors" "$template;1033" "$code"
}

mkdir "$work/$name"
stage "$1" "$work/$name/x64"
stage "$2" "$work/$name/x86"
mkdir -p "$work/$name/include/VlGeneralServices" "$work/$name/samples/demo"
cp "$1/typelib/VlGeneralServices/Interfaces.h" "$work/$name/include/VlGeneralServices"
text "$source/typelib/VlGeneralServices.idl" >"$work/$name/include/VlGeneralServices.idl"
for file in connection.vbs connection.js early_bound.cpp; do
    text "$source/samples/$file" >"$work/$name/samples/$file"
done
cp "$source"/samples/demo/* "$work/$name/samples/demo"
{
    text "$source/LICENSE"
    for file in unicode mingw-w64; do
        printf '\r\n========================================================================\r\n\r\n'
        text "$source/docs/licences/$file.txt"
    done
} >"$work/$name/LICENSE.txt"
text "$here/windows/README.txt" >"$work/$name/README.txt"
find "$work/$name" -exec touch -d "@$SOURCE_DATE_EPOCH" {} +
(cd "$work" && find "$name" -type f | LC_ALL=C sort | TZ=UTC zip -q -9 -X -@ "$dist/$name-win.zip")
for arch in x64 x86; do
    installer $arch
done
