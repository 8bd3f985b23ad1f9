#!/usr/bin/env python3
"""Opens DXF files with ezdxf and audits them.

Prints every problem, one a line, and exits with 1 when there is any: a file that does not open, an
error, or something that the audit would mend. Exits with 77 when ezdxf is not installed.
"""
import sys

try:
    import ezdxf
except ImportError:
    print("ezdxf is not installed")
    sys.exit(77)


def problems_of(path):
    try:
        drawing = ezdxf.readfile(path)
    except Exception as problem:  # every way of failing to open is a finding
        return ["does not open: %s: %s" % (type(problem).__name__, problem)]
    auditor = drawing.audit()
    return ["error %s: %s" % (entry.code, entry.message) for entry in auditor.errors] + [
        "mended %s: %s" % (entry.code, entry.message) for entry in auditor.fixes
    ]


def main(paths):
    found = False
    for path in paths:
        for problem in problems_of(path):
            print("%s: %s" % (path, problem))
            found = True
    return 1 if found else 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
