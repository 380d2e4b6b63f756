#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# Fails when docs/architecture.md tells other arrows between the rooms than the build holds, or when an
# operating-system header is included outside of the rooms that speak to the host. That a room includes nothing that
# it may not is the build's own check (cmake/Library.cmake), here repeated for the rooms of the other host.
set -euo pipefail
cd "$(dirname "$0")/.."

# vlgs_room(NAME ROOM...) lines: each room, and what it may enter, the rooms below those too.
declare -A below may
while read -r room rest; do
    below[$room]=$rest
    may[$room]=" $room "
    for other in $rest; do
        may[$room]+="${may[$other]}"
    done
done < <(sed -nE 's/^ *vlgs_room\(([a-z ]+)\)$/\1/p' cmake/Library.cmake)

bad=0
for room in "${!may[@]}"; do
    while IFS=: read -r file line include; do
        target=${include#*\"}
        target=${target%%/*}
        [[ "${may[$room]}" == *" $target "* ]] || { echo "$file:$line: $room may not include $target" && bad=1; }
    done < <(grep -rnoE '^#include "[a-z]+/' "src/$room" --include='*.h' --include='*.cpp')
    told=$(sed -nE "s/^\| \`src\/$room\`[^|]*\| ([^|]*) \|.*/\1/p" docs/architecture.md | tr -d '`,')
    if [ "$told" != "${below[$room]:-nothing}" ]; then
        echo "docs/architecture.md: $room enters '$told', in cmake/Library.cmake '${below[$room]}'" && bad=1
    fi
done
for folder in src/*/; do
    room=$(basename "$folder")
    [ -n "${may[$room]+known}" ] || { echo "$folder is no room of cmake/Library.cmake" && bad=1; }
done

# Only the host's folders, com and the public C interface know the operating system.
if grep -rnE '^#include <([a-z0-9_]+/)*[a-z0-9_]+\.h>' src --include='*.h' --include='*.cpp' |
        grep -vE '^src/(platform/(posix|windows)|com)/|<std(def|int).h>|<ext/'; then
    echo "operating-system headers belong into src/platform/posix, src/platform/windows and src/com" && bad=1
fi
exit $bad
