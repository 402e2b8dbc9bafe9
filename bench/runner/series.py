# SPDX-License-Identifier: LGPL-2.1-or-later
"""The measurements with one number of postings."""
import contextlib
import pathlib
import re
import shutil
import sys
import time

from runner import machine
from runner.programs import Failed
from runner.server import PASSWORD, USER, Server

CACHE_FILE = "velkor.posts.gz"
FEWER_ROUNDS_FROM = 1_000_000

# What a step needs of the machine's memory, as a multiple of the text.
MEMORY = {"like": 1, "display": 9, "first-update": 5, "update": 5}
COMMON_MEMORY = 4

# Times of dumps and settings, in seconds before now: those of the changes follow the last update.
STOCK_DUMPS, LAST_UPDATE, CHANGES_DUMPS = 40_000, 20_000, 10_000


def rounds_of(postings):
    return 5 if postings < FEWER_ROUNDS_FROM else 3


def show_progress(text):
    """One line on a terminal, which the next one replaces."""
    if sys.stderr.isatty():
        print(f"\r{text:<60}\r", end="", file=sys.stderr, flush=True)


class Series:
    """Measures with one stock, in a directory of its own; used in a with statement."""

    def __init__(self, programs, directory, postings):
        self.programs = programs
        self.directory = pathlib.Path(directory)
        self.postings = postings
        self.now = int(time.time())
        self.document = self.directory / "posts.xml"
        self.stock = self.directory / "stock"
        self.cache = self.directory / "cache"
        self.samples = {}
        self.skipped = {}
        self.servers = contextlib.ExitStack()

    def __enter__(self):
        self.directory.mkdir()
        self.stock.mkdir()
        self.run_case("write")
        self.pigz()
        shutil.copyfile(self.directory / "posts.xml.gz", self.stock / CACHE_FILE)
        self.run_case("prepare")
        self.samples.clear()
        return self

    def __exit__(self, *_):
        self.servers.close()
        shutil.rmtree(self.directory, ignore_errors=True)

    def measure(self):
        """Runs every step in turn, several times."""
        steps = self.affordable_steps()
        self.start_servers()
        for number in range(rounds_of(self.postings)):
            for name, step in steps:
                show_progress(f"{self.postings:,} postings, round {number + 1}: {name}")
                step()
        show_progress("")
        return {"postings": self.postings, "text_bytes": self.document.stat().st_size,
                "skipped": self.skipped, "samples": self.samples}

    def steps(self):
        """Each yardstick stands beside what is compared with it."""
        yield "xmllint", self.xmllint
        yield "load", lambda: self.run_case("load")
        yield "pigz", self.pigz
        for name in ("save", "unchanged", "changes"):
            yield name, lambda name=name: self.run_case(name)
        yield "update", self.update
        yield "first-update", self.first_update
        yield "list", self.list
        for name in ("like", "word", "tags", "display"):
            yield name, lambda name=name: self.run_case(name)

    def affordable_steps(self):
        """The steps that the machine has the memory for; notes the others."""
        text = self.document.stat().st_size
        available = machine.bytes_of_memory("MemAvailable")
        affordable = []
        for name, step in self.steps():
            needed = MEMORY.get(name, COMMON_MEMORY) * text
            if needed <= available:
                affordable.append((name, step))
            else:
                self.skipped[name] = f"skipped, needs {needed / 2**30:.0f} GiB of memory"
        return affordable

    def add(self, costs):
        for name, cost in costs.items():
            self.samples.setdefault(name, []).append(cost)

    def run_case(self, name):
        costs, _ = self.programs.run_bench(name, self.directory, self.postings, self.now)
        self.add(costs)

    def run_program(self, name, output, *command):
        """What the program says besides its output."""
        cost, messages = self.programs.measure_program(output, *command)
        self.add({name: cost})
        return messages

    def xmllint(self):
        self.run_program("xmllint", "/dev/null", "xmllint", "--stream", "--noout", self.document)

    def pigz(self):
        self.run_program("pigz", self.directory / "posts.xml.gz", "pigz", "-9", "-p1", "-c",
                         self.document)

    def start_servers(self):
        def server(name, document, age):
            return self.servers.enter_context(
                Server(self.programs, self.directory / name, document, self.now - age))
        if "first-update" not in self.skipped:
            self.stock_server = server("stock-server", self.document, STOCK_DUMPS)
        if "update" not in self.skipped:
            self.changes_server = server("changes-server", self.directory / "changes.xml",
                                         CHANGES_DUMPS)

    def velkorctl(self, name, *arguments, server=None, cache=None):
        command = [self.programs.velkorctl, "--cache-dir", cache or self.cache]
        if server:
            command += ["--server", server.address, "--static-server", server.address,
                        "--lib-dir", self.programs.library_directory]
        return self.run_program(name, self.directory / "output", *command, *arguments)

    def write_settings(self, last_update):
        """An account, and the shortest age at which postings go: 14 days."""
        previous = max(last_update - 86_400, 0)
        (self.cache / "velkor.conf").write_text(
            f"username={USER}\npassword={PASSWORD}\nverwijderPostsNaXDagen=1\n"
            f"lastCheck={last_update}\nprevCheck={previous}\n")

    def expect_postings(self, messages):
        """As many postings are new as are too old by then."""
        found = re.search(r"(\d+) in the cache", messages)
        if not found or int(found.group(1)) != self.postings:
            raise Failed(f"velkorctl update did not end with {self.postings} postings: {messages}")

    def update(self):
        shutil.rmtree(self.cache, ignore_errors=True)
        shutil.copytree(self.stock, self.cache)
        self.write_settings(self.now - LAST_UPDATE)
        self.expect_postings(self.velkorctl("update", "update", "-r", server=self.changes_server))

    def first_update(self):
        shutil.rmtree(self.cache, ignore_errors=True)
        self.cache.mkdir()
        self.write_settings(0)
        self.expect_postings(
            self.velkorctl("first-update", "update", "-r", server=self.stock_server))

    def list(self):
        self.velkorctl("list", "list", "-l", "3", cache=self.stock)
        if not (self.directory / "output").read_text().strip():
            raise Failed("velkorctl list prints nothing")
