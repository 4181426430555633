"""The charts as the peers draw them: scripts for gnuplot, the product's description, command lines."""

import json
from pathlib import Path

HERE = Path(__file__).resolve().parent

# The same chart as that of the program charts: bars of marks with a label under each, one axis with
# seven ticks and numbers, and a legend of one mark and its name.
GNUPLOT = """set terminal {terminal}
set output '{output}'
set border 1
set xrange [0:240]
set yrange [-21:1]
set xtics 40 nomirror
unset ytics
set key bottom right
do for [i=1:{count}] {{
    plot '{bars}' using 1:2:3:4:5:6 with boxxyerror notitle, \\
         '{marks}' using 1:2 with points pt 7 title 'marks', \\
         '' using 1:2:3 with labels offset 0,-1 notitle
}}
"""


def gnuplot_script(bench, terminal, count=1, output="/dev/null"):
    """A file by which gnuplot draws the chart so many times."""
    bars = "".join(f"120 {-bar} 0 240 {-bar - .2} {-bar + .2}\n" for bar in range(20))
    marks = "".join(f"{i % 24 * 10 + 5} {-(i // 24)} {i}\n" for i in range(480))
    text = GNUPLOT.format(terminal=terminal, count=count, output=output,
                          bars=bench.file("bars.txt", bars), marks=bench.file("marks.txt", marks))
    return bench.file(f"{terminal.split()[0]}-{count}.gp", text)


def gnuplot_time(bench, terminal):
    """Nanoseconds for a chart: the slope between few and many in one process."""
    few, many = 5, bench.size(105, 25)
    commands = {count: [bench.tools["gnuplot"], gnuplot_script(bench, terminal, count)]
                for count in (few, many)}
    times = bench.processes(commands)
    return (times[many].time - times[few].time) / (many - few)


# The profile graph as the program profiles draws it, from the scores that this writes.
GNUPLOT_PROFILES = """set terminal {terminal}
set output '{output}'
set border 3
set xrange [0:61]
set yrange [20:80]
set xtics nomirror ({labels})
set ytics 10 nomirror
set key top left Left reverse
{bands}
$scores << END
{scores}END
do for [i=1:{count}] {{
    plot {profiles}
}}
"""
COLORS = ("C00000", "0000C0", "008000", "800080", "C08000", "0080C0", "404040", "C000C0")
BANDS = ((20, "E8F0F8"), (40, "F0FFFF"), (60, "F8F0E8"))
POINT_TYPES = (7, 5, 9, 13, 6, 4, 8, 12)


def gnuplot_profiles(bench, terminal, count, output="/dev/null"):
    """A file by which gnuplot draws the profile graph so many times."""
    bands = "\n".join(f"set object rectangle from 0,{low} to 61,{low + 20} behind "
                      f"fillcolor rgb '#{color}' fillstyle solid noborder" for low, color in BANDS)
    profiles = ", ".join(
        f"$scores using 1:{i + 2} with linespoints linetype 1 linecolor rgb '#{color}' "
        f"pointtype {kind} title 'Profile {i + 1}'"
        for i, (color, kind) in enumerate(zip(COLORS, POINT_TYPES)))
    text = GNUPLOT_PROFILES.format(
        terminal=terminal, output=output, count=count, bands=bands, profiles=profiles,
        labels=", ".join(f"'S{scale}' {scale}" for scale in range(1, 61)),
        scores=(bench.folder / "scores.txt").read_text())
    return bench.file(f"profiles-{terminal.split()[0]}-{count}.gp", text)


def chart_description():
    """The chart in the product's JSON."""
    def scale(points, **more):
        return {"scale": {"min": 0, "max": 240, "majorTick": 0, "textSize": 12, "barHeight": 16,
                          "marginTop": 2, "marginBottom": 0, "points": points, **more}}

    def point(at):
        return {"at": at, "symbol": "circle", "size": 9, "color": "#C00000"}

    sections = []
    for bar in range(20):
        marks = [(mark, mark % 24 * 10 + 5) for mark in range(bar * 24, bar * 24 + 24)]
        last = {"majorTick": 40} if bar == 19 else {}
        sections.append(scale([point(at) for _, at in marks], **last))
        if last:
            sections.append({"legend": {"labelSize": 12, "marginTop": 0, "marginBottom": 0}})
        sections.append({"legend": {
            "labelSize": 10, "textSize": 10, "marginTop": 0, "marginBottom": 0,
            "texts": [{"at": at, "text": str(mark)} for mark, at in marks]}})
    sections.append(scale([point(240)], right="marks"))
    return {"graphs": {"Marks": {"width": 8.33, "marginLeft": 10, "marginRight": 10,
                                 "rightWidth": 60, "sections": sections}}}


# The terminals of gnuplot by the format of the file.
TERMINALS = {"svg": "svg size 800,466", "emf": "emf size 800,466", "png": "pngcairo size 800,466",
             "pdf": "pdfcairo size 8.3,4.9"}


def chart_commands(bench, form):
    """The command lines that write the chart into a file of this format, start-up included."""
    def out(name):
        return bench.folder / f"{name}.{form}"

    description = bench.file("chart.json", json.dumps(chart_description()))
    programs = HERE / "programs"
    commands = {
        "tessalink": [bench.tools["tessalink"], "graph", description, "Marks", "-o",
                      out("tessalink")],
        "gnuplot": [gnuplot_script(bench, TERMINALS[form], output=out("gnuplot"))],
        "matplotlib": [programs / "chart_matplotlib.py", out("matplotlib")],
        "plplot_peer": [form, out("plplot_peer")],
        "Rscript": [programs / "chart.R", form, out("Rscript")],
    }
    missing = {"svg": (), "emf": ("matplotlib", "plplot_peer", "Rscript"),
               "png": ("plplot_peer",), "pdf": ()}[form]
    return {name: words if name == "tessalink" else [bench.tools[name], *words]
            for name, words in commands.items()
            if name not in missing and bench.tools.has(name)}
