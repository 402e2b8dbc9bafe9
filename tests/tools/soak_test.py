# SPDX-License-Identifier: LGPL-2.1-or-later
"""tools/soak.py notices what keeps growing."""
import contextlib
import io
import pathlib
import sys
import unittest

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parents[2] / "tools"))
import soak
import stand_in


def check(samples):
    with contextlib.redirect_stdout(io.StringIO()) as output:
        soak.check(samples)
    return output.getvalue()


class Growth(unittest.TestCase):
    def assert_fault(self, samples, message):
        with self.assertRaisesRegex(stand_in.Fault, message):
            check(samples)

    def test_a_process_that_reaches_its_size_is_well(self):
        samples = [(100 * min(time, 50), 10000 + 100 * min(time, 50), 9) for time in range(200)]
        self.assertIn("late           5000", check(samples))

    def test_memory_that_keeps_growing_is_noticed(self):
        self.assert_fault([(5000, 10000 + 20 * time, 9) for time in range(200)],
                          "memory keeps growing")

    def test_one_descriptor_is_noticed(self):
        self.assert_fault([(5000, 10000, 9 + time // 199) for time in range(200)], "descriptors")

    def test_a_list_of_nothing_tells_nothing(self):
        self.assert_fault([(0, 10000, 9)] * 200, "no postings")


if __name__ == "__main__":
    unittest.main()
