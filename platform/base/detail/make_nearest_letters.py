#!/usr/bin/env python3
"""Writes NearestLetters.cpp: for the characters of some blocks of Unicode the byte of Windows-1252
that comes nearest, "_" where none does ("?" twice would begin a trigraph).

As many marks are kept as Windows-1252 has with the letter. Greek is that of
ISO 843, Cyrillic that of ISO 9, both cut to their first letter; further Latin letters and signs
stand in the table below. Ligatures and the like give their first letter (NFKD).

usage: make_nearest_letters.py > NearestLetters.cpp
"""
import unicodedata
from itertools import combinations

BLOCKS = [  # first and last character
    (0x0100, 0x024F),  # Latin Extended-A and -B
    (0x0250, 0x02AF),  # further small letters
    (0x02B0, 0x02FF),  # letters that stand high, apostrophes
    (0x0370, 0x03FF),  # Greek
    (0x0400, 0x04FF),  # Cyrillic
    (0x1E00, 0x1EFF),  # Latin Extended Additional
    (0x1F00, 0x1FFF),  # Greek Extended
    (0x2000, 0x206F),  # punctuation
    (0x2070, 0x209F),  # high and low digits
    (0x2100, 0x214F),  # signs like letters
    (0x2212, 0x2215),  # minus
    (0xFB00, 0xFB06),  # ligatures
    (0xFF01, 0xFF3E),  # wide letters, but for the low line
    (0xFF40, 0xFF5E),
]


def pairs(text):
    return dict(pair.split(":") for pair in text.split())


def both(small):
    """Those pairs, and the same of the capitals."""
    return small | {a.upper(): b.upper() for a, b in small.items() if len(a.upper()) == 1}


LATIN = both(pairs("đ:d ħ:h ı:i ĸ:k ł:l ŋ:n ŧ:t ƀ:b ɓ:b ƈ:c ɖ:d ɗ:d ə:a ɛ:e ɠ:g ɣ:g ǥ:g ɨ:i ɩ:i ƙ:k "
                   "ƚ:l ɲ:n ƞ:n ɔ:o ɵ:o ƥ:p ʀ:r ƭ:t ʈ:t ʉ:u ʊ:u ʋ:v ƴ:y ƶ:z ȥ:z ȼ:c ⱥ:a ⱦ:t ɇ:e ɉ:j "
                   "ɍ:r ɏ:y ƃ:b ƌ:d ǝ:e ȝ:y")) | {"ẞ": "ß", "ſ": "s", "ŉ": "n"}
GREEK = both(pairs("α:a β:v γ:g δ:d ε:e ζ:z η:i θ:t ι:i κ:k λ:l μ:m ν:n ξ:x ο:o π:p ρ:r σ:s ς:s τ:t "
                   "υ:y φ:f χ:c ψ:p ω:o"))
CYRILLIC = both(pairs("а:a б:b в:v г:g д:d е:e ж:ž з:z и:i й:j к:k л:l м:m н:n о:o п:p р:r с:s т:t "
                      "у:u ф:f х:h ц:c ч:c ш:š щ:s ъ:\" ы:y ь:' э:è ю:û я:â ђ:d є:ê ѕ:z і:ì ј:j љ:l "
                      "њ:n ћ:c џ:d ґ:g ѣ:e ѳ:f ѵ:y ғ:g қ:k ҡ:k ң:n ү:u ұ:u һ:h ә:a ө:o ҳ:h ҷ:c җ:z"))
SIGNS = {"\u2010": "-", "\u2011": "-", "\u2012": "\u2013", "\u2015": "\u2014", "\u2016": "|",
         "\u2007": "\u00A0", "\u202F": "\u00A0", "\u2028": " ", "\u2029": " ", "\u201B": "\u2018",
         "\u201F": "\u201C", "\u2023": "\u2022", "\u2027": "\u00B7", "\u2032": "'", "\u2033": '"',
         "\u2035": "'", "\u2036": '"', "\u2212": "-", "\u2215": "/", "\u2044": "/", "\u02B9": "'",
         "\u02BA": '"', "\u02BB": "\u2018", "\u02BC": "\u2019", "\u02BD": "\u2018", "\u02C8": "'",
         "\u0374": "'", "\u037E": ";"}
LETTERS = LATIN | GREEK | CYRILLIC | SIGNS


def byte_of(text):
    try:
        return text.encode("cp1252")[0] if len(text) == 1 else None
    except UnicodeEncodeError:
        return None


def nearest(character):
    if character in LETTERS:
        return byte_of(LETTERS[character])
    full = unicodedata.normalize("NFKD", character)
    base = LETTERS.get(full[0], full[0])
    marks = [mark for mark in full[1:] if unicodedata.combining(mark)]
    kept = (part for count in range(len(marks), -1, -1) for part in combinations(marks, count))
    bytes_of_parts = (byte_of(unicodedata.normalize("NFC", base + "".join(part))) for part in kept)
    return next(filter(None, bytes_of_parts), None)


def escaped(byte):
    character = chr(byte)
    if character in '"\\':
        return "\\" + character
    return character if 0x20 <= byte < 0x7F else f"\\{byte:03o}"


def block_lines(first, last, width=90):
    found = [nearest(chr(code)) for code in range(first, last + 1)]
    bytes_of_block = [ord("_") if byte in (None, ord("?")) else byte for byte in found]
    line = ""
    for piece in map(escaped, bytes_of_block):
        if len(line) + len(piece) > width:
            yield line
            line = ""
        line += piece
    yield line


if __name__ == "__main__":
    print("// Made by make_nearest_letters.py; do not edit.")
    print('#include "platform/base/detail/NearestLetters.h"\n')
    print("namespace tessalink::detail {\n\n// clang-format off")
    print("const std::array<NearestBlock, cNearestBlocks> cNearestLetters = {{")
    for block in BLOCKS:
        lines = "\n     ".join(f'"{line}"' for line in block_lines(*block))
        print(f"    {{0x{block[0]:04X},\n     {lines}}},")
    print("}};\n// clang-format on\n\n}  // namespace tessalink::detail")
