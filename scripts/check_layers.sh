#!/usr/bin/env bash
# Fails when a source file includes a header of a room that it may not enter, or an operating-system header
# outside of the rooms that speak to the host. docs/architecture.md tells the arrows.
set -euo pipefail
cd "$(dirname "$0")/.."

declare -A may=(
    [base]="base"
    [automation]="automation platform base"
    [platform]="platform base"
    [frame]="frame automation platform base"
    [ini]="ini frame automation platform base"
    [general]="general frame automation platform base"
    [files]="files ini general frame automation platform base"
    [viewprops]="viewprops frame automation platform base"
    [locking]="locking files ini viewprops frame automation platform base"
    [conversion]="conversion frame automation platform base"
    [registry]="registry ini frame automation platform base"
    [packager]="packager frame automation platform base"
    [cipher]="cipher frame automation platform base"
    [dde]="dde frame automation platform base"
)
everything="base platform automation frame ini general files viewprops locking conversion registry packager cipher dde library"
may[library]=$everything
may[capi]="capi $everything"
may[com]="com $everything"

bad=0
for room in "${!may[@]}"; do
    [ -d "src/$room" ] || continue
    while IFS=: read -r file line include; do
        target=${include#*\"}
        target=${target%%/*}
        [[ " ${may[$room]} " == *" $target "* ]] && continue
        echo "$file:$line: $room may not include $target" && bad=1
    done < <(grep -rnoE '^#include "[a-z]+/' "src/$room" --include='*.h' --include='*.cpp')
done

# automation reaches the host through these headers alone
if grep -rnE '^#include "platform/' src/automation | grep -vE '"platform/(Locale|CodePage|Clock)\.h"'; then
    echo "automation may include only platform/Locale.h, platform/CodePage.h and platform/Clock.h" && bad=1
fi
# and only the host's folders, com and the public C interface know the operating system
if grep -rnE '^#include <([a-z0-9_]+/)*[a-z0-9_]+\.h>' src --include='*.h' --include='*.cpp' |
        grep -vE '^src/(platform/(posix|windows)|com)/|<std(def|int).h>|<ext/'; then
    echo "operating-system headers belong into src/platform/posix, src/platform/windows and src/com" && bad=1
fi
exit $bad
