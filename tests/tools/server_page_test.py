# SPDX-License-Identifier: LGPL-2.1-or-later
"""docs/server.md describes every path, parameter, control command and fault of zox-server."""
import pathlib
import re
import unittest

ROOT = pathlib.Path(__file__).resolve().parents[2]
SERVER = ROOT / "apps/zox-server"
PAGE = (ROOT / "docs/server.md").read_text()


def named_in(file, pattern):
    return sorted(re.findall(pattern, (SERVER / file).read_text()))


def section(title):
    return re.search(rf"^## {title}\n(.*?)(?=^## |\Z)", PAGE, re.MULTILINE | re.DOTALL)[1]


class ServerPage(unittest.TestCase):
    def test_every_path_has_its_section(self):
        paths = named_in("http/dispatcher.cc", r'Route\{"/3\.7\.3/([^"]+)"')
        self.assertGreater(len(paths), 10)
        described = re.findall(r"^### ([\w./-]+?)(?:NAME\.gz)?: ", section("Endpoints"), re.MULTILINE)
        self.assertEqual(sorted(described), paths)

    def test_every_parameter_is_described_where_it_is_used(self):
        routes = named_in("http/dispatcher.cc", r'Route\{"/3\.7\.3/([^"]+)", [\w:]+, endpoints::(\w+)')
        sections = dict(re.findall(r"^### ([\w./-]+?)(?:NAME\.gz)?: (.*?)(?=^### |\Z)", section("Endpoints"),
                                   re.MULTILINE | re.DOTALL))
        for source in (SERVER / "endpoints").glob("*.cc"):
            text = source.read_text()
            described = " ".join(sections[path] for path, handler in routes
                                 if re.search(rf"^Reply {handler}\(", text, re.MULTILINE))
            with self.subTest(source=source.name):
                self.assertTrue(described)
                for parameter in set(re.findall(r'request\.(?:value|number)\("(\w+)"\)', text)):
                    self.assertIn(f"`{parameter}`", described)

    def test_every_control_command_is_in_the_table(self):
        commands = named_in("control/control.cc", r'ControlCommand\{\s*"(\w+)",\s*"([^"]+)"')
        self.assertGreater(len(commands), 10)
        described = [tuple(command.split()) for row in
                     re.findall(r"^\| (`[A-Z]+ /.*?) \|", section("The control port"), re.MULTILINE)
                     for command in re.findall(r"`(.*?)`", row)]
        self.assertEqual(sorted(described), commands)

    def test_every_fault_is_in_the_table(self):
        kinds = named_in("http/faults.cc", r'FaultKind\{\s*"([^"]+)"')
        self.assertGreater(len(kinds), 10)
        described = re.findall(r"^\| `([\w-]+)` \|", section("Faults"), re.MULTILINE)
        self.assertEqual(sorted(described), kinds)


if __name__ == "__main__":
    unittest.main()
