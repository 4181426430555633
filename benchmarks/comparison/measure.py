"""Runs commands in turns and prints medians and ratios."""

import subprocess
from dataclasses import dataclass, field
from pathlib import Path
from statistics import median


class Failed(Exception):
    """A program failed or two programs that should agree do not."""


@dataclass
class Series:
    """What one contestant cost in every round: nanoseconds of processor time; for whole processes
    also the nanoseconds that passed, and KiB."""

    times: list = field(default_factory=list)
    walls: list = field(default_factory=list)
    peaks: list = field(default_factory=list)

    @property
    def time(self):
        return median(self.times)

    @property
    def wall(self):
        return median(self.walls)

    @property
    def peak(self):
        return max(self.peaks)

    def over(self, other):
        """The median of the ratios round by round: the machine's drift falls out of it."""
        return median(mine / theirs for mine, theirs in zip(self.times, other.times))


def processes(turns, commands, rounds, warmups=2):
    """Runs whole processes in turns; `commands` maps a contestant to its argument list."""
    lines = "".join("\t".join(map(str, words)) + "\n" for words in commands.values())
    done = subprocess.run([turns, str(rounds), str(warmups)], input=lines, text=True,
                          stdout=subprocess.PIPE)
    names = list(commands)
    series = {name: Series() for name in names}
    for line in done.stdout.splitlines():
        _, index, wall, cpu, peak, status = map(int, line.split())
        if status != 0:
            raise Failed(f"{names[index]} ended with {status}: {commands[names[index]]}")
        series[names[index]].times.append(cpu * 1000)
        series[names[index]].walls.append(wall)
        series[names[index]].peaks.append(peak)
    if done.returncode != 0:
        raise Failed("a command could not be run")
    return series


def self_timed(commands, rounds):
    """Runs self-timing programs in turns; gives contestant -> key -> Series."""
    series = {name: {} for name in commands}
    for _ in range(rounds):
        for name, words in commands.items():
            done = subprocess.run(list(map(str, words)), text=True, stdout=subprocess.PIPE)
            if done.returncode != 0:
                raise Failed(f"{name} ended with {done.returncode}: {words}")
            for line in done.stdout.splitlines():
                key, value = line.rsplit(maxsplit=1)
                series[name].setdefault(key, Series()).times.append(float(value))
    return series


def same_bytes(outputs):
    """Raises Failed unless all the output files of the contestants hold the same bytes."""
    contents = {name: Path(file).read_bytes() for name, file in outputs.items()}
    first, *others = contents
    for name in others:
        if contents[name] != contents[first]:
            at = next((i for i, (a, b) in enumerate(zip(contents[first], contents[name]))
                       if a != b), min(len(contents[first]), len(contents[name])))
            near = slice(max(0, at - 30), at + 30)
            raise Failed(f"{name} and {first} differ at byte {at}: "
                         f"{contents[name][near]!r} and {contents[first][near]!r}")
    return len(contents[first])


def table(headings, rows):
    """Prints a table that reads as it is and as Markdown."""
    cells = [list(headings)] + [[str(cell) for cell in row] for row in rows]
    widths = [max(len(row[i]) for row in cells) for i in range(len(headings))]
    for number, row in enumerate(cells):
        padded = [cell.ljust(w) if i == 0 else cell.rjust(w)
                  for i, (cell, w) in enumerate(zip(row, widths))]
        print("| " + " | ".join(padded) + " |")
        if number == 0:
            rules = ["-" * (w + 2) if i == 0 else "-" * (w + 1) + ":"
                     for i, w in enumerate(widths)]
            print("|" + "|".join(rules) + "|")
    print(flush=True)


def verdict(what, value, bound, unit="x"):
    """Prints whether `value` keeps within `bound`."""
    word = "reached" if value <= bound else "NOT reached"
    print(f"- {what}: {value:.2f}{unit}, at most {bound:.2f}{unit}: **{word}**", flush=True)
    return value <= bound
