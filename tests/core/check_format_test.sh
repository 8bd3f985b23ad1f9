#!/usr/bin/env bash
# A format check that finds nothing to check must fail: without git, outside a checkout, in an empty one:
# check_format_test.sh CHECK.
set -euo pipefail
check=$1
folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT
mkdir -p "$folder/scripts" "$folder/no-git"
cp "$check" "$folder/scripts/check-format"
for tool in bash dirname clang-format; do ln -s "$(command -v "$tool")" "$folder/no-git/$tool"; done
failed=0

refused() {
    local what=$1
    shift
    if "$@" >/dev/null 2>&1; then
        echo "the check passed $what"
        failed=1
    fi
}

export GIT_CEILING_DIRECTORIES=${folder%/*}
refused "outside a checkout" "$folder/scripts/check-format"
git -C "$folder" init --quiet
refused "a checkout without sources" "$folder/scripts/check-format"
printf 'int  main( ){}\n' >"$folder/crooked.cpp"
git -C "$folder" add crooked.cpp
refused "a crooked source" "$folder/scripts/check-format"
printf 'int main() {}\n' >"$folder/crooked.cpp"
"$folder/scripts/check-format" || { echo "the check refused a straight source"; failed=1; }
refused "without git" env PATH="$folder/no-git" "$folder/scripts/check-format"
exit "$failed"
