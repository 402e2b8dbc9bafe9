# SPDX-License-Identifier: LGPL-2.1-or-later
"""docs/examples/postings.py uses the library from Python.

usage: python_example_test.py DIRECTORY_OF_THE_LIBRARY
"""
import gzip
import os
import pathlib
import subprocess
import sys
import tempfile
import unittest

EXAMPLE = pathlib.Path(__file__).resolve().parents[2] / "docs/examples/postings.py"
LIBRARY = sys.argv[1]
POSTING = ('<Event Code="1"><PostID>{}</PostID><Title><![CDATA[{}]]></Title><Stamp>1700000000</Stamp>'
           "<Status>0</Status><Poster>ann</Poster><Cat>0</Cat><SCat>0</SCat><Tags>|a0|</Tags></Event>\n")


class PythonExample(unittest.TestCase):
    def setUp(self):
        directory = tempfile.TemporaryDirectory()
        self.addCleanup(directory.cleanup)
        self.cache = pathlib.Path(directory.name)
        document = "".join(POSTING.format(*posting) for posting in
                           ((9, "Linux draait"), (7, "Żabno & linux"), (8, "Iets anders")))
        with gzip.open(self.cache / "velkor.posts.gz", "wt", encoding="utf-8") as file:
            file.write(f'<?xml version="1.0"?>\n<Events>\n{document}</Events>\n')

    def run_example(self, *words):
        environment = {**os.environ, "LD_LIBRARY_PATH": LIBRARY, "LC_ALL": "C.UTF-8"}
        return subprocess.run([sys.executable, "-B", EXAMPLE, *words], env=environment,
                              capture_output=True, text=True)

    def test_prints_the_postings_with_a_word(self):
        run = self.run_example("LINUX", str(self.cache))
        self.assertEqual((run.returncode, run.stdout), (0, "7 Żabno & linux\n9 Linux draait\n"),
                         run.stderr)

    def test_tells_why_the_library_did_not_start(self):
        (self.cache / "velkor.conf").mkdir()
        run = self.run_example("linux", str(self.cache))
        self.assertEqual((run.returncode, run.stdout), (1, ""))
        self.assertIn("velkor.conf", run.stderr)


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1])
