#!/usr/bin/env python3
"""Writes BuiltInFaces.cpp: the advance widths of the built-in typefaces for the characters of all
code pages, read from fonts of the same metrics (Liberation Sans and Serif, and the Standard Symbols
of the PostScript base fonts).

usage: make_built_in_faces.py LIBERATION_FOLDER SYMBOLS.afm > BuiltInFaces.cpp
"""
import struct
import sys
from pathlib import Path

sys.path.append(str(Path(__file__).resolve().parents[2] / "base" / "detail"))
from make_code_pages import CHARSETS, character_of  # noqa: E402

EM = 2048
CODES = 256
STYLES = ["Regular", "Bold", "Italic", "BoldItalic"]
CHARACTERS = sorted({*range(0x20, 0x7F)} | {character_of(page, byte) for page in CHARSETS
                                            for byte in range(0x80, CODES)})
# Ascent and descent of the symbol font of the classic desktop, in units of its em of 2048.
SYMBOL_HEIGHTS = (2059, 450, 0)


def tables_of(font):
    count = struct.unpack(">H", font[4:6])[0]
    entries = (struct.unpack(">4sIII", font[12 + 16 * i:28 + 16 * i]) for i in range(count))
    return {tag.decode(): font[offset:offset + length] for tag, _, offset, length in entries}


def glyphs_of(cmap):
    """Character -> glyph, from the table of the basic plane."""
    count = struct.unpack(">H", cmap[2:4])[0]
    records = [struct.unpack(">HHI", cmap[4 + 8 * i:12 + 8 * i]) for i in range(count)]
    table = next(cmap[offset:] for platform, encoding, offset in records
                 if (platform, encoding) == (3, 1))
    doubled = struct.unpack(">H", table[6:8])[0]
    words = struct.unpack(f">{doubled // 2}H", table[14:14 + doubled])
    starts_at = 16 + doubled
    starts = struct.unpack(f">{doubled // 2}H", table[starts_at:starts_at + doubled])
    deltas = struct.unpack(f">{doubled // 2}H", table[starts_at + doubled:starts_at + 2 * doubled])
    ranges_at = starts_at + 2 * doubled
    glyphs = {}
    for i, (start, end) in enumerate(zip(starts, words)):
        shift = struct.unpack(">H", table[ranges_at + 2 * i:ranges_at + 2 * i + 2])[0]
        for code in range(start, end + 1):
            glyph = code
            if shift:
                place = ranges_at + 2 * i + shift + 2 * (code - start)
                glyph = struct.unpack(">H", table[place:place + 2])[0]
            glyphs[code] = (glyph + deltas[i]) & 0xFFFF if glyph else 0
    return glyphs


def true_type_face(path):
    """(ascent, descent, external leading, advances of CHARACTERS) in units of the em."""
    tables = tables_of(path.read_bytes())
    assert struct.unpack(">H", tables["head"][18:20])[0] == EM, path
    ascent, descent, gap = struct.unpack(">hhh", tables["hhea"][4:10])
    metrics = struct.unpack(">H", tables["hhea"][34:36])[0]
    advance = [struct.unpack(">H", tables["hmtx"][4 * i:4 * i + 2])[0] for i in range(metrics)]
    glyphs = glyphs_of(tables["cmap"])
    widths = [advance[min(glyphs.get(character, 0), metrics - 1)] for character in CHARACTERS]
    return ascent, -descent, gap, widths


def symbol_face(path):
    widths = [0] * CODES
    for line in path.read_text().splitlines():
        if line.startswith("C ") and not line.startswith("C -1"):
            fields = [field.split() for field in line.split(";")]
            widths[int(fields[0][1])] = round(int(fields[1][1]) * EM / 1000)
    return (*SYMBOL_HEIGHTS, widths)


def put_rows(values, form=str):
    for first in range(0, len(values), 16):
        print("        " + ", ".join(map(form, values[first:first + 16])) + ",")


def main():
    folder, symbols = Path(sys.argv[1]), Path(sys.argv[2])
    print("// Made by make_built_in_faces.py; do not edit.")
    print('#include "platform/graphics/detail/BuiltInFaces.h"\n')
    print("namespace tessalink::detail {\n")
    print("// clang-format off")
    print("const std::array<char16_t, cFaceCharacters> cCharactersOfFaces = {")
    put_rows(CHARACTERS, "0x{:04X}".format)
    print("};\n\nconst std::array<BuiltInFace, cTextFaces> cFaces = {{")
    for name in ("Sans", "Serif"):
        for style in STYLES:
            ascent, descent, gap, widths = true_type_face(folder / f"Liberation{name}-{style}.ttf")
            print(f"    {{{ascent}, {descent}, {gap}, {{  // {name}, {style}")
            put_rows(widths)
            print("    }},")
    ascent, descent, gap, widths = symbol_face(symbols)
    print(f"}}}};\n\nconst FaceMetrics cSymbolFace = {{{ascent}, {descent}, {gap}, {{")
    put_rows(widths)
    print("}};\n// clang-format on\n\n}  // namespace tessalink::detail")


if __name__ == "__main__":
    main()
