#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# Installs what is missing, builds the library, and turns two sample files into the connection strings of their
# databases: a project information file of an Access project, and the link file of a database server.
set -euo pipefail
cd "$(dirname "$0")/.."
source scripts/packages.sh
need_compiler
echo "Building the library (a few minutes the first time)"
build demo vlgs VlGeneralServices

meaning() {
    case $1 in
    DRIVER) echo "the ODBC driver" ;;
    DBQ) echo "the database file, beside the project file" ;;
    SERVER) echo "the database server" ;;
    DATABASE) echo "the database on it" ;;
    UID) echo "the account" ;;
    PWD) echo "its password" ;;
    ENCRYPTED) echo "whether the password is scrambled" ;;
    VLGUID) echo "the project's identity" ;;
    VLPROJKEY) echo "the project's key" ;;
    SCHEMATOKEN) echo "the schema" ;;
    SEQKEY) echo "the sequence key" ;;
    *) echo "as it stands in the file" ;;
    esac
}

for file in samples/demo/demo.VLS samples/demo/server.VLL; do
    printf '\n$ vlgs call Files.BuildConnectionStringFromPath %s\n' "$file"
    connection=$(build/demo/bin/vlgs call Files.BuildConnectionStringFromPath "$file" | sed -E 's/(^|;)(PWD=)[^;]*/\1\2********/')
    printf '%s\n\n' "$connection"
    while IFS= read -r -d ';' pair; do
        printf '  %-12s %-52s %s\n' "${pair%%=*}" "${pair#*=}" "$(meaning "${pair%%=*}")"
    done <<<"$connection"
done
