"""The rows of the comparison. Each makes its files in a folder in memory, checks that all
contestants write the same bytes, lets them run in turns and prints times, ratios and verdicts."""

import resource
import shutil
import subprocess
from collections import namedtuple
from math import log2

import questionnaires
import workloads
from bench import Bench, fastest, fresh_outputs, languages, milliseconds, process_table
from charts import TERMINALS, chart_commands, gnuplot_profiles, gnuplot_time
from languages import Product
from measure import Failed, Series, processes, same_bytes, self_timed, table

ROWS = {}


def row(function):
    ROWS[function.__name__] = function
    return function


def whole_texts(bench, pool, count, scrambled):
    """A row of whole processes over a long template made of `count` pieces, against `cp`."""
    values = workloads.variables()
    spoken = languages(values)
    pieces = pool(spoken["product"])
    texts = {name: workloads.HEADER
             + workloads.repeated([language.write(parts) for parts in pieces], count) + "}"
             for name, language in spoken.items()}
    template = texts.pop("product").encode("latin-1")
    print(f"Template of the product: {len(template):,} bytes.")
    contestants = {**bench.products(template, values, scrambled), **bench.peers(texts, spoken)}
    output = fresh_outputs(contestants)
    commands = {"cp of the output": ["cp", output, bench.folder / "copy.out"]}
    commands.update({name: words for name, (words, _) in contestants.items()})
    series = bench.processes(commands)
    process_table(series, "cp of the output")
    return series


def expect_limit(bench, series, bound):
    for name in series:
        if name.startswith("tessalink"):
            bench.expect(f"{name}, against the limit", series[name].over(
                series["cp of the output"]), bound)


@row
def plain(bench):
    """20 MB of RTF with a variable every 1,000 bytes, whole process."""
    series = whole_texts(bench, workloads.plain_pool, bench.size(20_000, 2_000), True)
    expect_limit(bench, series, 2)


@row
def dense(bench):
    """200,000 paragraphs, 48 MB, 2.4 million commands, whole process."""
    series = whole_texts(bench, workloads.dense_pool, bench.size(200_000, 5_000), False)
    expect_limit(bench, series, 12)
    # ctemplate evaluates nothing: it is handed the results of all arithmetic and conditions.
    peer = fastest(series, ["clearsilver", "m4"])
    if peer and "tessalink, plain" in series:
        bench.expect(f"tessalink against the fastest peer that evaluates, {peer}",
                     series["tessalink, plain"].over(series[peer]), 0.1)


def small_report(bench):
    values = workloads.variables()
    spoken = languages(values)
    parts = workloads.report_parts()
    texts = {name: spoken[name].write(parts) for name in ("product", "ctemplate", "clearsilver")}
    template = texts.pop("product").encode("latin-1")
    print(f"Template of the product: {len(template):,} bytes.")
    contestants = {**bench.products(template, values, False), **bench.peers(texts, spoken)}
    return contestants, fresh_outputs(contestants)


@row
def small(bench):
    """A 60 KB report read, parsed and run again each time, in one process."""
    contestants, output = small_report(bench)
    count = bench.size(500, 50)
    folder = bench.folder
    commands = {"read and write": [bench.tools["limits"], "readwrite", output,
                                   folder / "copy.out", count]}
    if bench.tools.has("product"):
        commands["tessalink"] = [bench.tools["product"], "repeat", folder / "product--plain.tpl",
                                 folder / "product.out", folder / "product.tsv", count]
    if bench.tools.has("ctemplate_peer"):
        commands["ctemplate"] = [bench.tools["ctemplate_peer"], "repeat", folder / "ctemplate.tpl",
                                 folder / "ctemplate.out", folder / "ctemplate.tsv", count]
    series = {name: keys["ns"] for name, keys in self_timed(commands, bench.rounds).items()}
    if "tessalink" in series:
        same_bytes({"command line": output, "tessalink": folder / "product.out"})
    limit = series["read and write"]
    table(("", "us", "x limit"),
          [(name, f"{one.time / 1e3:.1f}", f"{one.over(limit):.2f}")
           for name, one in series.items()])
    if "tessalink" in series and "ctemplate" in series:
        bench.expect("tessalink against ctemplate", series["tessalink"].over(series["ctemplate"]),
                     1 / 3)


