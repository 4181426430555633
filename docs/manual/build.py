#!/usr/bin/env python3
"""Makes the manual: one site of the Markdown pages and the class reference, with a menu and a search box.

usage: build.py FOLDER [--work FOLDER]

Needs doxygen and pandoc, and looks better with doxygen-awesome-css. pages.txt says which pages there are.
Pandoc reads the pages as other viewers of Markdown do; each becomes a page of Doxygen, section by section, so
that menu and search know its headings. Headers are handed to Doxygen as readers of a reference want them
(see `header`). The exit code is 1, with every fault told, when a public or protected name has no comment, a
page is not in pages.txt, or a link of the finished site leads nowhere.
"""
import argparse
import html
import pathlib
import posixpath
import re
import shutil
import subprocess
import sys
import xml.etree.ElementTree as ElementTree
from collections import defaultdict

HERE = pathlib.Path(__file__).resolve().parent
ROOT = HERE.parents[1]
THEME = pathlib.Path("/usr/share/doxygen-awesome-css")
STYLES = ("doxygen-awesome.css", "doxygen-awesome-sidebar-only.css")
START = "README.md"
WEB_FILES = (".png", ".svg", ".json", ".csv")  # what browsers show by themselves, as they are called


class Fault(Exception):
    pass


def run(arguments, **options):
    ran = subprocess.run(arguments, check=False, capture_output=True, **options)
    if ran.returncode != 0:
        raise Fault(f"{arguments[0]}: exit code {ran.returncode}\n{ran.stderr.decode('utf-8', 'replace')}")
    return ran.stdout.decode("utf-8")


# Pages


def read_parts():
    """[(title of a part, [page])]"""
    parts = []
    for line in (HERE / "pages.txt").read_text(encoding="utf-8").splitlines():
        if line.startswith("#") or not line.strip():
            continue
        if line.startswith(" "):
            parts[-1][1].append(line.strip())
        else:
            parts.append((line, []))
    return parts


def name_of(path):
    """The page's name in the site."""
    return "page_" + re.sub(r"\W", "_", path.removeprefix("docs/").removesuffix(".md")).lower()


def plain(fragment):
    """HTML as text for Doxygen, in which nothing is a command."""
    text = html.unescape(re.sub(r"<[^>]*>", "", fragment)).strip()
    return re.sub(r"([\\@<>&$#%\"*_`~])", r"\\\1", text).replace("\\*", "*").replace("\\_", "_").replace(
        "\\`", "`").replace("\\~", "~")


