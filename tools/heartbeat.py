# SPDX-License-Identifier: LGPL-2.1-or-later
"""Measures how the desktop front end feels, on a display that nobody sees.

Starts it with many postings, types a search letter by letter, opens a posting, updates and ends it;
then prints what its own heartbeat measured and how much memory and processor time it took. The times
until something is painted mean something on a machine that does nothing else.
"""
import argparse
import pathlib
import subprocess
import sys
import time

ROOT = pathlib.Path(__file__).resolve().parents[1]
sys.dont_write_bytecode = True
sys.path.insert(0, str(ROOT / "tests/system/velkor"))
import desktop  # noqa: E402

SEARCH = "de haven"
BETWEEN_KEYS = 0.2  # seconds


def memory_of(process):
    """Resident memory in MB: now, and the most so far."""
    lines = pathlib.Path(f"/proc/{process.pid}/status").read_text().splitlines()
    values = {line.split(":")[0]: line.split()[1] for line in lines if line.startswith("Vm")}
    return int(values["VmRSS"]) // 1024, int(values["VmHWM"]) // 1024


def processor_time_of(process):
    """In milliseconds: that of the main thread, and that of all others."""
    times = {path.parent.name: int(path.read_text().split()[0]) // 1000000
             for path in pathlib.Path(f"/proc/{process.pid}/task").glob("*/schedstat")}
    main = times.pop(str(process.pid))
    return main, sum(times.values())


class ProcessorTime:
    """Prints what the program takes in each step; other programs on the machine hardly change it."""

    def __init__(self, process):
        self.process = process
        self.before = (0, 0)

    def print(self, step):
        now = processor_time_of(self.process)
        main, others = (time - before for time, before in zip(now, self.before))
        print(f"processor time: {step}: {main} ms of the main thread, {others} ms of others")
        self.before = now


def wait_for_window(place):
    subprocess.run(["xdotool", "search", "--sync", "--onlyvisible", "--name", "^Velkor$"], check=True,
                   env=place.environment, stdout=subprocess.DEVNULL, timeout=desktop.PATIENCE)


def measure(place, options):
    service = desktop.Service(place, options.build, options.postings)
    service.velkorctl("update")
    posting = service.listed("--limit", "1")[0]["id"]
    program = desktop.Program(service, "--heartbeat")
    wait_for_window(place)
    times = ProcessorTime(program.process)
    time.sleep(options.pause)
    print(f"memory: {memory_of(program.process)[0]} MB after the start")
    times.print("start")
    place.press("ctrl+f")
    for key in SEARCH:
        place.type(key)
        time.sleep(BETWEEN_KEYS)
    times.print(f"search, {len(SEARCH)} keys")
    place.press("Escape")
    time.sleep(options.pause)
    times.print("end of the search")
    service.velkorctl("open", str(posting))
    time.sleep(options.pause)
    times.print("posting")
    place.press("Escape")
    service.command("/advance?new=50&updated=20")
    place.press("F5")
    time.sleep(2 * options.pause)
    times.print("update")
    print("memory: {} MB at the end, {} MB at most".format(*memory_of(program.process)))
    place.press("ctrl+q")
    status = program.wait()
    print(program.printed(), end="")
    return status


def main():
    parser = argparse.ArgumentParser(prog="./dev heartbeat", description=__doc__)
    parser.add_argument("--postings", type=int, default=100000, help="how many (%(default)s)")
    parser.add_argument("--pause", type=float, default=4,
                        help="seconds for each step to come to rest (%(default)s)")
    parser.add_argument("--build", type=pathlib.Path, default=ROOT / "build/release",
                        help="directory of the build (build/release)")
    options = parser.parse_args()
    options.build = options.build.resolve()
    desktop.PATIENCE = 600
    place = desktop.Desktop()
    try:
        sys.exit(measure(place, options))
    finally:
        place.close()


if __name__ == "__main__":
    main()
