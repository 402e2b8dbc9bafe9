# SPDX-License-Identifier: LGPL-2.1-or-later
"""check_symbols.py finds every kind of difference."""
import pathlib
import subprocess
import sys
import tempfile
import unittest

TOOL = pathlib.Path(__file__).resolve().parent / "check_symbols.py"


class CheckSymbols(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        directory = tempfile.TemporaryDirectory()
        cls.addClassCleanup(directory.cleanup)
        cls.root = pathlib.Path(directory.name)
        (cls.root / "a.c").write_text("int data = 1; int call(void) { return data; }\n"
                                      "static int hidden(void) { return 0; }\n"
                                      "int (*pointer)(void) = hidden;\n")
        (cls.root / "a.map").write_text("A_0 { *; };\n")
        cls.library = cls.root / "liba.so"
        subprocess.run(["cc", "-shared", "-fPIC", "-Wl,-soname,liba.so.0", "-o", cls.library,
                        f"-Wl,--version-script={cls.root}/a.map", cls.root / "a.c"], check=True)

    def run_tool(self, soname, *names, version="A_0"):
        table = self.root / "symbols.txt"
        table.write_text("# comment\n\n" + "\n".join(names) + "\n")
        run = subprocess.run([sys.executable, "-B", TOOL, self.library, soname, version, table],
                             capture_output=True, text=True)
        self.assertEqual(run.returncode, 1 if run.stderr else 0)
        return run.stderr

    def test_accepts_the_whole_list(self):
        self.assertEqual(self.run_tool("liba.so.0", "call", "data data", "pointer data"), "")

    def test_refuses_a_name_that_went(self):
        self.assertIn("no longer exported: function gone@@A_0",
                      self.run_tool("liba.so.0", "call", "data data", "pointer data", "gone"))

    def test_refuses_a_name_that_came(self):
        self.assertIn("not listed: data data@@A_0",
                      self.run_tool("liba.so.0", "call", "pointer data"))

    def test_refuses_data_in_place_of_a_function(self):
        self.assertIn("not listed: data pointer@@A_0",
                      self.run_tool("liba.so.0", "call", "data data", "pointer"))

    def test_refuses_another_version(self):
        self.assertIn("no longer exported: function call@@A_1",
                      self.run_tool("liba.so.0", "call", "data data", "pointer data", version="A_1"))

    def test_refuses_another_soname(self):
        self.assertIn("the soname is liba.so.0 instead of liba.so.1",
                      self.run_tool("liba.so.1", "call", "data data", "pointer data"))


if __name__ == "__main__":
    unittest.main()
