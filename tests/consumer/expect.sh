# SPDX-License-Identifier: MIT
# Sourced: `expect NAME COMMAND…` runs the consumer program, or what does the same, and looks at what it prints.
expect() {
    local name=$1 output
    shift
    output=$("$@" | tr -d '\r') || true
    [[ $output == *"DRIVER=Microsoft Access Driver (*.mdb);DBQ="* ]] || { echo "$name printed: $output" >&2; exit 1; }
    echo "$name: ok"
}
# The same for the program alone, which ends with a failure that it caught.
expect_program() {
    local name=$1
    expect "$@"
    shift
    "$@" | grep -q '^11502 .*Unable to locate' || { echo "$name: another failure, or none: $("$@" | tail -n 1)" >&2; exit 1; }
}
