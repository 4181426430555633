#!/usr/bin/env python3
"""Prints the sources of a compile_commands.json that stand in the tree, each ended by a NUL.

usage: list_sources.py COMPILE_COMMANDS
"""
import json
import os
import sys

with open(sys.argv[1], encoding="utf-8") as commands:
    sources = {os.path.relpath(command["file"]) for command in json.load(commands)}
for source in sorted(sources):
    if not source.startswith(("build", "..")):
        print(source, end="\0")
