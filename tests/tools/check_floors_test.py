# SPDX-License-Identifier: LGPL-2.1-or-later
"""tools/check_floors.py finds what it is there to find."""
import pathlib
import subprocess
import sys
import tempfile
import unittest

TOOL = pathlib.Path(__file__).resolve().parents[2] / "tools/check_floors.py"
TABLE = """
floor 0 support/*  # the ground
floor 2 top/special
floor 1 top/*
"""


class CheckFloors(unittest.TestCase):
    def setUp(self):
        directory = tempfile.TemporaryDirectory()
        self.addCleanup(directory.cleanup)
        self.root = pathlib.Path(directory.name)
        self.write("tools/floors.txt", TABLE)

    def write(self, name, text=""):
        path = self.root / name
        path.parent.mkdir(parents=True, exist_ok=True)
        path.write_text(text)

    def compiled(self, name, text):
        """An object of the source file src/<name>, named as CMake names it."""
        self.write(f"src/{name}", text)
        target = f"{self.root}/build/library.dir/./{name}.o"
        pathlib.Path(target).parent.mkdir(parents=True, exist_ok=True)
        subprocess.run(["cc", "-x", "c", "-c", self.root / f"src/{name}", "-o", target], check=True)
        return target

    def run_tool(self, *objects):
        run = subprocess.run([sys.executable, TOOL, "--root", self.root, *objects],
                             capture_output=True, text=True)
        self.assertEqual(run.returncode, 1 if run.stderr else 0)
        return run.stderr

    def test_accepts_includes_that_go_down_or_stay(self):
        self.write("src/support/a.h")
        self.write("src/top/b.h", '#include "support/a.h"\n#include <vector>\n')
        self.write("src/top/special.cc", '#include "top/b.h"\n')
        self.assertEqual(self.run_tool(), "")

    def test_refuses_an_include_that_goes_up(self):
        self.write("src/support/a.h", '#include "top/b.h"\n')
        self.write("src/top/b.h")
        self.assertIn("support/a.h (floor 0) includes top/b.h (floor 1)", self.run_tool())

    def test_takes_the_first_pattern_that_matches(self):
        self.write("src/top/special.h")
        self.write("src/top/b.cc", '#include "top/special.h"\n')
        self.assertIn("top/b.cc (floor 1) includes top/special.h (floor 2)", self.run_tool())

    def test_refuses_a_circle_on_one_floor(self):
        self.write("src/top/a.h", '#include "top/b.h"\n')
        self.write("src/top/b.h", '#include "top/c.h"\n')
        self.write("src/top/c.h", '  # include "top/a.h"\n')
        self.assertIn("top/a.h -> top/b.h -> top/c.h -> top/a.h", self.run_tool())

    def test_refuses_a_file_without_a_floor(self):
        self.write("src/elsewhere/a.cc")
        self.assertIn("elsewhere/a.cc: has no floor", self.run_tool())

    def test_refuses_an_include_beside_the_file(self):
        self.write("src/top/a.h")
        self.write("src/top/a.cc", '#include "a.h"\n')
        self.assertIn('top/a.cc: includes "a.h"', self.run_tool())

    def test_refuses_a_table_that_it_cannot_read(self):
        self.write("tools/floors.txt", "stairs 1 top/*\n")
        self.assertIn("cannot read: stairs", self.run_tool())

    def test_refuses_a_call_that_goes_up(self):
        high = self.compiled("top/special.c", "int high(void) { return 1; }")
        low = self.compiled("top/a.c", "int high(void); int low(void) { return high(); }")
        self.assertIn("top/a.c (floor 1) needs high of top/special.c (floor 2)",
                      self.run_tool(high, low))

    def test_refuses_data_that_stands_higher(self):
        high = self.compiled("top/special.c", "int table[4] = {1};")
        low = self.compiled("top/a.c", "extern int table[4]; int low(void) { return table[0]; }")
        self.assertIn("needs table", self.run_tool(high, low))

    def test_refuses_an_object_of_elsewhere(self):
        stranger = self.compiled("top/a.c", "int low(void) { return 1; }")
        (self.root / "src/top/a.c").unlink()
        self.assertIn("top/a.c: is not a path below src/", self.run_tool(stranger))

    def test_accepts_a_call_that_goes_down_and_a_listed_exception(self):
        high = self.compiled("top/special.c", "int low(void); int high(void) { return low(); }")
        low = self.compiled("top/a.c", "int high(void); int low(void) { return high(); }")
        self.write("tools/floors.txt", TABLE + "allow top/a high\n")
        self.assertEqual(self.run_tool(high, low), "")

    def test_refuses_an_exception_that_nobody_needs(self):
        low = self.compiled("top/a.c", "int low(void) { return 1; }")
        self.write("tools/floors.txt", TABLE + "allow top/a high\n")
        self.assertIn("exception of top/a for high is not needed", self.run_tool(low))


if __name__ == "__main__":
    unittest.main()
