# SPDX-License-Identifier: LGPL-2.1-or-later
"""What the tests that use the front end as a person does have in common."""
import pathlib
import unittest

from desktop import Desktop, Program, Service, use_bindings

POSTINGS = 90  # more than the list shows at once


def ids_of(items):
    return [item["id"] for item in items]


class FrontEndCase(unittest.TestCase):
    build = pathlib.Path()  # the build directory, given on the command line
    postings = POSTINGS

    desktop = None  # one for all tests: the bindings stay with the bus that they first saw

    @classmethod
    def setUpClass(cls):
        if FrontEndCase.desktop is None:
            FrontEndCase.desktop = Desktop()
            unittest.addModuleCleanup(FrontEndCase.desktop.close)
            use_bindings()

    def setUp(self):
        directory = self.desktop.home / self.id()
        directory.mkdir()
        self.desktop.environment["HOME"] = str(directory)

    def home(self):
        return pathlib.Path(self.desktop.environment["HOME"])

    def service(self, **options):
        service = Service(self.desktop, FrontEndCase.build, self.postings, **options)
        self.addCleanup(service.stop)
        return service

    def service_with_cache(self):
        service = self.service()
        service.velkorctl("update")
        return service

    def start(self, service, *words):
        program = Program(service, *words)
        self.addCleanup(program.kill)
        program.wait_for("frame", "Velkor")
        return program

    def start_with_list(self, service):
        program = self.start(service)
        program.wait_for_rows(ids_of(service.listed()))
        return program

    def quit(self, program):
        self.desktop.press("ctrl+q")
        self.assertEqual(program.wait(), 0, program.printed())

    def search(self, text):
        self.desktop.press("ctrl+f")
        self.desktop.type(text)
