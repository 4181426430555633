#!/usr/bin/env python3
"""Fails when the shared libraries export other symbols than the lists in cmake/symbols say, or when
their SONAMEs are not of the project's version.

usage: check_symbols.py ROOT BUILD [--write]    --write makes the lists anew
"""
import json
import os
import re
import subprocess
import sys

from check_versions import version_of
from sources import report

# What the library alone defines: no copies of templates and inline functions, which programs have
# too, nothing that a compiler adds for itself, and no tables of classes, which are copies to one
# compiler and not to the other; they come and go with functions that are listed.
STRONG = re.compile(r"^[0-9a-f]+ [TDBRGS] (?!__|vtable |VTT |typeinfo )(.+)$")
SONAME = re.compile(r"\(SONAME\).*\[(.+)\]")


def output_of(*command):
    return subprocess.run(command, check=True, capture_output=True, text=True).stdout


def strong_symbols(lines):
    return sorted({match[1] for match in map(STRONG.match, lines) if match})


def exported(library):
    return strong_symbols(output_of("nm", "--dynamic", "--defined-only", "--demangle", library).splitlines())


def list_path(root, name):
    return os.path.join(root, "cmake", "symbols", name + ".txt")


def write_list(root, name, symbols):
    os.makedirs(os.path.dirname(list_path(root, name)), exist_ok=True)
    with open(list_path(root, name), "w", encoding="utf-8") as file:
        file.writelines(symbol + "\n" for symbol in symbols)


def read_list(root, name):
    if not os.path.exists(list_path(root, name)):
        return []
    with open(list_path(root, name), encoding="utf-8") as file:
        return file.read().splitlines()


def faults_of_list(root, name, symbols):
    known = read_list(root, name)
    return [f"cmake/symbols/{name}.txt: {text}: {symbol}"
            for text, these, those in (("gone", known, symbols), ("new", symbols, known))
            for symbol in sorted(set(these) - set(those))]


def faults_of_name(library, series):
    expected = f"{os.path.basename(library)}.{series}"
    found = SONAME.search(output_of("readelf", "--dynamic", "--wide", library))
    if not found or found[1] != expected:
        yield f"{library}: its SONAME is {found and found[1]}, by the version {expected}"


def main(root, build, *options):
    with open(os.path.join(build, "libraries.json"), encoding="utf-8") as file:
        names = json.load(file)
    libraries = {name: os.path.join(build, f"libtessalink_{name}.so") for name in names}
    built = {name: path for name, path in libraries.items() if os.path.exists(path)}
    faults = [] if built else [f"{build}: no shared libraries"]
    for name, path in built.items():
        symbols = exported(path)
        if "--write" in options:
            write_list(root, name, symbols)
        faults += faults_of_list(root, name, symbols)
        faults += faults_of_name(path, version_of(root)[1])
    return report(faults, "symbols")


if __name__ == "__main__":
    sys.exit(main(*sys.argv[1:]))
