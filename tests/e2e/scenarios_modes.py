"""Starting, starting again and ending."""

import os
import pathlib
import re
import signal
import time

import deskui
from harness import Bus, Program, check, client_windows, desk, equal, eventually, scenario, shot

APP = "calorivo"
NORMAL = {"isFirstLaunch": "false", "updateIntervalSecs": "1"}
MENU_ONLY = {**NORMAL, "appMode": "1", "showTempInMenuBar": "true"}


@scenario()
def second_start_shows_the_first_ones_window():
    with Program("--simulate", settings=MENU_ONLY) as first:
        eventually(lambda: Bus().names_of(first.pid), "the first one is on the bus")
        time.sleep(0.5)
        equal(client_windows(), [], "windows of menu-only mode")
        with Program("--simulate") as second:
            equal(second.ends(), 0, "exit code of the second")
        desk("waitwin", "^Calorivo")
        check(first.process.poll() is None, "the first one runs on")


@scenario()
def without_any_tray_it_says_how_it_is_reached():
    with Program("--simulate", settings=MENU_ONLY) as program:
        eventually(lambda: "tray" in program.output(), "a line about the missing tray", 15)
        equal(program.output().count("tray"), 1, "told once")


@scenario(tray="xfce-label")
def signals_end_it_in_time_with_the_settings_saved():
    for number in (signal.SIGTERM, signal.SIGHUP, signal.SIGINT):
        with Program("--simulate", settings=NORMAL) as program:
            desk("waitwin", "^Calorivo")
            program.settings_file.unlink()
            program.process.send_signal(number)
            equal(program.ends(1.0), 0, f"exit code after {number.name}")
            check("updateIntervalSecs=1" in program.settings_file.read_text(), "the settings are saved")


@scenario()
def login_item_is_written_and_removed():
    with Program("--simulate", settings={**NORMAL, "launchOnLogin": "true"}) as program:
        entries = program.settings_file.parent.parent / "autostart"
        entry = eventually(lambda: next(entries.glob("*alorivo*.desktop"), None), "an entry for the login")
        check("--login" in entry.read_text(), entry.read_text())
        equal(program.terminate(), 0, "exit code")
    with Program("--simulate", settings={**NORMAL, "launchOnLogin": "false"}) as program:
        eventually(lambda: not entry.exists(), "the entry is gone")


@scenario(notifications="xfce")
def a_click_on_a_notification_shows_the_window():
    with Program("--simulate", settings={**MENU_ONLY, "limitForSpecificArea": "40", "showAlerts": "true"}):
        deskui.wait("notifyd", "label", r" is \d+°C")
        shot("notification")
        equal(client_windows(), [], "windows of menu-only mode")
        deskui.press("notifyd", "push button", "Open")
        desk("waitwin", "^Calorivo")


@scenario()
def log_grows_with_every_check():
    documents = pathlib.Path(os.environ["HOME"]) / "Documents"
    documents.mkdir()
    with Program("--simulate", settings={**NORMAL, "logToFile": "true"}) as program:
        log = documents / "Calorivo Log.csv"
        lines = eventually(lambda: log.is_file() and len(log.read_text().splitlines()) > 3 and log.read_text().splitlines(),
                           "a header and rows", 15)
        check(lines[0].startswith("Date"), f"no header: {lines[0]}")
        rows = [line for line in lines if not line.startswith("Date")]
        check(rows and all(re.match(r"\d", row) for row in rows), f"no rows: {rows}")
        equal(program.terminate(), 0, "exit code")
        check(log.read_bytes().endswith(b"\n"), "the last line is whole")