class Pages:
    """Turns Markdown pages into pages of Doxygen, and copies what they show or lead to."""

    HEADING = re.compile(r'<h([1-6]) id="([^"]*)">(.*?)</h\1>', re.DOTALL)
    LINK = re.compile(r'\b(href|src)="([^"]*)"')
    CODE = re.compile(r'<pre(?: class="[^"]*")?><code>')
    COMMANDS = {2: "section", 3: "subsection", 4: "subsubsection"}

    def __init__(self, stage, site):
        self.stage, self.site = stage, site
        self.parts = read_parts()
        self.known = {START, *(page for _, pages in self.parts for page in pages)}
        self.check_complete()

    def check_complete(self):
        there = {str(path.relative_to(ROOT)) for path in (ROOT / "docs").glob("**/*.md")}
        if missing := sorted(there - self.known):
            raise Fault(f"pages.txt lacks {', '.join(missing)}")

    def write(self):
        for number, (title, pages) in enumerate(self.parts, 1):
            lines = [f"\\page part_{number} {title}", ""] + [f"- \\subpage {name_of(page)}" for page in pages]
            self.write_dox(f"part_{number}", lines)
        for page in self.known - {START}:
            self.write_dox(name_of(page), self.lines_of(page, "\\page " + name_of(page) + " {}"))
        self.write_dox("start", self.lines_of(START, "\\mainpage {}") +
                       [f"\\subpage part_{number}" for number in range(1, len(self.parts) + 1)])

    def write_dox(self, name, lines):
        (self.stage / f"{name}.dox").write_text("/**\n" + "\n".join(lines) + "\n*/\n", encoding="utf-8")

    def lines_of(self, page, start):
        """The page for Doxygen: its headings as commands, what is between them as files of HTML."""
        text = run(["pandoc", "--from", "gfm+gfm_auto_identifiers-autolink_bare_uris", "--to", "html5",
                    "--no-highlight", "--wrap=preserve", str(ROOT / page)])
        text = self.LINK.sub(lambda found: self.link(page, found), text)
        text = self.CODE.sub('<pre class="fragment"><code>', text.replace("<table>", '<table class="markdownTable">'))
        lines, end = [], 0
        for number, heading in enumerate(self.HEADING.finditer(text)):
            lines += self.piece(page, number, text[end:heading.start()])
            end = heading.end()
            level, anchor, title = int(heading[1]), heading[2], plain(heading[3])
            if level == 1:
                lines.append(start.format(title))
            else:
                lines.append(f"\\{self.COMMANDS[level]} {name_of(page)}_{anchor} {title}")
        return lines + self.piece(page, "end", text[end:])

    def piece(self, page, number, text):
        if not text.strip():
            return []
        name = f"{name_of(page)}_{number}.html"
        (self.stage / name).write_text(text, encoding="utf-8")
        return [f"\\htmlinclude[block] {name}", ""]

    def link(self, page, found):
        kind, target = found[1], html.unescape(found[2])
        if re.match(r"[a-z]+:", target):
            return found[0]
        name, _, anchor = target.partition("#")
        file = posixpath.normpath(posixpath.join(posixpath.dirname(page), name)) if name else page
        if file + "/README.md" in self.known:
            file += "/README.md"
        if file in self.known:
            place = "index.html" if file == START else name_of(file) + ".html"
            return f'{kind}="{place}{"#" + name_of(file) + "_" + anchor if anchor else ""}"'
        return f'{kind}="{html.escape(self.copy(file))}"'

    def copy(self, file):
        """Where a file, or the list of a folder's files, stands in the site."""
        source = ROOT / file
        if source.is_dir():
            target = self.site / "files" / file / "index.html"
            target.parent.mkdir(parents=True, exist_ok=True)
            files = sorted(path for path in source.iterdir() if path.is_file())
            links = "".join(f'<li><a href="{pathlib.Path(self.copy(str(path.relative_to(ROOT)))).name}">{path.name}'
                            "</a></li>\n" for path in files)
            target.write_text(f'<!DOCTYPE html><meta charset="utf-8"><title>{file}</title><h1>{file}</h1>\n'
                              f"<ul>\n{links}</ul>\n", encoding="utf-8")
        else:
            name = file if file.endswith(WEB_FILES) else file + ".txt"
            target = self.site / "files" / name
            target.parent.mkdir(parents=True, exist_ok=True)
            shutil.copyfile(source, target)
        return str(target.relative_to(self.site))


# Headers


def read_libraries():
    """{library: [folder]} as CMakeLists.txt declares them."""
    text = (ROOT / "CMakeLists.txt").read_text(encoding="utf-8")
    found = re.findall(r"tessalink_library\((\w+)\s+FOLDERS\s+((?:[a-z][\w/]*\s+)+)", text)
    return {name: folders.split() for name, folders in found}


def summaries():
    """{folder: what it is for} from docs/architecture.md."""
    text = (ROOT / "docs/architecture.md").read_text(encoding="utf-8")
    found = re.findall(r"^    (\S+)(?:\n {8,}|  +)(\S.*(?:\n {8,}\S.*)*)", text, re.MULTILINE)
    return {folder: " ".join(words.split()) for folder, words in found}


