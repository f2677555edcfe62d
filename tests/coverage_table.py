#!/usr/bin/env python3
"""Prints gcovr's summary as a table by folder: coverage_table.py SUMMARY.json"""

import json
import sys

DEEP = {"host": 3}  # folders whose parts stand apart, and how deep
KINDS = ("line", "branch")


def folder_of(path):
    parts = path.split("/")[:-1]
    return "/".join(parts[: DEEP.get(parts[0], 1)])


def share(covered, total):
    return f"{100 * covered / total:.1f} %" if total else "-"


def main():
    counts = {}
    with open(sys.argv[1], encoding="utf-8") as file:
        for entry in json.load(file)["files"]:
            for folder in (folder_of(entry["filename"]), "whole"):
                sums = counts.setdefault(folder, {kind: [0, 0] for kind in KINDS})
                for kind in KINDS:
                    sums[kind][0] += entry[f"{kind}_covered"]
                    sums[kind][1] += entry[f"{kind}_total"]
    print("| Folder | Lines | Lines run | Branches run |\n|---|---|---|---|")
    for folder in sorted(counts, key=lambda name: (name == "whole", name)):
        line, branch = counts[folder]["line"], counts[folder]["branch"]
        print(f"| {folder} | {line[1]} | {share(*line)} | {share(*branch)} |")


if __name__ == "__main__":
    main()
