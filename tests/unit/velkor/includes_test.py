# SPDX-License-Identifier: LGPL-2.1-or-later
"""The parts of the front end see what they may: only library/ the library's headers, and model/
neither them nor GTK.

usage: includes_test.py DIRECTORY
"""
import pathlib
import re
import sys
import unittest

SOURCES = pathlib.Path(sys.argv.pop(1))
INCLUDE = re.compile(r'^\s*#\s*include\s+[<"]([^>"]+)[>"]', re.MULTILINE)
# What the files of each folder may include of the others.
MAY_USE = {"model": set(), "library": {"model"}, "desktop": set(),
           "widgets": {"model"}, "window": {"model", "library", "widgets", "desktop"}}


class Includes(unittest.TestCase):
    def setUp(self):
        self.includes = {path.relative_to(SOURCES): INCLUDE.findall(path.read_text())
                         for folder in MAY_USE for path in (SOURCES / folder).iterdir()}
        self.assertGreater(len(self.includes), 30)

    def of(self, *folders):
        return [(path, name) for path, names in self.includes.items() if path.parts[0] in folders
                for name in names]

    def test_only_one_folder_sees_the_library(self):
        used = {path.parts[0] for path, names in self.includes.items()
                if any(name.startswith("velkor/") for name in names)}
        self.assertEqual(used, {"library"})

    def test_model_and_library_know_no_window(self):
        for path, name in self.of("model", "library"):
            self.assertNotRegex(name, r"gtk|gdk|glibmm|giomm|sigc|adwaita", path)

    def test_folders_use_what_lies_below_them(self):
        for path, names in self.includes.items():
            for name in names:
                folder = name.partition("/")[0]
                if folder in MAY_USE and folder != path.parts[0]:
                    self.assertIn(folder, MAY_USE[path.parts[0]], f"{path}: {name}")


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1])
