# Sourced by the other scripts: `need PACKAGE…` installs what is missing of these Debian packages, quietly.
need() {
    local missing=() package
    for package in "$@"; do
        [ "$(dpkg-query -W -f '${Status}' "$package" 2>/dev/null)" = "install ok installed" ] || missing+=("$package")
    done
    [ ${#missing[@]} -eq 0 ] && return
    local as_root=()
    [ "$(id -u)" -eq 0 ] || as_root=(sudo)
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

# What configuring a preset and building the library and its tools takes.
need_build() { need g++ cmake ninja-build python3 libgtest-dev; }
# What the tests take besides.
need_tests() { need mypy unixodbc unixodbc-dev libsqliteodbc pkg-config; }

# Configures and builds a preset; prints the log when that fails. `build dev [TARGET…]`
build() {
    local preset=$1 log
    shift
    log=$(mktemp)
    if ! { cmake --preset "$preset" && cmake --build "build/$preset" ${*:+--target "$@"}; } >"$log" 2>&1; then
        cat "$log"
        rm -f "$log"
        return 1
    fi
    rm -f "$log"
}
