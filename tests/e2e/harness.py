"""What the end-to-end scenarios share: the program under test, its item in the tray, and waiting for things.

Runs inside desk.sh, with /usr/bin/python3 (the modules are Debian's).
"""

import os
import pathlib
import signal
import subprocess
import sys
import time

import gi

gi.require_version("Gio", "2.0")
from gi.repository import Gio, GLib  # noqa: E402

SCENARIOS = {}


def scenario(tray="none", notifications="none", **more):
    """Registers the function as a scenario on a desktop with these parts."""

    def register(function):
        SCENARIOS[function.__name__] = (function, dict(tray=tray, notifications=notifications, **more))
        return function

    return register


class Failure(Exception):
    pass


def check(condition, message):
    if not condition:
        raise Failure(message)


def equal(actual, expected, what):
    check(actual == expected, f"{what}: {actual!r}, expected {expected!r}")


def eventually(probe, what, seconds=10.0):
    """Waits until the probe gives something true, and returns it."""
    end = time.monotonic() + seconds
    while True:
        try:
            found = probe()
        except (GLib.Error, Failure) as error:
            found, what_else = None, f" ({error})"
        else:
            what_else = f" (last: {found!r})"
        if found:
            return found
        if time.monotonic() > end:
            raise Failure(f"not within {seconds} s: {what}{what_else}")
        time.sleep(0.05)


def desk(*arguments):
    return subprocess.run([os.environ["DESK"], *arguments], check=True, capture_output=True, text=True).stdout


def shot(name):
    folder = pathlib.Path(os.environ["E2E_SHOTS"])
    folder.mkdir(parents=True, exist_ok=True)
    desk("shot", str(folder / f"{name}.png"))


def keys(*names):
    for name in names:
        subprocess.run(["xdotool", "key", name, "sleep", "0.1"], check=True)


def client_windows():
    """The titles of the windows that a task bar would list; not those of the panels themselves."""
    listed = subprocess.run(["xprop", "-root", "_NET_CLIENT_LIST"], capture_output=True, text=True).stdout
    titles = []
    for window in [word.strip(" ,") for word in listed.split() if word.startswith("0x")]:
        name = subprocess.run(["xdotool", "getwindowname", window], capture_output=True, text=True)
        if name.returncode == 0 and "panel" not in name.stdout:
            titles.append(name.stdout.strip())
    return titles


class Program:
    """The program under test, started for real."""

    def __init__(self, *arguments, settings=None, environment=None, program=None, folder=None):
        self.settings_file = pathlib.Path(os.environ["XDG_CONFIG_HOME"]) / "calorivo" / "calorivo.ini"
        if settings is not None:
            self.settings_file.parent.mkdir(parents=True, exist_ok=True)
            lines = ["[General]", *(f"{key}={value}" for key, value in settings.items())]
            self.settings_file.write_text("\n".join(lines) + "\n")
        self.log = open(os.path.join(os.environ["DESK_LOGS"], f"program-{time.monotonic_ns()}.log"), "w+b")
        self.process = subprocess.Popen(
            [program or os.environ["E2E_PROGRAM"], "-style", "fusion", *arguments],
            stdout=self.log,
            stderr=subprocess.STDOUT,
            env={**os.environ, **(environment or {})},
            cwd=folder,
        )

    def __enter__(self):
        return self

    def __exit__(self, *_):
        if self.process.poll() is None:
            self.process.kill()
        self.process.wait()
        self.log.close()

    @property
    def pid(self):
        return self.process.pid

    def output(self):
        self.log.flush()
        return pathlib.Path(self.log.name).read_text()

    def terminate(self, seconds=1.0):
        """Asks it to end; returns its exit code, which must come in time."""
        self.process.send_signal(signal.SIGTERM)
        try:
            return self.process.wait(seconds)
        except subprocess.TimeoutExpired:
            raise Failure(f"still running {seconds} s after SIGTERM") from None

    def ends(self, seconds=5.0):
        try:
            return self.process.wait(seconds)
        except subprocess.TimeoutExpired:
            raise Failure(f"still running after {seconds} s") from None


class Bus:
    """The session bus, as another program sees it."""

    def __init__(self):
        self.connection = Gio.bus_get_sync(Gio.BusType.SESSION, None)

    def call(self, name, path, interface, method, arguments=None):
        answer = self.connection.call_sync(name, path, interface, method, arguments, None, 0, 3000, None)
        return answer.unpack()

    def names_of(self, pid):
        """The unique names of the process's connections."""
        found = []
        for name in self.call("org.freedesktop.DBus", "/", "org.freedesktop.DBus", "ListNames")[0]:
            if not name.startswith(":"):
                continue
            try:
                owner = self.call(
                    "org.freedesktop.DBus",
                    "/",
                    "org.freedesktop.DBus",
                    "GetConnectionUnixProcessID",
                    GLib.Variant("(s)", (name,)),
                )[0]
            except GLib.Error:
                continue
            if owner == pid:
                found.append(name)
        return found


class TrayItem:
    """The program's item, as a tray host sees it."""

    INTERFACE = "org.kde.StatusNotifierItem"
    PATH = "/StatusNotifierItem"

    def __init__(self, program):
        self.bus = Bus()
        self.name = eventually(lambda: self._find(program.pid), "the program has an item on the bus")

    def _find(self, pid):
        for name in self.bus.names_of(pid):
            try:
                self._get(name, "Id")
            except GLib.Error:
                continue
            return name
        return None

    def _get(self, name, prop):
        arguments = GLib.Variant("(ss)", (self.INTERFACE, prop))
        return self.bus.call(name, self.PATH, "org.freedesktop.DBus.Properties", "Get", arguments)[0]

    def get(self, prop):
        return self._get(self.name, prop)

    def title(self):
        return self.get("Title")

    def activate(self):
        self.bus.call(self.name, self.PATH, self.INTERFACE, "Activate", GLib.Variant("(ii)", (0, 0)))

    def menu(self):
        """The menu's entries as (id, label); separators have no label."""
        path = self.get("Menu")
        arguments = GLib.Variant("(iias)", (0, -1, []))
        layout = self.bus.call(self.name, path, "com.canonical.dbusmenu", "GetLayout", arguments)[1]
        return [(entry[0], entry[1].get("label")) for entry in layout[2]]

    def choose(self, label):
        ident = next((ident for ident, text in self.menu() if text == label), None)
        check(ident is not None, f"no entry {label!r} in {self.menu()}")
        arguments = GLib.Variant("(isvu)", (ident, "clicked", GLib.Variant("i", 0), 0))
        self.bus.call(self.name, self.get("Menu"), "com.canonical.dbusmenu", "Event", arguments)


def main():
    function, _ = SCENARIOS[sys.argv[1]]
    try:
        function()
    except Failure as failure:
        print(f"{sys.argv[1]}: {failure}")
        try:
            shot(f"failed-{sys.argv[1]}")
        except (OSError, subprocess.SubprocessError):
            pass
        return 1
    return 0
