#!/usr/bin/env python3
"""The checks of the tree find the faults that they are there for."""
import contextlib
import os
import tempfile
import unittest

import check_includes
import check_links
import check_symbols
import check_targets
import check_text
import check_versions
import readme_examples

LIBRARIES = {  # what CMake writes, in small
    name: {"folders": folders, "depends": depends, "headers": headers, "package": package}
    for name, folders, depends, headers, package in [
        ("base", ["platform/base", "platform/files"], [], "", ""),
        ("scores", ["scores"], ["base"], "", ""),
        ("graphs", ["platform/graphics", "graphs/bar"], ["base"], "", ""),
        ("file", ["graphs/file"], ["graphs", "scores"], "rapidjson/.*", ""),
        ("forms", ["graphs/bar/windows"], ["graphs"], "", ""),
        ("qt", ["platform/qt"], ["forms"], "Q.*", "Qt6"),
    ]}
CALM = [  # file, include that is allowed
    ("platform/files/A.cpp", '"platform/base/X.h"'),
    ("platform/files/A.cpp", '"platform/base/detail/X.h"'),
    ("platform/files/posix/A.cpp", "<sys/stat.h>"),
    ("platform/files/windows/A.cpp", "<sddl.h>"),
    ("scores/A.h", '"scores/X.h"'),
    ("scores/A.h", "<string_view>"),
    ("scores/A.cpp", '"scores/detail/X.h"'),
    ("scores/detail/B.h", '"scores/detail/X.h"'),
    ("graphs/bar/A.h", '"platform/graphics/X.h"'),
    ("graphs/file/A.cpp", '"platform/base/X.h"'),
    ("graphs/file/detail/A.cpp", "<rapidjson/reader.h>"),
    ("graphs/bar/windows/A.h", '"graphs/bar/X.h"'),
    ("platform/qt/A.h", "<QPainter>"),
    ("platform/qt/module/A.cpp", '"platform/base/X.h"'),
    ("tests/platform/qt/A_test.cpp", "<QPainter>"),
    ("apps/desk/A.cpp", "<zlib.h>"),
    ("apps/desk/A.cpp", '"platform/qt/X.h"'),
    ("tests/scores/A_test.cpp", '"scores/detail/X.h"'),
    ("fuzz/a_fuzz.cpp", '"tests/support/X.h"'),
    ("examples/firsthour/A.h", '"A.h"'),
]
FAULTY = [  # file, include that is not
    ("platform/base/A.h", '"platform/files/X.h"'),
    ("platform/base/A.cpp", "<unistd.h>"),
    ("platform/files/A.h", "<unistd.h>"),
    ("scores/A.h", '"graphs/file/X.h"'),
    ("scores/A.cpp", '"platform/graphics/X.h"'),
    ("scores/A.h", '"scores/detail/X.h"'),
    ("scores/A.h", '"X.h"'),
    ("scores/A.h", '"scores/Missing.h"'),
    ("scores/A.cpp", "<zlib.h>"),
    ("graphs/file/A.cpp", '"scores/detail/X.h"'),
    ("graphs/file/A.h", "<rapidjson/reader.h>"),
    ("graphs/bar/A.cpp", '"graphs/bar/windows/X.h"'),
    ("graphs/bar/windows/A.cpp", '"graphs/bar/detail/X.h"'),
    ("graphs/bar/windows/A.cpp", '"scores/X.h"'),
    ("graphs/bar/A.cpp", "<QtWidgets/QWidget>"),
    ("apps/desk/A.cpp", "<QWidget>"),
    ("tests/platform/graphics/A_test.cpp", "<QImage>"),
    ("apps/desk/A.cpp", '"tests/support/X.h"'),
    ("tests/graphs/A_test.cpp", '"scores/detail/X.h"'),
    ("examples/firsthour/A.h", '"B.h"'),
    ("examples/forms/A.h", '"A.h"'),
]


def write(root, path, text):
    full = os.path.join(root, path)
    os.makedirs(os.path.dirname(full), exist_ok=True)
    with open(full, "w", encoding="utf-8", newline="") as file:
        file.write(text)


