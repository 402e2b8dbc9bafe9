# SPDX-License-Identifier: LGPL-2.1-or-later
"""tools/check_abi.sh tells what breaks programs from what is added."""
import pathlib
import subprocess
import tempfile
import unittest

TOOL = pathlib.Path(__file__).resolve().parents[2] / "tools/check_abi.sh"
HEADER = "typedef struct Record { int number; long size; } Record;\nint area(Record *record);\n"
SOURCE = '#include "area.h"\nint area(Record *record) { return record->number; }\n'
MORE = "int volume(int side);\n"
MORE_SOURCE = "int volume(int side) { return side; }\n"


class CheckAbi(unittest.TestCase):
    def setUp(self):
        directory = tempfile.TemporaryDirectory()
        self.addCleanup(directory.cleanup)
        self.top = pathlib.Path(directory.name)
        (self.top / "headers").mkdir()
        self.check(HEADER, SOURCE, "--renew")

    def check(self, header, source, *options):
        (self.top / "headers/area.h").write_text(header)
        (self.top / "area.c").write_text(source)
        subprocess.run(["gcc", "-g", "-shared", "-fPIC", "-I", "headers", "area.c", "-o", "area.so"],
                       cwd=self.top, check=True)
        return subprocess.run([TOOL, "area.so", "headers", "baseline.xml", *options], cwd=self.top,
                              capture_output=True, text=True)

    def assert_breaks(self, header, source, what):
        run = self.check(header, source)
        self.assertEqual(run.returncode, 1, run.stderr)
        self.assertIn(what, run.stdout)
        self.assertIn("breaks programs", run.stderr)

    def test_accepts_what_is_as_before(self):
        run = self.check(HEADER, "\n" + SOURCE)
        self.assertEqual((run.returncode, run.stdout, run.stderr), (0, "", ""))

    def test_tells_of_an_addition_until_the_baseline_has_it(self):
        run = self.check(HEADER + MORE, SOURCE + MORE_SOURCE)
        self.assertEqual(run.returncode, 0)
        self.assertIn("volume", run.stdout)
        self.assertIn("only additions", run.stdout)
        self.check(HEADER + MORE, SOURCE + MORE_SOURCE, "--renew")
        self.assertEqual(self.check(HEADER + MORE, SOURCE + MORE_SOURCE).stdout, "")

    def test_refuses_a_function_that_is_gone(self):
        self.check(HEADER + MORE, SOURCE + MORE_SOURCE, "--renew")
        self.assert_breaks(HEADER, SOURCE, "volume")

    def test_refuses_another_argument(self):
        self.assert_breaks(HEADER.replace("Record *record)", "Record *record, int more)"),
                           SOURCE.replace("Record *record)", "Record *record, int more)"),
                           "parameter 2")

    def test_refuses_another_layout(self):
        self.assert_breaks(HEADER.replace("int number; long size;", "long size; int number;"), SOURCE,
                           "offset changed")

    def test_refuses_a_field_that_is_added(self):
        self.assert_breaks(HEADER.replace("long size;", "long size; long more;"), SOURCE,
                           "type size changed")

    def test_fails_without_a_baseline(self):
        (self.top / "baseline.xml").unlink()
        self.assertEqual(self.check(HEADER, SOURCE).returncode, 2)


if __name__ == "__main__":
    unittest.main()
