# SPDX-License-Identifier: LGPL-2.1-or-later
"""The Debian packages keep up with the symbols of the library and with what it is built of."""
import pathlib
import re
import unittest

ROOT = pathlib.Path(__file__).resolve().parents[2]


def lines_of(name, skipped):
    return [line for line in (ROOT / name).read_text().splitlines() if line[:1] not in skipped]


class Debian(unittest.TestCase):
    def test_every_symbol_is_there_with_the_version_that_has_it(self):
        listed = {f"{line.split()[0]}@VELKOR_0" for line in lines_of("tests/abi/symbols.txt", "#")}
        packaged = dict(line.split() for line in lines_of("debian/libvelkor0.symbols", "*l"))
        self.assertEqual(sorted(packaged), sorted(listed | {"VELKOR_0@VELKOR_0"}))
        for version in packaged.values():
            self.assertRegex(version, r"^\d+\.\d+\.\d+$")  # no revision, which would hinder backports

    def test_what_is_built_with_is_there_for_building(self):
        used = {name for file in ("packages.txt", "packages-desktop.txt")
                for name in lines_of(f"tools/{file}", "#") if name.endswith("-dev")}
        used |= set(lines_of("tools/packages-docs.txt", "#"))
        field = re.search(r"^Build-Depends:\n((?: .*\n)+)", (ROOT / "debian/control").read_text(),
                          re.MULTILINE)[1]
        named = {line.split()[0].rstrip(",") for line in field.splitlines()}
        self.assertTrue(used)
        self.assertEqual(used - named, set())


if __name__ == "__main__":
    unittest.main()
