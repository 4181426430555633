#!/usr/bin/env python3
"""The checks of the tree find the faults that they are there for."""
import contextlib
import os
import tempfile
import unittest

import check_includes
import check_text
import readme_examples

CALM = [  # file, include that is allowed
    ("platform/files/A.cpp", '"platform/base/X.h"'),
    ("platform/files/A.cpp", '"platform/base/detail/X.h"'),
    ("platform/files/A.cpp", "<sys/stat.h>"),
    ("core/A.h", '"core/X.h"'),
    ("core/A.h", "<string_view>"),
    ("core/A.cpp", '"core/detail/X.h"'),
    ("core/detail/B.h", '"core/detail/X.h"'),
    ("report/A.h", '"core/X.h"'),
    ("graphs/bar/A.h", '"graphs/common/X.h"'),
    ("graphs/profile/windows/GraphCtl.h", '"platform/windows/X.h"'),
    ("platform/qt/A.cpp", "<QPainter>"),
    ("tests/platform/qt/A_test.cpp", "<QPainter>"),
    ("apps/desk/A.cpp", "<nlohmann/json.hpp>"),
    ("tests/core/A_test.cpp", '"core/detail/X.h"'),
    ("fuzz/a_fuzz.cpp", '"tests/support/X.h"'),
]
FAULTY = [  # file, include that is not
    ("platform/base/A.h", '"platform/files/X.h"'),
    ("platform/base/A.cpp", "<unistd.h>"),
    ("platform/files/A.h", "<unistd.h>"),
    ("core/A.h", '"report/X.h"'),
    ("core/A.h", '"core/detail/X.h"'),
    ("core/A.h", '"X.h"'),
    ("core/A.h", '"core/Missing.h"'),
    ("core/A.cpp", "<zlib.h>"),
    ("core/A.cpp", "<nlohmann/json.hpp>"),
    ("report/A.cpp", '"core/detail/X.h"'),
    ("report/A.cpp", '"scores/X.h"'),
    ("report/A.cpp", '"platform/graphics/X.h"'),
    ("graphs/profile/Graph.cpp", '"graphs/profile/windows/GraphCtl.h"'),
    ("platform/windows/A.cpp", '"dataentry/X.h"'),
    ("dataentry/A.cpp", "<QtWidgets/QWidget>"),
    ("apps/desk/A.cpp", "<QWidget>"),
    ("tests/platform/graphics/A_test.cpp", "<QImage>"),
    ("apps/desk/A.cpp", '"tests/support/X.h"'),
    ("tests/report/A_test.cpp", '"core/detail/X.h"'),
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
            return check_includes.faults_of_tree(root)

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


class Text(unittest.TestCase):
    def test_lines(self):
        home = "/ho" "me/"
        for text, faults in [("a\nb\n", []), ("", []), ("a \n", [1]), ("a\r\n", [1]), ("\tb\n", [1]),
                             ("a\nb", [2]), (f"x {home}me\n", [1]), ("a/home/b\n", [])]:
            with self.subTest(text=text):
                self.assertEqual([n for n, _ in check_text.faults_of_text(text)], faults)


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
"""


class Readme(unittest.TestCase):
    def run_readme(self, text):
        with tempfile.TemporaryDirectory() as root, contextlib.redirect_stdout(None):
            readme = os.path.join(root, "README.md")
            write(root, "README.md", text)
            readme_examples.extract(readme, root)
            write(root, "bin/hello", "#!/bin/sh\necho hello\n")
            os.chmod(os.path.join(root, "bin/hello"), 0o755)
            readme_examples.run(readme, root, "")

    def test_good(self):
        self.run_readme(README)

    def test_faults(self):
        for old, new in [("<!-- check: program hello -->", ""), ("cp t.txt u.txt", "false"),
                         ("<!-- check: output of copy -->", "<!-- check: output of hello -->"),
                         ("<!-- check: command copy -->", "<!-- check: comand copy -->"),
                         ("cat t.txt;", "echo Hello;")]:
            with self.subTest(new=new):
                self.assertIn(old, README)
                with self.assertRaises(readme_examples.Fault):
                    self.run_readme(README.replace(old, new))


if __name__ == "__main__":
    unittest.main(verbosity=0)
