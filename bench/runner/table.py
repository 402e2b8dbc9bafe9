# SPDX-License-Identifier: LGPL-2.1-or-later
"""The results as text."""
from runner import results


def show_cost(cost, unit):
    if cost is None:
        return "not measured"
    if unit == "B":
        return f"{cost / 2**20:.1f} MiB"
    return f"{cost:.3f} s" if cost >= 0.1 else f"{cost * 1000:.2f} ms"


def show_goal(row):
    if row["goal"] is None:
        return ""
    return f"<= {row['goal']:g}" + ("" if row["yardstick"] else " s")


def show_yardstick(row):
    if not row["yardstick"]:
        return ""
    return f"{row['yardstick']}: {show_cost(row['yardstick_figure'], row['unit'])}"


def show_ratio(row):
    return "" if row["ratio"] is None else f"{row['ratio']:.2f}"


def show_change(change):
    return "" if change is None else f"was {change[0]:.3g} ({change[1]:+.0%})"


def cells_of(row, change=None):
    """The cells of a row: label, figure, yardstick, ratio, goal, verdict, change."""
    return [row["label"], show_cost(row["figure"], row["unit"]), show_yardstick(row),
            show_ratio(row), show_goal(row), row["verdict"] or "", show_change(change)]


def line_up(lines, right=()):
    """Lines of cells in columns; those in `right` are aligned to the right."""
    widths = [max(map(len, column)) for column in zip(*lines)]
    for line in lines:
        cells = (cell.rjust(width) if place in right else cell.ljust(width)
                 for place, (cell, width) in enumerate(zip(line, widths)))
        yield "  ".join(cells).rstrip()


def costs_of(size):
    """The median costs of every sample, below a line of titles."""
    yield ["sample", "CPU", "wall", "peak memory", "rounds"]
    for name, samples in size["samples"].items():
        yield [name] + [show_cost(results.median(samples, measure), unit)
                        for measure, unit in (("cpu", "s"), ("wall", "s"), ("memory", "B"))
                        ] + [str(len(samples))]


def show_size(size, changes):
    yield f"\n{size['postings']:,} postings, {size['text_bytes'] / 2**20:.1f} MiB of XML"
    titles = ["row", "figure", "yardstick", "ratio", "goal", "", ""]
    lines = [cells_of(row, changes.get((size["postings"], row["key"]))) for row in size["rows"]]
    yield from line_up([titles] + lines, right=(1, 3))
    for sample, reason in size["skipped"].items():
        yield f"{sample}: {reason}"
    yield ""
    yield from line_up(list(costs_of(size)), right=(1, 2, 3, 4))


def show(run, earlier=None):
    """The whole table, line by line; with an earlier run also the change of each value."""
    changes = results.compare(run, earlier) if earlier else {}
    for size in run["sizes"]:
        yield from show_size(size, changes)
