# SPDX-License-Identifier: LGPL-2.1-or-later
"""What is installed works from wherever it is moved to, and can be removed again.

usage: install_test.py BUILD LIBDIR CC CXX GENERATOR
"""
import json
import os
import pathlib
import re
import shutil
import subprocess
import sys
import tempfile
import time
import unittest

SOURCE = pathlib.Path(__file__).resolve().parents[2]
BUILD, LIBDIR, CC, CXX, GENERATOR = (sys.argv[1:] + [""] * 5)[:5]
# What "cmake --install" writes into the build tree; the developer's own stays as it is.
RECORDS = [pathlib.Path(BUILD, name) for name in ("install_manifest.txt", "install_directories.txt")]
PASSWORD = "geheim"


def output_of(*command, **options):
    done = subprocess.run(command, capture_output=True, text=True, **options)
    if done.returncode != 0:
        raise AssertionError(f"{command}: {done.returncode}\n{done.stdout}{done.stderr}")
    return done.stdout


def files_below(directory):
    return {str(path.relative_to(directory)) for path in directory.rglob("*")
            if path.is_symlink() or not path.is_dir()}


def expected_files():
    table = (SOURCE / "tests/install/files.txt").read_text().splitlines()
    named = {line.replace("LIBDIR", LIBDIR) for line in table if line and not line.startswith("#")}
    headers = {f"include/velkor/{path.name}" for path in (SOURCE / "include/velkor").iterdir()}
    schemas = {f"share/doc/velkor/schemas/{path.name}"
               for path in (SOURCE / "docs/schemas").iterdir()}
    return named | headers | schemas


class Server:
    """A stand-in server, started from the installation."""

    def __init__(self, program, home):
        ready = home / "ready.json"
        self.process = subprocess.Popen(
            [program, "--port", "0", "--postings", "30", "--ready-file", ready],
            env={"ZOX_SERVER_PASSWORD": PASSWORD, "PATH": os.defpath}, stdout=subprocess.DEVNULL)
        while not ready.exists() or not ready.read_text():
            if self.process.poll() is not None:
                raise AssertionError(f"zox-server ended with status {self.process.returncode}")
            time.sleep(0.05)
        self.host = json.loads(ready.read_text())["main"].removeprefix("http://").rstrip("/")

    def __enter__(self):
        return self

    def __exit__(self, *_):
        self.process.terminate()
        self.process.wait()


