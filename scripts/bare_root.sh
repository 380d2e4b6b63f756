# SPDX-License-Identifier: MIT
# Sourced: bare Debian systems below build/fresh, for what has to work on a machine that has nothing yet. Needs root.

# bare_root SUITE [NAME]: unpacks a bare system anew and sets `root` to its folder.
bare_root() {
    local suite=$1 kept=$PWD/build/fresh/$1.tar
    root=$PWD/build/fresh/${2:-$suite}
    need debootstrap
    mkdir -p "$(dirname "$root")"
    if [ ! -e "$kept" ]; then
        # From the archive that this machine's own packages come from.
        local own=$(. /etc/os-release && echo "$VERSION_CODENAME") mirror
        mirror=$(apt-get indextargets --format '$(REPO_URI)' 'Origin: Debian' "Codename: $own" | head -n 1)
        rm -rf "$root"
        debootstrap --variant=minbase "$suite" "$root" "$mirror" >"$root.log" 2>&1 || { tail "$root.log" && return 1; }
        rm -f "$root"/var/cache/apt/archives/*.deb
        tar -C "$root" -cf "$kept.new" . && mv "$kept.new" "$kept"
    fi
    rm -rf "$root"
    mkdir "$root"
    tar -C "$root" -xf "$kept"
    cp /etc/resolv.conf "$root/etc"
}

# inside ROOT USER COMMAND…: runs it in that user's home. The namespaces end all that it leaves running; the root is
# changed for good, since programs in a chroot may make no namespaces of their own.
inside() {
    unshare --mount --pid --fork bash -c '
        cd "$0" && mount --bind . . && cd "$0"
        mount -t proc proc proc && mount --rbind /dev dev
        pivot_root . . && umount -l . && cd /
        exec env -i PATH=/usr/sbin:/usr/bin:/sbin:/bin TERM="$TERM" \
            setpriv --reuid="$1" --regid="$1" --init-groups --reset-env \
            env LANG=C.UTF-8 bash -c "cd && \"\$@\"" inside "${@:2}"' "$@"
}
