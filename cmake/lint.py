#!/usr/bin/env python3
"""Runs clang-tidy over everything that a build compiles of the tree, and prints what it finds.

usage: lint.py BUILD JOBS    BUILD has compile_commands.json

Sources that BUILD compiles together, by files that include them, are read together here, too, which
takes a fifth of the time: their text is put into one file, since the analyzer passes over functions
of included files. Some checks see more there than there is, so that a source in which something is
found is read once more by itself, and only what is found then is told.
"""
import concurrent.futures
import json
import os
import re
import subprocess
import sys

# The analyzer looks at a third of the states that it would by default, which halves its time.
OPTIONS = ["--quiet", "--extra-arg=-Xclang", "--extra-arg=-analyzer-config",
           "--extra-arg=-Xclang", "--extra-arg=max-nodes=75000"]
# Many sources in one file include the same; tests/tree looks for what a source includes twice.
JOINED_OPTIONS = ["--checks=-readability-duplicate-include"]
NOISE = re.compile(r"^\d+ warnings? generated\.$|^Suppressed \d+ warnings? ")


def commands_of(build):
    """What is compiled of the tree: paths from here, with their entries."""
    with open(os.path.join(build, "compile_commands.json"), encoding="utf-8") as file:
        for command in json.load(file):
            path = os.path.relpath(command["file"])
            if "/Unity/" in path or not path.startswith(("build", "..")):
                yield path, command


def join(path, place):
    """Writes the sources that a file includes into one, and returns where each begins."""
    with open(path, encoding="utf-8") as file:
        sources = re.findall(r'^#include "(/.*)"$', file.read(), re.MULTILINE)
    starts, lines = [], []
    for source in sources:
        starts.append((len(lines), os.path.relpath(source)))
        with open(source, encoding="utf-8") as file:
            lines += file.read().split("\n")
    with open(place, "w", encoding="utf-8") as file:
        file.write("\n".join(lines))
    return starts


def told(text, joined, starts):
    """The text with places of the sources for those of the joined file."""
    def place(match):
        line = int(match[1])
        start, source = max(entry for entry in starts if entry[0] < line)
        return f"{source}:{line - start}:"
    return re.sub(re.escape(os.path.abspath(joined)) + r":(\d+):", place, text)


def alone(command, path):
    """The entry of a file that is compiled as another one is."""
    return {**command, "file": path, "command": command["command"].replace(command["file"], path)}


def findings(folder, path, options):
    """What clang-tidy tells of one file; nothing when it is content."""
    run = subprocess.run(["clang-tidy-14", "-p", folder, *options, path],
                         stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True, check=False)
    lines = [line for line in run.stdout.splitlines() if not NOISE.match(line)]
    return "\n".join(lines) if lines or run.returncode == 0 else f"{path}: clang-tidy failed"


def lint(folder, path, starts):
    if not starts:
        return findings(folder, path, OPTIONS)
    text = told(findings(folder, path, OPTIONS + JOINED_OPTIONS), path, starts)
    if not text:
        return ""
    sources = [source for _, source in starts]
    named = [source for source in sources if f"{source}:" in text]
    return "\n".join(filter(None, (findings(folder, source, OPTIONS) for source in named or sources)))


def main():
    build, jobs = sys.argv[1], int(sys.argv[2])
    folder = os.path.join(build, "lint")
    os.makedirs(folder, exist_ok=True)
    entries, starts = [], {}
    for path, command in commands_of(build):
        if "/Unity/" in path:
            place = os.path.join(folder, f"{len(entries)}.cpp")
            starts[place] = join(path, place)
            for _, source in starts[place]:
                entries.append(alone(command, os.path.abspath(source)))
            command = alone(command, os.path.abspath(place))
            path = place
        starts.setdefault(path, [])
        entries.append(command)
    with open(os.path.join(folder, "compile_commands.json"), "w", encoding="utf-8") as file:
        json.dump(entries, file)
    longest_first = sorted(starts, key=os.path.getsize, reverse=True)
    is_clean = True
    with concurrent.futures.ThreadPoolExecutor(jobs) as pool:
        for text in pool.map(lambda path: lint(folder, path, starts[path]), longest_first):
            if text:
                is_clean = False
                print(text, flush=True)
    return 0 if is_clean else 1


if __name__ == "__main__":
    sys.exit(main())
