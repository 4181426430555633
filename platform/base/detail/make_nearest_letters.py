#!/usr/bin/env python3
"""Writes NearestLetters.cpp: for the characters of some blocks of Unicode the byte of Windows-1252
that comes nearest, "_" where none does ("?" twice would begin a trigraph).

As many marks are kept as Windows-1252 has with the letter. Greek is that of
ISO 843, Cyrillic that of ISO 9, both cut to their first letter; further Latin letters and signs
stand in the table below. Ligatures and the like give their first letter (NFKD).

For other code pages there are the ASCII letters nearest to the bytes of Windows-1252, and the
nearest letters of their own scripts: Greek as Windows-1253 has it, Cyrillic as Windows-1251 does.

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
# What comes nearest in ASCII, and in Cyrillic.
PLAIN = {"ß": "s", "ø": "o", "Ø": "O", "æ": "a", "Æ": "A", "œ": "o", "Œ": "O", "þ": "t", "Þ": "T",
         "ð": "d", "Ð": "D", "ƒ": "f", "×": "x", "÷": "/", "¡": "!", "¦": "|", "ˆ": "^", "˜": "~",
         "€": "E", "‚": "'", "„": '"', "‹": "<", "›": ">", "«": '"', "»": '"', "‘": "'", "’": "'",
         "“": '"', "”": '"', "•": "*", "–": "-", "—": "-", "·": ".", "´": "'", "©": "c", "®": "r"}
CYRILLIC_OWN = both(pairs("ѣ:е ѳ:ф ѵ:и ғ:г қ:к ҡ:к ҝ:к ҟ:к ң:н ҥ:н ү:у ұ:у һ:х ә:а ө:о ҳ:х ҷ:ч ҹ:ч "
                          "җ:ж ҙ:з ҫ:с ҭ:т ҵ:ц ҕ:г ҧ:п ӄ:к ӈ:н ӌ:ч ӡ:з"))
# All accents of Greek are the one that is written today.
STRESS = {"\u0300": "\u0301", "\u0342": "\u0301"}
OWN_BLOCKS = [  # first and last character, code page, letters beside those without their marks
    (0x0370, 0x03FF, "cp1253", {}),
    (0x0400, 0x04FF, "cp1251", CYRILLIC_OWN),
    (0x1F00, 0x1FFF, "cp1253", {}),
]
LETTERS = LATIN | GREEK | CYRILLIC | SIGNS


def byte_of(text, page="cp1252"):
    try:
        return text.encode(page)[0] if len(text) == 1 else None
    except UnicodeEncodeError:
        return None


def nearest(character, letters=LETTERS, page="cp1252"):
    if character in letters:
        return byte_of(letters[character], page)
    full = unicodedata.normalize("NFKD", character)
    base = letters.get(full[0], full[0])
    accents = STRESS if page == "cp1253" else {}
    marks = [accents.get(mark, mark) for mark in full[1:] if unicodedata.combining(mark)]
    kept = (part for count in range(len(marks), -1, -1) for part in combinations(marks, count))
    bytes_of_parts = (byte_of(unicodedata.normalize("NFC", base + "".join(part)), page)
                      for part in kept)
    return next(filter(None, bytes_of_parts), None)


def own(character, page, letters):
    """The letter of the code page's own script; "_" for none."""
    byte = nearest(character, letters, page)
    found = bytes([byte or 0]).decode(page)
    return found if found.isalpha() and ord(found) >= 0x0370 else "_"


def escaped(byte):
    character = chr(byte)
    if character in '"\\':
        return "\\" + character
    return character if 0x20 <= byte < 0x7F else f"\\{byte:03o}"


def block_lines(found, width=90):
    return lines_of(map(escaped, [ord("_") if byte in (None, ord("?")) else byte
                                  for byte in found]), width)


def lines_of(pieces, width=90):
    line = ""
    for piece in pieces:
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
        found = [nearest(chr(code)) for code in range(block[0], block[1] + 1)]
        lines = "\n     ".join(f'"{line}"' for line in block_lines(found))
        print(f"    {{0x{block[0]:04X},\n     {lines}}},")
    print("}};\n\nconst std::array<OwnBlock, cOwnBlocks> cOwnLetters = {{")
    for first, last, page, letters in OWN_BLOCKS:
        found = (own(chr(code), page, letters) for code in range(first, last + 1))
        pieces = (letter if letter == "_" else f"\\u{ord(letter):04X}" for letter in found)
        lines = "\n     ".join(f'u"{line}"' for line in lines_of(pieces))
        print(f"    {{0x{first:04X},\n     {lines}}},")
    plain = [nearest(bytes([byte]).decode("cp1252", "replace"), PLAIN, "ascii")
             for byte in range(0x80, 0x100)]
    lines = "\n    ".join(f'"{line}"' for line in block_lines(plain))
    print(f"}}}};\n\nconst std::string_view cPlainLetters =\n    {lines};")
    print("// clang-format on\n\n}  // namespace tessalink::detail")
