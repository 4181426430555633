"""What a row works with: the programs, its folder, the command lines of the contestants, tables."""

import subprocess

import workloads
from languages import M4, ClearSilver, CTemplate, Product
from measure import Failed, processes, same_bytes, table, verdict


class Bench:
    """What a row works with: the programs, its folder, the sizes, and how many rounds to run."""

    def __init__(self, tools, folder, quick, rounds):
        self.tools = tools
        self.folder = folder
        self.quick = quick
        self.rounds = rounds
        self.reached = []

    def size(self, full, quick):
        return quick if self.quick else full

    def file(self, name, data):
        path = self.folder / name
        path.write_bytes(data if isinstance(data, bytes) else data.encode("latin-1"))
        return path

    def expect(self, what, value, bound, unit="x"):
        self.reached.append(verdict(what, value, bound, unit))

    def processes(self, commands, rounds=None):
        return processes(self.tools["turns"], commands, rounds or self.rounds)

    def products(self, template, values, scrambled=True):
        """The product's command lines over one template; gives contestant -> (command, output)."""
        if not self.tools.has("tessalink"):
            return {}
        variables = self.file("product.tsv", values.tsv())
        kinds = {"tessalink, plain": ("--plain", template)}
        if scrambled:
            kinds["tessalink, scrambled"] = ("--scrambled", workloads.scramble(template))
        commands = {}
        for name, (option, data) in kinds.items():
            out = self.folder / f"product{option}.out"
            source = self.file(f"product{option}.tpl", data)
            commands[name] = ([self.tools["tessalink"], "report", source, "-o", out, "--vars",
                               variables, option], out)
        return commands

    def peers(self, texts, languages):
        """The peers' command lines; `texts` maps a language to the template written in it."""
        commands = {}
        programs = {"ctemplate": "ctemplate_peer", "clearsilver": "clearsilver_peer", "m4": "m4"}
        for name, text in texts.items():
            if not self.tools.has(programs[name]):
                continue
            variables = self.file(f"{name}.tsv", languages[name].variables_file())
            source = self.file(f"{name}.tpl", text)
            out = self.folder / f"{name}.out"
            if name == "m4":
                script = 'exec "$0" "$1" "$2" > "$3"'
                words = ["sh", "-c", script, self.tools["m4"], variables, source, out]
            else:
                words = [self.tools[programs[name]], "render", source, out, variables]
            commands[name] = (words, out)
        return commands


def languages(values):
    return {"product": Product(values), "ctemplate": CTemplate(values),
            "clearsilver": ClearSilver(values), "m4": M4(values)}


def milliseconds(nanoseconds):
    return f"{nanoseconds / 1e6:.2f}"


def process_table(series, limit):
    rows = [(name, milliseconds(one.wall), milliseconds(one.time),
             f"{one.over(series[limit]):.2f}", one.peak) for name, one in series.items()]
    table(("", "ms", "CPU ms", "x limit", "peak KiB"), rows)


def fastest(series, names):
    return min((name for name in names if name in series), key=lambda name: series[name].time,
               default=None)


def fresh_outputs(contestants):
    """Runs every contestant once and checks that the outputs agree; gives one of the outputs."""
    for name, (words, _) in contestants.items():
        if subprocess.run(list(map(str, words))).returncode != 0:
            raise Failed(f"{name} failed: {words}")
    size = same_bytes({name: out for name, (_, out) in contestants.items()})
    print(f"Output: {size:,} bytes, the same from all.\n")
    return next(iter(contestants.values()))[1]
