#!/usr/bin/env python3
"""Prints the extended data of a DXF file's entities as ezdxf reads them.

One line for each text: the handle, the application's name and the text. Exits with 77 when ezdxf is
not installed.
"""
import sys

try:
    import ezdxf
except ImportError:
    print("ezdxf is not installed")
    sys.exit(77)

TEXT = 1000


def main(path):
    for entity in ezdxf.readfile(path).modelspace():
        if entity.xdata is None:
            continue
        for application, tags in entity.xdata.data.items():
            for tag in tags:
                if tag.code == TEXT:
                    print("%s %s=%s" % (entity.dxf.handle, application, tag.value))


if __name__ == "__main__":
    main(sys.argv[1])
