#!/usr/bin/env python3
"""Draws how far standard scores are from the exact normal distribution.

The scores are those of exact_scores.py, which the tests find equal to the library's to the last
bit; the exact distribution is that of the Python library, good to about 15 digits.

usage: plot_errors.py docs/images      writes score-*.svg there
"""
import os
import sys
from math import erfc, floor, log10, sqrt
from statistics import NormalDist

from exact_scores import RANK_SWEEP, Z_SWEEP, deviate, rank

WIDTH, HEIGHT = 760, 400
LEFT, RIGHT, TOP, BOTTOM = 74, 734, 66, 342
NORMAL = NormalDist()
RANK_TICKS = (0.01, 0.1, 1, 5, 10, 25, 50, 75, 90, 95, 99, 99.9, 99.99)
SEAMS = (8, 92)


def exact_rank(z):
    return 50 * erfc(-z / sqrt(2)) if z < 0 else 100 - 50 * erfc(z / sqrt(2))


def exact_deviate(percent):
    return NORMAL.inv_cdf(percent / 100)


def power_of_ten(exponent):
    return f"1e{plain(exponent)}"


def plain(number):
    return f"{number:g}".replace("-", "−")


def short(error):
    if error >= 0.01:
        return f"{error:.2g}"
    exponent = floor(log10(error))
    return f"{error / 10 ** exponent:.2f}e{plain(exponent)}"


class Plot:
    """An error, on a logarithmic axis, over an axis with the ticks {number: position}."""

    def __init__(self, ticks, decades):
        self.ticks = ticks
        self.first, self.last = min(ticks.values()), max(ticks.values())
        self.decades = decades
        self.parts = []

    def x(self, position):
        return LEFT + (RIGHT - LEFT) * (position - self.first) / (self.last - self.first)

    def y(self, error):
        lowest, highest = self.decades
        share = (log10(error) - lowest) / (highest - lowest)
        return BOTTOM - (BOTTOM - TOP) * min(max(share, 0), 1)

    def text(self, x, y, text, anchor="middle", size=13, weight="normal", color="#333333"):
        self.parts.append(f'<text x="{x:.1f}" y="{y:.1f}" text-anchor="{anchor}" font-size="{size}" '
                          f'font-weight="{weight}" fill="{color}">{text}</text>')

    def line(self, x1, y1, x2, y2, color, dashes=""):
        dashes = f' stroke-dasharray="{dashes}"' if dashes else ""
        self.parts.append(f'<line x1="{x1:.1f}" y1="{y1:.1f}" x2="{x2:.1f}" y2="{y2:.1f}" '
                          f'stroke="{color}"{dashes}/>')

    def axes(self, label):
        for number, position in self.ticks.items():
            self.line(self.x(position), TOP, self.x(position), BOTTOM, "#e4e4e4")
            self.text(self.x(position), BOTTOM + 20, plain(number))
        for decade in range(self.decades[0], self.decades[1] + 1):
            y = self.y(10.0 ** decade)
            self.line(LEFT, y, RIGHT, y, "#e4e4e4")
            self.text(LEFT - 8, y + 4.5, power_of_ten(decade), "end")
        self.line(LEFT, BOTTOM, RIGHT, BOTTOM, "#333333")
        self.line(LEFT, TOP, LEFT, BOTTOM, "#333333")
        self.text((LEFT + RIGHT) / 2, BOTTOM + 44, label)

    def mark(self, position, label):
        x = self.x(position)
        self.line(x, TOP, x, BOTTOM, "#b5651d", "4 4")
        self.text(x + 5, TOP + 15, label, "start", 12, color="#8a4a12")

    def curve(self, points):
        """The largest error of each pixel."""
        columns = {}
        for position, error in points:
            column = round(self.x(position))
            columns[column] = max(columns.get(column, 0), error)
        path = " ".join(f"{column},{self.y(error or 1e-99):.1f}"
                        for column, error in sorted(columns.items()))
        self.parts.append(f'<polyline points="{path}" fill="none" stroke="#1f5fa8" '
                          'stroke-width="1.5"/>')

    def svg(self):
        body = "\n".join(self.parts)
        return (f'<svg xmlns="http://www.w3.org/2000/svg" width="{WIDTH}" height="{HEIGHT}" '
                f'viewBox="0 0 {WIDTH} {HEIGHT}" font-family="Arial, Helvetica, sans-serif">\n'
                f'<rect width="{WIDTH}" height="{HEIGHT}" fill="#ffffff"/>\n{body}\n</svg>\n')


def draw(title, unit, sweep, error, over_ranks, decades):
    """One plot of `error` (argument -> its error) over the sweep."""
    position = exact_deviate if over_ranks else float
    ticks = {number: position(number) for number in (RANK_TICKS if over_ranks else range(-8, 9))}
    errors = [(argument, abs(error(argument))) for argument in sweep]
    at, largest = max(errors, key=lambda pair: pair[1])
    plot = Plot(ticks, decades)
    plot.text(LEFT, 26, title, "start", 16, "bold")
    where = (f"the ranks {plain(min(at, 100 - at))} and {plain(max(at, 100 - at))}" if over_ranks
             else f"z = ±{abs(at):.1f}")
    plot.text(LEFT, 50, f"error without sign, in {unit}; largest {short(largest)}, near {where}",
              "start")
    plot.axes("percentile rank (on the scale of the normal distribution)" if over_ranks
              else "z score (standard deviations)")
    plot.curve([(position(argument), size) for argument, size in errors])
    if over_ranks:
        for seam in SEAMS:
            plot.mark(position(seam), f"seam at {seam}")
    return plot.svg()


PLOTS = {
    "score-rank-error.svg": lambda: draw(
        "Rank of a z score against the normal distribution", "percentage points", Z_SWEEP,
        lambda z: rank(z) - exact_rank(z), False, (-13, -4)),
    "score-deviate-error.svg": lambda: draw(
        "z score of a rank against the normal distribution", "standard deviations", RANK_SWEEP,
        lambda percent: deviate(percent) - exact_deviate(percent), True, (-10, -6)),
    "score-z-round-trip.svg": lambda: draw(
        "z score to rank and back", "standard deviations", Z_SWEEP,
        lambda z: deviate(rank(z)) - z, False, (-8, 0)),
    "score-rank-round-trip.svg": lambda: draw(
        "Rank to z score and back", "percentage points", RANK_SWEEP,
        lambda percent: rank(deviate(percent)) - percent, True, (-7, -4)),
}


if __name__ == "__main__":
    if len(sys.argv) != 2:
        sys.exit(__doc__)
    for name, make in PLOTS.items():
        with open(os.path.join(sys.argv[1], name), "w", encoding="utf-8") as file:
            file.write(make())
