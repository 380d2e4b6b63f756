# SPDX-License-Identifier: MIT
# Sourced, for `run_with_wine32 COMMAND…`: a 32-bit Wine where the machine's packages give the 64-bit one alone. wine32 and
# what it needs come from the machine's own archive and are unpacked below build/wine32, which is kept between runs; a
# mount namespace of its own lays them over /usr for one command. Nothing of the machine is changed, and no root is needed
# where user namespaces are allowed.

wine32_root=$PWD/build/wine32
wine32_hint="no 32-bit Wine: package wine32 is not installed, and"

has_wine32() { [ -x /usr/lib/wine/wine ]; }

# Downloads the packages as on a machine of that architecture which has none yet.
download_wine32() {
    local to=$1
    mkdir -p "$to"/state/lists/partial "$to"/cache/archives/partial
    : >"$to/status"
    local apt=(apt-get -qq -o APT::Architecture=i386 -o APT::Architectures=i386 -o Dir::State="$to/state"
               -o Dir::State::status="$to/status" -o Dir::Cache="$to/cache" -o Debug::NoLocking=1
               -o APT::Sandbox::User="$(id -un)")
    # A source that has nothing for this architecture is no failure.
    "${apt[@]}" update || true
    "${apt[@]}" install -y --no-install-recommends --download-only wine wine32
}

unpack_wine32() {
    local to=$1 package directory
    mkdir -p "$to/usr"
    for directory in bin sbin lib; do
        mkdir "$to/usr/$directory" && ln -s "usr/$directory" "$to/$directory"
    done
    shift
    for package in "$@"; do
        dpkg-deb --fsys-tarfile "$package" | tar -x --keep-directory-symlink --no-same-owner -C "$to" || return 1
    done
    # As the package does when it is installed: Wine takes the cross compiler's zlib for its own, by a mark at byte 64.
    local zlib=$to/usr/i686-w64-mingw32/lib/zlib1.dll
    { head -c 64 "$zlib" && printf 'Wine builtin DLL' && head -c 16 /dev/zero && tail -c +97 "$zlib"; } \
        >"$to/usr/lib/i386-linux-gnu/wine/i386-windows/zlib1.dll"
}

make_wine32() {
    [ -e "$wine32_root" ] && return
    local making=$wine32_root.new
    rm -rf "$making"
    mkdir -p "$making"
    { download_wine32 "$making/packages" && unpack_wine32 "$making" "$making"/packages/cache/archives/*.deb; } \
        >"$wine32_root.log" 2>&1 || return 1
    rm -rf "$making/packages"
    mv "$making" "$wine32_root"
}

# Runs a command with the 32-bit Wine in /usr.
with_wine32() {
    local user=()
    [ "$(id -u)" -eq 0 ] || user=(--user --map-root-user)
    unshare --mount "${user[@]}" bash -c 'mount -t overlay overlay -o "lowerdir=$0/usr:/usr" /usr && "$@"' \
        "$wine32_root" "$@"
}

# Whether `with_wine32` can be used; says why not.
can_make_wine32() {
    if ! make_wine32; then
        echo "$wine32_hint the archive does not give it (build/wine32.log)"
    elif ! with_wine32 test -e /lib/ld-linux.so.2 2>/dev/null; then
        echo "$wine32_hint neither root nor a user namespace may mount here"
    else
        return 0
    fi
    return 1
}

# Runs a command with the machine's 32-bit Wine or with one made here; where there can be none, it is not run.
run_with_wine32() {
    if has_wine32; then
        "$@"
    elif can_make_wine32; then
        with_wine32 "$@"
    fi
}
