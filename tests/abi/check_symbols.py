#!/usr/bin/env python3
# SPDX-License-Identifier: LGPL-2.1-or-later
"""Compares what a shared library exports, its soname and its version with the expected ones.

usage: check_symbols.py LIBRARY SONAME VERSION LIST

A line of the list is the name of a function, or that of an object and the word "data".
"""
import pathlib
import re
import subprocess
import sys


def output_of(*command):
    return subprocess.run(command, check=True, capture_output=True, text=True).stdout


def exported(library):
    """The names with their versions, and the kind of each: "function", "data" or "version"."""
    listing = output_of("nm", "--dynamic", "--defined-only", "--format=posix", library)
    kinds = {"T": "function", "A": "version"}
    return {name: kinds.get(letter, "data")
            for name, letter in (line.split()[:2] for line in listing.splitlines())}


def expected(version, table):
    lines = (line.split() for line in pathlib.Path(table).read_text().splitlines())
    named = (words for words in lines if words and words[0] != "#")
    symbols = {f"{name}@@{version}": kind[0] if kind else "function" for name, *kind in named}
    # The linker exports the version itself, too.
    return {version: "version", **symbols}


def soname(library):
    found = re.search(r"\(SONAME\).*\[(.*)\]", output_of("readelf", "--dynamic", library))
    return found and found[1]


def faults(library, expected_soname, listed):
    if soname(library) != expected_soname:
        yield f"the soname is {soname(library)} instead of {expected_soname}"
    found = exported(library)
    for name in sorted(listed.items() - found.items()):
        yield "no longer exported: {1} {0}".format(*name)
    for name in sorted(found.items() - listed.items()):
        yield "exported, but not listed: {1} {0}".format(*name)


def main(library, expected_soname, version, table):
    found = list(faults(library, expected_soname, expected(version, table)))
    for fault in found:
        print(f"check_symbols: {fault}", file=sys.stderr)
    return 1 if found else 0


if __name__ == "__main__":
    sys.exit(main(*sys.argv[1:]))
