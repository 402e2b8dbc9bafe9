# SPDX-License-Identifier: LGPL-2.1-or-later
"""tools/performance_tables.py and tools/performance_plots.py show what was measured."""
import pathlib
import sys
import unittest

TOOLS = pathlib.Path(__file__).resolve().parents[2] / "tools"
sys.path.insert(0, str(TOOLS))
import performance_plots
import performance_tables
from runner import results

PAGE = """# Page

<!-- conditions -->
<!-- /conditions -->

<!-- ratios -->
old
<!-- /ratios -->

<!-- costs -->
old
<!-- /costs -->

end
"""


def cost(cpu):
    return [{"cpu": cpu, "wall": 2 * cpu, "memory": 2**20}]


def make_run():
    run = {"format": results.FORMAT, "date": "2026-03-04T05:06:07+00:00",
           "machine": {"processor": "Some Processor", "cores": 2, "memory_bytes": 2**33,
                       "load_average": 0.25},
           "versions": {"velkor": "abc123", "pigz": "2.6", "sqlite": None},
           "sizes": [{"postings": postings, "text_bytes": 2**20, "skipped": {},
                      "samples": {"load": cost(load), "xmllint": cost(1), "list": cost(load / 10)}}
                     for postings, load in ((10_000, 1.5), (100_000, 1.25), (1_000_000, 1.125))]}
    results.evaluate(run)
    return run


class Tables(unittest.TestCase):
    def setUp(self):
        self.page = performance_tables.fill(PAGE, make_run())

    def test_take_the_place_of_the_earlier_ones(self):
        self.assertNotIn("old", self.page)
        self.assertTrue(self.page.endswith("<!-- /costs -->\n\nend\n"))
        self.assertEqual(performance_tables.fill(self.page, make_run()), self.page)

    def test_give_each_size_a_column_and_mark_what_misses_its_goal(self):
        self.assertIn("| | yardstick | 10,000 | 100,000 | 1,000,000 | goal |",
                      self.page.replace("|  |", "| |"))
        self.assertIn("| load, CPU | xmllint --stream | 1.50 | **1.25** | 1.12 | –, ≤ 1.15, ≤ 1.2 |",
                      self.page)

    def test_name_the_goal_once_where_it_is_the_same_for_all_sizes(self):
        self.assertIn("| load, wall | xmllint --stream | **3.00** | **2.50** | **2.25** | ≤ 0.7 |",
                      self.page)

    def test_show_figures_where_there_is_no_yardstick(self):
        self.assertIn("0.300 s | 0.250 s | 0.225 s | –, ≤ 0.25 s, ≤ 2 s |", self.page)

    def test_show_costs_of_every_sample(self):
        self.assertIn("| load | 1.250 s | 2.500 s | 1.0 MiB | 1 |", self.page)

    def test_say_where_and_when(self):
        self.assertIn("Measured on 2026-03-04 at revision abc123 on 2 cores of Some Processor with "
                      "8 GiB of memory; load average at the start 0.2.", self.page)
        self.assertIn("With pigz 2.6.", self.page)

    def test_need_their_places(self):
        with self.assertRaises(ValueError):
            performance_tables.fill(PAGE.replace("<!-- ratios -->", ""), make_run())


class Plots(unittest.TestCase):
    def test_hold_the_ratios_of_the_rows(self):
        self.assertEqual(performance_plots.ratio_points(make_run(), "load-cpu"),
                         [(10_000, 1.5), (100_000, 1.25), (1_000_000, 1.125)])
        self.assertEqual(performance_plots.ratio_points(make_run(), "save-cpu"), [])

    def test_hold_the_times_of_the_samples(self):
        self.assertEqual(performance_plots.time_points(make_run(), "load"),
                         [(10_000, 3.0), (100_000, 2.5), (1_000_000, 2.25)])
        self.assertEqual(performance_plots.time_points(make_run(), "save"), [])

    def test_leave_out_curves_without_points(self):
        script = performance_plots.script_for("seconds", {"one": [(10, 0.5)], "two": []})
        self.assertIn("10 0.5\n", script)
        self.assertIn('plot $curve0 with linespoints linewidth 2 title "one"\n', script)
        self.assertNotIn("two", script)

    def test_need_something_to_draw(self):
        with self.assertRaises(ValueError):
            performance_plots.script_for("seconds", {"one": []})

    def test_draw_rows_that_exist(self):
        keys = {row["key"] for row in make_run()["sizes"][2]["rows"]}
        self.assertLessEqual(performance_plots.RATIOS.keys(), keys)


if __name__ == "__main__":
    unittest.main()
