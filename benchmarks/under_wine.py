#!/usr/bin/env python3
"""Runs the report engine built for Windows under wine beside the one built for this machine, in
turns, and prints the ratio of the times that pass. From the time of each whole process that of the
same program with a report of a few bytes is taken away: wine takes a quarter of a second to start.

usage: under_wine.py TESSALINK TESSALINK.EXE [ROUNDS]    both built with the same optimization"""

import subprocess
import sys
import tempfile
import time
from pathlib import Path
from statistics import median

HERE = Path(__file__).resolve().parent
sys.dont_write_bytecode = True
sys.path.insert(0, str(HERE / "comparison"))

import workloads  # noqa: E402
from languages import Product  # noqa: E402

WINE = HERE.parent / "cmake" / "toolchains" / "run_under_wine"
AIM = 1.3


def templates(values):
    """A long text with few commands, and one that is mostly commands."""
    product = Product(values)
    pools = {"plain, 80 MB": (workloads.plain_pool, 80_000),
             "dense, 48 MB": (workloads.dense_pool, 200_000)}
    for name, (pool, count) in pools.items():
        pieces = [product.write(parts) for parts in pool(product)]
        yield name, workloads.HEADER + workloads.repeated(pieces, count) + "}"


def seconds(command, folder):
    start = time.monotonic()
    subprocess.run(command, cwd=folder, check=True)
    return time.monotonic() - start


def compare(systems, name, rounds, folder):
    """The medians over the rounds, without the start; fails when the reports differ."""
    nets = {system: [] for system in systems}
    for _ in range(rounds):
        for system, start in systems.items():
            tail = ["--vars", "values.tsv", "-o", f"{system}.rtf"]
            short = seconds([*start, "report", "short.rtf", *tail], folder)
            nets[system].append(seconds([*start, "report", "long.rtf", *tail], folder) - short)
    if len({(folder / f"{system}.rtf").read_bytes() for system in systems}) != 1:
        sys.exit(f"{name}: the reports differ")
    here, wine = (median(nets[system]) for system in systems)
    ratio = median(w / h for h, w in zip(*nets.values()))
    verdict = "reached" if ratio <= AIM else "missed"
    print(f"{name}: here {here * 1000:.0f} ms, under wine {wine * 1000:.0f} ms, "
          f"ratio {ratio:.2f} (aim {AIM}: {verdict})")


def main():
    if len(sys.argv) not in (3, 4):
        sys.exit(__doc__)
    native, windows = (Path(path).resolve() for path in sys.argv[1:3])
    systems = {"here": [native], "wine": [WINE, windows]}
    values = workloads.variables()
    with tempfile.TemporaryDirectory(dir="/dev/shm") as made:
        folder = Path(made)
        (folder / "values.tsv").write_text(values.tsv(), encoding="latin-1")
        (folder / "short.rtf").write_text("{\\rtf1 x}", encoding="latin-1")
        for name, text in templates(values):
            (folder / "long.rtf").write_text(text, encoding="latin-1")
            compare(systems, name, int(sys.argv[3]) if len(sys.argv) == 4 else 9, folder)


if __name__ == "__main__":
    main()