@row
def startup(bench):
    """One small report by the command line against an empty process."""
    contestants, _ = small_report(bench)
    commands = {"empty process": [bench.tools["empty"]]}
    commands.update({name: words for name, (words, _) in contestants.items()})
    series = bench.processes(commands, bench.rounds * 10)
    process_table(series, "empty process")
    if "tessalink, plain" in series:
        bench.expect("tessalink against an empty process",
                     series["tessalink, plain"].over(series["empty process"]), 2.2)


@row
def lookups(bench):
    """100,000 references among 10 to 1,000,000 variables."""
    lookups_count = 100_000
    counts = bench.size((10, 1_000, 100_000, 1_000_000), (10, 1_000, 10_000))
    programs = {"flat hash": "flat_hash", "tessalink": "product", "ctemplate": "ctemplate_peer"}
    rows = []
    runs = {}
    for variables in counts:
        commands = {}
        for name, program in programs.items():
            if bench.tools.has(program):
                mode = [] if program == "flat_hash" else ["lookup"]
                commands[name] = [bench.tools[program], *mode, variables, lookups_count, 3]
        series = self_timed(commands, max(3, bench.rounds // 3))
        sums = {name: keys["checksum"].times[0] for name, keys in series.items()
                if "checksum" in keys}
        if len(set(sums.values())) > 1:
            raise Failed(f"the outputs differ: {sums}")
        for name, keys in series.items():
            runs[name, variables] = keys
            rows.append((name, f"{variables:,}", milliseconds(keys["run"].time),
                         milliseconds(keys["fill"].time),
                         f"{keys['fill'].time / variables / 1e3:.3f}"))
    table(("", "variables", "run ms", "fill ms", "fill us each"),
          sorted(rows, key=lambda cells: cells[0]))
    few, many = counts[0], counts[-1]
    if ("tessalink", many) in runs and ("flat hash", many) in runs:
        for what, keys in (("with filling", ("fill", "run")), ("look-ups alone", ("run",))):
            def cost(name, count):
                return sum(runs[name, count][key].time for key in keys)
            more = cost("tessalink", many) - cost("tessalink", few)
            bench.expect(f"what {many:,} variables cost more than {few}, in flat-hash times, {what}",
                         more / cost("flat hash", many), 3)
        bench.expect(f"filling {many:,} variables, each",
                     runs["tessalink", many]["fill"].time / many / 1e3, 0.4, " us")


def write_include_chain(bench, depth):
    """L0001 includes L0002 and so on; the last level includes nothing."""
    filler = workloads.Writer(0).words(60)
    for level in range(1, depth + 1):
        next_level = f"L{level + 1:04d}"
        last = level == depth
        product = f"{filler}\n" if last else f"{filler}\n@INCLUDE([{next_level}]){filler}\n"
        silver = f"{filler}\n" if last else f'{filler}\n<?cs include:"{next_level}.cs" ?>{filler}\n'
        bench.file(f"L{level:04d}.DAT", workloads.scramble(product.encode()))
        bench.file(f"L{level:04d}.cs", silver)
    bench.file("chain.tpl", "@INCLUDE([L0001])end.\n")
    bench.file("chain.cs", '<?cs include:"L0001.cs" ?>end.\n')


@row
def includes(bench):
    """Nested includes, 10 to 1,000 levels deep."""
    depths = bench.size((10, 100, 300, 1_000), (10, 50, 100))
    values = workloads.variables()
    folder = bench.folder
    tsv = bench.file("peer.tsv", values.plain())
    times = {}
    for depth in depths:
        write_include_chain(bench, depth)
        contestants = {}
        if bench.tools.has("tessalink"):
            contestants["tessalink"] = ([bench.tools["tessalink"], "report", folder / "chain.tpl",
                                         "-o", folder / "product.out", "--plain"],
                                        folder / "product.out")
        if bench.tools.has("clearsilver_peer"):
            contestants["clearsilver"] = ([bench.tools["clearsilver_peer"], "render",
                                           folder / "chain.cs", folder / "clearsilver.out", tsv,
                                           folder], folder / "clearsilver.out")
        fresh_outputs(contestants)
        commands = {"open, read, close": [bench.tools["limits"], "files", folder, depth]}
        commands.update({name: words for name, (words, _) in contestants.items()})
        times[depth] = bench.processes(commands, bench.rounds * 4)
    few = depths[0]
    rows = []
    slopes = {}
    for name in times[few]:
        for depth in depths[1:]:
            slope = (times[depth][name].time - times[few][name].time) / (depth - few) / 1e3
            slopes[name, depth] = slope
            rows.append((name, depth, milliseconds(times[depth][name].time), f"{slope:.2f}"))
    table(("", "levels", "CPU ms, whole process", f"us a level beyond {few}"), rows)
    deep = depths[-1]
    if ("tessalink", deep) in slopes:
        check_few_descriptors(bench, folder)
        if min(slopes.values()) <= 0:
            print("- too few levels to time one: no verdict")
            return
        if ("clearsilver", deep) in slopes:
            ratio = slopes["tessalink", deep] / slopes["clearsilver", deep]
            print(f"- tessalink against clearsilver, a level: {ratio:.2f}x")
        bench.expect(f"a level at {deep} against one at {depths[-2]} levels",
                     slopes["tessalink", deep] / slopes["tessalink", depths[-2]], 1.5)


def check_few_descriptors(bench, folder):
    """The deepest chain must run with a handful of file descriptors."""
    words = [bench.tools["tessalink"], "report", folder / "chain.tpl", "-o",
             folder / "product.out", "--plain"]
    few = 16
    done = subprocess.run(
        list(map(str, words)), stderr=subprocess.PIPE, text=True,
        preexec_fn=lambda: resource.setrlimit(resource.RLIMIT_NOFILE, (few, few)))
    held = done.returncode == 0 or "too many open files" in done.stderr.lower()
    print(f"- the deepest chain with {few} file descriptors: exit {done.returncode} "
          f"{done.stderr.strip()}: **{'reached' if held else 'NOT reached'}**")
    bench.reached.append(held)


def write_blocks(bench, count, values):
    """The same blocks for the product, and for programs that sort them before they render."""
    spoken = languages(values)
    texts = {name: [] for name in ("product", "ctemplate", "clearsilver")}
    for i in range(count):
        parts = workloads.sized(workloads.block(i % 2000), 140, spoken["product"])
        # Whole keys repeat, so that many blocks are equal.
        key = f"{(i * 7919) % 4096}.5"
        for name, blocks in texts.items():
            text = spoken[name].write(parts)
            blocks.append(f"@DEFER_START({key}){text}@DEFER_END\n" if name == "product"
                          else f"<?key {key} ?>{text}")
    texts["product"].append("@PRINT_DEFERRED(ASC)")
    for name, blocks in texts.items():
        bench.file(f"{name}.tpl", "".join(blocks))
        bench.file(f"{name}.tsv", spoken[name].variables_file())


@row
def deferred(bench):
    """10 to 65,535 deferred blocks of 140 bytes."""
    counts = bench.size((10, 1_000, 10_000, 65_535), (10, 1_000))
    folder = bench.folder
    programs = {"tessalink": ("product", "repeat", "product"),
                "clearsilver": ("clearsilver_peer", "deferred", "clearsilver"),
                "ctemplate": ("ctemplate_peer", "deferred", "ctemplate")}
    rows = []
    each = {}
    for count in counts:
        write_blocks(bench, count, workloads.variables())
        repeats = max(3, min(200, 50_000 // count))
        commands = {"stable sort and copy": [bench.tools["limits"], "sortcopy",
                                             folder / "clearsilver.tpl", folder / "copy.out",
                                             repeats]}
        outputs = {}
        for name, (program, mode, language) in programs.items():
            if bench.tools.has(program):
                outputs[name] = folder / f"{language}.out"
                commands[name] = [bench.tools[program], mode, folder / f"{language}.tpl",
                                  outputs[name], folder / f"{language}.tsv", repeats]
        series = self_timed(commands, max(3, bench.rounds // 3))
        same_bytes(outputs)
        for name, keys in series.items():
            each[name, count] = keys["ns"].time / count / 1e3
            rows.append((name, f"{count:,}", milliseconds(keys["ns"].time),
                         f"{each[name, count]:.3f}"))
    table(("", "blocks", "ms", "us a block"), sorted(rows, key=lambda cells: cells[0]))
    many = counts[-1]
    peer = min((name for name in programs if name != "tessalink" and (name, many) in each),
               key=lambda name: each[name, many], default=None)
    if ("tessalink", many) in each and peer:
        bench.expect(f"tessalink against the fastest peer, {peer}",
                     each["tessalink", many] / each[peer, many], 0.5)
        growth = max(1, log2(many) / log2(counts[1]))
        bench.expect(f"a block among {many:,} against one among {counts[1]:,}",
                     each["tessalink", many] / each["tessalink", counts[1]], 1.5 * growth)


@row
def gigabyte(bench):
    """A template of 1 GiB in at most 16 MiB of memory."""
    if not bench.tools.has("tessalink"):
        return
    target = bench.size(1 << 30, 64 << 20)
    values = workloads.variables()
    spoken = Product(values)
    pool = [spoken.write(parts) for parts in workloads.plain_pool(spoken)]
    chunk = workloads.repeated(pool, 16_000).encode("latin-1")
    source = folder_file(bench, "giant.tpl", workloads.HEADER.encode(), chunk, target)
    variables = bench.file("product.tsv", values.tsv())
    out = bench.folder / "giant.out"
    command = [bench.tools["tessalink"], "report", source, "-o", out, "--vars", variables,
               "--plain"]
    series = processes(bench.tools["turns"], {
        "tessalink, plain": command,
        "cp of the output": ["cp", out, bench.folder / "copy.out"]}, 1, 0)
    process_table(series, "cp of the output")
    bench.expect("peak memory", series["tessalink, plain"].peak / 1024, 16, " MiB")


def folder_file(bench, name, head, chunk, size):
    path = bench.folder / name
    with open(path, "wb") as file:
        file.write(head)
        while file.tell() < size:
            file.write(chunk)
    return path


@row
def memory(bench):
    """Saving and loading a table of a million variables; RTF text over 256 MiB."""
    if not bench.tools.has("product"):
        return
    entries = bench.size((100_000, 1_000_000), (10_000, 100_000))
    sizes = bench.size((64 << 20, 256 << 20), (4 << 20, 16 << 20))
    rows = []
    for size in sizes:
        rows += bandwidth_rows(bench, f"{size >> 20} MiB", size,
                               [bench.tools["product"], "rtf", size, 3])
    for count in entries:
        rows += bandwidth_rows(bench, f"{count:,} variables", None,
                               [bench.tools["product"], "archive", count, 3])
    table(("", "of", "ms", "GB/s", "share of memcpy"), sorted(rows, key=lambda cells: cells[0]))


def bandwidth_rows(bench, of, size, command):
    """What a product run moved, beside a memcpy of as many bytes in the same rounds."""
    if size is None:
        done = subprocess.run(list(map(str, command)), text=True, stdout=subprocess.PIPE)
        size = next(int(float(line.split()[1])) for line in done.stdout.splitlines()
                    if line.startswith("bytes"))
        of += f", {size / 1e6:.1f} MB"
    series = self_timed({"memcpy": [bench.tools["limits"], "memcpy", size, 3],
                         "product": command}, max(3, bench.rounds // 3))
    copied = series["memcpy"]["ns"]
    rows = [("memcpy", of, milliseconds(copied.time), f"{size / copied.time:.2f}", "1.00")]
    for key, one in series["product"].items():
        if key != "bytes":
            rows.append((key, of, milliseconds(one.time), f"{size / one.time:.3f}",
                         f"{copied.over(one):.3f}"))
    return rows


@row
def md5(bench):
    """MD5 of 300 MB and of short texts, by the product and by packaged libraries."""
    if not bench.tools.has("md5"):
        return
    rows = []
    for mode, size, bound in (("long", bench.size(300_000_000, 30_000_000), 1 / 0.93),
                              ("short", 8, 0.5), ("short", 55, 0.5)):
        command = [bench.tools["md5"], mode, size, max(11, bench.rounds)]
        series = self_timed({"md5": command}, 1)["md5"]
        if "openssl" not in series:
            print("no verdict without OpenSSL")
            return
        for name, one in series.items():
            rows.append((name, f"{size:,} bytes", f"{one.time:,.0f}", f"{size / one.time:.3f}",
                         f"{one.over(series['openssl']):.3f}"))
        bench.expect(f"time for {size:,} bytes against OpenSSL",
                     series["tessalink"].over(series["openssl"]), bound)
    print()
    table(("", "of", "ns", "GB/s", "x OpenSSL"), rows)


# A program that times the product and its peers itself: its arguments, in which FOLDER and ROUNDS are
# filled in, what the table calls it, and how much of a peer's time the product may take.
Timed = namedtuple("Timed", "program arguments of bounds")
FOLDER = object()
ROUNDS = object()

DRAWING = (
    Timed("drawing", ("metafile", ROUNDS), "metafile", {"libemf": 0.6, "bare records": 3}),
    Timed("drawing", ("svg", ROUNDS), "svg", {"cairo": 0.5}),
    Timed("drawing", ("hex", 50_000_000, ROUNDS), "hex", {"memcpy": 1.5}),
    Timed("drawing", ("hexfile", 50_000_000, FOLDER, ROUNDS), "hexfile", {"copy of the file": 1.3}),
)
CHARTS = (
    Timed("charts", ("emf", ROUNDS), "emf", {"libemf": 1, "gnuplot": 1 / 12}),
    Timed("charts", ("svg", ROUNDS), "svg", {"gnuplot": 1 / 4}),
    Timed("charts", ("rtf", ROUNDS), "rtf", {"snprintf": 1}),
    Timed("charts", ("linear", 3), "emf, a mark", {}),
)
FILE_AIMS = (("png", 0.5), ("pdf", 0.1))
IMAGES = tuple(Timed("qt_charts", (form, ROUNDS, FOLDER), form, {"qcustomplot": aim})
               for form, aim in FILE_AIMS)
PROFILE_IMAGES = tuple(Timed("qt_charts", ("profile-" + form, ROUNDS, FOLDER), form,
                             {"qcustomplot": aim}) for form, aim in FILE_AIMS)


def microseconds(nanoseconds):
    return f"{nanoseconds / 1e3:,.{1 if nanoseconds > 1e4 else 3}f}"


def timed(bench, lines, fewest_rounds, further=None):
    """Runs the lines whose program there is, checks their bounds, and gives the rows of the table;
    `further` gives the nanoseconds of contestants that are timed otherwise."""
    rows = []
    filled = {FOLDER: bench.folder, ROUNDS: max(fewest_rounds, bench.rounds)}
    for line in lines:
        if not bench.tools.has(line.program):
            continue
        words = [filled.get(word, word) for word in line.arguments]
        series = self_timed({"it": [bench.tools[line.program], *words]}, 1)["it"]
        # A line of the product alone names its sizes, of which the first is what others are told by.
        product = series.get("tessalink", next(iter(series.values())))
        for name, time in further(line).items() if further else ():
            series[name] = Series([time] * len(product.times))
        rows += [(name, line.of, microseconds(one.time), f"{product.over(one):.3f}")
                 for name, one in series.items()]
        for name, bound in line.bounds.items():
            if name in series:
                bench.expect(f"{line.of}: time against {name}", product.over(series[name]), bound)
    return rows


def timed_table(rows):
    print()
    table(("", "of", "us", "the product takes x of this"), rows)


@row
def drawing(bench):
    """480 marks with labels as metafile and SVG; the hexadecimal digits of a picture."""
    timed_table(timed(bench, DRAWING, 11))


@row
def charts(bench):
    """A bar graph of 480 marks with labels and a legend; RTF drawing objects; 100,000 marks."""
    def gnuplot(line):
        drawn = "gnuplot" in line.bounds and bench.tools.has("gnuplot")
        return {"gnuplot": gnuplot_time(bench, line.of)} if drawn else {}

    timed_table(timed(bench, CHARTS, 1, gnuplot))


@row
def images(bench):
    """The chart of 480 marks as PNG and PDF files, against a charting library of the toolkit."""
    timed_table(timed(bench, IMAGES, 9))


# Of what the row profiles draws: contestants by name, each with its few and many pictures and what
# runs it; and how much of a peer's time the product may take.
PROFILES = {
    "emf": ({"tessalink": (100, 2_100, "emf"), "libemf": (100, 2_100, "libemf"),
             "gnuplot": (5, 105, "emf size 1000,700 'Times New Roman,10'")},
            {"libemf": 1, "gnuplot": 1 / 12}),
    "svg": ({"tessalink": (100, 2_100, "svg"),
             "gnuplot": (5, 105, "svg size 1000,700 font 'Times New Roman,10'")},
            {"gnuplot": 1 / 4}),
    "pdf": ({"tessalink": (100, 2_100, "pdf")}, {}),
    "circumplex emf": ({"tessalink": (100, 2_100, "circle-emf")}, {}),
    "circumplex svg": ({"tessalink": (100, 2_100, "circle-svg")}, {}),
}
PROFILE_PROGRAMS = {"tessalink": "profiles", "libemf": "libemf_peer", "gnuplot": "gnuplot"}


def profile_times(bench, contestants):
    """Contestant -> Series of nanoseconds for a picture: in each round the slope between few and
    many, which run as whole processes, all in turns."""
    commands = {}
    for name, (few, many, what) in contestants.items():
        program = bench.tools[PROFILE_PROGRAMS[name]]
        for count in (few, many):
            words = ([gnuplot_profiles(bench, what, count)] if name == "gnuplot"
                     else [what, count])
            commands[name, count] = [program, *words]
    times = bench.processes(commands)
    return {name: Series([(long - short) / (many - few) for short, long in zip(
                times[name, few].times, times[name, many].times)])
            for name, (few, many, _) in contestants.items()}


def profile_growth(bench, mode, counts):
    """Whole processes that draw ever more profiles; gives the rows of the table. A buffer that grows
    by doubling may take twice the memory for each profile, by where the doubling happens to end."""
    series = bench.processes({count: [bench.tools["profiles"], mode, count]
                              for count in (1, *counts)}, max(3, bench.rounds // 3))
    each = {count: ((series[count].time - series[1].time) / count,
                    (series[count].peak - series[1].peak) / count) for count in counts}
    for what, index in (("time", 0), ("memory", 1)):
        for fewer, more in zip(counts, counts[1:]):
            bench.expect(f"{mode}: {what} of a profile among {more:,} against one among {fewer:,}",
                         each[more][index] / each[fewer][index], 2)
    return [(mode, f"{count:,}", milliseconds(series[count].time), f"{time / 1000:.2f}",
             f"{series[count].peak / 1024:,.1f}", f"{memory:.2f}")
            for count, (time, memory) in each.items()]


@row
def profiles(bench):
    """A profile graph of 60 scales and 8 profiles; 100,000 profiles; a circumplex graph."""
    if not bench.tools.has("profiles"):
        return
    subprocess.run([bench.tools["profiles"], "data", bench.folder], check=True)
    rows = []
    for form, (contestants, bounds) in PROFILES.items():
        series = profile_times(bench, {
            name: of for name, of in contestants.items()
            if bench.tools.has(PROFILE_PROGRAMS[name])})
        product = series["tessalink"]
        rows += [(name, form, f"{one.time / 1000:,.1f}", f"{product.over(one):.3f}")
                 for name, one in series.items()]
        for name, bound in bounds.items():
            if name in series:
                bench.expect(f"{form}: time against {name}", product.over(series[name]), bound)
    rows += timed(bench, PROFILE_IMAGES, 9)
    timed_table(rows)
    counts = bench.size((1_000, 10_000, 100_000), (1_000, 10_000))
    growth = [cells for mode in ("screen", "metafile") for cells in
              profile_growth(bench, mode, counts)]
    print()
    table(("", "profiles", "ms", "us a profile", "peak MiB", "KiB a profile"), growth)


@row
def commandline(bench):
    """The chart of 480 marks by the command line, start-up included."""
    if not bench.tools.has("tessalink"):
        return
    rows = []
    for form in TERMINALS:
        series = bench.processes(chart_commands(bench, form))
        product = series["tessalink"]
        rows += [(name, form, f"{one.wall / 1e6:,.2f}", f"{one.time / 1e6:,.2f}",
                  f"{product.over(one):.2f}") for name, one in series.items()]
        for name, one in series.items():
            if name != "tessalink":
                aim = 0.5 if (form, name) == ("pdf", "plplot_peer") else 1
                bench.expect(f"{form}: time against {name}", product.over(one), aim)
    print()
    table(("", "of", "ms", "CPU ms", "the product takes x of this"), rows)


@row
def scoring(bench):
    """Scores of 1,000,000 respondents by 50 items to a table of ten scales, whole process."""
    count = bench.size(1_000_000, 20_000)
    table_path = questionnaires.answers(bench.folder / "answers.csv", count)
    print(f"Table: {table_path.stat().st_size:,} bytes.")
    commands = {}
    if bench.tools.has("tessalink"):
        folder = questionnaires.fifty_items(bench.folder / "fifty")
        for jobs in (1, 2):
            commands[f"tessalink, jobs: {jobs}"] = questionnaires.batch(
                bench.tools, folder, table_path, bench.folder / "out", "--no-reports", "--jobs",
                jobs)
    programs = questionnaires.HERE / "programs"
    if bench.tools.has("Rscript"):
        for what in ("nothing", "read", "scores"):
            commands[f"fread, {what}"] = [bench.tools["Rscript"], programs / "fread_scores.R",
                                          what, table_path, bench.folder / "fread.csv"]
    if bench.tools.has("pandas"):
        commands["pandas"] = [bench.tools["pandas"], programs / "pandas_scores.py", table_path,
                              bench.folder / "pandas.csv"]
    series = bench.processes(commands, max(3, bench.rounds // 3))
    process_table(series, next(iter(series)))
    one, two = series.get("tessalink, jobs: 1"), series.get("tessalink, jobs: 2")
    if one and "fread, read" in series:
        read = series["fread, read"].time - series["fread, nothing"].time
        bench.expect("processor time against fread, which reads the table alone", one.time / read, 1)
        bench.expect("time that passes against the process that only reads, each as it comes",
                     two.wall / series["fread, read"].wall, 1)
    if one:
        bench.expect("two jobs: the share of one's time", two.wall / one.wall, 1 / 1.8)
        bench.expect("peak memory", one.peak / 1024, 64 + 16 * count / (1 << 20), " MiB")


@row
def reports(bench):
    """The full Big-Five report with all its graphs; one page with two graphs by peers."""
    counts = {"tessalink": bench.size((100, 1_100), (10, 40)),
              "docxtpl": bench.size((3, 33), (2, 6)), "rmarkdown": bench.size((1, 4), (1, 2))}
    programs = questionnaires.HERE / "programs"

    def command(name, count):
        if name == "tessalink":
            table_path = questionnaires.bigfive_answers(bench.folder / f"{count}.csv", count)
            return questionnaires.batch(bench.tools, questionnaires.BIGFIVE, table_path,
                                        bench.folder / "out", "--report", "full", "--jobs", 1)
        if name == "docxtpl":
            return [bench.tools["docxtpl"], programs / "docxtpl_report.py",
                    bench.folder / "template.docx", bench.folder, count]
        return [bench.tools["rmarkdown"], programs / "rmarkdown_report.R", bench.folder, count]

    each = {}
    for name, (few, many) in counts.items():
        if not bench.tools.has(name):
            continue
        series = bench.processes({count: command(name, count) for count in (few, many)},
                                 max(3, bench.rounds // 3))
        each[name] = (series[many].time - series[few].time) / (many - few)
    table(("", "CPU ms a report"), [(name, milliseconds(time)) for name, time in each.items()])
    if "tessalink" in each:
        bench.expect("a report", each["tessalink"] / 1e6, 3, " ms")
        if "docxtpl" in each:
            bench.expect("against one page by docxtpl with matplotlib",
                         each["tessalink"] / each["docxtpl"], 1 / 20)


@row
def onereport(bench):
    """One respondent, one short report, whole process, against an empty process."""
    if not bench.tools.has("tessalink"):
        return
    table_path = questionnaires.bigfive_answers(bench.folder / "one.csv", 1)
    out = bench.folder / "out"
    series = bench.processes({
        "empty process": [bench.tools["empty"]],
        "folder removed": questionnaires.fresh(out, bench.tools["empty"]),
        "and one report": questionnaires.batch(bench.tools, questionnaires.BIGFIVE, table_path,
                                               out, "--report", "short", "--jobs", 1)},
        bench.rounds * 10)
    process_table(series, "empty process")
    empty = series["empty process"].time
    own = series["and one report"].time - series["folder removed"].time + empty
    bench.expect("one report against an empty process", own / empty, 3)


@row
def deskstart(bench):
    """The desk from its start to its painted window, against an empty window of the toolkit."""
    if not bench.tools.has("desk", "empty_window"):
        return
    screen = ["-platform", "offscreen"]
    series = bench.processes({
        "empty window": [bench.tools["empty_window"], *screen],
        "desk": [bench.tools["desk"], "--first-window", *screen]}, bench.rounds * 5)
    process_table(series, "empty window")
    bench.expect("the desk against an empty window",
                 series["desk"].over(series["empty window"]), 3)


def run(names, tools, base, quick, rounds):
    """Runs the named rows, each in a folder of its own below `base` that is removed after it;
    gives whether every bound was kept."""
    kept = True
    for name in names:
        print(f"\n## {name}: {ROWS[name].__doc__.splitlines()[0]}\n", flush=True)
        folder = base / name
        folder.mkdir()
        bench = Bench(tools, folder, quick, rounds)
        try:
            ROWS[name](bench)
        except Failed as fault:
            print(f"**FAILED**: {fault}", flush=True)
            bench.reached.append(False)
        finally:
            shutil.rmtree(folder)
        kept = kept and all(bench.reached)
    return kept
