#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# Makes the Debian packages from a build tree that was configured for /usr: `debian.sh TREE DIST`. SOURCE_DATE_EPOCH is
# the time of all that they hold.
set -euo pipefail
here=$(cd "$(dirname "$0")" && pwd)
source=$(dirname "$here")
tree=$(realpath "$1")
dist=$(realpath "$2")
version=$(sed -n 's/^CMAKE_PROJECT_VERSION:STATIC=//p' "$tree/CMakeCache.txt")-1
architecture=$(dpkg --print-architecture)
date=$(LC_ALL=C date -u -R -d "@$SOURCE_DATE_EPOCH")
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
umask 022

# What of the system's libraries the given files need. The tool wants to stand in a source package.
shared_libraries() {
    mkdir -p "$work/source/debian"
    printf 'Source: vlgeneralservices\n\nPackage: any\nArchitecture: any\n' >"$work/source/debian/control"
    (cd "$work/source" && dpkg-shlibdeps --ignore-missing-info -O "${@/#/-e}" 2>/dev/null) | sed -n 's/^shlibs:Depends=//p'
}

indented() { sed 's/^$/./; s/^/ /' "$1"; }

copyright() {
    local line
    while IFS= read -r line; do
        case $line in
        @LICENSE@) indented <(sed '1,4d' "$source/LICENSE") ;;
        @UNICODE@) indented "$source/docs/licences/unicode.txt" ;;
        *) printf '%s\n' "$line" ;;
        esac
    done <"$here/debian/copyright"
}

documents() {
    local to=$1/usr/share/doc/$2
    mkdir -p "$to"
    copyright >"$to/copyright"
    gzip -9n <"$source/CHANGELOG.md" >"$to/changelog.gz"
    printf 'vlgeneralservices (%s) unstable; urgency=medium\n\n  * See changelog.gz.\n\n -- %s  %s\n' "$version" \
        "$(sed -n 's/^Maintainer: //p' "$here/debian/$2.control")" "$date" | gzip -9n >"$to/changelog.Debian.gz"
    mkdir -p "$1/usr/share/lintian/overrides"
    printf '# Nobody asked Debian for it: it is not uploaded there.\n%s: initial-upload-closes-no-bugs\n' "$2" \
        >"$1/usr/share/lintian/overrides/$2"
}

# package NAME COMPONENT
package() {
    local name=$1 root=$work/$1 file files libraries=
    DESTDIR=$root cmake --install "$tree" --component "$2" >/dev/null
    mapfile -t files < <(find "$root" -type f \( -name '*.so' -o -name '*.so.*' -o -path '*/bin/*' \) | sort)
    if [ ${#files[@]} -gt 0 ]; then
        strip --strip-unneeded --remove-section=.comment --remove-section=.note "${files[@]}"
        libraries=$(shared_libraries "${files[@]}")
    fi
    if [ "$2" = Command ]; then
        gzip -9n "$root"/usr/share/man/man1/*
        mv "$root"/usr/share/zsh/{site-functions,vendor-completions}
    fi
    documents "$root" "$name"
    mkdir "$root/DEBIAN"
    for file in postinst prerm; do
        [ ! -e "$here/debian/$name.$file" ] || install -m 755 "$here/debian/$name.$file" "$root/DEBIAN/$file"
    done
    if [ "$2" = Library ]; then
        echo "libVlGeneralServices ${version%%.*} $name (>= ${version%.*.*})" >"$root/DEBIAN/shlibs"
        echo "activate-noawait ldconfig" >"$root/DEBIAN/triggers"
    fi
    (cd "$root" && find . -path ./DEBIAN -prune -o -type f -printf '%P\0' | sort -z | xargs -0 md5sum) >"$work/md5sums"
    mv "$work/md5sums" "$root/DEBIAN"
    sed "s/@VERSION@/$version/; s/@ARCHITECTURE@/$architecture/; s/@MORE_SHLIBS@/${libraries:+, $libraries}/
         s/@SHLIBS@/$libraries/; s/@SIZE@/$(du -s --apparent-size --exclude=DEBIAN "$root" | cut -f 1)/" \
        "$here/debian/$name.control" >"$root/DEBIAN/control"
    find "$root" -exec touch -h -d "@$SOURCE_DATE_EPOCH" {} +
    dpkg-deb --root-owner-group -Zxz --build "$root" "$dist/${name}_${version}_$architecture.deb" >/dev/null
}

package libvlgeneralservices9 Library
package libvlgeneralservices-dev Development
package python3-vlgs Python
package vlgs Command
