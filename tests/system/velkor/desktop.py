# SPDX-License-Identifier: LGPL-2.1-or-later
"""A desktop of its own for the front end: a display that nobody sees, a session bus, a home, a
stand-in server, and hands and eyes on the windows by way of the accessibility bus.

Run by Debian's own Python, which has the bindings. Every wait is bounded.
"""
import json
import os
import pathlib
import shutil
import subprocess
import tempfile
import time
import urllib.request

PATIENCE = 30  # seconds for any one step
PASSWORD = "demo-geheim"


def wait_until(condition, what):
    """The first true value of condition(); an AssertionError when there is none in time."""
    deadline = time.monotonic() + PATIENCE
    while time.monotonic() < deadline:
        value = condition()
        if value:
            return value
        time.sleep(0.02)
    raise AssertionError(f"waited in vain: {what}")


class Desktop:
    """Ends with everything that was started on it."""

    def __init__(self):
        self.directory = pathlib.Path(tempfile.mkdtemp(prefix="velkor-desktop-"))
        self.processes = []
        self.home = self.directory / "home"
        runtime = self.directory / "run"
        for path in (self.home, runtime):
            path.mkdir(mode=0o700)
        self.environment = {
            "HOME": str(self.home), "XDG_RUNTIME_DIR": str(runtime), "PATH": os.defpath,
            "LC_ALL": "C.UTF-8", "TZ": "Europe/Amsterdam", "XDG_DATA_DIRS": "/usr/share",
            # Software draws everywhere alike, and no portal or settings daemon has a say.
            "GSK_RENDERER": "cairo", "GDK_BACKEND": "x11", "GTK_USE_PORTAL": "0",
            "ADW_DISABLE_PORTAL": "1", "GSETTINGS_BACKEND": "memory", "NO_AT_BRIDGE": "0"}
        try:
            self.environment["DISPLAY"] = self.start_display()
            self.environment["DBUS_SESSION_BUS_ADDRESS"] = self.start_bus()
            self.start(["openbox", "--sm-disable"])
        except BaseException:
            self.close()
            raise
        os.environ.update(self.environment)  # for the bindings, which connect from this process

    def start(self, command, **options):
        process = subprocess.Popen(command, env=self.environment, stderr=subprocess.DEVNULL, **options)
        self.processes.append(process)
        return process

    def start_display(self):
        end, other = os.pipe()
        self.start(["Xvfb", "-displayfd", str(other), "-screen", "0", "1280x900x24", "-nolisten", "tcp"],
                   pass_fds=[other], stdout=subprocess.DEVNULL)
        os.close(other)
        with os.fdopen(end) as ready:
            number = ready.readline().strip()
        if not number:
            raise AssertionError("Xvfb gives no display")
        return f":{number}"

    def start_bus(self):
        bus = self.start(["dbus-daemon", "--session", "--nofork", "--print-address"],
                         stdout=subprocess.PIPE, text=True)
        return bus.stdout.readline().strip()

    def press(self, *keys):
        subprocess.run(["xdotool", "key", "--clearmodifiers", *keys], env=self.environment, check=True,
                       timeout=PATIENCE)

    def type(self, text):
        subprocess.run(["xdotool", "type", "--delay", "20", text], env=self.environment, check=True,
                       timeout=PATIENCE)

    def close(self):
        for process in reversed(self.processes):
            process.kill()
            process.wait(PATIENCE)
            if process.stdout:
                process.stdout.close()
        shutil.rmtree(self.directory, ignore_errors=True)


class Service:
    """A stand-in server, and velkorctl beside it."""

    def __init__(self, desktop, build, postings, account=True, now=None):
        self.desktop = desktop
        self.build = build
        ready = desktop.directory / "ready.json"
        desktop.environment["ZOX_SERVER_PASSWORD"] = PASSWORD
        ready.unlink(missing_ok=True)
        self.server = desktop.start([build / "bin/zox-server", "--port", "0", "--control", "0", "--seed", "1",
                                     "--postings", str(postings), "--ready-file", ready,
                                     *(["--now", str(now)] if now else [])], stdout=subprocess.DEVNULL)
        wait_until(lambda: ready.exists() and ready.read_text(), "the server is ready")
        addresses = json.loads(ready.read_text())
        host = addresses["main"].removeprefix("http://").rstrip("/")
        self.host = host
        self.control = addresses["control"].rstrip("/")
        self.options = ["--server", host, "--static-server", host, "--lib-dir", build / "lib"]
        if account:
            self.velkorctl("config", "set", "username", "demo")
            self.velkorctl("config", "set", "password", "--stdin", input=PASSWORD + "\n")

    def stop(self):
        self.server.kill()
        self.server.wait(PATIENCE)

    def velkorctl(self, *words, **options):
        done = subprocess.run([self.build / "bin/velkorctl", *self.options, *words],
                              env=self.desktop.environment, capture_output=True, text=True,
                              timeout=PATIENCE, **options)
        if done.returncode != 0:
            raise AssertionError(f"velkorctl {words}: {done.returncode}\n{done.stderr}")
        return done.stdout

    def listed(self, *words):
        return json.loads(self.velkorctl("list", "--format", "json", *words))["items"]

    def shown(self, posting):
        return json.loads(self.velkorctl("show", str(posting), "--format", "json"))["item"]

    def asked_for(self, path):
        """Whether the server has been asked for that path since it was told to commit a fault."""
        with urllib.request.urlopen(self.control + "/requests", timeout=PATIENCE) as reply:
            return any(request["path"] == path and request["fault"] for request in json.load(reply))

    def requests(self, path):
        """What the server has been asked for under that path."""
        with urllib.request.urlopen(self.control + "/requests", timeout=PATIENCE) as reply:
            return [request for request in json.load(reply) if request["path"] == path]

    def command(self, path):
        with urllib.request.urlopen(self.control + path, data=b"", timeout=PATIENCE) as reply:
            return json.load(reply)


