# SPDX-License-Identifier: LGPL-2.1-or-later
"""./dev callgrind reads its profiles and notices what takes more instructions."""
import pathlib
import sys
import tempfile
import unittest

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parents[2] / "bench"))
from runner import instructions

PROFILE = """# callgrind format
version: 1
creator: callgrind-3.19.0
pid: 7
part: 1
desc: Trigger: Client Request: save-changes
positions: line
events: Ir
fn=(1) main
0 40
totals: 1258208892
"""


class Profiles(unittest.TestCase):
    def test_a_profile_names_its_measurement(self):
        self.assertEqual(instructions.read_profile(PROFILE), ("save-changes", 1258208892))

    def test_the_profile_at_the_end_of_the_program_is_of_no_measurement(self):
        text = PROFILE.replace("Client Request: save-changes", "Program termination")
        self.assertIsNone(instructions.read_profile(text))

    def test_a_profile_without_total_is_broken(self):
        with self.assertRaises(ValueError):
            instructions.read_profile(PROFILE.replace("totals", "total"))

    def test_all_profiles_of_a_directory_count(self):
        with tempfile.TemporaryDirectory() as name:
            directory = pathlib.Path(name)
            (directory / "callgrind.out.7.1").write_text(PROFILE)
            (directory / "callgrind.out.7.2").write_text(PROFILE.replace("save-changes", "merge"))
            (directory / "callgrind.out.7").write_text("# callgrind format\ntotals: 0\n")
            self.assertEqual(instructions.read_profiles(directory),
                             {"save-changes": 1258208892, "merge": 1258208892})


class Baseline(unittest.TestCase):
    def compare(self, count, baseline=1000):
        lines, fine = instructions.compare({"load": count}, {"load": baseline}, 0.05)
        return lines[0][-1], fine

    def test_refuses_more_than_the_margin(self):
        self.assertEqual(self.compare(1050), ("as before", True))
        self.assertEqual(self.compare(1051), ("more", False))

    def test_points_out_what_became_cheaper(self):
        self.assertEqual(self.compare(950), ("as before", True))
        self.assertEqual(self.compare(949), ("less", True))

    def test_refuses_what_only_one_side_knows(self):
        for counts, known in (({"load": 1}, {}), ({}, {"load": 1})):
            self.assertFalse(instructions.compare(counts, known, 0.05)[1])

    def test_survives_a_file(self):
        with tempfile.TemporaryDirectory() as name:
            path = pathlib.Path(name) / "baseline.json"
            instructions.write_baseline(path, {"load": 5}, 10_000)
            self.assertEqual(instructions.read_baseline(path),
                             {"postings": 10_000, "instructions": {"load": 5}})


if __name__ == "__main__":
    unittest.main()
