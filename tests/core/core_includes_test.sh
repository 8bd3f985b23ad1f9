#!/usr/bin/env bash
# Plants clean and stray includes in a folder of its own and looks at what the include check of the core
# says: core_includes_test.sh CHECK.
set -euo pipefail
check=$1
folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT
mkdir -p "$folder/src/base" "$folder/platform"
touch "$folder/platform/stray.h"
failed=0

# expect STATUS LINE SOURCE: the status and, unless empty, a line that the check prints for the file
# src/base/tried.cpp with this text.
expect() {
    local wanted=$1 line=$2 source=$3 output status=0
    printf '%s\n' "$source" >"$folder/src/base/tried.cpp"
    output=$("$check" "$folder/src" 2>&1) || status=$?
    if [ "$status" -ne "$wanted" ] || { [ -n "$line" ] && [[ $output != *"src/base/tried.cpp:$line"* ]]; }; then
        printf 'expected status %s and "%s", got status %s and "%s" for:\n%s\n' \
            "$wanted" "$line" "$status" "$output" "$source"
        failed=1
    fi
}

printf '#pragma once\n#include <string>\n' >"$folder/src/base/text.h"
expect 0 '' '#include "base/text.h"'
expect 0 '' '#include "text.h"'
expect 0 '' $'#include <vector>\n  #  include <cmath> // lengths\n#include <string_view>\r'
expect 0 '' '// no include at all: #include <sqlite3.h>'
expect 1 '1: <sqlite3.h> is no header of the C++ standard library' '#include <sqlite3.h>'
expect 1 '3: <unistd.h> is no' $'#include <vector>\n\n#include <unistd.h>'
expect 1 '1: <bits/stdc++.h> is no' '#include <bits/stdc++.h>'
expect 1 '1: <QString> is no' '  #  include <QString>'
expect 1 '1: <gp_Pnt.hxx> is no' '#include<gp_Pnt.hxx>'
expect 1 '1: "platform/stray.h" is no file of the core' '#include "platform/stray.h"'
expect 1 '1: "../../platform/stray.h" is no file of the core' '#include "../../platform/stray.h"'
expect 1 '1: "absent.h" is no file of the core' '#include "absent.h"'
expect 1 '1: "/dev/null" is no file of the core' '#include "/dev/null"'
expect 1 '1: an include has to name its header: HEADER' '#include HEADER'
ln -s ../platform "$folder/src/link"
expect 1 '1: "link/stray.h" is no file of the core' '#include "link/stray.h"'

empty=0
mkdir "$folder/empty"
"$check" "$folder/empty" >/dev/null 2>&1 || empty=$?
[ "$empty" -eq 2 ] || { echo "a folder without sources passed"; failed=1; }
exit "$failed"
