#!/usr/bin/env python3
# SPDX-License-Identifier: LGPL-2.1-or-later
"""Counts the library's instructions with callgrind and compares them with a baseline.

Nothing but the measured part of each case counts, that of all threads. The data, the order of the
threads (callgrind runs one at a time) and what libc takes the processor for are always the same.
"""
import argparse
import pathlib
import subprocess
import sys
import tempfile

from runner import instructions, table
from runner.programs import Failed, Programs, describe_failure

SOURCE = pathlib.Path(__file__).resolve().parent.parent
BASELINE = SOURCE / "bench/baseline.json"
POSTINGS = 10_000
NOW = 1_300_000_000
CASES = ("load", "save", "changes", "word", "tags", "display")
YARDSTICKS = {"copy"}
MARGIN = 0.05

# Without these, libc chooses its copying and searching of texts by the processor.
PLAIN_PROCESSOR = "glibc.cpu.hwcaps=-AVX512VL,-AVX512BW,-AVX2,-AVX,-ERMS,-FSRM,-RTM,-BMI2,-EVEX"


def prepare(programs, directory):
    """A stock that is the same in every run."""
    (directory / "stock").mkdir()
    programs.run_bench("write", directory, POSTINGS, NOW)
    programs.measure_program(directory / "stock/velkor.posts.gz", "pigz", "-9", "-n", "-p1", "-c",
                             directory / "posts.xml")
    programs.run_bench("prepare", directory, POSTINGS, NOW)


def count_case(programs, directory, name):
    """The instructions of the measurements of one case."""
    profiles = directory / f"profiles-{name}"
    profiles.mkdir()
    environment = programs.environment | {"LD_BIND_NOW": "1", "GLIBC_TUNABLES": PLAIN_PROCESSOR}
    command = ["valgrind", "--tool=callgrind", "--instr-atstart=no",
               f"--callgrind-out-file={profiles}/callgrind.out.%p", str(programs.bench), name,
               str(directory), str(POSTINGS), str(NOW)]
    run = subprocess.run(command, capture_output=True, text=True, env=environment, check=False)
    if run.returncode != 0:
        raise Failed(describe_failure(command, run.returncode, run.stderr))
    return instructions.read_profiles(profiles)


def count(build):
    with tempfile.TemporaryDirectory(prefix="velkor-callgrind-") as work:
        directory = pathlib.Path(work)
        programs = Programs(build, directory)
        prepare(programs, directory)
        counts = {}
        for name in CASES:
            counts |= count_case(programs, directory, name)
        return {name: number for name, number in counts.items() if name not in YARDSTICKS}


def compare(counts):
    baseline = instructions.read_baseline(BASELINE)
    if baseline["postings"] != POSTINGS:
        raise ValueError(f"{BASELINE} is for {baseline['postings']} postings, not {POSTINGS}")
    lines, fine = instructions.compare(counts, baseline["instructions"], MARGIN)
    titles = ["measurement", "instructions", "baseline", "change", ""]
    print("\n".join(table.line_up([titles] + lines, right=(1, 2, 3))))
    if not fine or any(line[-1] == "less" for line in lines):
        print(f"\nThe margin is {MARGIN:.0%}. Where the difference is meant, "
              "./dev callgrind --renew makes these counts the baseline; commit bench/baseline.json "
              "with the change that explains it.")
    return fine


def main():
    parser = argparse.ArgumentParser(prog="./dev callgrind", description=__doc__.partition("\n")[0])
    parser.add_argument("--build", type=pathlib.Path, default=SOURCE / "build/bench",
                        help="the build tree to measure (build/bench)")
    parser.add_argument("--renew", action="store_true", help="write the baseline anew")
    arguments = parser.parse_args()
    try:
        counts = count(arguments.build)
        if arguments.renew:
            instructions.write_baseline(BASELINE, counts, POSTINGS)
            print(f"{BASELINE.relative_to(SOURCE)} is new; commit it with what changed the counts")
            return
        fine = compare(counts)
    except (Failed, OSError, ValueError, KeyError) as fault:
        sys.exit(f"callgrind: {fault}")
    sys.exit(0 if fine else 1)


if __name__ == "__main__":
    main()
