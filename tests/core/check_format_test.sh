#!/usr/bin/env bash
# A format check that finds nothing to check must fail: without git, outside a checkout, in an empty one. So must one
# that finds a body of one line in braces; mended, the source passes: check_format_test.sh CHECK.
set -euo pipefail
check=$1
folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT
mkdir -p "$folder/scripts" "$folder/no-git"
cp "$check" "$folder/scripts/check-format"
cp "${check%/*}/one_line_bodies.awk" "$folder/scripts"
echo 'BasedOnStyle: Google' >"$folder/.clang-format"
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

# source_is TEXT, mended_is WHAT TEXT, kept WHAT: the one source, what has to become of it, and that it is straight.
source_is() { printf '%s' "$1" >"$folder/crooked.cpp"; }
mended_is() {
    refused "$1" "$folder/scripts/check-format"
    "$folder/scripts/check-format" --fix
    diff <(printf '%s' "$2") "$folder/crooked.cpp" || { echo "$1: mended to something else"; failed=1; }
    kept "$1, mended"
}
kept() { "$folder/scripts/check-format" >/dev/null 2>&1 || { echo "the check refused $1"; failed=1; }; }

source_is 'void F(int a) {
  if (a) {
    F(1);
  }
}
'
mended_is "a body of one line in braces" 'void F(int a) {
  if (a) F(1);
}
'
source_is 'void F(int a) {
  for (; a; --a) {
    while (a == 2) {
      F(1);
    }
  }
}
'
mended_is "bodies of one line within one another" 'void F(int a) {
  for (; a; --a)
    while (a == 2) F(1);
}
'
source_is "void F(char a) {
  if (a == '(') {
    F(1);
  } else if (a) {
    F(2);
  } else {
    F(3);
  }
}
"
mended_is "a chain of bodies of one line" "void F(char a) {
  if (a == '(')
    F(1);
  else if (a)
    F(2);
  else
    F(3);
}
"
source_is 'void F(int a) {
  if (a) {
    F(1);
  } else {
    F(2);
    F(3);
  }
}
'
kept "a chain with a longer body"
source_is 'void F(int a) {
  if (a) {
    if (a == 1) F(2);
  } else {
    F(3);
  }
}
'
kept "a chain whose braces say what the else belongs to"
source_is 'void F(int a) {
  if (a) {
    EXPECT_EQ(a, 1);
  }
  for (; a; --a) EXPECT_EQ(a, 1);
}
'
kept "a check of a test in braces behind an if"
source_is '#define EACH(a)    \
  for (; a; --a) { \
    F(1);          \
  }
'
kept "a macro"
exit "$failed"
