#!/usr/bin/env python3
"""Computes standard scores by the published formulas, independently of the library.

Written as the formulas are printed, in the double arithmetic of IEEE 754, which is what a Python
float is (a step never fuses two operations). Logarithms are computed to 60 digits and rounded
once; scores are rounded by exact fractions.

usage: exact_scores.py > exact_scores.txt      the record that the tests compare the library with

A line of the record is "value FUNCTION ARGUMENT RESULT", with hexadecimal floating point numbers,
or "sweep NAME DIGEST": the MD5 digest of all results of the sweep as little-endian doubles.
"""
import hashlib
import struct
import sys
from decimal import Context, Decimal
from fractions import Fraction
from math import floor, inf, ldexp, nextafter, sqrt

DIGITS = Context(prec=60)
SCALES = {"z": ("0", "1", -4, 4, 2), "T": ("50", "10", 10, 90, 0), "IQ": ("100", "15", 40, 160, 0),
          "SS": ("10", "3", 1, 19, 0), "SN": ("5", "2", 1, 9, 0), "ST": ("5.5", "2", 1, 10, 0)}
Z_SWEEP = [i / 10000 for i in range(-80000, 80001)]
RANK_SWEEP = [i / 100 for i in range(1, 10000)]


def log(x):
    return float(Decimal(x).ln(DIGITS))


def stanine(z):
    s = 2 * z + 5
    return 1.0 if s < 1 else 9.0 if s > 9 else float(int(s + 0.5))


def rank(z):
    """Abramowitz and Stegun 26.2.19."""
    x = abs(z)
    t = 1 + x * (0.049867347 + x * (0.0211410061 + x * (0.0032776263 + x * (
        3.80036e-5 + x * (4.88906e-5 + x * 5.383e-6)))))
    t2 = t * t
    t4 = t2 * t2
    t8 = t4 * t4
    tail = 0.5 / (t8 * t8)
    return 100 * (1 - tail) if z >= 0 else 100 * tail


def deviate(percent):
    """Beasley and Springer, AS 111."""
    p = percent / 100
    if 0.08 <= p <= 0.92:
        q = p - 0.5
        r = q * q
        return (q * (((-25.4410605 * r + 41.3911977) * r - 18.6150006) * r + 2.5066282)
                / ((((3.1308291 * r - 21.062241) * r + 23.0833674) * r - 8.4735109) * r + 1))
    u = p if p <= 0.5 else 1 - p
    w = sqrt(-log(u))
    v = ((((2.3212128 * w + 4.8501413) * w - 2.2979648) * w - 2.7871893)
         / ((1.6370678 * w + 3.5438892) * w + 1))
    return v if p >= 0.5 else -v


def on_scale(name, z):
    """Rounded half up; a half is the double nearest to it."""
    mean, deviation, lowest, highest, decimals = SCALES[name]
    value = float(mean) + float(deviation) * z
    unit = 10 ** decimals
    whole = floor(Fraction(value) * unit)
    if value >= float(Fraction(2 * whole + 1, 2 * unit)):
        whole += 1
    return min(max(whole / unit, lowest), highest)


def log_sweep():
    """Numbers of all sizes, ranks of all sizes, and both sides of 1."""
    state = 1
    for i in range(20000):
        state = (state * 6364136223846793005 + 1442695040888963407) % 2 ** 64
        mantissa = 1 + ldexp(state >> 12, -52)
        yield ldexp(mantissa, i % 2098 - 1074)
        yield ldexp(mantissa, -1 - i % 60)
        yield 1 + ldexp(i * (i + 1), -53)
        yield 1 - ldexp(i * (i + 1), -54)


Z_VALUES = [0.0, -0.0, 0.25, 0.5, 0.75, 1.0, -1.0, 1.5, 1.96, -2.0, -2.1, 2.5758293, 3.0, -3.0, 4.0,
            -6.0, 8.0, 8.2, 8.5, -8.5, -37.0, 1e300]
RANKS = [5e-324, 1e-300, 0.01, 0.13, 1.0, 2.28, 5.0, nextafter(8, 0), 8.0, 15.87, 25.0, 49.99, 50.0,
         50.01, 75.0, 84.13, 90.0, 92.0, nextafter(92, 100), 95.0, 97.5, 99.0, 99.87, 99.99,
         nextafter(100, 0)]
LOGS = [ldexp(1, -1074), ldexp(1, -1022), 1e-300, 0.08, 0.5, sqrt(0.5), nextafter(sqrt(0.5), 0),
        nextafter(sqrt(0.5), 1), nextafter(1, 0), 1.0, nextafter(1, 2), 2.0, 2.718281828459045,
        10.0, sys.float_info.max]
VALUES = ((rank, Z_VALUES), (stanine, Z_VALUES), (deviate, [r for r in RANKS if r / 100 > 0]),
          (log, LOGS))


def sweeps():
    yield "rank", map(rank, Z_SWEEP)
    yield "stanine", map(stanine, Z_SWEEP)
    yield "deviate", map(deviate, RANK_SWEEP)
    yield "deviate_of_rank", (deviate(rank(z)) for z in Z_SWEEP)
    yield "rank_of_deviate", (rank(deviate(percent)) for percent in RANK_SWEEP)
    yield "log", map(log, log_sweep())
    for scale in SCALES:
        yield scale, (on_scale(scale, z) for z in Z_SWEEP)


def digest(values):
    return hashlib.md5(b"".join(struct.pack("<d", value) for value in values)).hexdigest()


def main():
    print("# Made by exact_scores.py, which says how. Not made from what the library gives.")
    for function, arguments in VALUES:
        for argument in arguments:
            print("value", function.__name__, argument.hex(), function(argument).hex())
    for name, values in sweeps():
        print("sweep", name, digest(values))


if __name__ == "__main__":
    main()
