# SPDX-License-Identifier: LGPL-2.1-or-later
"""check_initialisers.py finds every kind of difference."""
import pathlib
import subprocess
import sys
import tempfile
import unittest

TOOL = pathlib.Path(__file__).resolve().parent / "check_initialisers.py"
SOURCES = {
    "constant": "extern const int value = 1;\n",
    "computed": "int compute();\nextern const int value = compute();\n",
}


class CheckInitialisers(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        directory = tempfile.TemporaryDirectory()
        cls.addClassCleanup(directory.cleanup)
        cls.root = pathlib.Path(directory.name)
        (cls.root / "library.dir/module").mkdir(parents=True)
        cls.objects = [cls.compile(name, source) for name, source in SOURCES.items()]

    @classmethod
    def compile(cls, name, source):
        obj = f"{cls.root}/library.dir/./module/{name}.cc.o"
        subprocess.run(["c++", "-x", "c++", "-c", "-", "-o", obj], input=source, check=True,
                       text=True)
        return obj

    def run_tool(self, *allowed):
        table = self.root / "initialisers.txt"
        table.write_text("# comment\n" + "".join(name + "\n" for name in allowed))
        run = subprocess.run([sys.executable, "-B", TOOL, table, *self.objects],
                             capture_output=True, text=True)
        self.assertEqual(run.returncode, 1 if run.stderr else 0)
        return run.stderr

    def test_accepts_what_is_listed(self):
        self.assertEqual(self.run_tool("module/computed.cc"), "")

    def test_refuses_what_is_not_listed(self):
        self.assertIn("module/computed.cc has a static initialiser", self.run_tool())

    def test_refuses_what_is_listed_without_need(self):
        self.assertIn("module/constant.cc is listed without need",
                      self.run_tool("module/computed.cc", "module/constant.cc"))


if __name__ == "__main__":
    unittest.main()
