#!/usr/bin/env python3
# SPDX-License-Identifier: LGPL-2.1-or-later
"""Fills the tables of a page from the results of ./dev bench --json.

usage: performance_tables.py RESULTS [PAGE]

What stands between the lines "<!-- NAME -->" and "<!-- /NAME -->" is replaced, where NAME is
"conditions" (where and when), "costs" (CPU, wall time and memory) or "ratios" (yardsticks and
goals). PAGE is docs/performance.md.
"""
import argparse
import pathlib
import re
import sys

SOURCE = pathlib.Path(__file__).resolve().parent.parent
sys.path.insert(0, str(SOURCE / "bench"))
from runner import results, rows, table


def show_table(titles, lines):
    """A Markdown table; all columns but the first are aligned to the right."""
    rule = ["---"] + ["---:"] * (len(titles) - 1)
    return ["| " + " | ".join(cells) + " |" for cells in [titles, rule, *lines]]


def show_conditions(run):
    machine, versions = run["machine"], run["versions"]
    programs = ", ".join(version if version.startswith(name) else f"{name} {version}"
                         for name, version in sorted(versions.items())
                         if version and name != "velkor")
    return [f"Measured on {run['date'][:10]} at revision {versions['velkor']} on "
            f"{machine['cores']} cores of {machine['processor']} with "
            f"{machine['memory_bytes'] / 2**30:.0f} GiB of memory; load average at the start "
            f"{machine['load_average']:.1f}.", "", f"With {programs}."]


def show_ratio(row):
    """The ratio of a row, without a yardstick its figure; set in bold where it misses its goal."""
    if row is None:
        return ""
    text = table.show_ratio(row) if row["yardstick"] else table.show_cost(row["figure"], row["unit"])
    return f"**{text}**" if row["verdict"] == "misses" else text


def show_goals(found):
    """The goal of a row; where it depends on the number of postings, one for each."""
    goals = [table.show_goal(row) if row else "" for row in found]
    if len(set(goals)) == 1:
        return goals[0].replace("<=", "≤")
    return ", ".join(goal or "–" for goal in goals).replace("<=", "≤")


def show_ratios(run):
    lines = []
    for known in rows.ROWS:
        found = [next((row for row in size["rows"] if row["key"] == known.key), None)
                 for size in run["sizes"]]
        yardstick = known.yardstick.label if known.yardstick else ""
        if any(found):
            lines.append([known.label, yardstick, *map(show_ratio, found), show_goals(found)])
    sizes = [f"{size['postings']:,}" for size in run["sizes"]]
    return show_table(["", "yardstick", *sizes, "goal"], lines)


def show_costs(run):
    lines = []
    for size in run["sizes"]:
        lines += [""] if lines else []
        lines += [f"{size['postings']:,} postings, {size['text_bytes'] / 2**20:.0f} MiB of XML:", ""]
        titles, *costs = table.costs_of(size)
        lines += show_table(titles, costs)
    return lines


SECTIONS = {"conditions": show_conditions, "ratios": show_ratios, "costs": show_costs}


def fill(page, run):
    """The page with new tables; ValueError without a place for one of them."""
    for name, show in SECTIONS.items():
        place = re.compile(rf"(<!-- {name} -->\n).*?(<!-- /{name} -->\n)", re.DOTALL)
        text = "\n".join(show(run))
        page, count = place.subn(lambda found, text=text: f"{found[1]}\n{text}\n\n{found[2]}", page)
        if count != 1:
            raise ValueError(f"the page has {count} places for {name}, not one")
    return page


def main():
    parser = argparse.ArgumentParser(description=__doc__,
                                     formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("results", type=pathlib.Path)
    parser.add_argument("page", type=pathlib.Path, nargs="?",
                        default=SOURCE / "docs/performance.md")
    arguments = parser.parse_args()
    try:
        run = results.read(arguments.results)
        page = fill(arguments.page.read_text(encoding="utf-8"), run)
        arguments.page.write_text(page, encoding="utf-8")
    except (OSError, ValueError) as fault:
        sys.exit(f"performance_tables: {fault}")


if __name__ == "__main__":
    main()
