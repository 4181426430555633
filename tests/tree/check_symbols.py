#!/usr/bin/env python3
"""Fails when the shared libraries export other symbols than the lists in cmake/symbols say, or when
their names and those of the packages disagree with the project's version.

usage: check_symbols.py ROOT BUILD [--write]    --write makes the lists anew
"""
import json
import os
import re
import subprocess
import sys

from sources import report

# Definitions of the library's own: no templates' and inline functions' copies, whose place is the
# program as well, and nothing that a compiler adds for itself.
STRONG = re.compile(r"^[0-9a-f]+ [TDBRGS] (?!__)(.+)$")


def output_of(*command):
    return subprocess.run(command, check=True, capture_output=True, text=True).stdout


def exported(library):
    lines = output_of("nm", "--dynamic", "--defined-only", "--demangle", library).splitlines()
    return sorted({match[1] for match in map(STRONG.match, lines) if match and "(.clone" not in match[1]})


def list_path(root, name):
    return os.path.join(root, "cmake", "symbols", name + ".txt")


def read_list(path):
    if not os.path.exists(path):
        return []
    with open(path, encoding="utf-8") as file:
        return file.read().splitlines()


def faults_of_list(root, name, symbols):
    path = list_path(root, name)
    known = set(read_list(path))
    return [f"{os.path.relpath(path, root)}: {text} {symbol}"
            for text, those in (("is gone:", known - set(symbols)), ("is new:", set(symbols) - known))
            for symbol in sorted(those)]


def version_of(root):
    with open(os.path.join(root, "CMakeLists.txt"), encoding="utf-8") as file:
        return re.search(r"project\(tessalink VERSION (\d+\.\d+)\.\d+", file.read())


def faults_of_names(root, library, version):
    expected = f"{os.path.basename(library)}.{version}"
    found = re.search(r"SONAME.*\[(.+)\]", output_of("readelf", "--dynamic", library))
    if not found or found[1] != expected:
        yield f"{library}: its SONAME is {found and found[1]}, by the version {expected}"


def faults_of_packages(root, version):
    with open(os.path.join(root, "debian", "changelog"), encoding="utf-8") as file:
        if f"({version}." not in file.readline():
            yield f"debian/changelog: its first version is not of {version}"
    with open(os.path.join(root, "debian", "control"), encoding="utf-8") as file:
        for name in re.findall(r"^Package: (libtessalink\S*[0-9]\S*)$", file.read(), re.M):
            if not name.endswith(version):
                yield f"debian/control: {name} is not of {version}"


def main(root, build, *options):
    with open(os.path.join(build, "libraries.json"), encoding="utf-8") as file:
        names = json.load(file)
    version = version_of(root)[1]
    faults = list(faults_of_packages(root, version))
    for name in names:
        library = os.path.join(build, f"libtessalink_{name}.so")
        if not os.path.exists(library):
            continue
        symbols = exported(library)
        if "--write" in options:
            os.makedirs(os.path.dirname(list_path(root, name)), exist_ok=True)
            with open(list_path(root, name), "w", encoding="utf-8") as file:
                file.write("".join(symbol + "\n" for symbol in symbols))
        faults += faults_of_list(root, name, symbols)
        faults += faults_of_names(root, library, version)
    return report(faults, "symbols")


if __name__ == "__main__":
    sys.exit(main(*sys.argv[1:]))
