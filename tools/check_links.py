#!/usr/bin/env python3
# SPDX-License-Identifier: LGPL-2.1-or-later
"""Finds the links of pages that lead nowhere: to a file or an anchor that is not there.

usage: check_links.py PAGE ...

The pages are Markdown or HTML; a link to another host is left alone.
"""
import pathlib
import re
import sys
import urllib.parse


def markdown_text(path):
    """The page without what stands in it literally."""
    text = re.sub(r"^```.*?^```$", "", path.read_text(), flags=re.MULTILINE | re.DOTALL)
    return re.sub(r"`[^`\n]*`", lambda code: "".join(re.findall(r"[\w -]", code[0])), text)


def anchor_of(heading):
    return re.sub(r"[^\w\- ]", "", heading.lower()).replace(" ", "-")


def links(path):
    if path.suffix == ".md":
        return re.findall(r"\]\(([^()\s]+)\)", markdown_text(path))
    return re.findall(r'<(?:a|img|link|script)\b[^>]*? (?:href|src)="([^"]*)"', path.read_text())


def anchors(path):
    if path.suffix == ".md":
        return {anchor_of(heading)
                for heading in re.findall(r"^#+ (.*)$", markdown_text(path), re.MULTILINE)}
    return set(re.findall(r'<[^>]* (?:id|name)="([^"]*)"', path.read_text()))


def fault_of(page, link):
    name, _, anchor = urllib.parse.unquote(link).partition("#")
    there = page.parent / name if name else page
    if not there.exists():
        return "there is no such file"
    if anchor and there.suffix in (".md", ".html") and anchor not in anchors(there):
        return "there is no such anchor"
    return None


def main(*pages):
    count, faults = 0, []
    for page in map(pathlib.Path, pages):
        for link in links(page):
            if not re.match(r"[a-z]+:", link):
                count += 1
                if fault := fault_of(page, link):
                    faults.append(f"check_links: {page}: {link}: {fault}")
    if not count:
        faults.append("check_links: no link was found")
    print("\n".join(faults) if faults else f"check_links: {count} links lead somewhere")
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main(*sys.argv[1:]))
