#!/usr/bin/env python3
# SPDX-License-Identifier: LGPL-2.1-or-later
"""Types unfinished commands into bash, zsh and fish, and looks at what they become.

usage: completion_shells.py VELKORCTL
"""

import os
import pathlib
import pty
import re
import select
import subprocess
import sys
import tempfile
import time
import unittest

VELKORCTL = pathlib.Path()
PATIENCE = 30

# What is typed before the tab key, and what the line becomes.
LINES = [
    ("categ", "categories "),
    ("filters ren", "filters rename "),
    ("list --tit", "list --title "),
    ("list --category Gel", "list --category Geluid "),
    ("list --category=Gel", "list --category=Geluid "),
    ("list --filter My", r"list --filter My\ films "),
    ("config get usern", "config get username "),
]


class Shell:
    """An interactive shell on a terminal of its own."""

    def __init__(self, words, environment, directory):
        self.master, slave = pty.openpty()
        self.process = subprocess.Popen(words, stdin=slave, stdout=slave, stderr=slave,
                                        env=environment, cwd=directory, start_new_session=True)
        os.close(slave)

    def write(self, text):
        os.write(self.master, text.encode())

    def read_until(self, pattern):
        """What was printed until the pattern occurs in it, without the terminal's commands."""
        text = ""
        deadline = time.monotonic() + PATIENCE
        while time.monotonic() < deadline:
            if select.select([self.master], [], [], 0.2)[0]:
                text += os.read(self.master, 65536).decode(errors="replace")
            plain = re.sub(r"\x1b\[[0-9;?]*[a-zA-Z]|\x1b[=>]|\x07|\r", "", text)
            if re.search(pattern, plain):
                return plain
        raise AssertionError(f"no {pattern!r} in {plain!r}")

    def close(self):
        self.process.kill()
        self.process.wait(PATIENCE)
        os.close(self.master)


class CompletionTest(unittest.TestCase):
    def setUp(self):
        directory = tempfile.TemporaryDirectory()
        self.addCleanup(directory.cleanup)
        self.home = pathlib.Path(directory.name)
        (self.home / ".velkor").mkdir(0o700)
        (self.home / ".velkor/velkor.filters").write_text(
            "<Filters><Filter><filterNaam>My films</filterNaam><cat>0</cat></Filter></Filters>")
        self.environment = {"HOME": str(self.home), "PATH": f"{VELKORCTL.parent}:{os.environ['PATH']}",
                            "TERM": "dumb", "LC_ALL": "C.UTF-8", "TZ": "UTC"}

    def script(self, shell):
        path = self.home / f"completion.{shell}"
        path.write_bytes(subprocess.run([VELKORCTL, "completion", shell], check=True,
                                        stdout=subprocess.PIPE, env=self.environment).stdout)
        return path

    def check_lines(self, words, start):
        shell = Shell(words, self.environment, self.home)
        self.addCleanup(shell.close)
        shell.write(start + "; echo rea''dy\n")
        shell.read_until("ready")
        for typed, wanted in LINES:
            shell.write(f"velkorctl {typed}\t")
            shell.read_until(re.escape(f"velkorctl {wanted}".strip()))
            shell.write("\x15")

    def test_bash(self):
        self.check_lines(["bash", "--norc", "--noprofile", "-i"],
                         f"bind 'set enable-bracketed-paste off'; source {self.script('bash')}")

    def test_zsh(self):
        self.check_lines(["zsh", "-f", "-i"],
                         f"unsetopt zle_bracketed_paste; autoload -U compinit; compinit -u -D;"
                         f" source {self.script('zsh')}")

    def test_fish(self):
        script = self.script("fish")
        for typed, wanted in LINES:
            with self.subTest(typed=typed):
                done = subprocess.run(
                    ["fish", "--no-config", "-c", f"source {script}; complete -C 'velkorctl {typed}'"],
                    capture_output=True, text=True, env=self.environment, timeout=PATIENCE, check=True)
                last = wanted.strip().replace("\\ ", " ").removeprefix(typed.rpartition(" ")[0]).strip()
                self.assertEqual([line.split("\t")[0] for line in done.stdout.splitlines()], [last])


if __name__ == "__main__":
    VELKORCTL = pathlib.Path(sys.argv.pop(1)).resolve()
    unittest.main(verbosity=2)
