# SPDX-License-Identifier: LGPL-2.1-or-later
"""check_hardening.py finds every kind of protection that is missing."""
import pathlib
import platform
import subprocess
import tempfile
import unittest

import check_hardening

PROGRAM = """
#include <stdio.h>
#include <string.h>
int main(int count, char **words) {
  char text[16];
  memcpy(text, words[0], (size_t)count);
  memmove(text, words[0] + 1, (size_t)count);
  return puts(text);
}
"""
COMPILER = ["-O2", "-g", "-fstack-protector-strong", "-fstack-clash-protection", "-U_FORTIFY_SOURCE",
            "-D_FORTIFY_SOURCE=2", "-fPIE"]
LINKER = ["-pie", "-Wl,-z,relro,-z,now,-z,noexecstack"]
if platform.machine() == "x86_64":
    COMPILER.append("-fcf-protection")


class CheckHardening(unittest.TestCase):
    def faults_with(self, *more, without=None):
        with tempfile.TemporaryDirectory() as directory:
            program = pathlib.Path(directory, "program")
            compiler = [option for option in COMPILER if option != without]
            subprocess.run(["gcc", *compiler, *LINKER, *more, "-x", "c", "-", "-o", program],
                           input=PROGRAM, check=True, text=True)
            return check_hardening.faults(program)

    def assert_fault(self, fault, *more):
        self.assertIn(fault, self.faults_with(*more))

    def test_accepts_what_is_hardened(self):
        self.assertEqual(self.faults_with(), [])

    def test_refuses_what_does_not_tell(self):
        self.assert_fault("does not tell how it was compiled", "-g0")

    def test_position(self):
        self.assert_fault("is not position-independent", "-no-pie", "-fno-pie")

    def test_read_only_relocations(self):
        self.assert_fault("has no segment that becomes read-only after relocation", "-Wl,-z,norelro")

    def test_lazy_symbols(self):
        self.assert_fault("resolves symbols lazily, so that its table of addresses stays writable",
                          "-Wl,-z,lazy")

    def test_executable_stack(self):
        self.assert_fault("has an executable stack", "-Wl,-z,execstack")

    def test_control_flow(self):
        if platform.machine() != "x86_64":
            self.skipTest("a protection of x86")
        self.assertIn("1 of its 1 files were compiled without -fcf-protection=full",
                      self.faults_with(without="-fcf-protection"))

    def test_stack_protector(self):
        self.assertIn("1 of its 1 files were compiled without -fstack-protector-strong",
                      self.faults_with(without="-fstack-protector-strong"))

    def test_checked_functions(self):
        self.assert_fault("uses memcpy, memmove, and no function with checks in its place",
                          "-U_FORTIFY_SOURCE")

    def test_stack_clash(self):
        self.assert_fault("1 of its 1 files were compiled without -fstack-clash-protection",
                          "-fno-stack-clash-protection")


if __name__ == "__main__":
    unittest.main()
