#!/usr/bin/env python3
"""Prints what a compile_commands.json compiles of the tree, each path ended by a NUL, the largest first.

usage: list_sources.py COMPILE_COMMANDS

Sources that are compiled together stand in one file of the build folder, which includes them.
"""
import json
import os
import re
import sys


def size(path):
    """Of a source and the sources that it includes."""
    with open(path, encoding="utf-8") as file:
        text = file.read()
    return len(text) + sum(os.path.getsize(source) for source in re.findall(r'#include "(/.*[.]cpp)"', text))


with open(sys.argv[1], encoding="utf-8") as commands:
    sources = {os.path.relpath(command["file"]) for command in json.load(commands)}
ours = [source for source in sources if "/Unity/" in source or not source.startswith(("build", ".."))]
for source in sorted(ours, key=size, reverse=True):
    print(source, end="\0")
