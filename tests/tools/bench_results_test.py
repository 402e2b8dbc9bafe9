# SPDX-License-Identifier: LGPL-2.1-or-later
"""./dev bench draws the right conclusions from its samples."""
import pathlib
import sys
import tempfile
import unittest
import unittest.mock

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parents[2] / "bench"))
from runner import machine, results, rows, series, table
from runner.programs import clean_environment, describe_failure, read_costs
from runner.server import END, START, split_document


def samples(*cpu, wall=1.0, memory=100):
    return [{"cpu": seconds, "wall": wall, "memory": memory} for seconds in cpu]


def run_of(*sizes):
    run = {"format": results.FORMAT, "sizes": [
        {"postings": postings, "text_bytes": 200, "skipped": {}, "samples": measured}
        for postings, measured in sizes]}
    results.evaluate(run)
    return run


def row_of(run, key, postings=100_000):
    size = results.size_with(run, postings)
    return next((row for row in size["rows"] if row["key"] == key), None)


class Rows(unittest.TestCase):
    def test_every_row_has_a_key_of_its_own(self):
        keys = [row.key for row in rows.ROWS]
        self.assertEqual(len(keys), len(set(keys)))

    def test_a_goal_holds_for_its_sizes(self):
        load = next(row for row in rows.ROWS if row.key == "load-cpu")
        self.assertIsNone(load.goal_for(10_000))
        self.assertEqual(load.goal_for(100_000).limit, 1.15)
        self.assertEqual(load.goal_for(1_000_000).limit, 1.2)
        self.assertEqual(load.goal_for(5_000_000).limit, 1.2)


class Evaluation(unittest.TestCase):
    def test_shows_medians_not_means(self):
        row = row_of(run_of((100_000, {"load": samples(1, 2, 30), "xmllint": samples(4, 8, 6)})),
                     "load-cpu")
        self.assertEqual((row["figure"], row["yardstick_figure"]), (2, 6))

    def test_the_ratio_is_the_median_of_those_of_the_rounds(self):
        row = row_of(run_of((100_000, {"load": samples(1, 4, 3), "xmllint": samples(1, 2, 6)})),
                     "load-cpu")
        self.assertEqual(row["ratio"], 1)

    def test_a_ratio_up_to_the_goal_meets_it(self):
        for figure, verdict in ((1.15, "meets"), (1.16, "misses")):
            run = run_of((100_000, {"load": samples(figure), "xmllint": samples(1)}))
            self.assertEqual(row_of(run, "load-cpu")["verdict"], verdict)

    def test_wall_time_and_memory_have_rows_of_their_own(self):
        run = run_of((100_000, {"load": samples(9, wall=3, memory=500), "xmllint": samples(2)}))
        self.assertEqual(row_of(run, "load-wall")["ratio"], 1.5)
        self.assertEqual(row_of(run, "load-memory")["ratio"], 2.5)

    def test_without_a_yardstick_the_figure_is_what_the_goal_limits(self):
        for wall, verdict in ((0.2, "meets"), (0.3, "misses")):
            row = row_of(run_of((100_000, {"list": samples(0.1, wall=wall)})), "list-wall")
            self.assertEqual((row["figure"], row["ratio"], row["verdict"]), (wall, None, verdict))

    def test_what_was_not_measured_gets_no_verdict(self):
        run = run_of((100_000, {"load": samples(1)}))
        for key in ("load-cpu", "save-cpu", "list-wall"):
            row = row_of(run, key)
            self.assertEqual((row["ratio"], row["verdict"]), (None, None))

    def test_a_large_update_is_compared_with_a_common_one_less_the_loads(self):
        common = {"update": samples(5, 5, 5, 6, 6), "load": samples(3, 3, 3, 3, 3)}
        large = {"update": samples(20, 25, 30), "load": samples(17, 20, 23)}
        row = row_of(run_of((100_000, common), (1_000_000, large)), "update-beyond-load-cpu",
                     1_000_000)
        self.assertEqual((row["figure"], row["yardstick_figure"]), (5, 2))
        self.assertEqual((row["ratio"], row["verdict"]), (2.5, "misses"))

    def test_a_large_update_without_the_common_size_has_no_ratio(self):
        run = run_of((1_000_000, {"update": samples(20), "load": samples(17)}))
        self.assertIsNone(row_of(run, "update-beyond-load-cpu", 1_000_000)["ratio"])

    def test_the_common_size_is_not_compared_with_itself(self):
        run = run_of((100_000, {"update": samples(20), "load": samples(17)}))
        self.assertIsNone(row_of(run, "update-beyond-load-cpu"))


