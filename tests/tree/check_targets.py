#!/usr/bin/env python3
"""Fails when the documents tell other libraries, folders or dependencies than those that CMake builds.

usage: check_targets.py ROOT LIBRARIES    LIBRARIES is the libraries.json that CMake writes
"""
import json
import os
import re
import sys

from sources import report

ARCHITECTURE = "docs/architecture.md"
TARGET_LISTS = (ARCHITECTURE, "docs/host-programs.md")
ROW = re.compile(r"^\| `tessalink::(\w+)` \|(.*)\|$")
FOLDER = re.compile(r"^    ([a-z]+(?:/[a-z0-9]+)*)(?: {2,}|$)")
QUOTED = re.compile(r"`([^`]+)`")


def rows_of(lines):
    """The cells behind the name of each target in a table."""
    found = [ROW.match(line) for line in lines]
    return {row[1]: row[2].split("|") for row in found if row}


def faults_of_rows(rows, libraries):
    for name, entry in libraries.items():
        folders, needs = (QUOTED.findall(cell) for cell in rows.get(name, ["", ""]))
        if name in rows and (folders, needs) != (entry["folders"], entry["depends"]):
            yield f"{name} has the folders {entry['folders']} and needs {entry['depends']}"


def faults_of_tree(root, libraries):
    faults = []
    for document in TARGET_LISTS:
        with open(os.path.join(root, document), encoding="utf-8") as file:
            lines = file.read().splitlines()
        rows = rows_of(lines)
        faults += [f"{document}: no row for tessalink::{name}" for name in libraries if name not in rows]
        faults += [f"{document}: no library {name}" for name in rows if name not in libraries]
        if document == ARCHITECTURE:
            faults += [f"{document}: {fault}" for fault in faults_of_rows(rows, libraries)]
            described = {found[1] for found in map(FOLDER.match, lines) if found}
            faults += [f"{document}: {folder} is not described"
                       for entry in libraries.values() for folder in entry["folders"]
                       if folder not in described]
    return faults


if __name__ == "__main__":
    with open(sys.argv[2], encoding="utf-8") as known:
        sys.exit(report(faults_of_tree(sys.argv[1], json.load(known)), "targets"))
