# SPDX-License-Identifier: LGPL-2.1-or-later
"""What makes the front end known to a desktop is valid and fits together."""
import configparser
import pathlib
import re
import subprocess
import unittest
import xml.etree.ElementTree

DATA = pathlib.Path(__file__).resolve().parents[2] / "data"
ENTRY = DATA / "org.Velkor.Velkor.desktop"
METAINFO = DATA / "org.velkor.Velkor.metainfo.xml"


class DesktopFiles(unittest.TestCase):
    def check(self, *command):
        run = subprocess.run(command, capture_output=True, text=True)
        self.assertEqual(run.returncode, 0, run.stdout + run.stderr)

    def test_the_entry_is_valid(self):
        self.check("desktop-file-validate", ENTRY)

    def test_the_description_is_valid(self):
        self.check("appstreamcli", "validate", "--no-net", METAINFO)

    def test_they_name_each_other(self):
        entry = configparser.ConfigParser(interpolation=None)
        entry.read(ENTRY)
        described = xml.etree.ElementTree.parse(METAINFO).getroot()
        self.assertEqual(described.findtext("launchable"), ENTRY.name)
        self.assertEqual(described.findtext("provides/binary"), entry["Desktop Entry"]["Exec"])
        self.assertEqual(described.findtext("summary"), entry["Desktop Entry"]["Comment"])

    def test_the_icons_are_drawings(self):
        names = {path.name for path in (DATA / "icons").iterdir()}
        self.assertEqual(names, {"org.Velkor.Velkor.svg", "org.Velkor.Velkor-symbolic.svg"})
        for path in (DATA / "icons").iterdir():
            root = xml.etree.ElementTree.parse(path).getroot()
            self.assertTrue(root.tag.endswith("}svg"))
            self.assertTrue(re.fullmatch(r"\d+", root.get("width")))


if __name__ == "__main__":
    unittest.main()
