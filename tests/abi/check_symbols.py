#!/usr/bin/env python3
# SPDX-License-Identifier: LGPL-2.1-or-later
"""Compares what a shared library exports, and its soname, with the expected ones.

usage: check_symbols.py LIBRARY SONAME LIST
"""
import pathlib
import re
import subprocess
import sys


def output_of(*command):
    return subprocess.run(command, check=True, capture_output=True, text=True).stdout


def exported(library):
    listing = output_of("nm", "--dynamic", "--defined-only", "--format=posix", library)
    return {line.split()[0] for line in listing.splitlines()}


def soname(library):
    found = re.search(r"\(SONAME\).*\[(.*)\]", output_of("readelf", "--dynamic", library))
    return found and found[1]


def faults(library, expected_soname, listed):
    if soname(library) != expected_soname:
        yield f"the soname is {soname(library)} instead of {expected_soname}"
    found = exported(library)
    yield from (f"no longer exported: {name}" for name in sorted(listed - found))
    yield from (f"exported, but not listed: {name}" for name in sorted(found - listed))


def main(library, expected_soname, table):
    lines = pathlib.Path(table).read_text().splitlines()
    listed = {line for line in lines if line and not line.startswith("#")}
    found = list(faults(library, expected_soname, listed))
    for fault in found:
        print(f"check_symbols: {fault}", file=sys.stderr)
    return 1 if found else 0


if __name__ == "__main__":
    sys.exit(main(*sys.argv[1:]))
