#!/usr/bin/env python3
# SPDX-License-Identifier: LGPL-2.1-or-later
"""Updates many times in one process and looks at what it holds.

A server of sample data gets new postings, changes and loses some, and its clock moves on, so that
as many age out of the client's list as come in. Once the list has its size, resident memory and
open descriptors of the client must not grow any more.
"""
import argparse
import pathlib
import random
import statistics
import subprocess
import time

from stand_in import PATIENCE, Server, in_directory, require

SOURCE = pathlib.Path(__file__).resolve().parent.parent
HOUR = 3600
KEPT_HOURS = 7 * 24  # of the shortest setting for the age of postings
GROWTH_ALLOWED = 1.05


class Client:
    """The process that updates; it ends with the block that it is used in."""

    def __init__(self, build, server, cache):
        cache.mkdir(0o700)
        (cache / "velkor.conf").write_text(
            "username=demo\npassword=demo-geheim\nverwijderPostsNaXDagen=0\n")
        self.process = subprocess.Popen(
            [build / "bin/velkor-soak", server.host, cache, build / "lib"], text=True, bufsize=1,
            stdin=subprocess.PIPE, stdout=subprocess.PIPE)

    def __enter__(self):
        return self

    def __exit__(self, *_):
        self.process.stdin.close()
        self.status = self.process.wait(PATIENCE)

    def update(self, now):
        """Updates at that time: postings, resident KiB and descriptors afterwards."""
        self.process.stdin.write(f"{now}\n")
        answer = self.process.stdout.readline().split()
        require(len(answer) == 3, "velkor-soak has ended")
        return tuple(map(int, answer))


def typical(samples, member):
    return statistics.median(sample[member] for sample in samples)


def check(samples):
    """Memory and descriptors after the list has its size, against the end."""
    tenth = max(len(samples) // 10, 1)
    early = samples[-4 * tenth:-3 * tenth]
    late = samples[-tenth:]
    print("           postings  resident KiB  descriptors")
    for name, some in (("first", samples[:tenth]), ("early", early), ("late", late)):
        print(f"{name:10} {typical(some, 0):8.0f}  {typical(some, 1):12.0f}  {typical(some, 2):11.0f}")
    require(typical(late, 1) <= GROWTH_ALLOWED * typical(early, 1), "memory keeps growing")
    require(max(sample[2] for sample in late) <= max(sample[2] for sample in early),
            "the number of descriptors keeps growing")
    require(typical(late, 0) > 0, "there are no postings")


def run(arguments, directory):
    # The list has its size when postings have aged out for a while.
    step = max(HOUR * 2 * KEPT_HOURS // arguments.times, 60)
    now = int(time.time()) - step * (arguments.times + 1)
    with Server(arguments.build, directory, 1000, ("--now", str(now))) as server:
        with Client(arguments.build, server, directory / "cache") as client:
            samples = []
            for _ in range(arguments.times):
                server.advance(new=random.randint(20, 60), updated=random.randint(0, 20),
                               deleted=random.randint(0, 5), seconds=step)
                now += step
                samples.append(client.update(now))
        require(client.status == 0, f"velkor-soak ends with {client.status}")
    check(samples)


def main():
    parser = argparse.ArgumentParser(prog="./dev soak", description=__doc__.partition("\n")[0])
    parser.add_argument("times", nargs="?", type=int, default=500, metavar="TIMES",
                        help="how many updates (500); fewer than 100 tell little")
    parser.add_argument("--build", type=pathlib.Path, default=SOURCE / "build/bench",
                        help="the build tree of the programs (build/bench)")
    arguments = parser.parse_args()
    random.seed(1)
    in_directory("soak", run, arguments)


if __name__ == "__main__":
    main()
