#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# Uses what scripts/package.sh has made for Windows under Wine: the archive, unpacked in a folder with blanks in its name,
# registered and by manifest; the installer package, installed, upgraded and removed. Afterwards the registry must be as
# before. `test_installers.sh [x64|x86]`, both without an argument.
set -euo pipefail
cd "$(dirname "$0")/.."
source scripts/packages.sh
source scripts/wine.sh
source scripts/wine32.sh
source scripts/windows_files.sh
need "${under_wine[@]}" unzip wixl msitools
if [ $# -eq 0 ]; then
    scripts/test_installers.sh x64
    run_with_wine32 scripts/test_installers.sh x86
    exit
fi
arch=$1
cross=x86_64-w64-mingw32
version=$(sed -nE 's/^project\(.* VERSION ([0-9.]+) .*/\1/p' CMakeLists.txt)
name=VlGeneralServices-$version
dist=$PWD/dist
work=$(mktemp -d)
trap 'end_wine; rm -rf "$work"' EXIT
failed=0
[ "$arch" = x64 ] || cross=i686-w64-mingw32

fail() {
    echo "FAILED: $*"
    failed=1
}

# What the hives hold of classes and installed products, and whatever has our name.
registry() {
    registry_files |
        awk '/^\[/ { kept = /^\[Software\\\\Classes|CurrentVersion\\\\(Installer|Uninstall)/ } kept || /VlGeneralServices/'
}

# Our values among the classes, without the folder of the server and without what differs between systems: the flags and
# the help folder of a type library.
ours() {
    registry | awk '/^\[/ { key = $0; next } /^[@"]/ { print key " " $0 }' | grep -i '^\[Software\\\\Classes' |
        grep -iE 'VlGeneralServices|5E0A8C52-3F1D' | grep -viE 'HELPDIR|FLAGS|\\\\Installer\\\\' |
        sed 's/"[^"]*\\\(VlGeneralServices.dll\)/"\1/i' | sort
}

same_as_before() {
    registry | diff "$work/before" - >"$work/difference" || {
        head -n 20 "$work/difference"
        fail "$1: the registry is not as before"
    }
}

use() {
    wine cscript //nologo "$(winepath -w "$folder/samples/connection.vbs")" \
        "$(winepath -w "$folder/samples/demo/demo.VLS")" 12/31/2009 | tr -d '\r' >"$work/output" || true
    grep -q '^DRIVER=' "$work/output" && grep -qx 2009-12-31 "$work/output" || { cat "$work/output" && fail "$1: use"; }
}

installed_products() { registry | grep -ci '"DisplayName"="VlGeneralServices' || true; }

archive() {
    unzip -q "$dist/$name-win.zip" -d "$work/a folder with blanks"
    folder="$work/a folder with blanks/$name"
    check_windows_files "$folder/$arch"
    local dll=$folder/$arch/VlGeneralServices.dll
    wine regsvr32 /s "$(winepath -w "$dll")" || fail "archive: register"
    ours >"$work/registered"
    use archive
    # The script that the page on Windows shows.
    sed -n '/^```vbs$/,/^```$/{//!p}' docs/windows.md >"$work/page.vbs"
    wine cscript //nologo "$(winepath -w "$work/page.vbs")" "$(winepath -w "$folder/samples/demo/demo.VLS")" |
        tr -d '\r' >"$work/output" || true
    grep -q '^DRIVER=' "$work/output" && grep -q '^VlGeneralServices\..*: ' "$work/output" || {
        cat "$work/output"
        fail "archive: the page's script"
    }
    wine regsvr32 /s /u "$(winepath -w "$dll")" || fail "archive: unregister"
    same_as_before archive

    local client="$work/a client"
    mkdir "$client"
    sed -n '/^```xml$/,/^```$/{//!p}' docs/windows.md >"$client/manifest.xml" # as the page shows it
    echo '1 24 "manifest.xml"' | (cd "$client" && "$cross-windres" -O coff -o manifest.o)
    "$cross-g++-posix" -std=c++17 -municode -static -isystem "$folder/include" samples/early_bound.cpp \
        "$client/manifest.o" -o "$client/early_bound.exe" -loleaut32 -lole32 -luuid
    cp "$folder/$arch"/VlGeneralServices.{dll,manifest} "$folder/$arch/VlComRes.dll" "$client"
    wine "$client/early_bound.exe" "$(winepath -w "$folder/samples/demo/demo.VLS")" | grep -q '^DRIVER=' ||
        fail "archive: by manifest"
    wine "$folder/$arch/vlgs.exe" classes | grep -q Files || fail "archive: command"
    echo "-- archive, $arch: registered, by manifest, command"
}

# A package of an older version with other bytes in its files' place.
older_package() {
    local to=$work/older
    mkdir "$to"
    cp "$folder/$arch"/* "$folder"/*.txt "$to"
    echo older >"$to/README.txt"
    packaging/windows/installer.py "$arch" "${version%.*.*}.0.1" >"$to/installer.wxs"
    (cd "$to" && wixl --arch "$arch" -o "$work/older.msi" installer.wxs)
}

installer() {
    local package=$dist/$name-$arch.msi home="$WINEPREFIX/drive_c/Program Files/VlGeneralServices"
    install() { wine msiexec /i "$(winepath -w "$1")" /qn "${@:2}"; }
    [ "$(msiinfo export "$package" File | grep -cF "$version")" -eq 3 ] || fail "installer: programs without a version"
    older_package
    install "$work/older.msi" || fail "installer: the older version"
    grep -q older "$home/README.txt" || fail "installer: no files of the older version"
    install "$package" || fail "installer: upgrade"
    [ "$(installed_products)" -gt 0 ] || fail "installer: the product is not listed"
    cmp -s "$folder/README.txt" "$home/README.txt" || fail "installer: the files are not the newer ones"
    wine msiexec /i "$(winepath -w "$work/older.msi")" /qn && fail "installer: an older version goes over a newer one"
    ours | diff "$work/registered" - || fail "installer: registered are other things than by the server itself"
    use installer
    wine msiexec /x "$(winepath -w "$package")" /qn || fail "installer: remove"
    [ ! -e "$home" ] || { ls -R "$home" && fail "installer: files stay behind"; }
    same_as_before installer
    install "$package" ALLUSERS=2 MSIINSTALLPERUSER=1 || fail "installer: for one user"
    wine msiexec /x "$(winepath -w "$package")" /qn || fail "installer: remove for one user"
    same_as_before "installer, for one user"
    echo "-- installer, $arch: installed, upgraded, used, removed"
}

new_prefix "$work/prefix" "$arch"
wine cscript //nologo "$(winepath -w samples/connection.vbs)" >/dev/null || true # the script host registers itself
# Keys that the first registration, or installation, of anything makes.
for key in 'HKCU\Software\Classes' HKLM\\Software\\Classes\\Installer\\{Features,Products,UpgradeCodes} \
    'HKLM\Software\Microsoft\Windows\CurrentVersion\Installer\'{UpgradeCodes,UserData\\S-1-5-18\\{Components,Products}}; do
    wine reg add "$key" /f >/dev/null 2>&1
done
registry >"$work/before"
archive
installer
exit $failed
