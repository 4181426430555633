"""Makes reports of one page with two graphs, each with other scores: docxtpl_report.py TEMPLATE FOLDER COUNT.
The template is made when it is not there."""
import io
import os
import sys

import matplotlib

matplotlib.use("Agg")
import matplotlib.pyplot as plt
from docx import Document
from docx.shared import Inches
from docxtpl import DocxTemplate, InlineImage

SCALES = ["Extraversion", "Agreeableness", "Conscientiousness", "Stability", "Intellect"]


def make_template(path):
    document = Document()
    document.add_heading("Report on {{ name }}", 1)
    document.add_paragraph("{% for scale in scales %}{{ scale.name }}: T score {{ scale.score }}, "
                           "{% if scale.score > 55 %}above average{% elif scale.score < 45 %}below "
                           "average{% else %}average{% endif %}. {% endfor %}")
    document.add_paragraph("{{ bars }}")
    document.add_paragraph("{{ line }}")
    document.save(path)


def graph(template, draw):
    figure, axes = plt.subplots(figsize=(6, 2.5))
    draw(axes)
    picture = io.BytesIO()
    figure.savefig(picture, format="png", dpi=150)
    plt.close(figure)
    picture.seek(0)
    return InlineImage(template, picture, width=Inches(6))


def main():
    path, folder, count = sys.argv[1], sys.argv[2], int(sys.argv[3])
    if not os.path.exists(path):
        make_template(path)
    for number in range(count):
        template = DocxTemplate(path)
        scores = [35 + (number * 7 + scale * 11) % 31 for scale in range(len(SCALES))]
        template.render({
            "name": f"Person {number}",
            "scales": [{"name": n, "score": s} for n, s in zip(SCALES, scores)],
            "bars": graph(template, lambda axes: axes.barh(SCALES, scores)),
            "line": graph(template, lambda axes: axes.plot(SCALES, scores, marker="o"))})
        template.save(os.path.join(folder, "report.docx"))


main()
