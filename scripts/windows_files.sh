# SPDX-License-Identifier: MIT
# Sourced by the scripts that look at programs for Windows; they bring a `fail` of their own.

# check_windows_files FOLDER: what Windows and its users see of the files: nothing is needed but the system, they are fit
# for addresses that cannot be foretold, no code in data, whose they are, no time and no names of functions.
check_windows_files() {
    local file characteristics texts name wanted extra
    for file in "$1"/{VlGeneralServices.dll,VlComRes.dll,vlgs.exe}; do
        characteristics=$(TZ=UTC objdump -p -t "$file")
        texts=$(strings -el "$file")
        wanted="DYNAMIC_BASE NX_COMPAT"
        [[ $characteristics != *pei-x86-64* ]] || wanted+=" HIGH_ENTROPY_VA"
        for name in $wanted; do
            [[ $characteristics == *"$name"* ]] || fail "$file: not $name"
        done
        grep -qE '^Time/Date\s+(Thu Jan  1 00:00:00 1970|0+\b)' <<<"$characteristics" || fail "$file: has a time"
        [[ $characteristics == *"no symbols"* ]] || fail "$file: not stripped"
        for name in CompanyName ProductName LegalCopyright FileVersion; do
            grep -qx "$name" <<<"$texts" || fail "$file: no $name"
        done
        extra=$(sed -n 's/.*DLL Name: //p' <<<"$characteristics" |
            grep -viE '^(advapi32|kernel32|mpr|msvcrt|ole32|oleaut32|user32|bcrypt)\.dll$' || true)
        [ -z "$extra" ] || fail "$file needs $extra"
    done
}
