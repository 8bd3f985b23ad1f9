"""Prints what runs of the benchmarks tell as small tables: rates, how the cost of one item grows with the job,
and for reading the ratio to the modeller's own reader. Reads the runs' JSON from files."""

import json
import sys

SCAN_COLUMNS = [
    ("ReadDxfJob", "read DXF"),
    ("ReadStepJob", "read STEP"),
    ("ReadStepBare", "bare STEP"),
    ("FirstScanJob", "first scan"),
    ("ScanJob", "scan again"),
]
DRAWING_COLUMNS = [("ReadDwgSample", "read DWG"), ("ReadDxfSample", "read DXF")]
BODY_COLUMNS = [("ReadAcisBinary", "read SAB"), ("ReadAcisText", "read SAT")]
GRID_COLUMNS = [
    ("LoadList", "load"),
    ("SortList", "sort"),
    ("GroupList", "group"),
    ("FilterList", "filter"),
    ("CopyMaterial", "copy"),
    ("CopyLetters", "copy letters"),
    ("NumberParts", "numbers"),
    ("ApplyToDrawing", "apply"),
]
CSV_COLUMNS = [("ExportList", "CSV")]
RUN_COLUMNS = [("RunJobOfPanels", "one side"), ("RunJobOfTwoSides", "two sides")]
TARGET_COLUMNS = [("RunJobForTarget", "40 holes")]

# Each table: what is counted, its columns, the size of a job, and what else jobs differ by.
TABLES = [
    ("solids", SCAN_COLUMNS, "solids", ["holes"]),
    ("entities of drawings", DRAWING_COLUMNS, "release", []),
    ("ACIS bodies", BODY_COLUMNS, "holes", []),
    ("grid rows", GRID_COLUMNS, "rows", []),
    ("rows to CSV", CSV_COLUMNS, "rows", ["adjustments", "fractions"]),
    ("parts of CNC runs", RUN_COLUMNS, "parts", ["holes"]),
    ("parts of CNC runs for each target", TARGET_COLUMNS, "target", []),
]

# The sizes of these aren't amounts that could grow.
NUMBERED = ["target", "release", "holes"]

# What is held against what, and what the ratio is called.
HELD_AGAINST = [
    ("ReadStepJob", "ReadStepBare", "STEP to bare"),
    ("ReadDwgSample", "ReadDxfSample", "DWG to DXF"),
    ("ReadAcisBinary", "ReadAcisText", "SAB to SAT"),
]

# What a run has taken on in memory behind its first parts, in megabytes.
MEMORY = ("RunJobOfPanels", "MB")


def rates_of(reports):
    """Items per second by benchmark and then by arguments, as sorted pairs."""
    rates = {}
    for report in reports:
        for run in report["benchmarks"]:
            if "items_per_second" not in run:
                continue
            name, *arguments = run["name"].split("/")
            values = dict(argument.split(":") for argument in arguments if ":" in argument)
            key = tuple(sorted((argument, int(value)) for argument, value in values.items()))
            rates.setdefault(name, {})[key] = run["items_per_second"]
    return rates


def cell(value):
    return "-" if value is None else f"{value:.3g}" if value < 100 else f"{value:.0f}"


def ratio(part, whole):
    return part / whole if part is not None and whole else None


def print_line(cells):
    print("  ".join(text.rjust(12) for text in cells))


def print_rates(rates, columns, arguments, jobs):
    # Only tables of reading have a reader to be held against.
    pair = next((pair for pair in HELD_AGAINST if pair[0] in dict(columns)), None)
    print_line(arguments + [caption for _, caption in columns] + ([pair[2]] if pair else []))
    for job in jobs:
        key = tuple(sorted(zip(arguments, job)))
        row = [rates.get(name, {}).get(key) for name, _ in columns]
        if pair:
            row.append(ratio(rates.get(pair[0], {}).get(key), rates.get(pair[1], {}).get(key)))
        print_line([str(value) for value in job] + [cell(value) for value in row])


def print_growth(rates, columns, what, arguments, jobs):
    sizes = sorted({job[0] for job in jobs})
    for small, large in zip(sizes, sizes[1:]):
        print(f"cost of one of the {what} in a job of {large}, as a multiple of one in a job of {small}")
        print_line(arguments[1:] + [caption for _, caption in columns])
        for others in sorted({job[1:] for job in jobs}):
            keys = [tuple(sorted(zip(arguments, (size, *others)))) for size in (small, large)]
            row = [ratio(*(rates.get(name, {}).get(key) for key in keys)) for name, _ in columns]
            print_line([str(value) for value in others] + [cell(value) for value in row])


def print_memory(reports):
    benchmark, counter = MEMORY
    runs = [run for report in reports for run in report["benchmarks"] if run["name"].startswith(benchmark + "/")]
    if runs:
        print("megabytes that a run takes on from its tenth part to its last")
    for run in runs:
        print_line([run["name"].split("/")[1], run["name"].split("/")[2], cell(run[counter])])


def main():
    reports = []
    for path in sys.argv[1:]:
        with open(path, encoding="utf-8") as file:
            reports.append(json.load(file))
    rates = rates_of(reports)
    for what, columns, size, others in TABLES:
        arguments = [size, *others]
        keys = {key for name, _ in columns for key in rates.get(name, {})}
        jobs = sorted(tuple(dict(key)[argument] for argument in arguments) for key in keys)
        if not jobs:
            continue
        print(f"{what} per second")
        print_rates(rates, columns, arguments, jobs)
        if size not in NUMBERED:
            print_growth(rates, columns, what, arguments, jobs)
        print()
    print_memory(reports)


if __name__ == "__main__":
    main()
