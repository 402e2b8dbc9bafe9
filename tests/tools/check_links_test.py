# SPDX-License-Identifier: LGPL-2.1-or-later
"""tools/check_links.py finds every link that leads nowhere."""
import pathlib
import subprocess
import tempfile
import unittest

TOOL = pathlib.Path(__file__).resolve().parents[2] / "tools/check_links.py"


class CheckLinks(unittest.TestCase):
    def run_tool(self, name, text):
        with tempfile.TemporaryDirectory() as directory:
            page = pathlib.Path(directory, name)
            page.write_text(text)
            pathlib.Path(directory, "other.md").write_text("# Other\n## `a.php`: what is new\n")
            pathlib.Path(directory, "other.html").write_text('<h2 id="there">There</h2>\n')
            return subprocess.run([TOOL, page], capture_output=True, text=True)

    def assert_accepted(self, name, text):
        run = self.run_tool(name, text)
        self.assertEqual(run.returncode, 0, run.stdout)

    def assert_refused(self, name, text, fault):
        run = self.run_tool(name, text)
        self.assertEqual(run.returncode, 1)
        self.assertIn(fault, run.stdout)

    def test_accepts_files_and_anchors_that_are_there(self):
        self.assert_accepted("page.md", "# A page\n[here](#a-page) [there](other.md) ![](other.html)\n"
                                        "[anchor](other.md#aphp-what-is-new)\n")
        self.assert_accepted("page.html", '<a href="other.html#there">x</a> <img alt="" src="other.md">')

    def test_refuses_a_file_that_is_not_there(self):
        self.assert_refused("page.md", "[x](none.md)\n", "none.md: there is no such file")
        self.assert_refused("page.html", '<a class="b" href="none.html">x</a>', "no such file")

    def test_refuses_an_anchor_that_is_not_there(self):
        self.assert_refused("page.md", "# Page\n[x](#pages)\n", "#pages: there is no such anchor")
        self.assert_refused("page.md", "[x](other.md#others)\n", "no such anchor")
        self.assert_refused("page.html", '<a href="other.html#here">x</a>', "no such anchor")

    def test_asks_no_other_host_and_reads_no_code(self):
        self.assert_accepted("page.md", "[o](other.md) [x](https://host.example/none)\n"
                                        "`[y](none.md)`\n```\n[z](none.md)\n```\n")

    def test_refuses_pages_without_links(self):
        self.assert_refused("page.md", "# Page\n", "no link")


if __name__ == "__main__":
    unittest.main()
