# Finds bodies of one line that stand in braces after `if`, `for` and `while`, and prints their places; with -v fix=1
# prints the one file it is given without those braces. It reads lines as clang-format leaves them. A chain of `if` and
# `else` counts as one: where one of its bodies takes more than a line, all keep their braces.

# Whether a line opens a body in braces and is the whole of what stands before that body.
function opens(text,    opening) {
    if (text !~ /[^ ] \{$/) return 0
    gsub(/'[()]'|"[^"]*"/, "", text)
    opening = gsub(/\(/, "", text)
    return opening == gsub(/\)/, "", text)
}

# Whether a line is a whole body. In a chain it begins with none of the words that a later `else` could be taken for;
# behind an `if` it is no check of a test, such as EXPECT_EQ, which is an `if` with an `else` in disguise.
function whole(head, text, chained) {
    if (head !~ /^ *(for|while) / && text ~ /^ *[A-Z]+_[A-Z0-9_]+\(/) return 0
    return text ~ /;$/ && !(chained && text ~ /^ *(if|for|while) /)
}

# How many bodies the chain has that begins at a line; none if any of them has to keep its braces.
function chain(first,    indent, at, bodies) {
    if (lines[first] !~ /^ *(if|for|while) / || !opens(lines[first])) return 0
    indent = lines[first]
    sub(/[^ ].*/, "", indent)
    for (at = first; at + 2 <= last; at += 2) {
        ++bodies
        if (lines[at + 2] == indent "}") return whole(lines[at], lines[at + 1], bodies > 1) ? bodies : 0
        if (index(lines[at + 2], indent "} else ") != 1 || !opens(lines[at + 2]) || !whole(lines[at], lines[at + 1], 1))
            return 0
    }
    return 0
}

function look(    at, bodies, i) {
    for (at = 1; at <= last; ++at) {
        bodies = chain(at)
        if (bodies == 0) {
            if (fix) print lines[at]
            continue
        }
        found = 1
        if (!fix) print file ":" at ": braces around a body of one line"
        for (i = 0; i < bodies && fix; ++i) {
            sub(/ \{$/, "", lines[at + 2 * i])
            sub(/\} else/, "else", lines[at + 2 * i])
            print lines[at + 2 * i]
            print lines[at + 2 * i + 1]
        }
        at += 2 * bodies
    }
}

FNR == 1 && NR > 1 { look() }
FNR == 1 { file = FILENAME }
{ lines[FNR] = $0; last = FNR }
END { look(); exit found && !fix }