class Program:
    """The front end, running."""

    def __init__(self, service, *words):
        self.log = service.desktop.directory / f"velkor-{time.monotonic_ns()}.log"
        with self.log.open("w") as log:
            self.process = subprocess.Popen(
                [service.build / "bin/velkor", *service.options, *words], stdout=log, stderr=log,
                env=service.desktop.environment | {"G_DEBUG": "fatal-criticals"})
        service.desktop.processes.append(self.process)

    def printed(self):
        return self.log.read_text()

    def kill(self):
        self.process.kill()
        self.process.wait(PATIENCE)

    def wait(self):
        """Its exit status."""
        return self.process.wait(PATIENCE)

    def application(self):
        """The program on the accessibility bus."""
        from gi.repository import Atspi

        def find():
            if self.process.poll() is not None:
                raise AssertionError(f"velkor ended with {self.process.returncode}: {self.printed()}")
            desktop = Atspi.get_desktop(0)
            for place in range(desktop.get_child_count()):
                application = desktop.get_child_at_index(place)
                if application and application.get_process_id() == self.process.pid:
                    return application
            return None
        return wait_until(find, "velkor is on the accessibility bus")

    def parts(self):
        """Everything but what is hidden and the cells of tables, in its order; pages of a stack count
        as not hidden."""
        from gi.repository import Atspi, GLib
        pending = [self.application()]
        while pending:
            part = pending.pop()
            try:
                if part.get_role_name() != "application" and \
                        not part.get_state_set().contains(Atspi.StateType.VISIBLE):
                    continue
                yield part
                if part.get_role_name() == "table row":
                    continue
                children = [part.get_child_at_index(place) for place in range(part.get_child_count())]
            except GLib.Error:  # it has just gone
                continue
            pending.extend(child for child in reversed(children) if child)

    def find(self, role, name):
        """The first part of that role and name; None when it is not on the screen."""
        from gi.repository import GLib
        for part in self.parts():
            try:
                if part.get_role_name() == role and part.get_name() == name:
                    return part
            except GLib.Error:  # it has just gone
                continue
        return None

    def shows(self, text):
        """Whether the name of a part on the screen begins with this text."""
        from gi.repository import GLib
        for part in self.parts():
            try:
                if part.get_name().startswith(text):
                    return True
            except GLib.Error:  # it has just gone
                continue
        return False

    def wait_for(self, role, name):
        return wait_until(lambda: self.find(role, name), f"{role} {name}")

    def wait_for_focus(self, role, name):
        """Until the keys go to that part."""
        from gi.repository import Atspi

        def has_focus():
            part = self.find(role, name)
            return part and part.get_state_set().contains(Atspi.StateType.FOCUSED)
        wait_until(has_focus, f"{role} {name} has the focus")

    def wait_for_text(self, text):
        wait_until(lambda: self.shows(text), f"the text {text}")

    def rows(self):
        """The ids of the postings in the list, from the top, as far as there are widgets for them."""
        from gi.repository import GLib
        try:
            table = self.find("tree table", "Spots")
            rows = table.get_child_at_index(table.get_child_count() - 1) if table else None
            count = rows.get_child_count() if rows else 0
            descriptions = [rows.get_child_at_index(place).get_description() for place in range(count)]
        except (GLib.Error, AttributeError):  # they have just changed
            return None
        return [int(text.split()[1]) for text in descriptions if text.startswith("Posting ")]

    def wait_for_rows(self, ids):
        try:
            wait_until(lambda: self.rows() == ids, "")
        except AssertionError:
            raise AssertionError(f"the list shows {self.rows()}, not {ids}") from None

    def press_button(self, name):
        self.do("push button", name)

    def do(self, role, name):
        """What a part of that role and name does when it is clicked."""
        from gi.repository import Atspi
        Atspi.Action.do_action(self.wait_for(role, name), 0)

    def showing(self, role, name):
        """The part of that role and name if it is on the page that is shown."""
        from gi.repository import Atspi, GLib
        try:
            part = self.find(role, name)
            return part if part and part.get_state_set().contains(Atspi.StateType.SHOWING) else None
        except GLib.Error:  # it has just gone
            return None

    def name_of(self, role, beginning):
        """The name of the first part of that role whose name begins so."""
        from gi.repository import GLib

        def find():
            for part in self.parts():
                try:
                    if part.get_role_name() == role and part.get_name().startswith(beginning):
                        return part.get_name()
                except GLib.Error:  # it has just gone
                    continue
            return None
        return wait_until(find, f"{role} {beginning}")

    def text_of(self, role, name):
        """What stands in a field."""
        from gi.repository import Atspi
        field = self.wait_for(role, name)
        return Atspi.Text.get_text(field, 0, Atspi.Text.get_character_count(field))

    def enter(self, role, name, text):
        """Puts the text in place of what is in a field."""
        from gi.repository import Atspi
        Atspi.EditableText.set_text_contents(self.wait_for(role, name), text)
        wait_until(lambda: self.text_of(role, name) == text, f"{name} holds {text}")


def use_bindings():
    """Of the bus of the desktop that was made, so not before that."""
    import gi
    gi.require_version("Atspi", "2.0")
