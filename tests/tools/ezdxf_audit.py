#!/usr/bin/env python3
"""Opens DXF files with ezdxf and audits them.

Prints every problem, one a line, and exits with 1 when there is any: a file that does not open, an
error, or something that the audit would mend. Exits with 77 when ezdxf is not installed.
"""
import io
import re
import sys

try:
    import ezdxf
except ImportError:
    print("ezdxf is not installed")
    sys.exit(77)


ESCAPE = re.compile(r"(?:\\U\+[0-9A-Fa-f]{4})+")


def decoded(match):
    units = b"".join(int(unit, 16).to_bytes(2, "little") for unit in match.group().split("\\U+")[1:])
    text = units.decode("utf-16-le")
    # A control character or a backslash would change the file's lines or make a new escape.
    return text if min(text) > "\x7f" else match.group()


def open_drawing(path):
    """The drawing with its \\U+XXXX escapes decoded, which ezdxf does in its recovery mode alone."""
    with open(path, "rb") as file:
        content = file.read()
    if not re.search(rb"\\U\+", content):
        return ezdxf.readfile(path)
    text = content.decode(ezdxf.filemanagement.dxf_file_info(path).encoding, "surrogateescape")
    return ezdxf.read(io.StringIO(ESCAPE.sub(decoded, text).replace("\r\n", "\n")))


def problems_of(path):
    try:
        drawing = open_drawing(path)
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
