# SPDX-License-Identifier: LGPL-2.1-or-later
"""zox-server with the postings of a document as its dumps."""
import json
import mmap
import pathlib
import sqlite3
import subprocess
import time
import zlib

from runner.programs import Failed

USER, PASSWORD = "demo", "demo-geheim"
POSTINGS_PER_DUMP = 1000
START, END = b'<?xml version="1.0"?>\n<Events>\n', b"</Events>\n"
LAST_LINE = b"  </Event>\n"
READY_SECONDS = 60


def split_document(text, count):
    """The document in pieces of `count` postings, each of them a document."""
    place = len(START)
    while True:
        start = place
        for _ in range(count):
            found = text.find(LAST_LINE, place)
            if found < 0:
                break
            place = found + len(LAST_LINE)
        if place == start:
            return
        yield START + text[start:place] + END


def make_dumps(document, first_stamp):
    """The rows of the server's table of dumps for a document."""
    with open(document, "rb") as file, \
            mmap.mmap(file.fileno(), 0, access=mmap.ACCESS_READ) as text:
        for place, piece in enumerate(split_document(text, POSTINGS_PER_DUMP)):
            stamp = first_stamp + place
            name = f"spots-{place + 1:06}-{stamp}-{zlib.crc32(piece):08x}"
            yield place + 1, name, stamp, zlib.compress(piece, 6, wbits=31)


class Server:
    """Serves one document; used in a with statement."""

    def __init__(self, programs, directory, document, first_stamp):
        self.directory = pathlib.Path(directory)
        self.directory.mkdir()
        self.programs = programs
        self.document = document
        self.first_stamp = first_stamp
        self.process = None
        self.address = None

    def __enter__(self):
        self.start()
        try:
            self.publish()
        except BaseException:
            self.stop()
            raise
        return self

    def __exit__(self, *_):
        self.stop()

    def start(self):
        password = self.directory / "password"
        password.write_text(PASSWORD + "\n")
        ready = self.directory / "ready.json"
        self.process = subprocess.Popen(
            [self.programs.server, "--port", "0", "--postings", "0", "--database",
             self.directory / "server.db", "--account", f"{USER}={password}", "--ready-file",
             ready], stdout=subprocess.DEVNULL, env=self.programs.environment)
        try:
            self.wait_for(ready)
        except BaseException:
            self.stop()
            raise
        self.address = json.loads(ready.read_text())["main"].removeprefix("http://").rstrip("/")

    def wait_for(self, ready):
        deadline = time.monotonic() + READY_SECONDS
        while not ready.exists():
            if self.process.poll() is not None or time.monotonic() > deadline:
                raise Failed("zox-server does not start")
            time.sleep(0.05)

    def publish(self):
        database = sqlite3.connect(self.directory / "server.db", timeout=30)
        with database:
            database.executemany(
                "INSERT INTO dump (number, name, stamp, content) VALUES (?, ?, ?, ?)",
                make_dumps(self.document, self.first_stamp))
        database.close()

    def stop(self):
        self.process.terminate()
        self.process.wait()
