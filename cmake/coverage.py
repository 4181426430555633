#!/usr/bin/env python3
"""Prints the line coverage of each folder of the libraries and programs, and fails below a floor.

usage: coverage.py BUILD FLOOR    BUILD has libraries.json, all.profdata, the libraries and the programs
"""
import collections
import json
import os
import subprocess
import sys


def measured(build):
    """Beginnings of the paths that count: the folders of all libraries, and the programs."""
    with open(os.path.join(build, "libraries.json"), encoding="utf-8") as file:
        libraries = json.load(file).values()
    return (*(folder + "/" for library in libraries for folder in library["folders"]), "apps/")


def objects(build):
    """The libraries and the programs that the tests run."""
    for place, folders, files in os.walk(build):
        folders[:] = [folder for folder in folders if folder != "CMakeFiles"]
        for name in files:
            path = os.path.join(place, name)
            if os.access(path, os.X_OK) and not os.path.islink(path):
                with open(path, "rb") as file:
                    if file.read(4) == b"\x7fELF":
                        yield path


def lines_by_folder(build):
    arguments = [argument for path in objects(build) for argument in ("-object", path)]
    exported = subprocess.run(
        ["llvm-cov-14", "export", "-summary-only", "-instr-profile",
         os.path.join(build, "all.profdata"), *arguments[1:]],
        stdout=subprocess.PIPE, check=True).stdout
    beginnings = measured(build)
    folders = collections.defaultdict(lambda: [0, 0])
    for file in json.loads(exported)["data"][0]["files"]:
        path = os.path.relpath(file["filename"])
        if path.startswith(beginnings):
            lines = file["summary"]["lines"]
            for folder in (os.path.dirname(path).removesuffix("/detail"), "all"):
                folders[folder][0] += lines["covered"]
                folders[folder][1] += lines["count"]
    return folders


def main():
    build, floor = sys.argv[1], float(sys.argv[2])
    below = False
    for folder, (covered, count) in sorted(lines_by_folder(build).items()):
        percent = 100 * covered / max(count, 1)
        below |= percent < floor
        mark = f"  below {floor:g} %" if percent < floor else ""
        print(f"> {percent:5.1f} % of {count:5d} lines  {folder}{mark}")
    return 1 if below else 0


if __name__ == "__main__":
    sys.exit(main())
