"""The chart of 480 marks by matplotlib: chart_matplotlib.py OUTPUT"""
import sys

import matplotlib

matplotlib.use("agg")
from matplotlib import pyplot  # noqa: E402

figure, axes = pyplot.subplots(figsize=(8.3, 4.9), dpi=96)
xs = [mark % 24 * 10 + 5 for mark in range(480)]
ys = [-(mark // 24) for mark in range(480)]
for bar in range(20):
    axes.add_patch(pyplot.Rectangle((0, -bar - .2), 240, .4, fill=False))
axes.plot(xs, ys, "o", color="#C00000", markersize=5, label="marks")
for mark in range(480):
    axes.text(xs[mark], ys[mark] - .45, str(mark), fontsize=5, ha="center", va="center")
axes.set_xlim(0, 240)
axes.set_ylim(-21, 1)
axes.set_xticks(range(0, 241, 40))
axes.set_yticks([])
axes.legend(loc="lower right")
figure.savefig(sys.argv[1])