class Headers:
    """Hands public headers to Doxygen."""

    COMMENT = re.compile(r"///.*$")
    # What says nothing to a reader of the reference: destructors, friends, copying.
    SILENT = re.compile(r"(?:virtual )?~\w+\(\).*[;}]$|friend (?:class|struct) |extern template "
                        r"|(?:explicit )?(\w+)\(const \1& \w+\);$|(\w+)& operator=\(const \2& \w+\);$"
                        r"|.*= (?:default|delete);$")
    CONSTANT = re.compile(r"(?:inline constexpr|static constexpr|using) ")

    def __init__(self, stage):
        self.stage = stage
        self.libraries = read_libraries()
        self.remarks = {}  # (header, line) -> what stands there for a comment

    def files(self):
        for library, folders in self.libraries.items():
            for folder in folders:
                for path in sorted((ROOT / folder).glob("*.h")):
                    yield library, str(path.relative_to(ROOT))

    def write(self):
        about = []
        for library, header in self.files():
            lines = (ROOT / header).read_text(encoding="utf-8").split("\n")
            shown = [self.shown(header, number, line) for number, line in enumerate(lines, 1)]
            for first, end in self.file_comments(lines):
                words = [line.removeprefix("///") for line in shown[first:end]]
                about += [f"/** \\file {header}", *words, "*/"]
                shown[first:end] = [""] * (end - first)
            shown[0] = f"/** \\file */ /** \\addtogroup {library} */ /** \\{{ */"
            target = self.stage / header
            target.parent.mkdir(parents=True, exist_ok=True)
            target.write_text("\n".join(shown) + "/** \\} */\n", encoding="utf-8")
        words = summaries()
        groups = []
        for library, folders in self.libraries.items():
            groups.append(f"/** \\defgroup {library} tessalink::{library}\n")
            groups += [f"- `{folder}`: {plain(words[folder])}\n" if folder in words else f"- `{folder}`\n"
                       for folder in folders]
            groups.append("*/\n")
        (self.stage / "libraries.dox").write_text("".join(groups) + "\n".join(about), encoding="utf-8")

    @staticmethod
    def escaped(comment):
        """A comment in which nothing is a command: Doxygen looks for none in quotes and code."""
        parts = re.split(r'("[^"]*"|`[^`]*`)', comment)
        return "".join(part if index % 2 else part.replace("\\", "\\\\").replace("@", "\\@")
                       for index, part in enumerate(parts))

    @staticmethod
    def file_comments(lines):
        """(first index, end) of comments that are about the header, not about a name in it."""
        first = None
        for index, line in enumerate(lines):
            if line.startswith("///"):
                first = index if first is None else first
            elif first is not None:
                if not line or line.startswith(("namespace ", "#if")):
                    yield first, index
                first = None

    def shown(self, header, number, line):
        """A line of a header; lines keep their numbers. In comments "@" and "\\" stand for themselves."""
        if self.SILENT.match(line.strip()):
            return ""
        remark = self.remarks.get((header, number))
        if line.lstrip().startswith("friend "):
            line = line.replace("friend ", "", 1)  # Doxygen loses the place of operators that are friends
        line = self.COMMENT.sub(lambda found: self.escaped(found[0]), line)
        return f"/** {remark} */ {line}" if remark else line

    def find_remarks(self, xml):
        """What the comment of a neighbor covers: further forms of a function, members that override, and
        constants that follow one another without a blank line."""
        names, bare = {}, []
        for file in xml.glob("*.xml"):
            for compound in ElementTree.parse(file).getroot().iter("compounddef"):
                forms = defaultdict(list)
                for member in compound.iter("memberdef"):
                    forms[member.findtext("name")].append(member)
                for name, same in forms.items():
                    names.update({place_of(member): name for member in same if has_comment(member)})
                    is_covered = any(map(has_comment, same))
                    bare += [(place_of(member), name, is_covered) for member in same if not has_comment(member)]
                if compound.find("templateparamlist") is not None:
                    # Doxygen hands comments of a base class to the template, not to what is made of it.
                    bare += [(place_of(member), name, False) for name, same in forms.items() for member in same]
        for place, name, is_covered in sorted(bare):
            if remark := self.remark(place, names, is_covered):
                self.remarks[place] = remark
                names[place] = names.get((place[0], place[1] - 1), name)

    def remark(self, place, names, is_covered):
        header, number = place
        if not (ROOT / header).is_file():
            return None
        lines = (ROOT / header).read_text(encoding="utf-8").split("\n")
        line = lines[number - 1]
        if "///" in line or lines[number - 2].strip().startswith("///"):
            return None
        if is_covered:
            return "The same with other arguments."
        if re.search(r"\b(override|final)\b", line):
            return "As in the base class."
        if self.CONSTANT.match(line.strip()) and (header, number - 1) in names:
            return f"See {names[header, number - 1]}."
        return None


