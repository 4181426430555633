#!/usr/bin/env python3
"""Pages of a report side by side, as the README shows them; needs pdftoppm.

usage: pages.py REPORT.pdf PICTURE.png PAGE...
"""
import struct
import subprocess
import sys
import zlib

DPI = 76
GAP = 14  # between pages and around them
GREY = b"\xb0\xb0\xb0"
WHITE = b"\xff\xff\xff"


def page(pdf, number):
    """Width, height and rows of a page, three bytes a pixel, with a frame."""
    ppm = subprocess.run(["pdftoppm", "-r", str(DPI), "-f", number, "-l", number, pdf],
                         check=True, capture_output=True).stdout
    _, size, _, pixels = ppm.split(b"\n", 3)
    width, height = map(int, size.split())
    rows = [GREY + pixels[y * width * 3:(y + 1) * width * 3] + GREY for y in range(height)]
    edge = GREY * (width + 2)
    return [edge, *rows, edge]


def png(rows):
    def chunk(name, data):
        return struct.pack(">I", len(data)) + name + data + struct.pack(">I", zlib.crc32(name + data))

    size = struct.pack(">IIBBBBB", len(rows[0]) // 3, len(rows), 8, 2, 0, 0, 0)
    data = zlib.compress(b"".join(b"\0" + row for row in rows), 9)
    return b"\x89PNG\r\n\x1a\n" + chunk(b"IHDR", size) + chunk(b"IDAT", data) + chunk(b"IEND", b"")


def main(pdf, picture, *numbers):
    gap = WHITE * GAP
    rows = [gap + gap.join(parts) + gap for parts in zip(*(page(pdf, number) for number in numbers))]
    margin = [WHITE * (len(rows[0]) // 3)] * GAP
    with open(picture, "wb") as file:
        file.write(png(margin + rows + margin))


if __name__ == "__main__":
    main(*sys.argv[1:])
