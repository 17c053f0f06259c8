"""The main window and the preferences, by mouse and keyboard."""

import re

import deskui
from harness import Program, check, client_windows, desk, equal, eventually, keys, scenario, shot

APP = "calorivo"
SETTINGS = {"isFirstLaunch": "false", "updateIntervalSecs": "1"}


def table():
    return deskui.cells(APP, "Sensors")


def names():
    return [row[0] for row in table()]


@scenario()
def window_comes_up_and_follows_the_sensors():
    with Program("--simulate", settings=SETTINGS):
        desk("waitwin", "^Calorivo")
        rows = eventually(table, "the table has rows")
        for row in rows:
            check(re.fullmatch(r"\d+(\.\d+)?\s?°C|N/A", row[1]), f"no temperature: {row}")
        eventually(lambda: table() != rows, "the values change", 15)
        shot("window-light")


@scenario()
def areas_are_chosen_by_mouse_and_by_keyboard():
    with Program("--simulate", settings=SETTINGS):
        desk("waitwin", "^Calorivo")
        deskui.click(APP, "list item", "^GPU$")
        gpu = eventually(lambda: [name for name in names() if "GPU" in name] == names() and names(), "only the GPU")
        keys("Up", "Up")
        eventually(lambda: names() != gpu and all("CPU" in name for name in names()), "only the CPU")
        deskui.click(APP, "list item", "^All$")
        eventually(lambda: len(names()) > len(gpu) and set(gpu) <= set(names()), "all of them")


@scenario()
def filter_narrows_the_table_and_rows_are_copied():
    with Program("--simulate", settings=SETTINGS):
        desk("waitwin", "^Calorivo")
        deskui.click(APP, "list item", "^All$")
        everything = eventually(names, "rows")
        keys("ctrl+f")
        keys("g", "p", "u")
        narrowed = eventually(lambda: len(names()) < len(everything) and names(), "fewer rows")
        check(all("gpu" in name.lower() for name in narrowed), f"others than asked for: {narrowed}")
        keys("Escape")
        eventually(lambda: names() == everything, "all rows again")


@scenario()
def preferences_are_changed_by_their_controls():
    from harness import TrayItem

    with Program("--simulate", settings={**SETTINGS, "showTempInMenuBar": "true"}) as program:
        desk("waitwin", "^Calorivo")
        item = TrayItem(program)
        eventually(lambda: "°C" in item.title(), "a temperature in the title")
        keys("ctrl+comma")
        desk("waitwin", "Preferences|Temperature")
        deskui.wait(APP, "-", "Fahrenheit")
        shot("preferences-temperature")
        for pane in ("Menu Bar", "Alerts", "Log", "General"):
            deskui.click(APP, "-", f"^{pane}$")
            shot(f"preferences-{pane.lower().replace(' ', '-')}")
        deskui.click(APP, "-", "^Menu Bar$")
        deskui.click(APP, "check box", "[Ff]an")
        eventually(lambda: "RPM" in item.title(), "the fan's speed in the title")
        keys("Escape")
        eventually(lambda: re.search(r"showFanInMenuBar=true", program.settings_file.read_text()), "saved on closing")
        equal(program.terminate(), 0, "exit code")


@scenario(dark=True)
def dark_palette():
    with Program("--simulate", settings={**SETTINGS, "desktopColorScheme": "2"}):
        desk("waitwin", "^Calorivo")
        eventually(table, "rows")
        shot("window-dark")


@scenario(dpi=192, geometry="2200x1500x24")
def double_scale():
    with Program("--simulate", settings=SETTINGS):
        desk("waitwin", "^Calorivo")
        eventually(table, "rows")
        shot("window-scale-2")


@scenario()
def a_machine_without_sensors_is_explained():
    import tempfile

    with tempfile.TemporaryDirectory() as nothing, Program("--sys", nothing, settings=SETTINGS):
        desk("waitwin", "^Calorivo")
        deskui.wait(APP, "-", "[Nn]o .*sensors|sensors .*found")
        shot("window-no-sensors")


@scenario()
def closing_the_window_ends_the_program():
    with Program("--simulate", settings=SETTINGS) as program:
        desk("waitwin", "^Calorivo")
        keys("ctrl+w")
        equal(program.ends(), 0, "exit code")
        check(program.settings_file.is_file(), "the settings are saved")
        equal(client_windows(), [], "windows left")


@scenario()
def first_start_asks_once():
    with Program("--simulate", settings={"updateIntervalSecs": "1"}) as program:
        deskui.wait(APP, "-", "Launch on Startup")
        shot("first-start")
        deskui.press(APP, "push button", "^No$")
        deskui.gone(APP, "-", "Launch on Startup")
        eventually(lambda: "isFirstLaunch=false" in program.settings_file.read_text(), "saved")
        equal(program.terminate(), 0, "exit code")
    with Program("--simulate") as program:
        desk("waitwin", "^Calorivo")
        eventually(table, "rows")
        check(deskui.find(APP, "-", "Launch on Startup") is None, "asked again")
