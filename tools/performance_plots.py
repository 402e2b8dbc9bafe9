#!/usr/bin/env python3
# SPDX-License-Identifier: LGPL-2.1-or-later
"""Draws the results of ./dev bench --json over the numbers of postings, with gnuplot.

usage: performance_plots.py RESULTS [DIRECTORY]

Writes performance-ratios.svg and performance-times.svg into DIRECTORY (docs).
"""
import argparse
import pathlib
import subprocess
import sys

SOURCE = pathlib.Path(__file__).resolve().parent.parent
sys.path.insert(0, str(SOURCE / "bench"))
from runner import results

RATIOS = {"load-cpu": "load : xmllint", "save-cpu": "save : pigz",
          "save-changes-cpu": "save after changes : pigz", "update-cpu": "update : pigz",
          "display-cpu": "display : copy", "word-cpu": "filter : SQLite"}
TIMES = {"load": "load", "save": "save", "save-changes": "save after changes",
         "first-update": "first update", "update": "update", "list": "list -l 3"}

SETTINGS = """set terminal svg size 860,480 noenhanced font "sans-serif,14" background "white"
set logscale xy
set grid
set key outside right
set xlabel "postings"
set ylabel "{label}"
set format x "%.0f"
"""


def ratio_points(run, key):
    return [(size["postings"], row["ratio"]) for size in run["sizes"] for row in size["rows"]
            if row["key"] == key and row["ratio"] is not None]


def time_points(run, sample):
    return [(size["postings"], results.median(size["samples"][sample], "wall"))
            for size in run["sizes"] if sample in size["samples"]]


def script_for(label, curves):
    """A gnuplot script with a curve for each title; a title without points is left out."""
    curves = {title: points for title, points in curves.items() if points}
    if not curves:
        raise ValueError("nothing was measured that could be drawn")
    blocks, plots = [], []
    for number, (title, points) in enumerate(curves.items()):
        lines = "\n".join(f"{postings} {value:.6g}" for postings, value in points)
        blocks.append(f"$curve{number} << EOD\n{lines}\nEOD\n")
        plots.append(f'$curve{number} with linespoints linewidth 2 title "{title}"')
    return (SETTINGS.format(label=label) + "".join(blocks) +
            "plot " + ", \\\n     ".join(plots) + "\n")


def draw(script, path):
    svg = subprocess.run(["gnuplot"], input=script, stdout=subprocess.PIPE, text=True, check=True)
    lines = (line.rstrip() for line in svg.stdout.splitlines())
    path.write_text("\n".join(lines) + "\n", encoding="utf-8")


def draw_all(run, directory):
    draw(script_for("ratio to the yardstick",
                    {title: ratio_points(run, key) for key, title in RATIOS.items()}),
         directory / "performance-ratios.svg")
    draw(script_for("seconds",
                    {title: time_points(run, sample) for sample, title in TIMES.items()}),
         directory / "performance-times.svg")


def main():
    parser = argparse.ArgumentParser(description=__doc__,
                                     formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("results", type=pathlib.Path)
    parser.add_argument("directory", type=pathlib.Path, nargs="?", default=SOURCE / "docs")
    arguments = parser.parse_args()
    try:
        draw_all(results.read(arguments.results), arguments.directory)
    except (OSError, ValueError, subprocess.CalledProcessError) as fault:
        sys.exit(f"performance_plots: {fault}")


if __name__ == "__main__":
    main()
