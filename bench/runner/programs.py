# SPDX-License-Identifier: LGPL-2.1-or-later
"""Runs velkor-bench and reads what it prints."""
import os
import pathlib
import subprocess


class Failed(Exception):
    """A program did not do what is measured."""


def read_costs(text):
    """The costs in lines of "name CPU wall memory", by name."""
    costs = {}
    for line in text.splitlines():
        name, cpu, wall, memory = line.split()
        costs[name] = {"cpu": float(cpu), "wall": float(wall), "memory": int(memory)}
    return costs


def describe_failure(command, status, messages):
    """The command, how it ended (minus the signal that ended it) and the last that it said."""
    last = "\n".join(messages.strip().splitlines()[-5:])
    return f"{' '.join(command)}\nended with status {status}\n{last}".strip()


def clean_environment(home):
    """No settings, session bus or server of the user's own."""
    unwanted = ("DBUS_SESSION_BUS_ADDRESS", "VELKOR_MAIN_HOST", "VELKOR_STATIC_HOST")
    kept = {name: value for name, value in os.environ.items() if name not in unwanted}
    return kept | {"HOME": str(home), "LC_ALL": "C.UTF-8", "TZ": "UTC"}


class Programs:
    """The programs of a build tree."""

    def __init__(self, build, home):
        build = pathlib.Path(build)
        self.bench = build / "bin/velkor-bench"
        self.velkorctl = build / "bin/velkorctl"
        self.server = build / "bin/zox-server"
        self.library_directory = build / "lib"
        self.environment = clean_environment(home)

    def run_bench(self, *arguments):
        """The costs that velkor-bench prints, and what it and its program say besides."""
        command = [str(self.bench), *map(str, arguments)]
        run = subprocess.run(command, capture_output=True, text=True, env=self.environment,
                             check=False)
        if run.returncode != 0:
            raise Failed(describe_failure(command, run.returncode, run.stderr))
        return read_costs(run.stdout), run.stderr

    def measure_program(self, output, *command):
        """The cost of a program whose output goes to a file, and what it says besides."""
        costs, messages = self.run_bench("program", output, *command)
        return costs["program"], messages
