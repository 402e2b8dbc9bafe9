#!/usr/bin/env python3
# SPDX-License-Identifier: LGPL-2.1-or-later
"""Makes a page for a browser of a page in Markdown or of a man page.

usage: html_pages.py STYLE SOURCE TARGET

Links to pages become links to their HTML. What else lies beside the pages in Markdown lies one
directory above those in HTML.
"""
import html
import pathlib
import re
import subprocess
import sys

PAGE = """<!DOCTYPE html>
<html lang="en">
<head>
<meta charset="utf-8">
<meta name="viewport" content="width=device-width, initial-scale=1">
<title>{title}</title>
<style>
{style}</style>
</head>
<body>
{body}
</body>
</html>
"""
MAN_PAGES = ("velkor", "velkorctl", "zox-server", "velkor.conf")


def target_of(link):
    path, sign, anchor = link.partition("#")
    if not path or re.match(r"[a-z]+:", path) or path.endswith(".html"):
        return link
    there = path.removesuffix(".md") + ".html" if path.endswith(".md") else f"../{path}"
    return there + sign + anchor


def output_of(*command):
    return subprocess.run(command, check=True, stdout=subprocess.PIPE, encoding="utf-8").stdout


def of_markdown(path):
    extensions = [word for name in ("tables", "fenced_code", "toc", "sane_lists")
                  for word in ("--extension", name)]
    body = output_of("markdown_py", *extensions, "--output_format", "html", path)
    body = re.sub(r'(<(?:a|img)\b[^>]* (?:href|src)=")([^"]*)"',
                  lambda match: f'{match[1]}{target_of(match[2])}"', body)
    return re.search(r"^# (.*)$", path.read_text(encoding="utf-8"), re.MULTILINE)[1], body


def of_man_page(path):
    body = output_of("mandoc", "-Kutf-8", "-Thtml", "-Ofragment", path)
    # A reference is a link if its page is one of these.
    body = re.sub(r"<b>([\w.-]+)</b>\((\d)\)",
                  lambda match: f'<a href="{match[1]}.{match[2]}.html">{match[0]}</a>'
                  if match[1] in MAN_PAGES else match[0], body)
    return re.sub(r"\.(\d)$", r"(\1)", path.name), body


def main(style, source, target):
    source = pathlib.Path(source)
    title, body = of_markdown(source) if source.suffix == ".md" else of_man_page(source)
    rules = pathlib.Path(style).read_text(encoding="utf-8")
    page = PAGE.format(title=html.escape(title), style=rules, body=body)
    pathlib.Path(target).write_text(page, encoding="utf-8")


if __name__ == "__main__":
    main(*sys.argv[1:])
