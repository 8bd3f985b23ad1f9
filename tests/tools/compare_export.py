#!/usr/bin/python3
# Compares an export with the standard columns, cell by cell, with the list that the program prints as JSON:
# compare_export.py EXPORT.csv LIST.json. Prints the cells that differ and ends with 1, or the count of cells.
import csv
import json
import sys

FIELDS = {
    "PN": "bv_pn", "QTY": "bv_qty", "Part Name": "bv_partname", "Sub Assembly": "bv_subassembly",
    "Width": "bv_width", "Length": "bv_length", "Thickness": "bv_thickness", "Material": "bv_material",
    "Notes": "bv_notes", "User Data1": "bv_userdata1", "User Data2": "bv_userdata2", "Price": "bv_price",
    "EB1": "bv_eb1", "EB2": "bv_eb2", "EB3": "bv_eb3", "EB4": "bv_eb4", "Face": "bv_face", "Layer": "bv_layer",
}


def same(cell, value):
    return float(cell) == value if isinstance(value, float | int) else cell == value


with open(sys.argv[1], newline="", encoding="utf-8") as export, open(sys.argv[2], encoding="utf-8") as printed:
    rows, parts = list(csv.DictReader(export)), json.load(printed)

differing = [f"rows: {len(rows)} and {len(parts)}"] if len(rows) != len(parts) else []
cells = 0
for number, (row, part) in enumerate(zip(rows, parts), 1):
    for caption, field in FIELDS.items():
        cells += 1
        if not same(row[caption], part[field]):
            differing.append(f"row {number}, {caption}: {row[caption]!r} and {part[field]!r}")
    cells += 1
    thickness, _, material = row["Thickness-Material (Metric)"].partition(" ")
    if float(thickness) != round(part["bv_thickness"], 2) or material != part["bv_material"]:
        differing.append(f"row {number}, Thickness-Material (Metric): {thickness!r} {material!r}")
print("\n".join(differing) or cells)
sys.exit(1 if differing else 0)
