#!/usr/bin/env python3
# SPDX-License-Identifier: LGPL-2.1-or-later
"""Validates what velkorctl prints as JSON against the schemas in docs/schemas.

usage: output_schemas.py BUILD SCHEMAS

Every command that has a schema is run against a server with sample data. A document must have every
field that its schema names, so that no schema promises more than there is.
"""

import json
import os
import pathlib
import subprocess
import sys
import tempfile
import time
import unittest

import jsonschema

BUILD = pathlib.Path()
SCHEMAS = pathlib.Path()
PATIENCE = 60

SPOT = """[posting]
title=My spot
category=Beeld
sub-category=DivX
tags=Genre/Drama;TV
newsgroups=1;2
description=one
"""

FILTERS = "<Filters><Filter><filterNaam>Spot</filterNaam><cat>0</cat></Filter></Filters>"

# The commands in the order in which they are run, with their input. What a command needs, such as a
# posting or a message, an earlier one has made.
PREPARE = ""
RUNS = [
    # before anything that logs in, since the server then takes no sign-up for a while
    ("signup", ["newby", "newby@example.org", "--password-stdin"]),
    ("update", []),
    ("groups", ["--fetch"]),
    ("list", []),
    ("show", ["3"]),
    (PREPARE, ["forum", "3", "--reply", "-"]),
    ("forum", ["3"]),
    ("explain", ["3", "--title", "x"]),
    ("categories", []),
    ("filters list", []),
    ("filters import", ["filters.xml"]),
    ("tags", []),
    ("kudos", ["3"]),
    ("warn", ["3", "spam"]),
    ("profile", ["demo"]),
    ("post", ["spot"]),
    ("myzox", []),
    ("doctor", []),
    ("watch add", ["3", "999999"]),
    ("watch list", []),
    (PREPARE, ["watchers", "add", "e"]),
    ("watchers list", []),
    ("watchers run", []),
    ("badwords add", ["no such word", "--dry-run"]),
    ("badwords add", ["no such word"]),
    ("badwords list", []),
    ("badwords test", ["no such word here"]),
    ("mail send", ["demo", "greeting"]),
    ("mail check", []),
    ("mail fetch", []),
    ("mail list", []),
    ("mail read", ["1"]),
    ("mail delete", ["1"]),
    ("config get", ["watcher"]),
    ("config list", []),
    ("cache info", []),
    ("cache verify", []),
    ("cache resync", []),
    ("cache backup", ["backup"]),
    ("cache restore", ["backup"]),
]
# listen has a test of its own, since it runs until it is interrupted.
NOT_RUN = {"listen", "error", "warning", "notice", "trace"}


def schema_of(name):
    with open(SCHEMAS / f"velkorctl.{name}.schema.json", encoding="utf-8") as file:
        return json.load(file)


class Server:
    """A zox-server with sample data; it ends with the block that it is used in."""

    def __init__(self, directory):
        self.ready = directory / "ready.json"
        self.process = subprocess.Popen(
            [BUILD / "bin/zox-server", "--port", "0", "--seed", "1", "--postings", "50",
             "--ready-file", self.ready],
            env=os.environ | {"ZOX_SERVER_PASSWORD": "demo-geheim"}, stdout=subprocess.DEVNULL)

    def __enter__(self):
        deadline = time.monotonic() + PATIENCE
        while not self.ready.exists() or not self.ready.read_text(encoding="utf-8"):
            if self.process.poll() is not None or time.monotonic() > deadline:
                self.__exit__()
                raise RuntimeError("the server does not become ready")
            time.sleep(0.01)
        addresses = json.loads(self.ready.read_text(encoding="utf-8"))
        return addresses["main"].removeprefix("http://").rstrip("/")

    def __exit__(self, *_):
        self.process.kill()
        self.process.wait(PATIENCE)


