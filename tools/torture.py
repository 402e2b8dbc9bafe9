#!/usr/bin/env python3
# SPDX-License-Identifier: LGPL-2.1-or-later
"""Kills velkorctl at random moments and looks at what is left of its cache.

A server of sample data changes, velkorctl updates or saves settings, and is killed with SIGKILL
after a random time. After every kill each file must be the old one or the new one, whole; the next
commands must bring the cache up to date; and nothing of the killed process may remain.
"""
import argparse
import collections
import gzip
import os
import pathlib
import random
import re
import subprocess
import time
import xml.etree.ElementTree

from stand_in import PATIENCE, Fault, Server, in_directory, require

SOURCE = pathlib.Path(__file__).resolve().parent.parent
ACCOUNT = "username=demo\npassword=demo-geheim\nverwijderPostsNaXDagen=6\n"
KNOWN = re.compile(r"velkor\.(conf|filters|mail)|velkor\.(posts|groups)\.gz|velkorctl\.lock")
KILLED = -9
# The clean-up of an update removes what is older than 49 days: what is nearly so does not count.
OLDEST = time.time() - 48 * 86400


class Client:
    """velkorctl with a home and a directory for temporary files."""

    def __init__(self, build, server, home):
        self.cache = home / ".velkor"
        self.downloads = home / "tmp"
        self.cache.mkdir(0o700, parents=True)
        self.downloads.mkdir()
        self.command = [build / "bin/velkorctl", "--server", server.host, "--static-server",
                        server.host, "--lib-dir", build / "lib"]
        unwanted = ("DBUS_SESSION_BUS_ADDRESS", "XDG_RUNTIME_DIR", "VELKOR_MAIN_HOST",
                    "VELKOR_STATIC_HOST")
        self.environment = {name: value for name, value in os.environ.items()
                            if name not in unwanted}
        self.environment |= {"HOME": str(home), "TMPDIR": str(self.downloads), "TZ": "UTC",
                             "LC_ALL": "C.UTF-8"}

    def forget(self):
        """Starts over as a new user with an account."""
        for path in self.cache.iterdir():
            path.unlink()
        with open(self.cache / "velkor.conf", "w", opener=lambda path, flags:
                  os.open(path, flags, 0o600)) as file:
            file.write(ACCOUNT)

    def start(self, *words):
        return subprocess.Popen([*self.command, *words], env=self.environment,
                                stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL,
                                stderr=subprocess.PIPE)

    def run(self, *words):
        run = subprocess.run([*self.command, *words], env=self.environment, capture_output=True,
                             stdin=subprocess.DEVNULL, timeout=PATIENCE, check=False)
        require(run.returncode == 0, f"velkorctl {' '.join(words)} ends with {run.returncode}: "
                                     f"{run.stderr.decode(errors='replace').strip()}")
        return run.stdout.decode()

    def content(self, name):
        """The bytes of a file in the cache; None when there is none."""
        path = self.cache / name
        return path.read_bytes() if path.exists() else None

    def leftovers(self):
        return sorted(path.name for path in [*self.cache.iterdir(), *self.downloads.iterdir()]
                      if not KNOWN.fullmatch(path.name))


def settings_of(content):
    """The settings as a table of lists; every line must be whole."""
    require(content.endswith(b"\n"), "velkor.conf does not end with a line feed")
    table = collections.defaultdict(list)
    for line in content.decode().splitlines():
        require("=" in line, f"velkor.conf has the line {line!r}")
        key, _, value = line.partition("=")
        table[key].append(value)
    return table


def postings_of(content):
    """The postings that no clean-up removes by id, with the time of their last change."""
    if content is None:
        return {}
    try:
        root = xml.etree.ElementTree.fromstring(gzip.decompress(content))
    except (OSError, EOFError, xml.etree.ElementTree.ParseError) as fault:
        raise Fault(f"velkor.posts.gz is damaged: {fault}") from fault
    return {int(event.findtext("PostID")): int(event.findtext("Updated")) for event in root
            if int(event.findtext("Stamp")) > OLDEST}


def check_with_tools(client):
    """What other programs say about the files."""
    for path in client.cache.glob("velkor.*"):
        if not KNOWN.fullmatch(path.name) or path.name == "velkor.conf":
            continue
        reading = ["gzip", "-dc", path] if path.suffix == ".gz" else ["cat", path]
        with subprocess.Popen(reading, stdout=subprocess.PIPE,
                              stderr=subprocess.DEVNULL) as document:
            lint = subprocess.run(["xmllint", "--noout", "--huge", "-"], stdin=document.stdout,
                                  capture_output=True, text=True, timeout=PATIENCE, check=False)
            document.stdout.close()
            status = document.wait(PATIENCE)
        require(status == 0, f"{reading[0]} cannot read {path.name}")
        require(lint.returncode == 0, f"xmllint refuses {path.name}: {lint.stderr.strip()}")


class Case:
    """A command that is killed: what comes before it and what must be true afterwards."""

    def __init__(self, client, server):
        self.client = client
        self.server = server

    def state(self):
        return (self.client.content("velkor.conf"), self.client.content("velkor.posts.gz"))


