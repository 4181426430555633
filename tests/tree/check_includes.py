#!/usr/bin/env python3
"""Fails on an #include of a folder that the own library does not depend on, of another library's
detail/, or of a foreign library, and on one that stands twice.

usage: check_includes.py ROOT LIBRARIES    LIBRARIES is the libraries.json that CMake writes
"""
import json
import os
import re
import sys

from sources import report, tracked_files

# Programs include any library, their own folder, and the folders of programs in lines before their own.
PROGRAMS = [("apps", "examples"), ("tests",), ("fuzz", "benchmarks")]

# Where alone system calls stand, and the one header that brings the platform's own.
SYSTEM_CALLS = ("platform/files/posix/", "platform/files/windows/")
PLATFORM_HEADER = "platform/base/windows/PlatformNames.h"

# Programs that include the headers of a library's package; the library's own tests do, too.
PACKAGE_USERS = ("apps/desk/main.cpp", "apps/desk/windows/", "tests/desk/windows/", "benchmarks/desk_bench.cpp", "benchmarks/ToolkitKeys.h",
                 "benchmarks/toolkit_keys_bench.cpp", "benchmarks/comparison/programs/empty_window.cpp",
                 "benchmarks/comparison/programs/qt_charts.cpp", "examples/windows/", "examples/firsthour/")

# Projects of their own, whose files find one another in their folder, as those of hosts do.
PROJECTS = ("examples/firsthour/",)

INCLUDE = re.compile(r'^\s*#\s*include\s*(?:"([^"]+)"|<([^>]+)>)')
STANDARD_HEADER = re.compile(r"[a-z_0-9]+")
SYSTEM_HEADER = re.compile(r"([a-z]+|sys/[a-z]+)\.h")


class Library:
    def __init__(self, name, entry):
        self.name = name
        self.folders = entry["folders"]
        self.depends = entry["depends"]
        # What its sources, and when its users need the package its headers, include of others.
        self.headers = re.compile(entry["headers"] or "(?!)")
        self.shows_package = bool(entry["package"])


class Folders:
    """What each folder may include."""

    def __init__(self, libraries):
        self.libraries = [Library(name, entry) for name, entry in libraries.items()]
        self.owners = {folder: library for library in self.libraries for folder in library.folders}
        self.reach = {}
        for library in self.libraries:
            below = set().union(*(self.reach[name] for name in library.depends))
            self.reach[library.name] = below | set(library.folders)
        self.allowed = {folder: (self.reach[library.name] - set(library.folders[i + 1:]))
                        for library in self.libraries for i, folder in enumerate(library.folders)}
        below = set(self.owners)
        for level in PROGRAMS:
            self.allowed.update((folder, below | {folder}) for folder in level)
            below |= set(level)

    def folder_of(self, path):
        """The innermost known folder around the path, or None."""
        while path and path not in self.allowed:
            path = os.path.dirname(path)
        return path or None


def is_inner(path):
    return "/detail/" in path


def is_test_of(path, library):
    return path.startswith(tuple(f"tests/{folder}/" for folder in library.folders))


def fault_of_quoted(root, folders, path, target):
    """What is wrong with #include "target" in the file path, or None."""
    if path.startswith(PROJECTS) and os.path.isfile(os.path.join(root, os.path.dirname(path), target)):
        return None
    own, other = folders.folder_of(path), folders.folder_of(target)
    if other is None or not os.path.isfile(os.path.join(root, target)):
        return f'"{target}" is no file of the tree named from the root'
    if other not in folders.allowed[own]:
        return f'"{target}" points up: {own} may not include {other}'
    library, owner = folders.owners.get(own), folders.owners.get(other)
    if owner and is_inner(target):
        if library != owner and not is_test_of(path, owner):
            return f'"{target}" belongs to the library {owner.name} alone'
        if library and path.endswith(".h") and not is_inner(path):
            return f'"{target}" is not installed, and this header is'
    return None


def fault_of_angled(folders, path, target):
    """What is wrong with #include <target> in the file path, or None."""
    own = folders.folder_of(path)
    library = folders.owners.get(own)
    if library is None:
        owner = next((one for one in folders.libraries
                      if one.shows_package and one.headers.fullmatch(target)), None)
        if owner and not is_test_of(path, owner) and not path.startswith(PACKAGE_USERS):
            return f"<{target}>: only the library {owner.name} and its tests include this package"
        return None
    if STANDARD_HEADER.fullmatch(target):
        return None
    if (path.startswith(SYSTEM_CALLS) or path == PLATFORM_HEADER) and SYSTEM_HEADER.fullmatch(target):
        return None
    is_shown = path.endswith(".h") and not is_inner(path)
    if library.headers.fullmatch(target) and (library.shows_package or not is_shown):
        return None
    return f"<{target}> is no header of the C++ standard library"


def faults_of_file(root, folders, path):
    with open(os.path.join(root, path), encoding="latin-1") as file:
        seen = set()
        for number, line in enumerate(file, 1):
            found = INCLUDE.match(line)
            if not found:
                continue
            if found[0] in seen:
                yield f"{path}:{number}: included twice"
            seen.add(found[0])
            quoted, angled = found.groups()
            fault = (fault_of_quoted(root, folders, path, quoted) if quoted
                     else fault_of_angled(folders, path, angled))
            if fault:
                yield f"{path}:{number}: {fault}"


def faults_of_tree(root, libraries):
    folders = Folders(libraries)
    faults = []
    for path in tracked_files(root):
        if not path.endswith((".h", ".cpp")):
            continue
        if folders.folder_of(path) is None:
            faults.append(f"{path}:1: lies in no folder of a library or program")
        else:
            faults += faults_of_file(root, folders, path)
    return faults


if __name__ == "__main__":
    with open(sys.argv[2], encoding="utf-8") as known:
        sys.exit(report(faults_of_tree(sys.argv[1], json.load(known)), "includes"))
