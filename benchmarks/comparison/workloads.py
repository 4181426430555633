"""The texts that the comparison runs on: reports of a test, made from a fixed seed."""

import random

from languages import Calc, If, Ref, Text, Variables

WORDS = (
    "the client scale scores reports tends often rarely anxiety calm social active careful open "
    "warm people feels likely average typical range adults compared norm group stress describes "
    "self others work family plans quickly slowly prefers avoids enjoys seeks new ideas rules "
    "order change moods energy trust doubt anger patience tasks details"
).split()

HEADER = (
    r"{\rtf1\ansi\deff0{\fonttbl{\f0\froman Times New Roman;}{\f1\fswiss Arial;} }"
    "\n"
    r"{\stylesheet{\s0\fs22 Normal;}{\s1\b\fs28 heading 1;} }\paperw11906\paperh16838\fs22 "
    "\n"
)
KEY = 0x5C


def scramble(data):
    return data.translate(bytes(byte ^ KEY for byte in range(256)))


def variables():
    """Texts, whole numbers and doubles, as a host fills them in for one assessment."""
    rng = random.Random(1)
    values = {}
    for i in range(40):
        values[f"Txt{i}"] = " ".join(rng.choices(WORDS, k=2))
        values[f"Raw{i}"] = rng.randint(1, 99)
        values[f"T{i}"] = round(rng.uniform(20, 80), 2)
    return Variables(values)


class Writer:
    """Random parts over the names of `variables()`."""

    def __init__(self, seed):
        self.rng = random.Random(seed)

    def words(self, size):
        """Words of exactly `size` characters that start with no blank and end with none."""
        text = " ".join(self.rng.choices(WORDS, k=size // 3 + 1))[:size].rstrip()
        return text + "." * (size - len(text))

    def name(self, kind):
        return f"{kind}{self.rng.randrange(40)}"

    def ref(self):
        return Ref(self.name(self.rng.choice(["Txt", "Raw", "T"])))

    def calc(self):
        # A small stock of expressions: the host of a peer without arithmetic computes them all.
        rng = random.Random(self.rng.randrange(60))
        raw = [f"Raw{rng.randrange(40)}" for _ in range(3)]
        forms = [
            (raw[0], "+", raw[1]),
            (raw[0], "*", 2, "+", raw[1]),
            ("(", raw[0], "+", raw[1], ")", "/", raw[2]),
            (100, "-", raw[0]),
        ]
        return Calc(rng.choice(forms))

    def prose(self):
        return [Text(self.words(60) + " "), self.ref(), Text(" " + self.words(70) + " ")]

    def rarely(self, then):
        """A condition that holds for one score in five."""
        rng = random.Random(self.rng.randrange(60))
        operator, number = rng.choice([("<", 20), (">", 80)])
        return If(f"Raw{rng.randrange(40)}", operator, number, tuple(then))

    def condition(self, then, otherwise=()):
        rng = random.Random(self.rng.randrange(60))
        return If(f"Raw{rng.randrange(40)}", rng.choice("<>"), rng.choice([20, 40, 60, 80]),
                  tuple(then), tuple(otherwise))


def sized(parts, size, language):
    """The parts with the text {PAD} in one of them widened until they are `size` characters."""
    missing = size - len(language.write(parts)) + len("{PAD}")
    if missing < 1:
        raise ValueError(f"the parts are {1 - missing} characters too long")
    filler = Writer(missing).words(missing)
    return [Text(p.text.replace("{PAD}", filler)) if isinstance(p, Text) else p for p in parts]


def plain_pool(language):
    """Stretches of 1,000 characters in the product's language, with one reference each."""
    pool = []
    for i in range(100):
        writer = Writer(i)
        styled = writer.words(40)
        parts = [Text(rf"\pard\sb120 {{\b {styled}}} "), writer.ref(), Text(" {PAD}\\par\n")]
        pool.append(sized(parts, 1000, language))
    return pool


def dense_paragraph(seed, language):
    """240 characters with twelve commands: seven references, three sums, two conditions."""
    w = Writer(seed)
    parts = [
        Text(r"\pard "), w.ref(), Text(" {PAD} ("), w.ref(), Text("), "), w.ref(), Text(" "),
        w.calc(), Text("; "),
        w.condition([Text("above "), w.ref()], [Text("low "), w.ref()]),
        Text("; of "), w.calc(), Text(", "), w.ref(), Text(", "), w.calc(), Text(", "),
        w.condition([Text("high "), w.ref()]),
        Text(".\\par\n"),
    ]
    return sized(parts, 240, language)


def dense_pool(language):
    return [dense_paragraph(seed, language) for seed in range(2000)]


def report_parts(sections=28):
    """A small report: a section a scale, each with the prose for every range of its score."""
    parts = [Text(HEADER)]
    for i in range(sections):
        w = Writer(1000 + i)
        parts += [Text(r"\pard\s1\b\fs28 "), Ref(w.name("Txt")), Text(r"\b0\par" "\n"),
                  Text(r"\pard\s0\fs22 "), Ref(w.name("Txt")), Text(" scored "),
                  Ref(w.name("T")), Text(" and ranks "), w.calc(), Text(" among "),
                  w.calc(), Text(". ")]
        for _ in range(3):
            parts += [w.condition(w.prose(), w.prose()), Text(w.words(20) + " "),
                      w.rarely(w.prose()), Text(w.words(20) + " "), w.rarely(w.prose())]
        parts.append(Text("end.\\par\n"))
    parts.append(Text("}"))
    return parts


def block(index):
    """A sort key and the parts of a deferred block of 140 characters."""
    w = Writer(5000 + index)
    return [Text(r"\pard "), Ref(w.name("Txt")), Text(" {PAD} "), Ref(w.name("T")), Text(", "),
            w.condition([Text("more than usual")], [Text("less than usual")]),
            Text(".\\par\n")]


def repeated(pool, count):
    """`count` pieces in a random order without a pattern."""
    return "".join(random.Random(2).choices(pool, k=count))
