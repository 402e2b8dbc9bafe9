# SPDX-License-Identifier: LGPL-2.1-or-later
"""What the samples of a run say: medians, ratios, verdicts, and the change since another run.

A run is a dictionary, as it is written to JSON:

    {"format": 1, "date": ..., "machine": {...}, "versions": {...},
     "sizes": [{"postings": 100000, "text_bytes": ..., "skipped": {sample: reason},
                "samples": {"load": [{"cpu": s, "wall": s, "memory": bytes}, ...], ...},
                "rows": [{"key": ..., "label": ..., "figure": ..., ...}, ...]}, ...]}
"""
import json
import statistics

from runner import rows

FORMAT = 1


def median(samples, measure):
    """The median of one cost over some samples."""
    return statistics.median(sample[measure] for sample in samples)


def costs_of(size, sample, measure, minus=None):
    """One cost in every round of a size, less that of `minus`; None where one is missing."""
    if sample not in size["samples"] or (minus and minus not in size["samples"]):
        return None
    costs = [cost[measure] for cost in size["samples"][sample]]
    if minus is None:
        return costs
    return [cost - less[measure] for cost, less in zip(costs, size["samples"][minus])]


def size_with(run, postings):
    return next((size for size in run["sizes"] if size["postings"] == postings), None)


def yardstick_of(run, size, row):
    """The yardstick of a row in every round; None where it was not measured."""
    yardstick = row.yardstick
    if yardstick.sample is None:
        return [size["text_bytes"]] * len(size["samples"].get(row.sample, []))
    if yardstick.size is not None:
        size = size_with(run, yardstick.size)
    return size and costs_of(size, yardstick.sample, yardstick.measure, yardstick.minus)


def ratio_of(figures, yardsticks, same_rounds):
    """
    The median of the ratios of the rounds, since what is measured in one round has the load of the
    machine in common; the ratio of the medians where the rounds are not the same ones.
    """
    if same_rounds:
        return statistics.median(figure / other for figure, other in zip(figures, yardsticks))
    return statistics.median(figures) / statistics.median(yardsticks)


def median_of(values):
    return statistics.median(values) if values else None


def evaluate_row(run, size, row):
    """One row of the table; without a ratio where something was not measured."""
    figures = costs_of(size, row.sample, row.measure, row.minus)
    yardsticks = yardstick_of(run, size, row) if row.yardstick else None
    same_rounds = row.yardstick is not None and row.yardstick.size is None
    ratio = ratio_of(figures, yardsticks, same_rounds) if figures and yardsticks else None
    goal = row.goal_for(size["postings"])
    value = ratio if row.yardstick else median_of(figures)
    verdict = None
    if goal and value is not None:
        verdict = "meets" if value <= goal.limit else "misses"
    return {"key": row.key, "label": row.label, "unit": rows.UNITS[row.measure],
            "figure": median_of(figures), "yardstick": row.yardstick and row.yardstick.label,
            "yardstick_figure": median_of(yardsticks), "ratio": ratio,
            "goal": goal and goal.limit, "verdict": verdict}


def evaluate(run):
    """Adds the rows to every size of a run."""
    for size in run["sizes"]:
        size["rows"] = [evaluate_row(run, size, row) for row in rows.ROWS
                        if size["postings"] >= row.low]


def value_of(row):
    """What a goal limits and runs are compared by: the ratio, without a yardstick the figure."""
    return row["ratio"] if row["yardstick"] else row["figure"]


def compare(run, earlier):
    """By (postings, key): the earlier value of a row and the change since, as a fraction."""
    changes = {}
    for size in run["sizes"]:
        known = size_with(earlier, size["postings"]) or {"rows": []}
        before = {row["key"]: value_of(row) for row in known["rows"]}
        for row in size["rows"]:
            old, new = before.get(row["key"]), value_of(row)
            if old and new is not None:
                changes[size["postings"], row["key"]] = (old, new / old - 1)
    return changes


def write(run, path):
    with open(path, "w", encoding="utf-8") as file:
        json.dump(run, file, indent=1)
        file.write("\n")


def read(path):
    """Reads a run; ValueError when the file is of another kind."""
    with open(path, encoding="utf-8") as file:
        run = json.load(file)
    if not isinstance(run, dict) or run.get("format") != FORMAT:
        raise ValueError(f"{path} does not hold the results of a run in format {FORMAT}")
    return run
