# SPDX-License-Identifier: LGPL-2.1-or-later
"""tools/fuzz.py with scripts in place of the fuzz targets."""
import pathlib
import subprocess
import sys
import tempfile
import unittest

TOOLS = pathlib.Path(__file__).resolve().parents[2] / "tools"
sys.path.insert(0, str(TOOLS))
import fuzz

SPEND = "python3 -c 'import time\nwhile time.process_time() < 1: pass'\n"
LOG = """cat <<END
#2\tINITED cov: 10 ft: 11 corp: 1/1b exec/s: 0 rss: 30Mb
#80\tDONE   cov: 12 ft: 34 corp: 5/9b exec/s: 80 rss: 30Mb
stat::number_of_executed_units: 80
END
"""


class Fuzz(unittest.TestCase):
    def setUp(self):
        directory = tempfile.TemporaryDirectory()
        self.addCleanup(directory.cleanup)
        self.root = pathlib.Path(directory.name)
        (self.root / "build/fuzz/bin").mkdir(parents=True)

    def add_target(self, name, script):
        path = self.root / "build/fuzz/bin" / name
        path.write_text("#!/bin/sh\n" + script)
        path.chmod(0o755)

    def run_tool(self, *words):
        return subprocess.run([sys.executable, "-B", TOOLS / "fuzz.py", *words], cwd=self.root,
                              capture_output=True, text=True, check=False)

    def test_prints_what_each_target_did(self):
        self.add_target("fuzz-one", SPEND + LOG)
        result = self.run_tool("1")
        self.assertEqual(result.returncode, 0, result.stderr)
        self.assertRegex(result.stdout, r"fuzz-one +\d+ +80 +12 +34\n")

    def test_a_target_runs_until_it_has_used_its_time(self):
        self.add_target("fuzz-one", SPEND + LOG)
        self.assertRegex(self.run_tool("2").stdout, r"fuzz-one +\d+ +(160|240) +12 +34\n")

    def test_stops_at_a_finding(self):
        self.add_target("fuzz-one", "echo 'Test unit written to build/fuzz/x'; exit 77\n")
        self.add_target("fuzz-two", SPEND + LOG)
        result = self.run_tool("1")
        self.assertEqual(result.returncode, 1)
        self.assertIn("see build/fuzz/bin/fuzz-one build/fuzz/x", result.stderr)
        self.assertNotIn("fuzz-two", result.stdout)

    def test_runs_the_targets_that_are_named(self):
        self.add_target("fuzz-one", "exit 1\n")
        self.add_target("fuzz-two", SPEND + LOG)
        result = self.run_tool("1", "fuzz-two")
        self.assertEqual(result.returncode, 0, result.stderr)
        self.assertIn("fuzz-two", result.stdout)

    def test_tells_the_lines_of_the_sources_that_were_run(self):
        def entry(name, covered):
            return {"filename": name, "summary": {"lines": {"covered": covered, "count": 8}}}

        export = {"data": [{"files": [entry("build/fuzz-coverage/../../src/b.cc", 2),
                                      entry("build/fuzz-coverage/apps/a.cc", 8),
                                      entry("src/unused.cc", 0),
                                      entry("tests/t.cc", 5), entry("/usr/include/x.h", 5)]}]}
        self.assertEqual(fuzz.lines_by_file(export),
                         [("apps/a.cc", 8, 8), ("src/b.cc", 2, 8)])


if __name__ == "__main__":
    unittest.main()