class OutputSchemas(unittest.TestCase):
    maxDiff = None

    def setUp(self):
        directory = tempfile.TemporaryDirectory()
        self.addCleanup(directory.cleanup)
        self.home = pathlib.Path(directory.name)
        self.host = self.enter(Server(self.home))
        cache = self.home / ".velkor"
        cache.mkdir(0o700)
        settings = cache / "velkor.conf"
        settings.write_text("username=demo\npassword=demo-geheim\nverwijderPostsNaXDagen=6\n")
        settings.chmod(0o600)
        (self.home / "spot").write_text(SPOT)
        (self.home / "filters.xml").write_text(FILTERS)

    def enter(self, block):
        result = block.__enter__()
        self.addCleanup(block.__exit__)
        return result

    def run_command(self, *words):
        unwanted = ("DBUS_SESSION_BUS_ADDRESS", "XDG_RUNTIME_DIR", "VELKOR_MAIN_HOST",
                    "VELKOR_STATIC_HOST")
        environment = {name: value for name, value in os.environ.items() if name not in unwanted}
        return subprocess.run(
            [BUILD / "bin/velkorctl", "--server", self.host, "--static-server", self.host,
             "--lib-dir", BUILD / "lib", *words], cwd=self.home, input="some text\n",
            env=environment | {"HOME": str(self.home), "TZ": "UTC", "LC_ALL": "C.UTF-8"},
            capture_output=True, text=True, timeout=PATIENCE, check=False)

    def check(self, document, schema, words):
        jsonschema.Draft202012Validator(
            schema, format_checker=jsonschema.FormatChecker()).validate(document)
        record = schema["$defs"]["record"]
        items = document["items"] if "items" in document else [document["item"]]
        self.assertTrue(items, words)
        for item in items:
            self.assertEqual(set(item), set(record["properties"]), words)

    def check_messages(self, text, words):
        for line in text.splitlines():
            message = json.loads(line)
            self.assertRegex(message["schema"], r"^velkorctl\.", words)
            jsonschema.validate(message, schema_of(message["schema"].removeprefix("velkorctl.")))

    def test_what_every_command_prints(self):
        names = {path.name.removeprefix("velkorctl.").removesuffix(".schema.json")
                 for path in SCHEMAS.iterdir()}
        done = set(NOT_RUN)
        for name, arguments in RUNS:
            schema_name = name.replace(" ", ".")
            words = [*name.split(), *arguments]
            if name == PREPARE:
                run = self.run_command(*words)
                self.assertEqual(run.returncode, 0, (words, run.stderr))
                continue
            run = self.run_command(*words, "--format", "json")
            self.assertEqual(run.returncode, 0, (words, run.stderr))
            document = json.loads(run.stdout)
            schema = schema_of(schema_name)
            self.check(document, schema, words)
            self.check_messages(run.stderr, words)
            done.add(schema_name)
        self.assertEqual(done, names)

    def test_an_object_per_line(self):
        self.run_command("update")
        record = schema_of("list")
        record = {"$defs": record["$defs"], "$ref": "#/$defs/record"}
        lines = self.run_command("list", "--format", "ndjson").stdout.splitlines()
        self.assertTrue(lines)
        for line in lines:
            jsonschema.Draft202012Validator(record).validate(json.loads(line))

    def start(self, *words, **variables):
        process = subprocess.Popen(words, env=os.environ | variables, stdout=subprocess.PIPE, text=True)
        self.addCleanup(process.stdout.close)
        self.addCleanup(process.wait, PATIENCE)
        self.addCleanup(process.kill)
        return process

    def test_listen(self):
        bus = self.start("dbus-daemon", "--session", "--nofork", "--print-address")
        listen = self.start(BUILD / "bin/velkorctl", "listen", "--format", "json", HOME=str(self.home),
                            DBUS_SESSION_BUS_ADDRESS=bus.stdout.readline().strip())
        text = listen.stdout.readline()  # the first event is printed with it
        listen.terminate()
        text += listen.stdout.read()
        self.assertEqual(listen.wait(PATIENCE), 0)
        self.check(json.loads(text), schema_of("listen"), ["listen"])

    def test_what_a_command_is_handed(self):
        self.run_command("watchers", "add", "e")
        run = self.run_command("update", "--exec", "sh -c 'cat >hits'", "--format", "json")
        self.assertEqual(run.returncode, 0, run.stderr)
        document = json.loads((self.home / "hits").read_text(encoding="utf-8"))
        self.check(document, schema_of("watchers.run"), ["update", "--exec"])
        self.assertEqual({hit["watcher"] for hit in document["items"]}, {"e"})

    def test_errors(self):
        for status, words in [(2, ["list", "--nothing"]), (2, ["nothing"]), (7, ["show", "999999"]),
                              (7, ["profile", "nobody"]), (2, ["list", "--sort", "nothing"])]:
            run = self.run_command(*words, "--format=json")
            self.assertEqual(run.returncode, status, words)
            self.assertEqual(run.stdout, "", words)
            self.check_messages(run.stderr, words)
            error = json.loads(run.stderr.splitlines()[-1])
            self.assertEqual((error["schema"], error["code"]), ("velkorctl.error", status), words)

    def test_a_schema_refuses_what_it_does_not_describe(self):
        self.run_command("update")
        document = json.loads(self.run_command("list", "--format", "json").stdout)
        document["items"][0]["id"] = "7"
        with self.assertRaises(jsonschema.ValidationError):
            jsonschema.validate(document, schema_of("list"))


if __name__ == "__main__":
    BUILD, SCHEMAS = (pathlib.Path(word).resolve() for word in sys.argv[1:3])
    unittest.main(argv=sys.argv[:1])
