#!/usr/bin/env python3
# SPDX-License-Identifier: LGPL-2.1-or-later
"""Uses the library from many threads at once and looks for what breaks.

A front end changes filters, settings and the watchlist, updates, shows and saves, while details and
reactions load in the background, and closes or exits with work under way, against a server of sample
data. It must neither crash nor hang, and every fetch must be reported once. Built with the thread
sanitizer, it ends at the first data race as well.
"""
import argparse
import itertools
import pathlib
import subprocess
import time

from stand_in import Server, in_directory, require

SOURCE = pathlib.Path(__file__).resolve().parent.parent
ROUNDS = 2  # of each run of the program
PATIENCE = 240  # seconds for one run
FIGURES = ("rounds", "changes", "fetches", "look-ups")


def run_once(build, server, cache):
    """Runs the program and returns its figures."""
    command = [build / "bin/velkor-stress", server.host, cache, build / "lib", str(ROUNDS)]
    try:
        result = subprocess.run(command, stdout=subprocess.PIPE, text=True, timeout=PATIENCE)
    except subprocess.TimeoutExpired:
        require(False, "velkor-stress hangs")
    require(result.returncode == 0, f"velkor-stress ends with {result.returncode}")
    *_, last = ["", *result.stdout.splitlines()]
    figures = last.split()
    require(len(figures) == len(FIGURES), "velkor-stress does not tell its figures")
    return tuple(map(int, figures))


def more_runs(arguments):
    """Yields once for each run that is to be made."""
    if arguments.runs is not None:
        return range(arguments.runs)
    deadline = time.monotonic() + arguments.seconds
    return itertools.takewhile(lambda _: time.monotonic() < deadline, itertools.count())


def run(arguments, directory):
    cache = directory / "cache"
    cache.mkdir(0o700)
    settings = cache / "velkor.conf"
    settings.touch(0o600)
    settings.write_text("username=demo\npassword=demo-geheim\n")
    sums = [0] * len(FIGURES)
    runs = 0
    with Server(arguments.build, directory, 100) as server:
        for runs, _ in enumerate(more_runs(arguments), 1):
            figures = run_once(arguments.build, server, cache)
            sums = [total + figure for total, figure in zip(sums, figures)]
            server.advance(new=10, updated=5, seconds=60)
    print(f"{runs} runs:", ", ".join(f"{total} {name}" for total, name in zip(sums, FIGURES)))


def main():
    parser = argparse.ArgumentParser(prog="./dev stress", description=__doc__.partition("\n")[0])
    parser.add_argument("seconds", nargs="?", type=int, default=60, metavar="SECONDS",
                        help="begin runs for so long (60)")
    parser.add_argument("--runs", type=int, help="so many runs instead, however long they take")
    parser.add_argument("--build", type=pathlib.Path, default=SOURCE / "build/tsan",
                        help="the build tree of the programs (build/tsan)")
    in_directory("stress", run, parser.parse_args())


if __name__ == "__main__":
    main()
