# SPDX-License-Identifier: LGPL-2.1-or-later
"""The rows of the table: which cost is compared with which yardstick, and the goal."""
import dataclasses
import typing

COMMON_SIZE = 100_000
LARGE_SIZE = 1_000_000

# What a row shows of a sample.
UNITS = {"cpu": "s", "wall": "s", "memory": "B"}


@dataclasses.dataclass(frozen=True)
class Yardstick:
    """What a figure is divided by: a cost of another sample, or the bytes of the text."""
    label: str
    sample: typing.Optional[str] = None
    measure: str = "cpu"
    minus: typing.Optional[str] = None
    size: typing.Optional[int] = None  # taken from the samples of that many postings


@dataclasses.dataclass(frozen=True)
class Goal:
    """The largest ratio (without a yardstick: figure) for sizes from `low` up to `high`."""
    limit: float
    low: int = 0
    high: typing.Optional[int] = None

    def holds_for(self, postings):
        return self.low <= postings and (self.high is None or postings <= self.high)


@dataclasses.dataclass(frozen=True)
class Row:
    key: str
    label: str
    sample: str
    measure: str
    yardstick: typing.Optional[Yardstick] = None
    goals: tuple = ()
    minus: typing.Optional[str] = None  # the same cost of this sample is subtracted
    low: int = 0  # the row is for sizes from here on

    def goal_for(self, postings):
        return next((goal for goal in self.goals if goal.holds_for(postings)), None)


XS = Yardstick("xmllint --stream", "xmllint")
PZ = Yardstick("pigz -9 -p1", "pigz")
TEXT = Yardstick("the text")
COPY = Yardstick("copy of the document", "copy")
LIKE_WORD = Yardstick("SQLite LIKE, titles", "like-word")
LIKE_TAGS = Yardstick("SQLite LIKE, tags", "like-tags")
UPDATE_BEYOND_LOAD = Yardstick("with 100,000 postings", "update", minus="load", size=COMMON_SIZE)


def at_most(limit):
    return (Goal(limit),)


ROWS = (
    Row("load-cpu", "load, CPU", "load", "cpu", XS,
        (Goal(1.15, COMMON_SIZE, LARGE_SIZE - 1), Goal(1.2, LARGE_SIZE))),
    Row("load-wall", "load, wall", "load", "wall", XS, at_most(0.7)),
    Row("load-memory", "load, peak memory", "load", "memory", TEXT, at_most(1.5)),
    Row("save-cpu", "save of everything, CPU", "save", "cpu", PZ, at_most(1.3)),
    Row("save-wall", "save of everything, wall", "save", "wall", PZ, at_most(0.75)),
    Row("save-changes-cpu", "save after changes, CPU", "save-changes", "cpu", PZ, at_most(0.25)),
    Row("save-unchanged-cpu", "save without changes, CPU", "save-unchanged", "cpu", PZ),
    Row("merge-cpu", "merge of an update, CPU", "merge", "cpu"),
    Row("update-cpu", "velkorctl update, CPU", "update", "cpu", PZ, at_most(0.6)),
    Row("update-beyond-load-cpu", "the same without the load, CPU", "update", "cpu",
        UPDATE_BEYOND_LOAD, (Goal(2, LARGE_SIZE, LARGE_SIZE),), minus="load", low=COMMON_SIZE + 1),
    Row("first-update-wall", "first velkorctl update, wall", "first-update", "wall", None,
        (Goal(1.5, COMMON_SIZE, COMMON_SIZE),)),
    Row("list-wall", "velkorctl list -l 3, wall", "list", "wall", None,
        (Goal(0.25, COMMON_SIZE, COMMON_SIZE), Goal(2, LARGE_SIZE, LARGE_SIZE))),
    Row("display-cpu", "display document, CPU", "display", "cpu", COPY, at_most(2.3)),
    Row("word-cpu", "filter by a word, CPU", "word", "cpu", LIKE_WORD, at_most(0.8)),
    Row("word-again-cpu", "the same, second pass, CPU", "word-again", "cpu", LIKE_WORD,
        at_most(0.8)),
    Row("tags-cpu", "filter by a tag, CPU", "tags", "cpu", LIKE_TAGS, at_most(0.8)),
    Row("tags-again-cpu", "the same, second pass, CPU", "tags-again", "cpu", LIKE_TAGS,
        at_most(0.8)),
)
