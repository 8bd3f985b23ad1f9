#!/usr/bin/env bash
# What scripts/check-arrows takes and what it refuses: check_arrows_test.sh CHECK.
set -euo pipefail
check=$1
root=$(mktemp -d)
trap 'rm -rf "$root"' EXIT
failed=0

mkdir -p "$root/docs" "$root/src/low" "$root/src/high/room" "$root/platform/own"
write_plan() {
  printf '%s\n' '| Folder | Role | May include |' '|---|---|---|' "$@" >"$root/docs/architecture.md"
}
# expect STATUS WORDS NAME
expect() {
  local status=0 output
  output=$("$check" "$root" 2>&1) || status=$?
  if [ "$status" -ne "$1" ] || [[ $output != *"$2"* ]]; then
    echo "$3: status $status, said: $output" >&2
    failed=1
  fi
}

low='| `src/low` | a | the standard library |'
high='| `src/high/room` | b | `low` |'
own='| `platform/own` | c | `high/room` |'
echo '#include <string>' >"$root/src/low/text.h"
echo '#include "low/text.h"' >"$root/src/high/room/form.h"
printf '%s\n' '#include "high/room/form.h"' '#include "helper.h"' >"$root/platform/own/port.cpp"
touch "$root/platform/own/helper.h"
write_plan "$low" "$high" "$own"
expect 0 '' 'takes arrows that the plan names, and neighbours'

write_plan "$low" "$high" '| `platform/own` | c | `low` |'
expect 1 'platform/own/port.cpp:1: platform/own may not include src/high/room' 'refuses an arrow that is not in the plan'

write_plan "$low" "$high" '| `platform/own` | c | `low`, `high/room` |'
expect 1 'docs/architecture.md:5: platform/own includes nothing of src/low' 'refuses a pair that no file needs'

write_plan "$low" "$high" "$own"
printf '%s\n' '#include <TopoDS_Shape.hxx>' >"$root/platform/own/shape.h"
expect 1 'platform/own/shape.h:1: the row of platform/own does not name Open CASCADE' "refuses the modeller where the plan doesn't name it"
write_plan "$low" "$high" '| `platform/own` | c | `high/room`, Open CASCADE |'
expect 0 '' 'takes the modeller where the plan names it'
rm "$root/platform/own/shape.h"

write_plan '| `src/low` | a | `high/room` |' "$high" "$own"
expect 1 'src/low may include high/room, which has no row above' 'refuses a plan with an arrow that runs up'

write_plan "$low" "$own"
expect 1 'src/high/room has no row' 'refuses a folder without a row'

mkdir -p "$root/apps/brenvik/words" "$root/apps/brenvik/commands"
printf '%s\n' '#include "words/word.h"' '#include "own/port.h"' >"$root/apps/brenvik/commands/list.cpp"
touch "$root/apps/brenvik/words/word.h" "$root/platform/own/port.h"
words='| `apps/brenvik/words` | d | the platforms |'
write_plan "$low" "$high" "$own" "$words" '| `apps/brenvik/commands` | e | the same, `apps/brenvik/words` |'
expect 0 '' 'lets a program use every platform, and the rooms of its own that the plan names'

write_plan "$low" "$high" "$own" "$words" '| `apps/brenvik/commands` | e | the platforms |'
expect 1 'apps/brenvik/commands/list.cpp:1: apps/brenvik/commands may not include apps/brenvik/words' \
  'refuses an arrow between rooms of a program that is not in the plan'

write_plan
expect 1 'no table of folders' 'refuses a plan without a table'

rm "$root/docs/architecture.md"
expect 2 'no plan' 'refuses to look without a plan'
exit "$failed"
