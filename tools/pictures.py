#!/usr/bin/env python3
# SPDX-License-Identifier: LGPL-2.1-or-later
"""Draws docs/pictures anew: the terminal as SVG, and the HTML page as Chromium shows it as PNG.

usage: tools/try PREFIX tools/pictures.py

tools/try gives it a home and a server with 20,000 postings.
"""
import html
import os
import pathlib
import pty
import re
import subprocess
import sys
import tempfile

PICTURES = pathlib.Path(__file__).resolve().parents[1] / "docs/pictures"
LARGEST = 150_000  # bytes of a picture
COLUMNS = 100
COMMANDS = ["velkorctl list --filter Lossless --limit 5",
            "velkorctl explain 19941 --title zout",
            "velkorctl watchers run sterrenwacht --limit 3"]
# Sizes of the letters of the SVG, in pixels.
WIDTH, HEIGHT, MARGIN = 8.43, 19, 14
STYLES = {"1": "font-weight:bold", "2": "opacity:.65"}


def output_of(command):
    """What the command prints on a terminal with colours."""
    process, terminal = pty.fork()
    if process == 0:
        os.environ |= {"TERM": "xterm-256color", "VELKORCTL_PAGER": ""}
        os.execvp("sh", ["sh", "-c", f"stty cols {COLUMNS} rows 40; exec {command}"])
    printed = b""
    try:
        while piece := os.read(terminal, 65536):
            printed += piece
    except OSError:  # the end of a terminal whose program has ended
        pass
    os.waitpid(process, 0)
    return printed.decode().replace("\r\n", "\n")


def spans(line):
    """The line as SVG, its styles as spans; links are left out."""
    line = re.sub(r"\x1b\]8;[^\x1b]*\x1b\\", "", line)
    # Texts and, between them, the numbers of a style.
    drawn, style = "", ""
    for index, part in enumerate(re.split(r"\x1b\[([\d;]*)m", line)):
        if index % 2:
            style = ";".join(STYLES[number] for number in part.split(";") if number in STYLES)
        elif part:
            text = html.escape(part)
            drawn += f'<tspan style="{style}">{text}</tspan>' if style else text
    return drawn


def terminal_picture():
    lines = []
    for command in COMMANDS:
        lines += [f"\x1b[1m$ {command}\x1b[0m", *output_of(command).rstrip("\n").split("\n"), ""]
    lines.pop()
    width, height = COLUMNS * WIDTH + 2 * MARGIN, len(lines) * HEIGHT + 2 * MARGIN
    texts = "\n".join(f'<text x="{MARGIN}" y="{MARGIN + HEIGHT * (row + 0.75):g}">{spans(line)}</text>'
                      for row, line in enumerate(lines) if line)
    return (f'<svg xmlns="http://www.w3.org/2000/svg" xml:space="preserve" width="{width:g}" height="{height:g}" '
            f'viewBox="0 0 {width:g} {height:g}">\n'
            "<style>text { font: 14px 'DejaVu Sans Mono', monospace; white-space: pre; fill: #eee; }</style>\n"
            f'<rect width="100%" height="100%" rx="6" fill="#1d1f21"/>\n{texts}\n</svg>\n')


def page_picture(target):
    with tempfile.TemporaryDirectory() as directory:
        page = pathlib.Path(directory, "page.html")
        page.write_bytes(subprocess.run(["velkorctl", "list", "--limit", "200", "--format", "html"],
                                        check=True, capture_output=True).stdout)
        subprocess.run(["chromium", "--headless=new", "--disable-gpu", "--no-sandbox",
                        "--hide-scrollbars", "--window-size=1000,640", f"--screenshot={target}",
                        page.as_uri()], check=True, capture_output=True, timeout=120)


def main():
    PICTURES.mkdir(exist_ok=True)
    subprocess.run(["velkorctl", "config", "set", "username", "demo"], check=True)
    subprocess.run(["velkorctl", "config", "set", "password", "--stdin"], check=True,
                   input=b"demo-geheim\n")
    subprocess.run(["velkorctl", "update"], check=True, capture_output=True)
    (PICTURES / "terminal.svg").write_text(terminal_picture())
    page_picture(PICTURES / "page.png")
    for picture in PICTURES.iterdir():
        if picture.stat().st_size > LARGEST:
            sys.exit(f"pictures: {picture.name} has more than {LARGEST} bytes")


if __name__ == "__main__":
    main()
