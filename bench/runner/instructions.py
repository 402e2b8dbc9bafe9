# SPDX-License-Identifier: LGPL-2.1-or-later
"""Counts of instructions: reading callgrind's profiles, and comparing with a baseline."""
import json
import re

DUMP_REASON = re.compile(r"^desc: Trigger: Client Request: (\S+)$", re.MULTILINE)
TOTAL = re.compile(r"^(?:totals|summary): (\d+)", re.MULTILINE)


def read_profile(text):
    """The measurement that a profile is of, and its instructions; None for any other profile."""
    reason = DUMP_REASON.search(text)
    if not reason:
        return None
    total = TOTAL.search(text)
    if not total:
        raise ValueError("a profile of callgrind has no total")
    return reason.group(1), int(total.group(1))


def read_profiles(directory):
    """The instructions of each measurement in the profiles of a directory."""
    profiles = (read_profile(path.read_text(errors="replace"))
                for path in sorted(directory.glob("callgrind.out.*")))
    return dict(profile for profile in profiles if profile)


def compare(counts, baseline, margin):
    """A line per measurement, and whether none takes more than its baseline and the margin."""
    lines, fine = [], True
    for name in sorted(counts.keys() | baseline.keys()):
        count, known = counts.get(name), baseline.get(name)
        if count is None or known is None:
            verdict = "is not in the baseline" if known is None else "was not measured"
            lines.append([name, str(count or ""), str(known or ""), "", verdict])
            fine = False
            continue
        verdict = ("more" if count > known * (1 + margin) else
                   "less" if count < known * (1 - margin) else "as before")
        fine = fine and verdict != "more"
        lines.append([name, f"{count:,}", f"{known:,}", f"{count / known - 1:+.2%}", verdict])
    return lines, fine


def read_baseline(path):
    return json.loads(path.read_text(encoding="utf-8"))


def write_baseline(path, counts, postings):
    document = {"postings": postings, "instructions": counts}
    path.write_text(json.dumps(document, indent=2, sort_keys=True) + "\n", encoding="utf-8")
