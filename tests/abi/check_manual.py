#!/usr/bin/env python3
# SPDX-License-Identifier: LGPL-2.1-or-later
"""The C blocks of a manual, joined, are the program that the tests compile and run.

usage: check_manual.py MANUAL PROGRAM
"""
import difflib
import pathlib
import re
import sys


def main(manual, program):
    blocks = re.findall(r"^```c\n(.*?)^```$", pathlib.Path(manual).read_text(), re.MULTILINE | re.DOTALL)
    shown = "\n".join(blocks).splitlines(keepends=True)
    compiled = pathlib.Path(program).read_text().splitlines(keepends=True)[1:]  # but the licence
    sys.stderr.writelines(difflib.unified_diff(shown, compiled, manual, program))
    return 0 if shown and shown == compiled else 1


if __name__ == "__main__":
    sys.exit(main(*sys.argv[1:]))
