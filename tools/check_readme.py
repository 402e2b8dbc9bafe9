#!/usr/bin/env python3
# SPDX-License-Identifier: LGPL-2.1-or-later
"""Runs the commands of a page and compares what they print with what the page says.

usage: check_readme.py PAGE

A block marked "console" holds commands behind "$ ", each followed by what it prints; "..." stands
for any text. tools/try gives the commands a server and a home.
"""
import pathlib
import re
import subprocess
import sys


def steps(page):
    """The commands of the page and what each is to print."""
    for block in re.findall(r"^```console\n(.*?)^```$", page, re.MULTILINE | re.DOTALL):
        for step in re.split(r"^\$ ", block, flags=re.MULTILINE)[1:]:
            command, _, printed = step.partition("\n")
            yield command, printed


def pattern_of(printed):
    return re.compile(".*?".join(map(re.escape, printed.split("..."))), re.DOTALL)


def fault_of(command, printed):
    run = subprocess.run(["bash", "-c", command], stdin=subprocess.DEVNULL, stdout=subprocess.PIPE,
                         stderr=subprocess.STDOUT, text=True)
    if run.returncode != 0 or not pattern_of(printed).fullmatch(run.stdout):
        return f"$ {command}\n--- expected\n{printed}--- printed, status {run.returncode}\n{run.stdout}"
    return None


def main(page):
    found = list(steps(pathlib.Path(page).read_text()))
    if not found:
        sys.exit(f"check_readme: no command in {page}")
    for command, printed in found:
        fault = fault_of(command, printed)
        if fault:
            sys.exit(fault)
    print(f"check_readme: {len(found)} commands print what {page} says")


if __name__ == "__main__":
    main(*sys.argv[1:])
