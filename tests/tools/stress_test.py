# SPDX-License-Identifier: LGPL-2.1-or-later
"""tools/stress.py notices a program that crashes, hangs or does not tell its figures."""
import argparse
import pathlib
import sys
import tempfile
import types
import unittest

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parents[2] / "tools"))
import stand_in
import stress


class Run(unittest.TestCase):
    def setUp(self):
        directory = tempfile.TemporaryDirectory()
        self.addCleanup(directory.cleanup)
        self.build = pathlib.Path(directory.name)

    def run_program(self, commands):
        program = self.build / "bin/velkor-stress"
        program.parent.mkdir()
        program.write_text(f"#!/bin/sh\n{commands}\n")
        program.chmod(0o755)
        server = types.SimpleNamespace(host="localhost:1")
        return stress.run_once(self.build, server, self.build / "cache")

    def assert_fault(self, commands, message):
        with self.assertRaisesRegex(stand_in.Fault, message):
            self.run_program(commands)

    def test_the_last_line_tells_the_figures(self):
        self.assertEqual(self.run_program("echo something; echo 2 30 400 5000"),
                         (2, 30, 400, 5000))

    def test_the_program_is_told_where_to_work(self):
        self.run_program(f'[ "$1 $2 $4" = "localhost:1 {self.build}/cache {stress.ROUNDS}" ] && '
                         "echo 2 30 400 5000")

    def test_a_crash_is_noticed(self):
        self.assert_fault("echo 2 30 400 5000; kill -SEGV $$", "ends with -11")

    def test_a_report_of_a_sanitizer_is_noticed(self):
        self.assert_fault("echo 2 30 400 5000; exit 66", "ends with 66")

    def test_missing_figures_are_noticed(self):
        self.assert_fault("echo 2 30 400", "figures")

    def test_silence_is_noticed(self):
        self.assert_fault("exit 0", "figures")

    def test_a_program_that_hangs_is_ended(self):
        patience, stress.PATIENCE = stress.PATIENCE, 0.2
        self.addCleanup(setattr, stress, "PATIENCE", patience)
        self.assert_fault("exec sleep 60", "hangs")


class Runs(unittest.TestCase):
    def test_their_number_may_be_given(self):
        arguments = argparse.Namespace(runs=3, seconds=0)
        self.assertEqual(len(list(stress.more_runs(arguments))), 3)

    def test_otherwise_the_time_decides(self):
        self.assertEqual(list(stress.more_runs(argparse.Namespace(runs=None, seconds=0))), [])


if __name__ == "__main__":
    unittest.main()
