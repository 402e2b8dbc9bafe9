#!/usr/bin/env python3
# SPDX-License-Identifier: LGPL-2.1-or-later
"""Compares the objects that have static initialisers with the list of files that may have them.

usage: check_initialisers.py LIST OBJECT...
"""
import pathlib
import posixpath
import re
import subprocess
import sys


def source_of(obj):
    """The source file below src/ of an object as CMake names it, "target.dir/./module/file.cc.o"."""
    return posixpath.normpath(re.sub(r"^.*\.dir/|\.o$", "", obj))


def has_initialiser(obj):
    listing = subprocess.run(["nm", obj], check=True, capture_output=True, text=True).stdout
    return "_GLOBAL__sub_I_" in listing


def main(table, *objects):
    lines = pathlib.Path(table).read_text().splitlines()
    allowed = {line for line in lines if line and not line.startswith("#")}
    found = {source_of(obj) for obj in objects if has_initialiser(obj)}
    for name in sorted(found - allowed):
        print(f"check_initialisers: {name} has a static initialiser", file=sys.stderr)
    for name in sorted(allowed - found):
        print(f"check_initialisers: {name} is listed without need", file=sys.stderr)
    return 0 if found == allowed else 1


if __name__ == "__main__":
    sys.exit(main(*sys.argv[1:]))
