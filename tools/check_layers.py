#!/usr/bin/env python3
# SPDX-License-Identifier: LGPL-2.1-or-later
"""Counts the includes between the files of src/ and those that go up the layers or in a circle.

usage: check_layers.py [--root DIRECTORY]

The order of the layers is the list velkor_layers of src/CMakeLists.txt. The build refuses what goes
up; circles within a layer are what it cannot see.
"""
import argparse
import pathlib
import re
import sys

INCLUDE = re.compile(r'^\s*#\s*include\s+"([^"]+)"', re.MULTILINE)
LAYERS = re.compile(r"^set\(velkor_layers ([\w\s]+)\)", re.MULTILINE)
SOURCES = (".c", ".cc", ".h")


def read_layers(source):
    """The place of each layer, the lowest first."""
    found = LAYERS.search((source / "CMakeLists.txt").read_text())
    if found is None:
        raise SystemExit(f"check_layers: no list velkor_layers in {source}/CMakeLists.txt")
    return {name: place for place, name in enumerate(found.group(1).split())}


def read_includes(source):
    """The internal headers that each file of src/ includes, by path below src/."""
    files = sorted(path for path in source.rglob("*") if path.suffix in SOURCES)
    return {str(path.relative_to(source)): INCLUDE.findall(path.read_text()) for path in files}


def check_includes(includes, layers):
    """Yields what is wrong with each include that is not of the same layer or of one below."""
    def place(name):
        return layers.get(name.partition("/")[0])

    for name, headers in includes.items():
        if place(name) is None:
            yield f"{name}: lies in no layer"
            continue
        for header in headers:
            if header not in includes:
                yield f'{name}: includes "{header}", which is not a path below src/'
            elif (place(header) or 0) > place(name):
                yield f"{name} goes up to {header}"


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


def main():
    parser = argparse.ArgumentParser(description=__doc__,
                                     formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--root", type=pathlib.Path,
                        default=pathlib.Path(__file__).resolve().parent.parent)
    source = parser.parse_args().root / "src"
    layers = read_layers(source)
    includes = read_includes(source)
    faults = list(check_includes(includes, layers))
    circle = find_circle(includes)
    if circle:
        faults.append("a circle of includes: " + " -> ".join(circle))
    for fault in faults:
        print(f"check_layers: {fault}", file=sys.stderr)
    uses = sum(map(len, includes.values()))
    print(f"{len(includes)} files in {len(layers)} layers, {uses} includes, {len(faults)} faults")
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main())
