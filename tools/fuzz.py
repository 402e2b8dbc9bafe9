#!/usr/bin/env python3
# SPDX-License-Identifier: LGPL-2.1-or-later
"""Runs the fuzz targets, or tells which lines of the sources their inputs reach."""
import argparse
import json
import os
import re
import subprocess
import sys
import tempfile
from collections import namedtuple
from pathlib import Path

BUILD = Path("build/fuzz")
COVERAGE_BUILD = Path("build/fuzz-coverage")
MAX_INPUT = 256 * 1024  # large enough to reach the limits of most readers
SOURCES = ("src/", "apps/")

Run = namedtuple("Run", "status cpu executions edges features")
Total = namedtuple("Total", "target cpu executions edges features")
FileLines = namedtuple("FileLines", "name covered total")


def targets_in(build, names):
    """The names given, or those of all fuzz targets built there."""
    return names or sorted(path.name for path in (build / "bin").glob("fuzz-*"))


def tracked_inputs(target):
    return Path("tests/fuzz/corpus") / target


def found_inputs(target):
    """Inputs that runs have found are kept here, beside the tracked ones."""
    return BUILD / "corpus" / target


def parse_log(text):
    """Executions, edges and features at the end of a run, as libFuzzer reports them."""
    executions = re.findall(r"^stat::number_of_executed_units:\s*(\d+)", text, re.M)
    reached = re.findall(r" cov: (\d+) ft: (\d+)", text)
    edges, features = reached[-1] if reached else (0, 0)
    return int(executions[-1]) if executions else 0, int(edges), int(features)


def run_once(target, seconds):
    log = BUILD / f"{target}.log"
    found_inputs(target).mkdir(parents=True, exist_ok=True)
    command = [
        BUILD / "bin" / target, f"-max_total_time={seconds}", f"-max_len={MAX_INPUT}",
        "-rss_limit_mb=2048", "-timeout=20", "-close_fd_mask=3", "-print_final_stats=1",
        f"-artifact_prefix={BUILD}/{target}-", f"-dict=tests/fuzz/{target}.dict",
        found_inputs(target), tracked_inputs(target),
    ]
    # Memory instead of a disk for the files that some targets write for every input. A fuzzer ends
    # without removing its own.
    with tempfile.TemporaryDirectory(dir="/dev/shm") as files, open(log, "wb") as output:
        process = subprocess.Popen(command, env={**os.environ, "TMPDIR": files}, stdout=output,
                                   stderr=output)
        _, status, usage = os.wait4(process.pid, 0)
    process.returncode = os.waitstatus_to_exitcode(status)
    return Run(process.returncode, usage.ru_utime + usage.ru_stime,
               *parse_log(log.read_text(errors="replace")))


def report_finding(target):
    log = (BUILD / f"{target}.log").read_text(errors="replace")
    print("\n".join(log.splitlines()[-40:]), file=sys.stderr)
    artifact = re.search(r"Test unit written to (\S+)", log)
    if artifact:
        print(f"fuzz: {target} has a finding; see {BUILD}/bin/{target} {artifact[1]}", file=sys.stderr)


def run_target(target, seconds):
    """Runs a target until it has used that CPU time; None after a finding."""
    cpu = executions = edges = features = 0
    while cpu < seconds:
        run = run_once(target, max(1, round(seconds - cpu)))
        if run.status != 0:
            report_finding(target)
            return None
        cpu += run.cpu
        executions += run.executions
        edges, features = run.edges, run.features
    return Total(target, cpu, executions, edges, features)


def print_totals(totals):
    print(f"{'target':<20} {'CPU s':>8} {'executions':>12} {'edges':>8} {'features':>9}")
    for total in totals:
        print(f"{total.target:<20} {total.cpu:>8.0f} {total.executions:>12} {total.edges:>8} "
              f"{total.features:>9}")


def fuzz(seconds, names):
    totals = []
    for target in targets_in(BUILD, names):
        total = run_target(target, seconds)
        if total is None:
            break
        totals.append(total)
    print_totals(totals)
    return 0 if len(totals) == len(targets_in(BUILD, names)) else 1


def profile(target):
    """Replays the inputs of a target; the file with the counters."""
    raw = COVERAGE_BUILD / f"{target}.profraw"
    inputs = [path for path in (tracked_inputs(target), found_inputs(target)) if path.is_dir()]
    subprocess.run([COVERAGE_BUILD / "bin" / target, *inputs], check=True,
                   env={**os.environ, "LLVM_PROFILE_FILE": str(raw), "TMPDIR": "/dev/shm"},
                   stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
    return raw


def lines_by_file(export):
    """The files with lines that were run, of what llvm-cov exports."""
    found = []
    for entry in export["data"][0]["files"]:
        name = os.path.normpath(entry["filename"]).removeprefix(f"{COVERAGE_BUILD}/")
        lines = entry["summary"]["lines"]
        if name.startswith(SOURCES) and lines["covered"] > 0:
            found.append(FileLines(name, lines["covered"], lines["count"]))
    return sorted(found)


def coverage(names):
    targets = targets_in(COVERAGE_BUILD, names)
    merged = COVERAGE_BUILD / "merged.profdata"
    subprocess.run(["llvm-profdata", "merge", "-o", merged, *map(profile, targets)], check=True)
    programs = [COVERAGE_BUILD / "bin" / target for target in targets]
    libraries = list((COVERAGE_BUILD / "lib").glob("libvelkor.so"))
    objects = [f"-object={path}" for path in programs[1:] + libraries]
    export = subprocess.run(
        ["llvm-cov", "export", "-summary-only", f"-instr-profile={merged}", programs[0], *objects],
        check=True, capture_output=True, text=True).stdout
    print(f"{'file':<52} {'lines':>6} {'reached':>8}")
    for file in lines_by_file(json.loads(export)):
        print(f"{file.name:<52} {file.total:>6} {file.covered / file.total:>8.1%}")
    return 0


def main():
    parser = argparse.ArgumentParser(prog="./dev fuzz", description=__doc__)
    parser.add_argument("--coverage", action="store_true", help="replay the inputs and print coverage")
    parser.add_argument("arguments", nargs="*", metavar="[SECONDS] [TARGET ...]",
                        help="CPU seconds for each target (60), and which targets (all)")
    options = parser.parse_args()
    words = options.arguments
    seconds = int(words.pop(0)) if words and words[0].isdigit() else 60
    return coverage(words) if options.coverage else fuzz(seconds, words)


if __name__ == "__main__":
    sys.exit(main())
