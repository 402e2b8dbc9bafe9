#!/usr/bin/env python3
# SPDX-License-Identifier: LGPL-2.1-or-later
"""Builds the sources twice, in directories with different names, and compares the bytes.

usage: check_reproducible.py [TARGET ...]

Without a target, everything is built and what is installed is compared; otherwise the programs and
libraries that the targets give.
"""
import filecmp
import os
import pathlib
import shutil
import subprocess
import sys
import tempfile

SOURCE = pathlib.Path(__file__).resolve().parents[1]
# Neither the place nor the language of who builds may show.
PLACES = {"one": {"LC_ALL": "C.UTF-8", "TZ": "UTC"},
          "another-place/below": {"LC_ALL": "C", "TZ": "Asia/Tokyo"}}


def run(*command, environment):
    done = subprocess.run(command, env={**os.environ, "CCACHE_DISABLE": "1", **environment},
                          stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True)
    if done.returncode != 0:
        sys.exit(f"check_reproducible: {' '.join(map(str, command))} failed\n{done.stdout}")


def copy_sources(place):
    listed = subprocess.run(["git", "-C", SOURCE, "ls-files", "-z"], check=True, capture_output=True)
    for name in filter(None, listed.stdout.decode().split("\0")):
        target = place / name
        target.parent.mkdir(parents=True, exist_ok=True)
        shutil.copy2(SOURCE / name, target)


def build(place, environment, targets):
    """The directory with what is to be compared."""
    sources, tree = place / "sources", place / "tree"
    copy_sources(sources)
    run("cmake", "-S", sources, "-B", tree, "-G", "Ninja", "-DCMAKE_BUILD_TYPE=RelWithDebInfo",
        "-DBUILD_TESTING=OFF", environment=environment)
    run("cmake", "--build", tree, *(["--target", *targets] if targets else []),
        environment=environment)
    if targets:
        return tree / "lib"
    run("cmake", "--install", tree, "--prefix", place / "prefix", environment=environment)
    return place / "prefix"


def names_below(directory):
    return {path.relative_to(directory) for path in directory.rglob("*") if path.is_file()}


def differences(first, second):
    for name in sorted(names_below(first) | names_below(second)):
        if not (first / name).exists() or not (second / name).exists():
            yield f"{name} is there only once"
        elif not filecmp.cmp(first / name, second / name, shallow=False):
            yield f"{name} differs"


def main(targets):
    with tempfile.TemporaryDirectory() as top:
        results = [build(pathlib.Path(top, name), environment, targets)
                   for name, environment in PLACES.items()]
        if not names_below(results[0]):
            sys.exit("check_reproducible: nothing was built")
        found = list(differences(*results))
    for difference in found:
        print(f"check_reproducible: {difference}", file=sys.stderr)
    return 1 if found else 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