class Comparison(unittest.TestCase):
    def test_is_of_ratios(self):
        earlier = run_of((100_000, {"load": samples(2), "xmllint": samples(1)}))
        later = run_of((100_000, {"load": samples(2), "xmllint": samples(2)}))
        before, change = results.compare(later, earlier)[100_000, "load-cpu"]
        self.assertEqual((before, change), (2, -0.5))

    def test_is_of_figures_where_there_is_no_yardstick(self):
        earlier = run_of((100_000, {"list": samples(1, wall=1)}))
        later = run_of((100_000, {"list": samples(1, wall=1.5)}))
        self.assertEqual(results.compare(later, earlier)[100_000, "list-wall"], (1, 0.5))

    def test_leaves_out_what_the_earlier_run_lacks(self):
        earlier = run_of((10_000, {"list": samples(1)}))
        later = run_of((100_000, {"list": samples(1)}))
        self.assertEqual(results.compare(later, earlier), {})

    def test_survives_a_file(self):
        run = run_of((100_000, {"load": samples(1), "xmllint": samples(1)}))
        with tempfile.NamedTemporaryFile() as file:
            results.write(run, file.name)
            self.assertEqual(results.read(file.name), run)

    def test_refuses_a_file_of_another_kind(self):
        for text in ("[]", '{"format": 0}', "{}"):
            with tempfile.NamedTemporaryFile("w") as file:
                file.write(text)
                file.flush()
                with self.assertRaises(ValueError):
                    results.read(file.name)


class Table(unittest.TestCase):
    def test_shows_verdicts_and_changes(self):
        run = run_of((100_000, {"load": samples(1.2), "xmllint": samples(1)}))
        earlier = run_of((100_000, {"load": samples(1.5), "xmllint": samples(1)}))
        text = "\n".join(table.show(run, earlier))
        self.assertRegex(text, r"load, CPU +1\.200 s +xmllint --stream: 1\.000 s +1\.20 +<= 1\.15 +"
                               r"misses +was 1\.5 \(-20%\)")
        self.assertRegex(text, "save of everything, CPU +not measured")

    def test_says_what_was_skipped(self):
        run = run_of((100_000, {"load": samples(1)}))
        run["sizes"][0]["skipped"]["like"] = "skipped, needs 9 GiB of memory"
        self.assertIn("like: skipped, needs 9 GiB of memory", "\n".join(table.show(run)))

    def test_lines_up_in_columns(self):
        self.assertEqual(list(table.line_up([["a", "bcd"], ["efg", "h"]], right=(1,))),
                         ["a    bcd", "efg    h"])


class Steps(unittest.TestCase):
    def affordable(self, available):
        with tempfile.TemporaryDirectory() as directory:
            measured = series.Series(None, directory, 100_000)
            measured.document.write_bytes(b"x" * 1000)
            with unittest.mock.patch.object(machine, "bytes_of_memory", return_value=available):
                return [name for name, _ in measured.affordable_steps()], measured.skipped

    def test_all_are_taken_with_memory_enough(self):
        names, skipped = self.affordable(9000)
        self.assertLess({"load", "save", "update", "like", "display"}, set(names))
        self.assertEqual(skipped, {})

    def test_what_needs_more_memory_than_there_is_is_skipped(self):
        names, skipped = self.affordable(8999)
        self.assertEqual(list(skipped), ["display"])
        self.assertNotIn("display", names)
        self.assertIn("load", names)

    def test_large_stocks_have_fewer_rounds(self):
        self.assertEqual([series.rounds_of(size) for size in (10_000, 100_000, 1_000_000)],
                         [5, 5, 3])


class Input(unittest.TestCase):
    def test_costs_are_read_by_name(self):
        self.assertEqual(read_costs("load 1.5 2.25 4096\nsave 1 2 0\n"),
                         {"load": {"cpu": 1.5, "wall": 2.25, "memory": 4096},
                          "save": {"cpu": 1.0, "wall": 2.0, "memory": 0}})

    def test_a_failure_shows_the_end_of_what_was_said(self):
        messages = "\n".join(f"dump {number}" for number in range(9)) + "\n"
        self.assertEqual(describe_failure(["velkorctl", "update"], -15, messages),
                         "velkorctl update\nended with status -15\n"
                         "dump 4\ndump 5\ndump 6\ndump 7\ndump 8")

    def test_programs_see_neither_bus_nor_servers_of_the_user(self):
        self.assertEqual(clean_environment("/home")["HOME"], "/home")
        for name in ("DBUS_SESSION_BUS_ADDRESS", "VELKOR_MAIN_HOST", "VELKOR_STATIC_HOST"):
            self.assertNotIn(name, clean_environment("/home"))

    def test_a_document_is_split_into_documents(self):
        postings = [b"  <Event>\n%d\n  </Event>\n" % number for number in range(5)]
        pieces = list(split_document(START + b"".join(postings) + END, 2))
        self.assertEqual(pieces, [START + b"".join(postings[place:place + 2]) + END
                                  for place in (0, 2, 4)])


if __name__ == "__main__":
    unittest.main()