def has_comment(member):
    return any("".join(part.itertext()).strip() for tag in ("briefdescription", "detaileddescription")
               if (part := member.find(tag)) is not None)


def place_of(member):
    location = member.find("location")
    return location.get("file"), int(location.get("line"))


# The site


def doxygen(stage, work, settings):
    """Runs Doxygen; gives what it warns of, with the places of the tree."""
    log = work / "warnings"
    settings = {"OUTPUT_DIRECTORY": work, "INPUT": stage, "RECURSIVE": "YES", "STRIP_FROM_PATH": stage, "STRIP_FROM_INC_PATH": stage,
                "EXAMPLE_PATH": stage, "WARN_LOGFILE": log, **settings}
    text = (HERE / "Doxyfile").read_text(encoding="utf-8")
    text += "".join(f'{key} = {value}\n' for key, value in settings.items())
    run(["doxygen", "-"], input=text.encode(), cwd=HERE)
    return [line.replace(f"{stage}/", "") for line in sorted(set(log.read_text(encoding="utf-8").splitlines()))]


def make(site, work):
    stage = work / "stage"
    for folder in (site, stage):
        shutil.rmtree(folder, ignore_errors=True)
        folder.mkdir(parents=True)
    headers = Headers(stage)
    headers.write()
    doxygen(stage, work, {"GENERATE_HTML": "NO", "GENERATE_XML": "YES", "XML_PROGRAMLISTING": "NO",
                          "WARN_IF_UNDOCUMENTED": "NO"})
    headers.find_remarks(work / "xml")
    headers.write()
    Pages(stage, site).write()
    styles = [THEME / name for name in STYLES if (THEME / name).is_file()]
    return doxygen(stage, work, {
        "OUTPUT_DIRECTORY": site.parent, "HTML_OUTPUT": site.name,
        "HTML_EXTRA_STYLESHEET": " ".join(map(str, [*styles, HERE / "manual.css"]))})


class Site:
    """Looks whether every link of the finished site leads somewhere."""

    LINK = re.compile(r'<(?:a|img|object|link|script)\b[^>]*?\b(?:href|src|data)="([^"]*)"')
    ANCHOR = re.compile(r'\b(?:id|name)="([^"]*)"')
    # Doxygen's own list of a page's sections also names those that have nothing to show.
    SUMMARY = re.compile(r'<div class="summary">.*?</div>', re.DOTALL)

    def __init__(self, site):
        self.site = site
        self.texts = {path.relative_to(site).as_posix(): path.read_text(encoding="utf-8", errors="replace")
                      for path in site.glob("**/*.html")}
        self.anchors = {name: set(self.ANCHOR.findall(text)) for name, text in self.texts.items()}

    def faults(self):
        for name, text in sorted(self.texts.items()):
            for target in sorted(set(self.LINK.findall(self.SUMMARY.sub("", text)))):
                if fault := self.fault(name, html.unescape(target)):
                    yield f"{name}: {fault}"

    def fault(self, name, target):
        if re.match(r"[a-z]+:", target):
            return None
        path, _, anchor = target.partition("#")
        file = posixpath.normpath(posixpath.join(posixpath.dirname(name), path)) if path else name
        if not (self.site / file).is_file():
            return f"there is no {file}"
        if anchor and file in self.anchors and anchor not in self.anchors[file]:
            return f"{file} has no place {anchor}"
        return None


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("folder", type=pathlib.Path)
    parser.add_argument("--work", type=pathlib.Path)
    options = parser.parse_args()
    site = options.folder.resolve()
    work = (options.work or site.with_name(site.name + "-work")).resolve()
    try:
        faults = make(site, work) or list(Site(site).faults())
    except Fault as fault:
        faults = [str(fault)]
    for fault in faults:
        print(fault, file=sys.stderr)
    print(f"manual: {len(faults)} faults" if faults else f"{site}/index.html")
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main())
