# SPDX-License-Identifier: MIT
# Sourced by the scripts that run programs under Wine.
#
#   new_prefix DIRECTORY [x86]   makes a prefix, which is used from here on
#   registry_files               prints the registry of the machine and of the user, without the times of keys
#   end_wine                     ends Wine of the prefix, where one was made

export WINEDEBUG=-all WINEDLLOVERRIDES="mscoree,mshtml=;winemenubuilder.exe=d"

# Debian's server goes down as soon as no program runs, and may take one that starts at that moment with it; this one
# stays. The services are started here, since they would keep the pipe of a program that has to start them.
start_wine() {
    wineserver -p </dev/null >/dev/null 2>&1
    wine cmd /c exit </dev/null >/dev/null 2>&1
}

end_wine() {
    [ -n "${own_prefix:-}" ] || return 0 # not the user's
    wineserver -k 2>/dev/null || true
    wineserver -w 2>/dev/null || true
}

# Wine writes the files when it ends.
registry_files() {
    end_wine
    start_wine
    sed -E 's/^(\[.*\]) [0-9]+$/\1/; /^#time=/d' "$WINEPREFIX"/{system,user}.reg
}

new_prefix() {
    own_prefix=$1
    export WINEPREFIX=$own_prefix
    [ "${2:-}" != x86 ] || export WINEARCH=win32
    wine wineboot -i </dev/null >/dev/null 2>&1
    wineserver -w
    start_wine
}
