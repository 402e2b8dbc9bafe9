# SPDX-License-Identifier: LGPL-2.1-or-later
"""tools/check_style.sh finds every kind of violation."""
import pathlib
import subprocess
import tempfile
import unittest

ROOT = pathlib.Path(__file__).resolve().parents[2]
TOOL = ROOT / "tools/check_style.sh"
LICENCE = "/* SPDX-License-Identifier: LGPL-2.1-or-later */\n"


class CheckStyle(unittest.TestCase):
    def setUp(self):
        directory = tempfile.TemporaryDirectory()
        self.addCleanup(directory.cleanup)
        self.root = pathlib.Path(directory.name)
        self.write(".clang-format", (ROOT / ".clang-format").read_text())

    def write(self, name, text):
        path = self.root / name
        path.parent.mkdir(parents=True, exist_ok=True)
        path.write_text(text)

    def run_tool(self):
        for command in (["init", "--quiet"], ["add", "--all"]):
            subprocess.run(["git", "-C", self.root, *command], check=True)
        return subprocess.run([TOOL, self.root], capture_output=True, text=True)

    def assert_refused(self, message):
        run = self.run_tool()
        self.assertIn(message, run.stdout + run.stderr)
        self.assertEqual(run.returncode, 1)

    def test_accepts_what_is_in_order(self):
        self.write("src/a.cc", LICENCE + "int main() {\n  return 0;\n}\n")
        run = self.run_tool()
        self.assertEqual((run.returncode, run.stderr), (0, ""))

    def test_refuses_another_layout(self):
        self.write("src/a.cc", LICENCE + "int main ()\n{ return 0; }\n")
        self.assert_refused("clang-format -i")

    def test_refuses_a_file_without_its_licence(self):
        self.write("src/a.h", "#define A 1\n")
        self.assert_refused("src/a.h: the first line is not its SPDX line")

    def test_refuses_trailing_blanks(self):
        self.write("docs/a.md", "text \n")
        self.assert_refused("trailing blanks")

    def test_leaves_the_tests_inputs_alone(self):
        self.write("tests/fuzz/corpus/fuzz-list/blank", "|a| \n")
        self.write("tests/unit/core/fixtures/velkor.conf", "username= \n")
        self.assertEqual(self.run_tool().returncode, 0)

    def test_warns_of_a_long_file(self):
        self.write("src/a.cc", LICENCE + "int a;\n" * 400)
        run = self.run_tool()
        self.assertIn("warning: src/a.cc has 401 lines", run.stderr)
        self.assertEqual(run.returncode, 0)


if __name__ == "__main__":
    unittest.main()
