#!/usr/bin/env python3
# SPDX-License-Identifier: LGPL-2.1-or-later
"""Every function, parameter, result and record field of the headers is documented, and for every
function which threads may call it, in the words that velkor.h explains.

usage: check_documentation.py HEADER...

The compiler reports what the comments name wrongly; this reports what they leave out.
"""
import pathlib
import re
import sys

COMMENT = r"/\*\*(?P<comment>(?:[^*]|\*(?!/))*)\*/\n"
FUNCTION = re.compile(
    rf"(?:{COMMENT})?^(?P<result>(?:typedef )?[a-zA-Z][\w *]*?)\(?\**(?P<name>\w+)\)?\((?P<parameters>[^()]*)\);$",
    re.MULTILINE)
FILE = re.compile(r"/\*\*\n \* @file\n(?P<comment>.*?)\*/", re.DOTALL)
THREADS = re.compile(
    r"Threads: (any|any, own data|one at a time, hand-over allowed|the main thread)[.,;]")
RECORD = re.compile(r"^(?:typedef )?struct _\w+ \{\n(?P<fields>.*?)^\}", re.MULTILINE | re.DOTALL)


def parameters_of(match):
    names = (re.search(r"(\w+)$", part.strip()) for part in match["parameters"].split(","))
    return [name[1] for name in names if name and name[1] != "void"]


def tells_threads(comment):
    return THREADS.search(re.sub(r"\n \*\s*", " ", comment).replace("  ", " "))


def function_faults(match, file_comment):
    comment = match["comment"]
    if comment is None:
        yield "no comment"
        return
    for name in parameters_of(match):
        if f"@param {name} " not in comment:
            yield f"nothing about the parameter {name}"
    is_type = match["result"].startswith("typedef")
    if not is_type and not tells_threads(comment if "Threads:" in comment else file_comment):
        yield "nothing about threads"
    is_void = match["result"].split()[-1:] == ["void"]
    if not is_void and "@return" not in comment:
        yield "nothing about the result"


def faults(text):
    file = FILE.search(text)
    file_comment = file["comment"] if file else ""
    for match in FUNCTION.finditer(text):
        yield from (f"{match['name']}: {fault}" for fault in function_faults(match, file_comment))
    for record in RECORD.finditer(text):
        for field in re.finditer(r"^  \w[\w *]*?(\w+);(.*)$", record["fields"], re.MULTILINE):
            if "/**<" not in field[2]:
                yield f"field {field[1]}: no comment"


def main(*headers):
    found = [f"{header}: {fault}" for header in headers
             for fault in faults(pathlib.Path(header).read_text())]
    for fault in found:
        print(f"check_documentation: {fault}", file=sys.stderr)
    return 1 if found or not headers else 0


if __name__ == "__main__":
    sys.exit(main(*sys.argv[1:]))
