#!/usr/bin/env python3
# SPDX-License-Identifier: LGPL-2.1-or-later
"""Checks that programs and shared libraries are hardened; g++ built them, with debugging information.

usage: check_hardening.py FILE...
"""
import platform
import re
import subprocess
import sys

# What gcc and g++ name among their options in the debugging information of each file that they
# compiled; the result does not show in the same way that all files were.
COMPILER_OPTIONS = ["-fstack-protector-strong", "-fstack-clash-protection"]
if platform.machine() == "x86_64":
    COMPILER_OPTIONS.append("-fcf-protection=full")


def readelf(*arguments):
    command = ["readelf", "--wide", *arguments]
    return subprocess.run(command, check=True, capture_output=True, text=True).stdout


def undefined_symbols(file):
    return set(re.findall(r" UND ([^@\s]+)", readelf("--dyn-syms", file)))


def header_faults(file):
    header = readelf("--file-header", "--segments", "--dynamic", file)
    if "DYN (" not in header:
        yield "is not position-independent"
    if "GNU_RELRO" not in header:
        yield "has no segment that becomes read-only after relocation"
    if not re.search(r"\(FLAGS(_1)?\).*\b(BIND_)?NOW\b", header):
        yield "resolves symbols lazily, so that its table of addresses stays writable"
    stack = re.search(r"GNU_STACK(\s+0x\S+){5}\s+(\S+)", header)
    if not stack or "E" in stack[2]:
        yield "has an executable stack"


def symbol_faults(file):
    symbols = undefined_symbols(file)
    # Every function below comes in a checked form, which is used where the size is known.
    plain = symbols & {"memcpy", "memmove", "memset", "strcpy", "snprintf", "read", "pread"}
    if plain and not any(symbol.endswith("_chk") for symbol in symbols):
        yield f"uses {', '.join(sorted(plain))}, and no function with checks in its place"


def unit_faults(file):
    units = re.findall(r"DW_AT_producer\s*:(.*)", readelf("--debug-dump=info", "--dwarf-depth=1", file))
    gnu = [unit for unit in units if "GNU C" in unit and "-O2" in unit]
    if not gnu:
        yield "does not tell how it was compiled"
    for option in COMPILER_OPTIONS:
        without = sum(option not in unit.split() for unit in gnu)
        if without:
            yield f"{without} of its {len(gnu)} files were compiled without {option}"


def faults(file):
    return [*header_faults(file), *symbol_faults(file), *unit_faults(file)]


def main(files):
    found = [f"{file} {fault}" for file in files for fault in faults(file)]
    for fault in found:
        print(f"check_hardening: {fault}", file=sys.stderr)
    return 1 if found or not files else 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
