# SPDX-License-Identifier: MIT
# Sourced by the other scripts: `need PACKAGE…` installs what is missing of these Debian packages, quietly.
need() {
    local missing=() package
    for package in "$@"; do
        [ "$(dpkg-query -W -f '${Status}' "$package" 2>/dev/null)" = "install ok installed" ] || missing+=("$package")
    done
    [ ${#missing[@]} -eq 0 ] && return
    local as_root=()
    if [ "$(id -u)" -ne 0 ]; then
        as_root=(sudo)
        if ! command -v sudo >/dev/null || ! { sudo -n true 2>/dev/null || { [ -t 0 ] && sudo -v; }; }; then
            echo "Missing packages. Ask an administrator for: apt-get install ${missing[*]}" >&2
            return 1
        fi
    fi
    echo "Installing ${missing[*]}"
    local log
    log=$(mktemp)
    if ! { "${as_root[@]}" apt-get update -qq &&
           DEBIAN_FRONTEND=noninteractive "${as_root[@]}" apt-get install -y -qq --no-install-recommends "${missing[@]}"; } >"$log" 2>&1; then
        cat "$log"
        rm -f "$log"
        return 1
    fi
    rm -f "$log"
}

# `tool clang-format 14`: the program of just that version, whether or not it is the one without a number in its name.
tool() {
    local program
    for program in "$1-$2" "$1"; do
        if command -v "$program" >/dev/null && [[ $("$program" --version) == *"version $2."* ]]; then
            echo "$program"
            return
        fi
    done
    if ! need "$1-$2" >&2; then
        echo "$1 of version $2 is needed" >&2
        return 1
    fi
    echo "$1-$2"
}

# The version of clang to compile with: the first of those that the project is built with which is here or can be had.
clang_version() {
    local version
    for version in 14 15 16 17 18 19; do
        ! command -v "clang++-$version" >/dev/null || { echo "$version" && return; }
    done
    for version in 14 19 18 17 16 15; do
        ! apt-cache show "clang-$version" >/dev/null 2>&1 || { echo "$version" && return; }
    done
    echo 14
}

# What building the library and its tools takes, what the presets with tests take, and what runs all tests; and further
# packages, so that what is missing is told at once.
need_compiler() { need g++ cmake ninja-build "$@"; }
need_build() { need_compiler python3-dev libgtest-dev "$@"; }
need_tests() { need_build mypy python3-venv jq zsh fish libedit2 unixodbc unixodbc-dev libsqliteodbc pkg-config "$@"; }
# What building for Windows takes besides, and what running that does.
for_windows=(g++-mingw-w64-x86-64-posix g++-mingw-w64-i686-posix mingw-w64-tools libwine-dev)
under_wine=("${for_windows[@]}" googletest wine wine64)

# Passes a build's lines on to a log and, on a terminal, tells how far it is: `[12/345]`.
log_of_build() {
    if [ ! -t 1 ]; then
        cat >"$1"
        return
    fi
    local line
    while IFS= read -r line; do
        printf '%s\n' "$line" >>"$1"
        [[ $line != \[*/*\]* ]] || printf '\r%s' "${line%%]*}]"
    done
    printf '\r\033[K'
}

# Configures and builds a preset; prints the log when that fails. `build dev [TARGET…]`
build() {
    local preset=$1 log
    shift
    log=$(mktemp)
    if ! { cmake --preset "$preset" && cmake --build "build/$preset" ${*:+--target "$@"}; } 2>&1 | log_of_build "$log"; then
        cat "$log"
        rm -f "$log"
        return 1
    fi
    rm -f "$log"
}
