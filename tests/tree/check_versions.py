#!/usr/bin/env python3
"""Fails when a file says another version than the project in CMakeLists.txt.

usage: check_versions.py ROOT [LIBRARIES]
"""
import os
import re
import sys

from sources import report

PROJECT = re.compile(r"^project\(tessalink VERSION (\d+\.\d+)(\.\d+)", re.M)
FIND_PACKAGE = r"find_package\(tessalink ([\d.]+)"
WHOLE_VERSIONS = [  # file, where its first version stands
    ("CHANGELOG.md", r"^## \[([\d.]+)\]"),
    ("debian/changelog", r"^tessalink \(([\d.]+)\)"),
]
SERIES = [  # file, where it says with which versions programs are compatible
    ("debian/control", r"^Package: libtessalink[-a-z]*?([\d.]+)$"),
    ("README.md", FIND_PACKAGE),
    ("docs/host-programs.md", FIND_PACKAGE),
    ("examples/outside/CMakeLists.txt", FIND_PACKAGE),
]


def text_of(root, name):
    with open(os.path.join(root, name), encoding="utf-8") as file:
        return file.read()


def version_of(root):
    """The project's version, and the part of it that programs stay compatible within."""
    found = PROJECT.search(text_of(root, "CMakeLists.txt"))
    return found[1] + found[2], found[1]


def faults_of_tree(root):
    version, series = version_of(root)
    for name, place in WHOLE_VERSIONS:
        found = re.search(place, text_of(root, name), re.M)
        if not found or found[1] != version:
            yield f"{name}: its first version is {found and found[1]}, the project's is {version}"
    for name, place in SERIES:
        if set(found := re.findall(place, text_of(root, name), re.M)) != {series}:
            yield f"{name}: it says {found}, the project is of {series}"


if __name__ == "__main__":
    sys.exit(report(list(faults_of_tree(sys.argv[1])), "versions"))
