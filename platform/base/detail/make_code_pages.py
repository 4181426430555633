#!/usr/bin/env python3
"""Writes CodePageTables.h: the characters of the upper halves of the code pages, from the codecs of
Python.

A byte that its page leaves open is the control character of the same number, from 0xA0 on one for
private use, as Windows has it: its number as a character would be a letter that the page lacks.

usage: make_code_pages.py > CodePageTables.h
"""
# What the open bytes are from 0xA0 on.
PRIVATE = {(1253, 0xAA): 0xF8F9, (1253, 0xD2): 0xF8FA, (1253, 0xFF): 0xF8FB,
           (1257, 0xA1): 0xF8FC, (1257, 0xA5): 0xF8FD}
# The character set that the fonts of RTF name for the page.
CHARSETS = {1250: 238, 1251: 204, 1252: 0, 1253: 161, 1254: 162, 1257: 186}


def character_of(page, byte):
    try:
        return ord(bytes([byte]).decode(f"cp{page}"))
    except UnicodeDecodeError:
        return PRIVATE.get((page, byte), byte)


if __name__ == "__main__":
    print("// Made by make_code_pages.py; do not edit.")
    print("#pragma once\n\n#include <array>\n\nnamespace tessalink::detail {\n")
    print("/// A code page by its number: the character set of fonts in RTF, the characters from 0x80.")
    print("struct CodePageTable {\n    int number;\n    int charset;")
    print("    std::array<char16_t, 128> upper;\n};\n\n// clang-format off")
    print(f"inline constexpr std::array<CodePageTable, {len(CHARSETS)}> cCodePageTables = {{{{")
    for page, charset in CHARSETS.items():
        print(f"    {{{page}, {charset}, {{")
        for first in range(0x80, 0x100, 12):
            row = (f"0x{character_of(page, byte):04X}"
                   for byte in range(first, min(first + 12, 0x100)))
            print("        " + ", ".join(row) + ",")
        print("    }},")
    print("}};\n// clang-format on\n\n}  // namespace tessalink::detail")
