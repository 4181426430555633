#!/usr/bin/env python3
"""Makes the examples of docs/template-guide.md as an author makes them, and checks or writes the guide.

Each NAME.html is what an author has typed. LibreOffice saves it as RTF, `tessalink tidy` puts its commands
together, and `tessalink report` runs it with variables.tsv, graphs.json and the parts (*.rtf) beside it.
In the guide a fenced block after `<!-- template of NAME -->` is the text of the document as typed, one
after `<!-- report of NAME -->` that of its report, one after `<!-- text of FILE -->` a file beside them.

usage: make.py check [--tessalink PROGRAM]   fails when a block is not what it says, or an example is missing
       make.py write [--tessalink PROGRAM]   writes the blocks, and the pictures NAME-template.png and
                                             NAME-report.png; needs pdftoppm
Without LibreOffice the exit code is 77.
"""
import argparse
import pathlib
import re
import shutil
import subprocess
import sys
import tempfile

HERE = pathlib.Path(__file__).resolve().parent
sys.path.append(str(HERE.parent / "images"))
from pages import WHITE, page, png  # pylint: disable=wrong-import-position

GUIDE = HERE.parent / "template-guide.md"
BLOCK = re.compile(r"(<!-- (template|report|text) of (\S+) -->\n```\w+\n)(.*?)(^```$)", re.MULTILINE | re.DOTALL)
FILES = (".rtf", ".tsv", ".json")
NOT_THERE = 77
TIME_LIMIT = 300
MARGIN = 6  # pixels that are kept below the last ink
FRAME = 2  # pixels that a page's frame takes on both sides

# Paper of half a page's width, so that template and report fit side by side.
DOCUMENT = """<html><head><meta charset="utf-8"><style>
@page {{ size: 9.6cm 28cm; margin: 0.35cm }}
body, p, li, td {{ font-family: "Liberation Sans"; font-size: 9pt }}
h3 {{ font-family: "Liberation Sans"; font-size: 11pt; margin-left: 0; margin-top: 0.1cm; margin-bottom: 0.1cm }}
p, li {{ margin: 0 0 0.15cm 0; line-height: 110% }}
td p {{ margin: 0 }}
table {{ border-collapse: collapse; margin-bottom: 0.2cm }}
td {{ border: 0.5pt solid #808080; padding: 0.04cm 0.1cm }}
</style></head><body>
{}
</body></html>
"""


class Fault(Exception):
    pass


class Maker:
    def __init__(self, program, work):
        self.program = program
        self.work = work
        self.names = sorted(path.stem for path in HERE.glob("*.html"))

    def folder(self, name):
        folder = self.work / name
        folder.mkdir(exist_ok=True)
        return folder

    def convert(self, kind, source, suffix, target):
        """All documents of a folder into another one, by one start of LibreOffice."""
        files = [str(self.work / source / (name + suffix)) for name in self.names]
        run(["soffice", f"-env:UserInstallation=file://{self.work}/profile", "--headless",
             "--convert-to", kind, "--outdir", str(self.folder(target)), *files])

    def make(self):
        """Folders typed and reports, with RTF."""
        for name in self.names:
            body = (HERE / (name + ".html")).read_text(encoding="utf-8")
            (self.folder("html") / (name + ".html")).write_text(DOCUMENT.format(body), encoding="utf-8")
        self.convert("rtf:Rich Text Format", "html", ".html", "typed")
        for name in self.names:
            tidied = str(self.folder("tidied") / (name + ".rtf"))
            variables = ["--vars", str(HERE / "variables.tsv")]
            run([self.program, "tidy", str(self.work / "typed" / (name + ".rtf")), "-o", tidied, *variables])
            run([self.program, "report", tidied, *variables, "--graphs", str(HERE / "graphs.json"),
                 "--include-dir", str(HERE), "-o", str(self.folder("reports") / (name + ".rtf"))])

    def texts(self):
        """(kind, name) -> text of the template as typed, and of the report."""
        texts = {}
        for kind, folder in (("template", "typed"), ("report", "reports")):
            self.convert("txt:Text (encoded):UTF8", folder, ".rtf", kind + "-texts")
            for name in self.names:
                text = (self.work / (kind + "-texts") / (name + ".txt")).read_text(encoding="utf-8-sig")
                texts[kind, name] = "\n".join(line.rstrip() for line in text.strip().splitlines()) + "\n"
        return texts

    @staticmethod
    def files():
        """What stands beside the documents, with blanks for tabs."""
        return {("text", path.name): path.read_text(encoding="utf-8").expandtabs(12)
                for path in HERE.iterdir() if path.suffix in FILES}

    def write_pictures(self):
        for kind, folder in (("template", "typed"), ("report", "reports")):
            self.convert("pdf", folder, ".rtf", kind + "-pages")
            for name in self.names:
                rows = cropped(page(str(self.work / (kind + "-pages") / (name + ".pdf")), "1"))
                (HERE / f"{name}-{kind}.png").write_bytes(png(rows))


def cropped(rows):
    """A page up to its last line with ink, its frame around it."""
    edge, *inner, _ = rows
    blank = WHITE * (len(edge) // 3 - FRAME)
    last = max(y for y, row in enumerate(inner) if row[3:-3] != blank)
    return [edge, *inner[:last + MARGIN], edge]


def run(arguments):
    ran = subprocess.run(arguments, timeout=TIME_LIMIT, check=False, stdin=subprocess.DEVNULL,
                         capture_output=True)
    if ran.returncode != 0:
        raise Fault(f"{' '.join(arguments)}: exit code {ran.returncode}\n{ran.stderr.decode('latin-1')}")


def check(guide, texts):
    shown = {(kind, name): text for _, kind, name, text, _ in BLOCK.findall(guide)}
    for key in sorted(texts.keys() | shown.keys()):
        if texts.get(key) != shown.get(key):
            raise Fault(f"{' of '.join(key)}\nmade:\n{texts.get(key)}\nin the guide:\n{shown.get(key)}")


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("action", choices=["check", "write"])
    parser.add_argument("--tessalink", default="tessalink")
    options = parser.parse_args()
    if not shutil.which("soffice"):
        print("LibreOffice is not installed: the examples of the template guide are not tried")
        return NOT_THERE
    try:
        with tempfile.TemporaryDirectory() as work:
            maker = Maker(options.tessalink, pathlib.Path(work))
            maker.make()
            texts = maker.texts() | maker.files()
            guide = GUIDE.read_text(encoding="utf-8")
            if options.action == "check":
                check(guide, texts)
                print(f"{len(maker.names)} examples are as the guide shows them")
            else:
                GUIDE.write_text(BLOCK.sub(lambda found: found[1] + texts[found[2], found[3]] + found[5], guide),
                                 encoding="utf-8")
                maker.write_pictures()
    except Fault as fault:
        print(f"{GUIDE}: {fault}", file=sys.stderr)
        return 1
    return 0


if __name__ == "__main__":
    sys.exit(main())
