"""Prints what a run of bench_scan_read tells as one small table: solids per second, the ratio to the
modeller's own reader, and how the cost of one solid grows with the job. Reads the run's JSON from a file."""

import json
import sys

COLUMNS = [
    ("ReadDxfJob", "read DXF"),
    ("ReadStepJob", "read STEP"),
    ("ReadStepBare", "bare STEP"),
    ("FirstScanJob", "first scan"),
    ("ScanJob", "scan again"),
]


def solids_per_second(report):
    """Rates by (benchmark, solids, holes)."""
    rates = {}
    for run in report["benchmarks"]:
        if "items_per_second" not in run:
            continue
        name, *arguments = run["name"].split("/")
        values = dict(argument.split(":") for argument in arguments if ":" in argument)
        rates[name, int(values["solids"]), int(values["holes"])] = run["items_per_second"]
    return rates


def cell(value):
    return "-" if value is None else f"{value:.3g}" if value < 100 else f"{value:.0f}"


def ratio(part, whole):
    return part / whole if part is not None and whole else None


def print_rates(rates):
    print("solids per second")
    heads = ["solids", "holes"] + [caption for _, caption in COLUMNS] + ["STEP to bare"]
    print("  ".join(head.rjust(12) for head in heads))
    for solids, holes in sorted({key[1:] for key in rates}):
        row = [rates.get((name, solids, holes)) for name, _ in COLUMNS]
        row.append(ratio(rates.get(("ReadStepJob", solids, holes)), rates.get(("ReadStepBare", solids, holes))))
        print("  ".join(text.rjust(12) for text in [str(solids), str(holes)] + [cell(value) for value in row]))


def print_growth(rates):
    sizes = sorted({key[1] for key in rates})
    if len(sizes) < 2:
        return
    small, large = sizes[0], sizes[-1]
    print(f"\ncost of one solid in a job of {large}, as a multiple of one in a job of {small}")
    print("  ".join(head.rjust(12) for head in ["holes"] + [caption for _, caption in COLUMNS]))
    for holes in sorted({key[2] for key in rates}):
        row = [ratio(rates.get((name, small, holes)), rates.get((name, large, holes))) for name, _ in COLUMNS]
        print("  ".join(text.rjust(12) for text in [str(holes)] + [cell(value) for value in row]))


def main():
    with open(sys.argv[1], encoding="utf-8") as file:
        rates = solids_per_second(json.load(file))
    print_rates(rates)
    print_growth(rates)


if __name__ == "__main__":
    main()
