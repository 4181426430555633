#!/usr/bin/env python3
"""Runs `tessalink tidy` over templates of 100 MB beside `cp`, in turns, and prints the ratio of the
processor times and the most memory that it held.

usage: tidy_copy.py TESSALINK [ROUNDS]"""

import os
import random
import subprocess
import sys
import tempfile
from pathlib import Path
from statistics import median

SIZE = 100_000_000
AIM = 3.0  # times the processor time of cp
WORDS = ["score", "scales", "worry", "the", "a person", "result", "mean", "of", "between", "and"]


def paragraph(dice, letters):
    """Text as a word processor writes it, in runs of which some are bold."""
    text = ""
    while len(text) < letters:
        text += dice.choice(WORDS) + " "
        if dice.random() < 0.05:
            text += "{\\b\\f1\\fs22 " + dice.choice(WORDS) + "}\\lang1031 "
    return "\\pard\\plain\\s0\\ql\\li0\\ri0\\f0\\fs24 " + text + "\\par\n"


def picture(dice):
    return "{\\pict\\pngblip\\picw400\\pich300 " + dice.randbytes(20_000).hex() + "}\\par\n"


def templates():
    """A long text, one with a command whose letters formatting parts in every 2 KB, one of pictures."""
    dice = random.Random(1)
    plain = [paragraph(dice, 400) for _ in range(200)]
    yield "text", plain
    yield "text, a parted command every 2 KB", [
        text + (f"@IF(Age > {i % 60})@TH{{\\b EN}} Dear @Name, @ENDIF.\\par\n" if i % 5 == 0 else "")
        for i, text in enumerate(plain)]
    yield "pictures", [text + (picture(dice) if i % 20 == 0 else "") for i, text in enumerate(plain)]


def run(command):
    """Its processor time and the most memory it held, in MB."""
    process = subprocess.Popen(command, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
    _, status, usage = os.wait4(process.pid, 0)
    if os.waitstatus_to_exitcode(status) != 0:
        sys.exit(f"{command[0]} failed")
    return usage.ru_utime + usage.ru_stime, usage.ru_maxrss / 1000


def compare(program, name, pieces, rounds, folder):
    block = "".join(pieces).encode("latin-1")
    source, copied, tidied = (folder / part for part in ("long.rtf", "copied.rtf", "tidied.rtf"))
    with source.open("wb") as file:
        file.write(b"{\\rtf1\\ansi\\uc1\n")
        for _ in range(SIZE // len(block)):
            file.write(block)
        file.write(b"}")
    ratios, memory = [], 0.0
    for _ in range(rounds):
        copying, _ = run(["cp", source, copied])
        tidying, held = run([program, "tidy", source, "-o", tidied])
        ratios.append(tidying / copying)
        memory = max(memory, held)
    ratio = median(ratios)
    verdict = "reached" if ratio <= AIM else "missed"
    print(f"{name}: {ratio:.2f} times the processor time of cp (aim {AIM}: {verdict}), "
          f"{memory:.0f} MB of memory", flush=True)


def main():
    if len(sys.argv) not in (2, 3):
        sys.exit(__doc__)
    program = Path(sys.argv[1]).resolve()
    rounds = int(sys.argv[2]) if len(sys.argv) == 3 else 7
    with tempfile.TemporaryDirectory() as made:
        for name, pieces in templates():
            compare(program, name, pieces, rounds, Path(made))


if __name__ == "__main__":
    main()
