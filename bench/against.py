#!/usr/bin/env python3
"""Runs two programs on the same drawings in turn, and prints the processor time of each and the ratio:
against.py OLD NEW FOLDER [FILTER]. FILTER is a regular expression over the names of the measurements."""
import os
import re
import shutil
import subprocess
import sys
import tempfile

ROUNDS = 5
CNC = ["--target", "C2C", "--out"]

# What is measured, the command with its drawing, and how many parts that is.
MEASUREMENTS = [
    ("list of a panel", "list", "panel.dxf", 1),
    ("list of plain panels", "list", "panels.dxf", 1000),
    ("list of panels with 10 holes", "list", "drilled.dxf", 1000),
    ("list of a STEP file", "list", "drilled.step", 100),
    ("cnc of one-sided panels", "cnc", "one-side.dxf", 10),
    ("cnc of two-sided panels", "cnc", "both-sides.dxf", 10),
]


def seconds(program, home, command, drawing, folder):
    """The processor time of one call, its children's included. A run saves its drawing: it gets a copy."""
    copy = shutil.copy(os.path.join(folder, drawing), os.path.join(home, drawing))
    words = [program, "--home", home, command, copy]
    if command == "cnc":
        words += [*CNC, os.path.join(home, "files")]
    process = subprocess.Popen(words, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
    _, status, usage = os.wait4(process.pid, 0)
    process.returncode = os.waitstatus_to_exitcode(status)
    if process.returncode not in (0, 1):
        sys.exit(f"{' '.join(words)} ended with {process.returncode}")
    return usage.ru_utime + usage.ru_stime


def make_home(program, home):
    for words in (["init"], ["materials", "add", "18 oak", "--like", "18 white melamine"]):
        subprocess.run([program, "--home", home, *words], check=True, stdout=subprocess.DEVNULL,
                       stderr=subprocess.DEVNULL)


def main():
    old, new, folder = sys.argv[1:4]
    wanted = re.compile(sys.argv[4] if len(sys.argv) > 4 else ".")
    print("milliseconds of processor time a part".ljust(34), "before".rjust(9), "after".rjust(9),
          "after to before".rjust(16))
    with tempfile.TemporaryDirectory() as work:
        homes = {}
        for name, program in (("old", old), ("new", new)):
            homes[program] = os.path.join(work, name)
            make_home(program, homes[program])
        for name, command, drawing, parts in MEASUREMENTS:
            if not wanted.search(name):
                continue
            times = {old: [], new: []}
            for _ in range(ROUNDS):
                for program in (old, new):
                    times[program].append(seconds(program, homes[program], command, drawing, folder))
            # What others do on the machine only ever makes a call slower.
            before, after = (min(times[program]) * 1000 / parts for program in (old, new))
            print(name.ljust(34), f"{before:9.2f}", f"{after:9.2f}", f"{after / before:16.2f}", flush=True)


if __name__ == "__main__":
    main()
