# SPDX-License-Identifier: LGPL-2.1-or-later
"""The units run a command that velkorctl has, and the timer starts the service beside it."""
import configparser
import pathlib
import shlex
import subprocess
import sys
import unittest

VELKORCTL = sys.argv[1]
DATA = pathlib.Path(__file__).resolve().parents[2] / "data"


def unit(name):
    parser = configparser.ConfigParser(interpolation=None)
    parser.optionxform = str
    parser.read_string((DATA / name).read_text())
    return parser


class Units(unittest.TestCase):
    def test_the_service_runs_a_command_that_there_is(self):
        program, *words = shlex.split(unit("velkor-update.service")["Service"]["ExecStart"])
        self.assertEqual(program, "velkorctl")
        run = subprocess.run([VELKORCTL, *words, "--help"], capture_output=True, text=True)
        self.assertEqual(run.returncode, 0, run.stderr)
        self.assertIn("Usage: velkorctl update", run.stdout)

    def test_the_service_never_agrees_to_a_loss(self):
        self.assertNotIn("--yes", unit("velkor-update.service")["Service"]["ExecStart"])

    def test_the_timer_is_started_by_hand_only(self):
        timer = unit("velkor-update.timer")
        self.assertEqual(timer["Install"]["WantedBy"], "timers.target")
        self.assertNotIn("Unit", timer["Timer"])  # so that it is the service of the same name


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1])
