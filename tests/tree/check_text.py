#!/usr/bin/env python3
"""Fails on tabs, trailing blanks, CR line ends, a missing last line end, and paths of one machine.

usage: check_text.py ROOT
"""
import os
import re
import sys

from sources import report, tracked_files

SOURCE_ENDINGS = (".h", ".cpp", ".cmake", ".in", ".txt", ".md", ".json", ".py", ".sh", ".yml",
                  "run", "check", "LICENSE", ".clang-format", ".clang-tidy", ".gitignore")
# Data that tests and examples read byte for byte.
DATA_FOLDERS = ("fuzz/corpus/", "tests/data/")
MACHINE_PATH = re.compile(r"(?<![\w./-])/(?:home|root|work|Users)/\w|[A-Z]:\\Users\\")


def faults_of_line(line):
    if line.endswith("\r"):
        yield "line ends in CR"
    elif line != line.rstrip():
        yield "trailing blanks"
    if "\t" in line:
        yield "tab"
    if MACHINE_PATH.search(line):
        yield "path of one machine"


def faults_of_text(text):
    """(line, fault) for each fault of a text."""
    lines = text.split("\n")
    for number, line in enumerate(lines, 1):
        for fault in faults_of_line(line):
            yield number, fault
    if lines[-1]:
        yield len(lines), "no line end at the end"


def faults_of_tree(root):
    faults = []
    for path in tracked_files(root):
        if not path.endswith(SOURCE_ENDINGS) or path.startswith(DATA_FOLDERS):
            continue
        with open(os.path.join(root, path), encoding="latin-1", newline="") as file:
            faults += [f"{path}:{number}: {fault}" for number, fault in faults_of_text(file.read())]
    return faults


if __name__ == "__main__":
    sys.exit(report(faults_of_tree(sys.argv[1]), "text"))
