#!/usr/bin/env python3
"""Fails on links and pictures of Markdown pages that lead nowhere: missing files, missing headings.

usage: check_links.py ROOT
"""
import os
import posixpath
import re
import sys

from sources import report, tracked_files

FENCE = re.compile(r"^(```+|~~~+)")
CODE = re.compile(r"(`+)(?!`).*?(?<!`)\1(?!`)")
LINK = re.compile(r"!?\[(?:[^\[\]]|\[[^\[\]]*\])*\]\(([^()\s]+)\)")
HEADING = re.compile(r"^#{1,6} +(.*?) *#*$")
ELSEWHERE = re.compile(r"[a-z]+:")


def prose(text):
    """(number, line) for all lines that are no code; code in a line is left out but in headings."""
    fence = None
    for number, line in enumerate(text.split("\n"), 1):
        mark = FENCE.match(line)
        if fence:
            fence = None if mark and mark[1].startswith(fence) else fence
        elif mark:
            fence = mark[1]
        else:
            yield number, line if HEADING.match(line) else CODE.sub("", line)


def anchor_of(heading):
    """What a heading is called in links, as the usual viewers of Markdown make it."""
    shown = re.sub(r"!?\[([^\]]*)\]\([^)]*\)", r"\1", heading)
    return re.sub(r"[^\w\- ]", "", shown.strip()).lower().replace(" ", "-")


def anchors_of(text):
    anchors = set()
    for _, line in prose(text):
        heading = HEADING.match(line)
        if not heading:
            continue
        anchor = anchor_of(heading[1])
        count = 0
        while (anchor if count == 0 else f"{anchor}-{count}") in anchors:
            count += 1
        anchors.add(anchor if count == 0 else f"{anchor}-{count}")
    return anchors


def links_of(text):
    """(line, target) of every link and picture."""
    # A link may go on in the next line.
    lines = list(prose(text))
    starts, joined = [], ""
    for number, line in lines:
        starts.append((len(joined), number))
        joined += line + "\n"
    for link in LINK.finditer(joined):
        yield max(number for start, number in starts if start <= link.start()), link[1]


def faults_of_page(path, text, pages, paths):
    """(line, fault); `pages` has the anchors of each page, `paths` all files and folders."""
    for number, target in links_of(text):
        if ELSEWHERE.match(target):
            continue
        name, _, anchor = target.partition("#")
        file = posixpath.normpath(posixpath.join(posixpath.dirname(path), name)) if name else path
        if file not in paths:
            yield number, f"'{target}': there is no {file}"
        elif anchor and anchor not in pages.get(file, ()):
            yield number, f"'{target}': {file} has no heading of that name"


def faults_of_tree(root):
    files = tracked_files(root)
    paths = set(files) | {folder for file in files for folder in folders_of(file)} | {"."}
    texts = {}
    for path in files:
        if path.endswith(".md"):
            with open(os.path.join(root, path), encoding="utf-8") as file:
                texts[path] = file.read()
    pages = {path: anchors_of(text) for path, text in texts.items()}
    return [f"{path}:{number}: {fault}" for path, text in texts.items()
            for number, fault in faults_of_page(path, text, pages, paths)]


def folders_of(path):
    while path := posixpath.dirname(path):
        yield path


if __name__ == "__main__":
    sys.exit(report(faults_of_tree(sys.argv[1]), "links"))