class Installation(unittest.TestCase):
    def setUp(self):
        directory = tempfile.TemporaryDirectory()
        self.addCleanup(directory.cleanup)
        self.top = pathlib.Path(directory.name)
        self.home = self.top / "home"
        self.home.mkdir()
        self.environment = {"HOME": str(self.home), "PATH": os.defpath, "LC_ALL": "C.UTF-8"}
        for record in RECORDS:
            self.keep(record)

    def keep(self, record):
        if record.exists():
            self.addCleanup(record.write_bytes, record.read_bytes())
        else:
            self.addCleanup(record.unlink, missing_ok=True)

    def install(self, prefix):
        output_of("cmake", "--install", BUILD, "--prefix", prefix)

    def installed_elsewhere(self):
        self.install(self.top / "first")
        return (self.top / "first").rename(self.top / "a place of its own")

    def uninstall(self):
        output_of("cmake", f"-DBUILD={BUILD}", "-P", SOURCE / "cmake/Uninstall.cmake")

    def velkorctl(self, prefix, *words, **options):
        return output_of(prefix / "bin/velkorctl", *words, env=self.environment, **options)

    def test_puts_every_file_in_place(self):
        self.install(self.top / "prefix")
        found = files_below(self.top / "prefix")
        # Named after the type of the build.
        targets = {name for name in found if "/VelkorTargets-" in name}
        self.assertEqual(len(targets), 1)
        reference = {name for name in found if name.startswith("share/doc/velkor/html/reference/")}
        self.assertIn("share/doc/velkor/html/reference/index.html", reference)
        self.assertEqual(sorted(found - targets - reference), sorted(expected_files()))

    def test_programs_work_where_they_were_moved_to(self):
        prefix = self.installed_elsewhere()
        self.velkorctl(prefix, "config", "set", "username", "demo")
        self.velkorctl(prefix, "config", "set", "password", "--stdin", input=PASSWORD + "\n")
        with Server(prefix / "bin/zox-server", self.home) as server:
            service = ["--server", server.host, "--static-server", server.host]
            self.velkorctl(prefix, *service, "update")
            examination = self.velkorctl(prefix, *service, "doctor")
        self.assertIn(f"{prefix}/{LIBDIR}/velkor/libzox_http_plugin.so.2.0 works", examination)
        listed = json.loads(self.velkorctl(prefix, "list", "--format", "json"))
        self.assertEqual(len(listed["items"]), 30)
        document = self.velkorctl(prefix, "list", "--format", "xml")
        self.assertIn(f"file://{prefix}/share/velkor/images".replace(" ", "%20"), document)

    def test_directories_named_on_the_command_line_come_first(self):
        prefix = self.installed_elsewhere()
        document = self.velkorctl(prefix, "--data-dir", "/elsewhere", "list", "--format", "xml")
        self.assertIn("file:///elsewhere/images", document)

    def test_commands_of_the_pages_print_what_they_say(self):
        prefix = self.installed_elsewhere()
        for page in ("README.md", "docs/guide.md"):
            with self.subTest(page=page):
                output_of(SOURCE / "tools/try", prefix, SOURCE / "tools/check_readme.py", SOURCE / page,
                          env=self.environment)

    def test_links_of_the_pages_lead_somewhere(self):
        prefix = self.installed_elsewhere()
        documentation = prefix / "share/doc/velkor"
        pages = [*documentation.glob("[a-z]*.md"), *documentation.glob("html/**/*.html")]
        self.assertIn("guide.html", {page.name for page in pages})
        output_of(SOURCE / "tools/check_links.py", *pages)

    def test_the_shell_for_trying_ends_with_all_that_was_done_in_it(self):
        prefix = self.installed_elsewhere()
        printed = output_of(SOURCE / "tools/try", prefix, env=self.environment,
                            input='velkorctl --version\ntouch "$HOME/file"\necho "home: $HOME"\n')
        self.assertIn("velkorctl 0.1.0", printed)
        home = pathlib.Path(re.search("home: (.*)", printed)[1])
        self.assertNotEqual(home, self.home)
        self.assertFalse(home.exists())

    def test_the_command_that_is_tried_decides_the_status(self):
        prefix = self.installed_elsewhere()
        run = subprocess.run([SOURCE / "tools/try", prefix, "sh", "-c", "exit 3"], env=self.environment)
        self.assertEqual(run.returncode, 3)

    def test_pkg_config_leads_a_c_program_to_the_library(self):
        prefix = self.installed_elsewhere()
        environment = {"PATH": os.environ["PATH"],
                       "PKG_CONFIG_PATH": str(prefix / LIBDIR / "pkgconfig")}
        # A shell reads what pkg-config prints, since it protects the blanks in the paths.
        output_of("sh", "-ec", f"""
            eval "set -- $(pkg-config --cflags --libs velkor)"
            for directory in libdir plugindir datadir; do
              eval "$directory=$(pkg-config --variable=$directory velkor)"
            done
            {CC} '{SOURCE}/tests/abi/c_program.c' -o program "$@" -Wl,-rpath,"$libdir"
            ./program
            test -e "$plugindir/libzox_http_plugin.so.2.0"
            test -e "$datadir/page.xsl"
            """, cwd=self.top, env=environment)

    def test_find_package_leads_a_cxx_program_to_the_library(self):
        prefix = self.installed_elsewhere()
        build = self.top / "consumer"
        output_of("cmake", "-S", SOURCE / "tests/install/consumer", "-B", build, "-G", GENERATOR,
                  f"-DCMAKE_CXX_COMPILER={CXX}", f"-DCMAKE_PREFIX_PATH={prefix}")
        output_of("cmake", "--build", build)
        plugins, data, sentence = output_of(build / "consumer").splitlines()
        self.assertEqual((plugins, data), (f"{prefix}/{LIBDIR}/velkor", f"{prefix}/share/velkor"))
        self.assertTrue(sentence)

    def test_man_pages_and_completion_can_be_read(self):
        prefix = self.installed_elsewhere()
        for page in (prefix / "share/man/man1").iterdir():
            self.assertIn("NAME", output_of("man", "--local-file", page))
        output_of("bash", "-n", prefix / "share/bash-completion/completions/velkorctl")

    def test_uninstall_leaves_nothing(self):
        self.install(self.top / "new/prefix")
        self.uninstall()
        self.assertEqual(list(self.top.iterdir()), [self.home])

    def test_uninstall_leaves_what_was_there_before(self):
        (self.top / "lib").mkdir()
        (self.top / "share/man/man1").mkdir(parents=True)
        (self.top / "share/man/man1/other.1").touch()
        self.install(self.top)
        self.install(self.top)  # what the first one made is still its own
        self.uninstall()
        self.assertEqual(sorted(path.relative_to(self.top).as_posix() for path in self.top.rglob("*")),
                         ["home", "lib", "share", "share/man", "share/man/man1",
                          "share/man/man1/other.1"])

    def test_uninstall_below_another_root(self):
        environment = {**os.environ, "DESTDIR": str(self.top / "root")}
        for command in (["--install", BUILD, "--prefix", "/opt/velkor"],
                        [f"-DBUILD={BUILD}", "-P", SOURCE / "cmake/Uninstall.cmake"]):
            output_of("cmake", *command, env=environment)
        self.assertEqual(files_below(self.top / "root"), set())

    def test_uninstall_is_a_target(self):
        self.assertRegex(output_of("cmake", "--build", BUILD, "--target", "help"), r"\buninstall\b")


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1])