class Includes(unittest.TestCase):
    def faults(self, path, include):
        with tempfile.TemporaryDirectory() as root:
            target = include.strip('"')
            if include[0] == '"' and "/" in target and "Missing" not in target:
                write(root, target, "#pragma once\n")
            write(root, path, f"#pragma once\n#include {include}\n")
            return check_includes.faults_of_tree(root, LIBRARIES)

    def test_allowed(self):
        for path, include in CALM:
            with self.subTest(path=path, include=include):
                self.assertEqual(self.faults(path, include), [])

    def test_forbidden(self):
        for path, include in FAULTY:
            with self.subTest(path=path, include=include):
                faults = self.faults(path, include)
                self.assertEqual(len(faults), 1)
                self.assertTrue(faults[0].startswith(f"{path}:2: "))

    def test_file_of_no_library(self):
        with tempfile.TemporaryDirectory() as root:
            write(root, "graphs/new/A.cpp", "int a;\n")
            self.assertEqual(len(check_includes.faults_of_tree(root, LIBRARIES)), 1)


class Targets(unittest.TestCase):
    ROWS = "| `tessalink::base` | `platform/base` | POSIX |\n| `tessalink::core` | `core` | `base` |\n"
    FOLDERS = "    platform/base  strings\n    core\n                   readers\n"

    def faults(self, text):
        libraries = {"base": {"folders": ["platform/base"], "depends": []},
                     "core": {"folders": ["core"], "depends": ["base"]}}
        with tempfile.TemporaryDirectory() as root:
            write(root, "docs/host-programs.md", self.ROWS)
            write(root, "docs/architecture.md", text)
            return check_targets.faults_of_tree(root, libraries)

    def test_true(self):
        self.assertEqual(self.faults(self.FOLDERS + self.ROWS), [])

    def test_stale(self):
        for old, new in [("    core", "    cores"), ("`base` |", "`report` |"), ("| `core`", "| `cores`"),
                         ("::core", "::cores")]:
            with self.subTest(new=new):
                self.assertNotEqual(self.faults((self.FOLDERS + self.ROWS).replace(old, new)), [])


class Text(unittest.TestCase):
    def test_lines(self):
        home = "/ho" "me/"
        for text, faults in [("a\nb\n", []), ("", []), ("a \n", [1]), ("a\r\n", [1]), ("\tb\n", [1]),
                             ("a\nb", [2]), (f"x {home}me\n", [1]), ("a/home/b\n", [])]:
            with self.subTest(text=text):
                self.assertEqual([n for n, _ in check_text.faults_of_text(text)], faults)


class Links(unittest.TestCase):
    PAGE = "# A page\n\n## Two `words`, or @\n\n## Twice\n\n## Twice\n"

    def faults(self, text):
        with tempfile.TemporaryDirectory() as root:
            write(root, "docs/page.md", self.PAGE)
            write(root, "docs/images/a.png", "")
            write(root, "README.md", text)
            return check_links.faults_of_tree(root)

    def test_good(self):
        for link in ["docs/page.md", "docs", "docs/page.md#two-words-or-", "docs/page.md#twice-1", "#mine",
                     "docs/images/a.png", "https://example.org/x.md"]:
            with self.subTest(link=link):
                self.assertEqual(self.faults(f"# Mine\n\nSee [this\nthing]({link}) and `[x](y)`.\n"), [])
        self.assertEqual(self.faults("```\n[x](missing.md)\n```\n"), [])

    def test_broken(self):
        for link in ["docs/pages.md", "page.md", "docs/page.md#three", "docs/page.md#twice-2", "#yours",
                     "docs/images/b.png"]:
            with self.subTest(link=link):
                faults = self.faults(f"# Mine\n\nSee `a` ![this\nthing]({link}).\n")
                self.assertEqual(len(faults), 1)
                self.assertTrue(faults[0].startswith("README.md:3: "))


