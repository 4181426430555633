#!/usr/bin/env python3
"""Fails on an #include that points up, into another folder's detail/, or at a foreign library.

usage: check_includes.py ROOT
"""
import fnmatch
import os
import re
import sys

from sources import report, tracked_files

# A file may include its own unit and the units of the levels above its own line. The first pattern
# that matches a path decides, so special files stand before the folder that they lie in.
LEVELS = [
    ["platform/base/*"],
    ["platform/files/*"],
    ["core/*"],
    ["platform/graphics/*"],
    ["report/*", "scores/*"],
    ["graphs/*"],
    ["graphs/file/*"],
    ["platform/windows/*"],
    ["dataentry/*", "responselists/*", "graphs/profile/windows/*"],
    ["platform/qt/*"],
    ["apps/*", "examples/*"],
    ["tests/*"],
    ["fuzz/*", "benchmarks/*"],
]
UNITS = sorted(((pattern, level) for level, patterns in enumerate(LEVELS) for pattern in patterns),
               key=lambda unit: -len(unit[0]))

# Arrows that the levels allow and the design does not.
FORBIDDEN = [("report/*", "platform/graphics/*")]

# Folders that compute, draw or model windows: the standard library only.
STANDARD_ONLY = ("platform/base/", "platform/files/", "platform/graphics/", "platform/windows/",
                 "core/", "report/", "scores/", "graphs/", "dataentry/", "responselists/")
# What a folder may use besides, in its sources only: installed headers need no other library.
FOREIGN = {"graphs/file/": re.compile(r"^rapidjson/")}
SYSTEM_CALLS = ("platform/files/",)

# Who may include headers of the toolkit.
TOOLKIT_USERS = ("platform/qt/", "tests/platform/qt/", "benchmarks/comparison/programs/qt_charts.cpp",
                 "benchmarks/toolkit_keys_bench.cpp", "examples/windows/")

# Who may include a folder's detail/ besides the folder: what is linked into the same library.
SAME_LIBRARY = {"platform/base/": ("platform/files/",)}

INCLUDE = re.compile(r'^\s*#\s*include\s*(?:"([^"]+)"|<([^>]+)>)')
STANDARD_HEADER = re.compile(r"^[a-z_0-9]+$")
TOOLKIT_HEADER = re.compile(r"^(Q[A-Z]|Qt[A-Z]?[A-Za-z]*/|q[a-z]+\.h$)")
SYSTEM_HEADER = re.compile(r"^([a-z]+|sys/[a-z]+)\.h$")


def unit_of(path):
    """(pattern, level) of the unit that a path belongs to, or None outside all levels."""
    return next((unit for unit in UNITS if fnmatch.fnmatchcase(path, unit[0])), None)


def is_inner(path):
    return "/detail/" in path


def is_public_header(path):
    return path.endswith(".h") and not is_inner(path) and path.startswith(STANDARD_ONLY)


def fault_of_quoted(root, path, target):
    """What is wrong with #include "target" in the file path, or None."""
    own, other = unit_of(path), unit_of(target)
    if other is None or not os.path.isfile(os.path.join(root, target)):
        return f'"{target}" is no file of the tree named from the root'
    if other != own and other[1] >= own[1]:
        return f'"{target}" points up: {own[0]} may not include {other[0]}'
    if any(fnmatch.fnmatchcase(path, a) and fnmatch.fnmatchcase(target, b) for a, b in FORBIDDEN):
        return f'"{target}" is forbidden for {own[0]}'
    if is_inner(target):
        owner = target.split("/detail/")[0] + "/"
        friends = (owner, *SAME_LIBRARY.get(owner, ()))
        if not path.removeprefix("tests/").startswith(friends):
            return f'"{target}" belongs to {owner} alone'
        if is_public_header(path):
            return f'"{target}" is not installed, and this header is'
    return None


def fault_of_angled(path, target):
    """What is wrong with #include <target> in the file path, or None."""
    if TOOLKIT_HEADER.match(target) and not path.startswith(TOOLKIT_USERS):
        return f"<{target}>: only platform/qt, its tests and its benchmarks include the toolkit"
    if not path.startswith(STANDARD_ONLY) or STANDARD_HEADER.match(target):
        return None
    if path.startswith(SYSTEM_CALLS) and SYSTEM_HEADER.match(target) and not is_public_header(path):
        return None
    if path.endswith(".cpp") and any(path.startswith(folder) and pattern.match(target)
                                     for folder, pattern in FOREIGN.items()):
        return None
    return f"<{target}> is no header of the C++ standard library"


def faults_of_file(root, path):
    with open(os.path.join(root, path), encoding="latin-1") as file:
        for number, line in enumerate(file, 1):
            found = INCLUDE.match(line)
            if not found:
                continue
            quoted, angled = found.groups()
            fault = fault_of_quoted(root, path, quoted) if quoted else fault_of_angled(path, angled)
            if fault:
                yield f"{path}:{number}: {fault}"


def faults_of_tree(root):
    sources = [path for path in tracked_files(root) if path.endswith((".h", ".cpp"))]
    return [fault for path in sources if unit_of(path) for fault in faults_of_file(root, path)]


if __name__ == "__main__":
    sys.exit(report(faults_of_tree(sys.argv[1]), "includes"))
