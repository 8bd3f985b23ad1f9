#!/usr/bin/env bash
# What scripts/check-comments takes and what it refuses: check_comments_test.sh CHECK.
set -euo pipefail
check=$1
root=$(mktemp -d)
trap 'rm -rf "$root"' EXIT
failed=0
git -C "$root" init -q
mkdir -p "$root/src/low"

# expect STATUS WORDS NAME, of the source on standard input
expect() {
  local status=0 output
  cat >"$root/src/low/part.h"
  output=$("$check" "$root" 2>&1) || status=$?
  if [ "$status" -ne "$1" ] || [[ $output != *"$2"* ]]; then
    echo "$3: status $status, said: $output" >&2
    failed=1
  fi
}

expect 0 '' 'takes names of the code, of texts, files and folders, and what is no name' <<'END'
/// Up to `MostRows` (see `low/part.h`), as `frmMain` has them by `Grid::Rows()`; `L` and `2'-6` are no names.
constexpr int MostRows = 12;
struct Grid { int Rows() const; };
const char* form = "frmMain";
END
expect 1 'src/low/part.h:2: nothing is called mostRows' 'refuses the old name of a constant' <<'END'
constexpr int MostRows = 12;
/// Up to `mostRows`.
END
expect 1 'nothing is called Columns' 'refuses a member that has gone' <<'END'
struct Grid { int Rows() const; };  ///< See `Grid::Columns()`.
END
expect 1 'nothing is called mostRows' 'takes no other comment for code' <<'END'
// mostRows
int rows = 0; /* by `mostRows` */
END
exit $failed