class Symbols(unittest.TestCase):
    NAMES = """\
0000000000099490 T GetModuleDir()
00000000000887a0 T CFile::CFile(int)
00000000000887a0 T CFile::CFile(int)
00000000000f39a0 D CFile::classCFile
0000000000099494 W std::vector<int, std::allocator<int> >::~vector()
00000000000f39b0 V vtable for CFile
00000000000f39c0 D vtable for CMemFile
000000000033dc90 D __start___llvm_prf_cnts
"""

    def faults(self, known):
        with tempfile.TemporaryDirectory() as root:
            check_symbols.write_list(root, "base", known)
            return check_symbols.faults_of_list(root, "base", check_symbols.strong_symbols(self.NAMES.splitlines()))

    def test_same(self):
        self.assertEqual(self.faults(["CFile::CFile(int)", "CFile::classCFile", "GetModuleDir()"]), [])

    def test_changed(self):
        self.assertEqual(self.faults(["CFile::CFile(long)", "CFile::classCFile", "GetModuleDir()"]),
                         ["cmake/symbols/base.txt: gone: CFile::CFile(long)",
                          "cmake/symbols/base.txt: new: CFile::CFile(int)"])

    def test_no_list(self):
        with tempfile.TemporaryDirectory() as root:
            self.assertEqual(len(check_symbols.faults_of_list(root, "base", ["a", "b"])), 2)


class Versions(unittest.TestCase):
    FILES = {
        "CMakeLists.txt": "project(tessalink VERSION 1.2.3 LANGUAGES CXX\n",
        "CHANGELOG.md": "# Changelog\n\n## [1.2.3] - unreleased\n\n## [1.2.2]\n",
        "debian/changelog": "tessalink (1.2.3) unstable; urgency=medium\n",
        "debian/control": "Package: libtessalink1.2\n\nPackage: libtessalink-qt1.2\n\nPackage: libtessalink-dev\n",
        "README.md": "find_package(tessalink 1.2 REQUIRED)\n",
        "docs/host-programs.md": "find_package(tessalink 1.2)\n",
        "examples/outside/CMakeLists.txt": "find_package(tessalink 1.2)\n",
    }

    def faults(self, changed=None):
        with tempfile.TemporaryDirectory() as root:
            for name, text in self.FILES.items():
                write(root, name, text.replace("1.2", "1.3", 1) if name == changed else text)
            return list(check_versions.faults_of_tree(root))

    def test_same(self):
        self.assertEqual(self.faults(), [])

    def test_other(self):
        for name in self.FILES:
            with self.subTest(name=name):
                faults = self.faults(name)
                self.assertEqual(len(faults), 6 if name == "CMakeLists.txt" else 1)


README = """# R
<!-- check: template t.txt -->
```
Grüße
```
<!-- check: program hello -->
```cpp
int main() {}
```
<!-- check: command copy -->
```sh
cat t.txt; cp t.txt u.txt
```
<!-- check: output of copy -->
```
Grüße
```
<!-- check: output of u.txt -->
```text
Grüße
```
<!-- check: part of parts/a.h -->
```cpp
int a;
int b;
```
<!-- check: output of a.h -->
```cpp
int a;
int b;
int c;
```
"""


class Readme(unittest.TestCase):
    def run_readme(self, text):
        with tempfile.TemporaryDirectory() as root, contextlib.redirect_stdout(None):
            readme = os.path.join(root, "README.md")
            write(root, "README.md", text)
            readme_examples.extract(readme, root)
            write(root, "bin/hello", "#!/bin/sh\necho hello\n")
            os.chmod(os.path.join(root, "bin/hello"), 0o755)
            write(root, "parts/a.h", "int a;\nint b;\nint c;\n")
            readme_examples.run(readme, root, [])

    def test_good(self):
        self.run_readme(README)

    def test_faults(self):
        for old, new in [("<!-- check: program hello -->", ""), ("cp t.txt u.txt", "false"),
                         ("<!-- check: output of copy -->", "<!-- check: output of hello -->"),
                         ("<!-- check: command copy -->", "<!-- check: comand copy -->"),
                         ("cat t.txt;", "echo Hello;"), ("a;\nint b;\n```", "a;\nint c;\n```"),
                         ("int a;\nint b;\n```", "a;\nint b;\n```")]:
            with self.subTest(new=new):
                self.assertIn(old, README)
                with self.assertRaises(readme_examples.Fault):
                    self.run_readme(README.replace(old, new))


if __name__ == "__main__":
    unittest.main(verbosity=0)
