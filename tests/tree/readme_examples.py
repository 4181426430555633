#!/usr/bin/env python3
"""Builds and runs the examples of README.md, and of other documents in the same form.

A fenced block is an example when an HTML comment stands on the line before its fence:

    <!-- check: program NAME -->     a C++ program; it is built and run, its output is kept
    <!-- check: template NAME -->    a template or any other text file, written as NAME
    <!-- check: part of PATH -->     whole lines that stand together in this file, named from the
                                     document on; a copy of the file lies where examples run
    <!-- check: command NAME -->     lines for the shell, run where the files lie; output is kept
    <!-- check: output of NAME -->   what the program or command NAME printed, or the text of the
                                     file NAME that an example before it has written

The examples run in their order in one empty folder, with `tessalink` and the programs on the path.
Files are Windows-1252 except .json and .csv, which are UTF-8. Line ends at the end don't count.
A document without an output fails, and a README without a program and a template.

usage: readme_examples.py extract README FOLDER          writes FOLDER/NAME.cpp, prints the names
       readme_examples.py run README FOLDER [--path DIR]... runs all, programs from FOLDER/bin and DIR
"""
import argparse
import os
import re
import shutil
import subprocess
import sys

EXAMPLE = re.compile(
    r"^<!-- check: (program|template|part of|command|output of) (\S+) -->\n```\w*\n(.*?)^```$",
    re.MULTILINE | re.DOTALL)
MARK = re.compile(r"<!--\s*check:")
REQUIRED = ("output of",)
REQUIRED_OF_README = (*REQUIRED, "program", "template")
TIME_LIMIT = 600  # an example may build the library


class Fault(Exception):
    pass


def read_examples(readme):
    """[(kind, name, text)]; a Fault when a mark is malformed or a required kind is missing."""
    with open(readme, encoding="utf-8") as file:
        text = file.read()
    examples = EXAMPLE.findall(text)
    if len(examples) != len(MARK.findall(text)):
        raise Fault("a 'check:' comment is malformed or has no fenced block after it")
    is_readme = os.path.basename(readme) == "README.md"
    for kind in REQUIRED_OF_README if is_readme else REQUIRED:
        if not any(example[0] == kind for example in examples):
            raise Fault(f"no '<!-- check: {kind} NAME -->' example")
    return examples


def encoding_of(name):
    return "utf-8" if name.endswith((".json", ".csv")) else "windows-1252"


def extract(readme, folder):
    os.makedirs(folder, exist_ok=True)
    programs = [(name, text) for kind, name, text in read_examples(readme) if kind == "program"]
    for name, text in programs:
        with open(os.path.join(folder, name + ".cpp"), "w", encoding="utf-8") as file:
            file.write(text)
    print(" ".join(name for name, _ in programs))


def execute(arguments, folder, environment):
    """Runs the arguments, and gives what they print."""
    ran = subprocess.run(arguments, cwd=folder, env=environment, timeout=TIME_LIMIT, check=False,
                         stdin=subprocess.DEVNULL, stdout=subprocess.PIPE, stderr=subprocess.PIPE)
    if ran.returncode != 0:
        raise Fault(f"exit code {ran.returncode}\n{ran.stderr.decode('latin-1')}")
    return ran.stdout


def expect_output(name, text, printed, folder):
    if name in printed:
        found = printed[name]
    else:
        with open(os.path.join(folder, name), "rb") as file:
            found = file.read()
    found = found.decode(encoding_of(name)).replace("\r\n", "\n")
    if found.rstrip("\n") != text.rstrip("\n"):
        raise Fault(f"expected:\n{text}\nfound:\n{found}")


def expect_part(path, text, folder):
    with open(path, encoding=encoding_of(path)) as file:
        whole = file.read()
    if "\n" + text not in "\n" + whole:
        raise Fault(f"these lines don't stand there:\n{text}")
    shutil.copy(path, folder)


def run_example(kind, name, text, printed, folder, environment):
    if kind == "program":
        printed[name] = execute([name], folder, environment)
    elif kind == "command":
        printed[name] = execute(["sh", "-e", "-c", text], folder, environment)
    elif kind == "template":
        os.makedirs(os.path.dirname(os.path.join(folder, name)), exist_ok=True)
        with open(os.path.join(folder, name), "w", encoding=encoding_of(name)) as file:
            file.write(text)
    else:
        expect_output(name, text, printed, folder)


def run(readme, folder, more_paths):
    place = os.path.join(folder, "run")
    shutil.rmtree(place, ignore_errors=True)
    os.makedirs(place)
    os.environ["PATH"] = os.pathsep.join([os.path.join(folder, "bin"), *more_paths, os.environ["PATH"]])
    printed = {}
    examples = read_examples(readme)
    for kind, name, text in examples:
        try:
            if kind == "part of":
                expect_part(os.path.join(os.path.dirname(readme), name), text, place)
            else:
                run_example(kind, name, text, printed, place, os.environ)
        except (Fault, OSError, subprocess.TimeoutExpired) as fault:
            raise Fault(f"{kind} {name}: {fault}") from fault
    print(f"{len(examples)} examples ran")


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("action", choices=["extract", "run"])
    parser.add_argument("readme")
    parser.add_argument("folder")
    parser.add_argument("--path", action="append", default=[])
    options = parser.parse_args()
    try:
        if options.action == "extract":
            extract(options.readme, options.folder)
        else:
            run(options.readme, options.folder, options.path)
    except Fault as fault:
        print(f"{options.readme}: {fault}", file=sys.stderr)
        return 1
    return 0


if __name__ == "__main__":
    sys.exit(main())
