# SPDX-License-Identifier: LGPL-2.1-or-later
"""tools/check_readme.py finds every command that prints something else."""
import pathlib
import subprocess
import tempfile
import unittest

TOOL = pathlib.Path(__file__).resolve().parents[2] / "tools/check_readme.py"


class CheckReadme(unittest.TestCase):
    def run_tool(self, *lines, kind="console"):
        with tempfile.TemporaryDirectory() as directory:
            page = pathlib.Path(directory, "page.md")
            page.write_text("\n".join(["# Title", f"```{kind}", *lines, "```", ""]))
            return subprocess.run([TOOL, page], capture_output=True, text=True)

    def assert_refused(self, *lines, **kind):
        self.assertEqual(self.run_tool(*lines, **kind).returncode, 1)

    def test_accepts_what_is_printed(self):
        run = self.run_tool("$ echo one; echo two", "one", "two", "$ true", "$ echo three >&2", "three")
        self.assertEqual((run.returncode, run.stderr), (0, ""))
        self.assertIn("3 commands", run.stdout)

    def test_dots_stand_for_any_text(self):
        self.assertEqual(self.run_tool("$ seq 9", "1", "...", "9").returncode, 0)
        self.assertEqual(self.run_tool("$ echo a b c", "a ... c").returncode, 0)
        self.assert_refused("$ seq 9", "2", "...", "9")

    def test_refuses_another_text(self):
        self.assert_refused("$ echo one", "two")

    def test_refuses_more_or_less_text(self):
        self.assert_refused("$ echo one")
        self.assert_refused("$ true", "one")

    def test_refuses_a_command_that_fails(self):
        self.assert_refused("$ false")

    def test_refuses_a_page_without_commands(self):
        self.assert_refused("$ true", kind="sh")


if __name__ == "__main__":
    unittest.main()
