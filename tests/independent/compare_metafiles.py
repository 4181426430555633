#!/usr/bin/env python3
"""Plays metafiles by the platform's own calls (in a compatible run-time) and by this project, and
compares the pictures: an optional check, for machines that have both.

usage: compare_metafiles.py TESSALINK FILE.emf...

Needs wine, x86_64-w64-mingw32-g++ and the command line with its picture module. A pixel counts as
different when no pixel of the other picture within one unit of it has about its colour: fonts are
hinted in one picture and not in the other. More than two percent of such pixels fail.
"""
import os
import struct
import subprocess
import sys
import tempfile
import zlib
from pathlib import Path

HERE = Path(__file__).resolve().parent
PERCENT = 2.0
NEAR = 112  # of 255, in each colour
DPI = 96


def read_bmp(path):
    """(width, rows of RGB bytes) of an uncompressed picture of 24 bits."""
    data = path.read_bytes()
    start, = struct.unpack_from("<I", data, 10)
    width, height = struct.unpack_from("<ii", data, 18)
    stride = (width * 3 + 3) // 4 * 4
    rows = [data[start + y * stride:start + y * stride + width * 3] for y in range(height)]
    return width, [bytes(v for x in range(0, len(row), 3) for v in row[x:x + 3][::-1])
                   for row in reversed(rows)]


def unfiltered(raw, stride, step):
    """The rows of a PNG picture without their filters."""
    rows, before = [], bytes(stride)
    for at in range(0, len(raw), stride + 1):
        kind, row = raw[at], bytearray(raw[at + 1:at + 1 + stride])
        for i in range(stride):
            left = row[i - step] if i >= step else 0
            up, corner = before[i], before[i - step] if i >= step else 0
            if kind == 4:
                guess = left + up - corner
                add = min((left, up, corner), key=lambda v: abs(guess - v))
            else:
                add = (0, left, up, (left + up) // 2)[kind]
            row[i] = (row[i] + add) & 255
        before = bytes(row)
        rows.append(before)
    return rows


def read_png(path):
    data, at, packed, palette = path.read_bytes(), 8, b"", None
    while at < len(data):
        length, = struct.unpack_from(">I", data, at)
        kind, body = data[at + 4:at + 8], data[at + 8:at + 8 + length]
        if kind == b"IHDR":
            width, _, bits, color = struct.unpack_from(">IIBB", body)
        elif kind == b"IDAT":
            packed += body
        elif kind == b"PLTE":
            palette = body
        at += length + 12
    step = {0: 1, 2: 3, 3: 1, 6: 4}[color]
    assert bits == 8, f"{path}: {bits} bits"
    rows = unfiltered(zlib.decompress(packed), width * step, step)
    if color == 3:
        return width, [b"".join(palette[3 * v:3 * v + 3] for v in row) for row in rows]
    if color == 0:
        return width, [bytes(v for value in row for v in (value,) * 3) for row in rows]
    return width, [bytes(v for x in range(width) for v in row[x * step:x * step + 3])
                   for row in rows]


def lonely(one, other, width, height):
    """The pixels of the one picture that have no like near their place in the other."""
    count = 0
    for y in range(height):
        for x in range(width):
            pixel = one[y][3 * x:3 * x + 3]
            if pixel == other[y][3 * x:3 * x + 3]:
                continue
            near = (other[v][3 * u:3 * u + 3] for v in range(max(0, y - 1), min(height, y + 2))
                    for u in range(max(0, x - 1), min(width, x + 2)))
            count += not any(max(abs(a - b) for a, b in zip(pixel, like)) < NEAR for like in near)
    return count


def size_of(emf):
    """Width and height of the frame at DPI."""
    left, top, right, bottom = struct.unpack_from("<4i", emf.read_bytes(), 24)
    return round((right - left) * DPI / 2540), round((bottom - top) * DPI / 2540)


def differing(tessalink, player, emf, folder):
    """How many percent of the pixels differ."""
    width, height = size_of(emf)
    ours, theirs = folder / "ours.png", folder / "theirs.bmp"
    subprocess.run([tessalink, "picture", emf, ours, "--dpi", str(DPI)], check=True)
    subprocess.run(["wine", player, emf, theirs, str(width), str(height)], check=True,
                   env={**os.environ, "WINEPREFIX": str(folder / "prefix"), "WINEDEBUG": "-all"},
                   stderr=subprocess.DEVNULL)
    (our_width, our_rows), (_, their_rows) = read_png(ours), read_bmp(theirs)
    assert (our_width, len(our_rows)) == (width, height), "the sizes differ"
    count = (lonely(our_rows, their_rows, width, height)
             + lonely(their_rows, our_rows, width, height)) / 2
    return 100 * count / (width * height)


def main():
    tessalink, *pictures = sys.argv[1:]
    good = True
    with tempfile.TemporaryDirectory() as base:
        folder = Path(base)
        player = folder / "play_metafile.exe"
        subprocess.run(["x86_64-w64-mingw32-g++", "-O1", "-static", HERE / "play_metafile.cpp",
                        "-o", player, "-lgdi32"], check=True)
        for picture in map(Path, pictures):
            percent = differing(tessalink, player, picture.resolve(), folder)
            good &= percent <= PERCENT
            print(f"{percent:6.2f} %  {picture.name}")
    return 0 if good else 1


if __name__ == "__main__":
    sys.exit(main())