class Update(Case):
    """New and changed postings come into a cache that has some."""
    name = "update"
    words = ("update", "--recursive")

    def prepare(self):
        self.server.advance(new=random.randint(1, 150), updated=random.randint(0, 30), seconds=60)

    def check(self, old, present, new):
        before, found, after = (postings_of(state[1]) for state in (old, present, new))
        require(found in (before, after), "velkor.posts.gz is neither the old nor the new one")
        time_before, time_found, time_after = (settings_of(state[0])["lastCheck"]
                                               for state in (old, present, new))
        require(time_found in (time_before, time_after), "lastCheck is neither old nor new")
        require(time_found == time_before or found == after,
                "lastCheck has moved on without the postings")
        return "new" if found == after and found != before else "old"


class FirstUpdate(Update):
    """All postings come into an empty cache."""
    name = "first update"

    def prepare(self):
        self.client.forget()


class Settings(Case):
    """A setting gets another value."""
    name = "settings"

    def prepare(self):
        words = [f"woord{random.randint(0, 999999)}" for _ in range(random.randint(1, 300))]
        self.words = ("config", "set", "badword", *words)

    def check(self, old, present, new):
        require(present[0] in (old[0], new[0]), "velkor.conf is neither the old nor the new one")
        require(present[1] == old[1], "velkor.posts.gz has changed")
        return "new" if present[0] == new[0] and new[0] != old[0] else "old"


class Torture:
    """The rounds and what they count."""

    def __init__(self, client, server):
        self.client = client
        self.cases = [Update(client, server), FirstUpdate(client, server),
                      Settings(client, server)]
        self.durations = {}
        self.counts = collections.Counter()

    def measure(self):
        """How long each case takes when nobody kills it."""
        self.client.forget()
        for case in (self.cases[1], self.cases[0], self.cases[2]):
            case.prepare()
            begin = time.monotonic()
            self.client.run(*case.words)
            self.durations[case] = time.monotonic() - begin

    def kill(self, case):
        """Whether the command was killed before its end."""
        process = self.client.start(*case.words)
        try:
            # Half of the kills come near the end, where the files are saved.
            begin = random.choice((0, 0.7))
            process.wait(random.uniform(begin, 1.1) * self.durations[case])
        except subprocess.TimeoutExpired:
            process.kill()
        _, messages = process.communicate(timeout=PATIENCE)
        require(process.returncode in (0, KILLED),
                f"{case.name} ends with {process.returncode}: {messages.decode()}")
        return process.returncode == KILLED

    def round(self):
        case = random.choices(self.cases, weights=(6, 2, 2))[0]
        case.prepare()
        old = case.state()
        killed = self.kill(case)
        present = case.state()
        check_with_tools(self.client)
        self.client.run("list", "--format", "json", "--limit", "1")
        left = bool(self.client.leftovers())
        self.client.run(*case.words)
        check_with_tools(self.client)
        found = case.check(old, present, case.state())
        require(killed or found == "new" or old == present == case.state(),
                f"{case.name} ends well and leaves the old file")
        require(not self.client.leftovers(),
                f"these files are left: {', '.join(self.client.leftovers())}")
        self.counts[case.name] += 1
        self.counts["killed" if killed else "ended before the kill"] += 1
        self.counts[f"{found} content found"] += 1
        self.counts["left a temporary file, which was removed"] += left

    def check_stock(self, server, home, build):
        """The cache that went through it all holds what a new one does."""
        fresh = Client(build, server, home)
        fresh.forget()
        for client in (fresh, self.client):
            client.run("update", "--recursive")
        stocks = [postings_of(client.content("velkor.posts.gz")) for client in (fresh, self.client)]
        require(stocks[0] == stocks[1], "the stock is not that of the server")
        return len(stocks[0])


def parse_arguments():
    parser = argparse.ArgumentParser(prog="./dev torture", description=__doc__.partition("\n")[0])
    parser.add_argument("times", nargs="?", type=int, default=200, metavar="TIMES",
                        help="how often a command is started and killed (200)")
    parser.add_argument("--build", type=pathlib.Path, default=SOURCE / "build/release",
                        help="the build tree of the programs (build/release)")
    parser.add_argument("--postings", type=int, default=2000,
                        help="how many postings the server begins with (2000)")
    parser.add_argument("--seed", type=int, default=None,
                        help="of the random choices; by default another one each time")
    return parser.parse_args()


def run(arguments, directory):
    with Server(arguments.build, directory, arguments.postings) as server:
        torture = Torture(Client(arguments.build, server, directory / "home"), server)
        torture.measure()
        try:
            for _ in range(arguments.times):
                torture.round()
            stock = torture.check_stock(server, directory / "fresh", arguments.build)
        finally:
            for name, count in torture.counts.items():
                print(f"{count:6}  {name}")
        print(f"{stock:6}  postings at the end, as on the server")


def main():
    arguments = parse_arguments()
    seed = arguments.seed if arguments.seed is not None else random.randrange(1 << 32)
    random.seed(seed)
    print(f"torture: {arguments.times} times, --seed {seed}", flush=True)
    in_directory("torture", run, arguments)


if __name__ == "__main__":
    main()
