# SPDX-License-Identifier: LGPL-2.1-or-later
"""Where a run took place, and with which versions."""
import os
import sqlite3
import subprocess


def line_of(path, name):
    """What follows the name and a colon in a file such as /proc/meminfo; None without it."""
    with open(path, encoding="utf-8") as file:
        for line in file:
            key, _, value = line.partition(":")
            if key.strip() == name:
                return value.strip()
    return None


def bytes_of_memory(name):
    """MemTotal, MemAvailable, ... in bytes."""
    return int(line_of("/proc/meminfo", name).split()[0]) * 1024


def describe():
    return {"processor": line_of("/proc/cpuinfo", "model name"), "cores": os.cpu_count(),
            "memory_bytes": bytes_of_memory("MemTotal"),
            "load_average": os.getloadavg()[0]}


def first_line(*command):
    """The first line that a program prints; None when it cannot be run."""
    try:
        run = subprocess.run(command, stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True,
                             check=False)
    except OSError:
        return None
    return run.stdout.partition("\n")[0]


def versions(source):
    return {"velkor": first_line("git", "-C", source, "describe", "--always", "--dirty"),
            "xmllint": first_line("xmllint", "--version"), "pigz": first_line("pigz", "--version"),
            "sqlite": sqlite3.sqlite_version, "compiler": first_line("c++", "--version"),
            "zlib": first_line("dpkg-query", "-W", "-f", "${Version}\n", "zlib1g"),
            "glib": first_line("dpkg-query", "-W", "-f", "${Version}\n", "libglib2.0-0")}
