# SPDX-License-Identifier: LGPL-2.1-or-later
"""What the trials of whole programs share: a server of sample data, and how they report."""
import json
import os
import pathlib
import subprocess
import sys
import tempfile
import time
import urllib.request

PATIENCE = 120  # seconds for any one step


class Fault(Exception):
    """What must not happen."""


def require(condition, message):
    if not condition:
        raise Fault(message)


def in_directory(name, run, arguments):
    """Runs `run(arguments, directory)` in a new directory; a fault ends the program."""
    try:
        with tempfile.TemporaryDirectory(prefix=f"velkor-{name}-") as directory:
            run(arguments, pathlib.Path(directory))
    except (Fault, OSError, subprocess.SubprocessError) as fault:
        sys.exit(f"{name}: {fault}")


class Server:
    """A zox-server with sample data; it ends with the block that it is used in."""

    def __init__(self, build, directory, postings, options=()):
        ready = directory / "ready.json"
        self.process = subprocess.Popen(
            [build / "bin/zox-server", "--port", "0", "--control", "0", "--seed", "1",
             "--postings", str(postings), "--chunk-size", "100", "--ready-file", ready, *options],
            env=os.environ | {"ZOX_SERVER_PASSWORD": "demo-geheim"}, stdout=subprocess.DEVNULL)
        self.addresses = None
        self.ready = ready

    def __enter__(self):
        try:
            self.wait()
        except BaseException:
            self.__exit__()
            raise
        return self

    def __exit__(self, *_):
        self.process.kill()
        self.process.wait(PATIENCE)

    def wait(self):
        deadline = time.monotonic() + PATIENCE
        while self.addresses is None:
            require(self.process.poll() is None, "the server ended before it was ready")
            require(time.monotonic() < deadline, "the server does not become ready")
            time.sleep(0.01)
            if self.ready.exists() and (text := self.ready.read_text()):
                self.addresses = json.loads(text)

    @property
    def host(self):
        return self.addresses["main"].removeprefix("http://").rstrip("/")

    def advance(self, **counts):
        query = "&".join(f"{name}={count}" for name, count in counts.items())
        address = f"{self.addresses['control'].rstrip('/')}/advance?{query}"
        with urllib.request.urlopen(address, data=b"", timeout=PATIENCE) as reply:
            return json.load(reply)
