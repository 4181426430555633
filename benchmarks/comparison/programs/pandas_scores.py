"""Reads a table of answers, adds the means of ten scales and writes them."""
import sys

import pandas

answers = pandas.read_csv(sys.argv[1])
scores = pandas.DataFrame({"id": answers["id"]})
for scale in range(10):
    items = [f"I{item}" for item in range(scale + 1, 51, 10)]
    scores[f"S{scale + 1}"] = answers[items].mean(axis=1)
scores.to_csv(sys.argv[2], index=False)
