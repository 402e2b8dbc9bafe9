#!/usr/bin/env python3
# SPDX-License-Identifier: LGPL-2.1-or-later
"""Measures the library and its programs beside yardsticks of the same run.

Every case and every yardstick runs in a process of its own, in turn; the table shows medians.
docs/performance.md says what is measured and how.
"""
import argparse
import datetime
import pathlib
import subprocess
import sys
import tempfile

from runner import machine, results, table
from runner.programs import Failed, Programs
from runner.series import Series

SOURCE = pathlib.Path(__file__).resolve().parent.parent
SIZES = [10_000, 100_000, 1_000_000]
LEAST, MOST = 1_000, 10_000_000


def size(text):
    number = int(text)
    if not LEAST <= number <= MOST:
        raise argparse.ArgumentTypeError(f"not from {LEAST} to {MOST}: {text}")
    return number


def parse_arguments():
    parser = argparse.ArgumentParser(prog="./dev bench", description=__doc__.partition("\n")[0])
    parser.add_argument("sizes", nargs="*", type=size, default=SIZES, metavar="SIZE",
                        help="numbers of postings (10000 100000 1000000)")
    parser.add_argument("--build", type=pathlib.Path, default=SOURCE / "build/bench",
                        help="the build tree to measure (build/bench)")
    parser.add_argument("--json", type=pathlib.Path, metavar="FILE",
                        help="write machine, versions and every sample to FILE")
    parser.add_argument("--against", type=pathlib.Path, metavar="FILE",
                        help="print the change since the run that FILE holds")
    return parser.parse_args()


def measure(build, sizes, file):
    """The results with every size; they go to the file, if any, after each of them."""
    run = {"format": results.FORMAT,
           "date": datetime.datetime.now(datetime.timezone.utc).isoformat(timespec="seconds"),
           "machine": machine.describe(), "versions": machine.versions(SOURCE), "sizes": []}
    with tempfile.TemporaryDirectory(prefix="velkor-bench-") as directory:
        work = pathlib.Path(directory)
        for postings in sizes:
            with Series(Programs(build, work), work / str(postings), postings) as series:
                run["sizes"].append(series.measure())
            results.evaluate(run)
            if file:
                results.write(run, file)
    return run


def main():
    arguments = parse_arguments()
    try:
        earlier = results.read(arguments.against) if arguments.against else None
        run = measure(arguments.build, sorted(set(arguments.sizes)), arguments.json)
    except (Failed, OSError, ValueError, subprocess.SubprocessError) as fault:
        sys.exit(f"bench: {fault}")
    print("\n".join(table.show(run, earlier)))


if __name__ == "__main__":
    main()
