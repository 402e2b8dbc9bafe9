#!/usr/bin/env python3
# SPDX-License-Identifier: LGPL-2.1-or-later
"""Checks that includes and calls of src/ go down the floors of tools/floors.txt, in no circle.

usage: check_floors.py [--root DIRECTORY] [OBJECT ...]

Without objects the includes of internal headers are checked. The objects of the library, when
given, are checked for the symbols that they use: whatever one defines and another one needs must
be defined on the same floor or a lower one, or be listed as an exception.
"""
import argparse
import fnmatch
import pathlib
import posixpath
import re
import subprocess
import sys

INCLUDE = re.compile(r'^\s*#\s*include\s+"([^"]+)"', re.MULTILINE)
SOURCES = (".c", ".cc", ".h")


class Floors:
    """The table: `floor N pattern ...` lines, the first match counts; `allow user symbol` lines."""

    def __init__(self, table):
        self.rules, self.allowed, self.used = [], set(), set()
        for line in table.read_text().splitlines():
            words = line.partition("#")[0].split()
            if words[:1] == ["floor"]:
                self.rules += [(pattern, int(words[1])) for pattern in words[2:]]
            elif words[:1] == ["allow"] and len(words) == 3:
                self.allowed.add((words[1], words[2]))
            elif words:
                raise SystemExit(f"{table}: cannot read: {line}")

    def of(self, name):
        stem = name.rpartition(".")[0]
        return next((floor for rule, floor in self.rules if fnmatch.fnmatchcase(stem, rule)), None)

    def allows(self, user, symbol):
        exception = (user.rpartition(".")[0], symbol)
        self.used.add(exception)
        return exception in self.allowed


def read_includes(source):
    """The internal headers that each file of src/ includes, by path below src/."""
    files = sorted(path for path in source.rglob("*") if path.suffix in SOURCES)
    return {str(path.relative_to(source)): INCLUDE.findall(path.read_text()) for path in files}


def check_includes(includes, floors):
    for name, headers in includes.items():
        if floors.of(name) is None:
            yield f"{name}: has no floor in tools/floors.txt"
            continue
        for header in headers:
            if header not in includes:
                yield f"{name}: includes \"{header}\", which is not a path below src/"
            elif (floors.of(header) or 0) > floors.of(name):
                yield (f"{name} (floor {floors.of(name)}) includes "
                       f"{header} (floor {floors.of(header)})")


def find_circle(includes):
    """Some circle of includes as a list of files, or None."""
    finished = set()

    def visit(name, path):
        if name in path:
            return path[path.index(name):] + [name]
        if name in finished:
            return None
        for header in includes.get(name, ()):
            circle = visit(header, path + [name])
            if circle:
                return circle
        finished.add(name)
        return None

    return next(filter(None, (visit(name, []) for name in includes)), None)


def source_of(obj):
    """The source file below src/ of an object as CMake names it, "target.dir/./room/file.cc.o"."""
    return posixpath.normpath(re.sub(r"^.*\.dir/", "", obj)[: -len(".o")])


def read_symbols(objects):
    """Who defines each strong symbol, and what each source needs."""
    defined, needed = {}, {}
    for obj in objects:
        listing = subprocess.run(["nm", "--format=posix", obj], check=True, capture_output=True,
                                 text=True).stdout
        for symbol, kind, *_ in map(str.split, listing.splitlines()):
            if kind == "U":
                needed.setdefault(source_of(obj), []).append(symbol)
            elif kind in "TDBR":
                defined[symbol] = source_of(obj)
    return defined, needed


def readable(symbol):
    return subprocess.run(["c++filt", "--no-params", symbol], check=True, capture_output=True,
                          text=True).stdout.strip()


def check_symbols(objects, floors):
    defined, needed = read_symbols(objects)
    for user, symbols in sorted(needed.items()):
        for symbol in symbols:
            owner = defined.get(symbol)
            if owner is None or floors.of(owner) <= floors.of(user):
                continue
            name = readable(symbol)
            if not floors.allows(user, name):
                yield (f"{user} (floor {floors.of(user)}) needs {name} of "
                       f"{owner} (floor {floors.of(owner)})")
    for user, name in sorted(floors.allowed - floors.used):
        yield f"tools/floors.txt: the exception of {user} for {name} is not needed"


def main():
    parser = argparse.ArgumentParser(description=__doc__,
                                     formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--root", type=pathlib.Path,
                        default=pathlib.Path(__file__).resolve().parent.parent)
    parser.add_argument("objects", nargs="*")
    arguments = parser.parse_args()

    floors = Floors(arguments.root / "tools/floors.txt")
    includes = read_includes(arguments.root / "src")
    faults = list(check_includes(includes, floors))
    circle = find_circle(includes)
    if circle:
        faults.append("a circle of includes: " + " -> ".join(circle))
    strangers = {source_of(obj) for obj in arguments.objects} - includes.keys()
    faults += [f"{name}: is not a path below src/" for name in sorted(strangers)]
    if arguments.objects and not faults:
        faults += check_symbols(arguments.objects, floors)
    for fault in faults:
        print(f"check_floors: {fault}", file=sys.stderr)
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main())
