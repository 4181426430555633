"""What the rows of questionnaires work on: a table of answers, a questionnaire for it, and how much a
report costs in a process that makes many."""

import json
import random
from pathlib import Path

HERE = Path(__file__).resolve().parent
ROOT = HERE.parent.parent
BIGFIVE = ROOT / "instruments" / "bigfive"


def fifty_items(folder):
    """A questionnaire of fifty items and ten scales, without reports."""
    folder.mkdir(exist_ok=True)
    choices = [{"code": str(i), "label": f"L{i}", "value": i} for i in range(1, 6)]
    model = {"id": "fifty", "title": "Fifty", "version": "1", "language": "en", "licence": "CC0",
             "source": "made for measuring", "responseSets": {"r": {"choices": choices}},
             "items": [{"id": f"I{i}", "text": f"Item {i}", "responses": "r"}
                       for i in range(1, 51)],
             "scales": [{"id": f"S{k}", "score": "mean",
                         "items": [{"item": f"I{i}", "reverse": i % 3 == 0}
                                   for i in range(k, 51, 10)]} for k in range(1, 11)]}
    (folder / "questionnaire.json").write_text(json.dumps(model))
    return folder


def answers(path, count, columns=("id",), values=lambda number: (str(number),)):
    """A table of answers to fifty items."""
    chance = random.Random(16)
    with open(path, "w", encoding="ascii") as file:
        file.write(",".join([*columns, *(f"I{i}" for i in range(1, 51))]) + "\n")
        for number in range(1, count + 1):
            file.write(",".join([*values(number), *chance.choices("12345", k=50)]) + "\n")
    return path


def fresh(folder, *command):
    """A command that finds no such folder."""
    return ["sh", "-c", 'rm -rf "$0" && exec "$@"', folder, *command]


def batch(tools, folder, table, out, *options):
    """A run into a folder that is not there yet."""
    return fresh(out, tools["tessalink"], "batch", folder, table, "-o", out,
                 "--progress", "none", *options)


def bigfive_answers(path, count):
    return answers(path, count, ("id", "Name", "Sex", "Age", "TestDate"),
                   lambda number: (str(number), f"Person {number}", "fmo"[number % 3],
                                   str(18 + number % 60), "2024-05-14"))
