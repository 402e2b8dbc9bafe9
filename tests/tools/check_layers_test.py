# SPDX-License-Identifier: LGPL-2.1-or-later
"""tools/check_layers.py finds what it is there to find."""
import pathlib
import subprocess
import sys
import tempfile
import unittest

TOOL = pathlib.Path(__file__).resolve().parents[2] / "tools/check_layers.py"
LAYERS = "# bottom first\nset(velkor_layers support middle\n    top)\n"


class CheckLayers(unittest.TestCase):
    def setUp(self):
        directory = tempfile.TemporaryDirectory()
        self.addCleanup(directory.cleanup)
        self.root = pathlib.Path(directory.name)
        self.write("src/CMakeLists.txt", LAYERS)

    def write(self, name, text=""):
        path = self.root / name
        path.parent.mkdir(parents=True, exist_ok=True)
        path.write_text(text)

    def run_tool(self):
        run = subprocess.run([sys.executable, TOOL, "--root", self.root], capture_output=True,
                             text=True)
        self.assertEqual(run.returncode, 1 if run.stderr else 0)
        return run.stderr

    def test_accepts_includes_that_go_down_or_stay(self):
        self.write("src/support/a.h")
        self.write("src/top/b.h", '#include "support/a.h"\n#include <vector>\n')
        self.write("src/top/c.cc", '#include "top/b.h"\n')
        self.assertEqual(self.run_tool(), "")

    def test_refuses_an_include_that_goes_up(self):
        self.write("src/middle/a.h", '#include "top/b.h"\n')
        self.write("src/top/b.h")
        self.assertIn("middle/a.h goes up to top/b.h", self.run_tool())

    def test_refuses_a_circle_within_a_layer(self):
        self.write("src/top/a.h", '#include "top/b.h"\n')
        self.write("src/top/b.h", '#include "top/c.h"\n')
        self.write("src/top/c.h", '  # include "top/a.h"\n')
        self.assertIn("top/a.h -> top/b.h -> top/c.h -> top/a.h", self.run_tool())

    def test_refuses_a_file_without_a_layer(self):
        self.write("src/elsewhere/a.cc")
        self.assertIn("elsewhere/a.cc: lies in no layer", self.run_tool())

    def test_refuses_an_include_beside_the_file(self):
        self.write("src/top/a.h")
        self.write("src/top/a.cc", '#include "a.h"\n')
        self.assertIn('top/a.cc: includes "a.h"', self.run_tool())

    def test_refuses_a_source_tree_without_a_list(self):
        self.write("src/CMakeLists.txt", "set(other_layers support)\n")
        self.assertIn("no list velkor_layers", self.run_tool())


if __name__ == "__main__":
    unittest.main()
