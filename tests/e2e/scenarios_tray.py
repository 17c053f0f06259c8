"""The item in the tray, on hosts that show its text and on others."""

import re

import deskui
from harness import Program, TrayItem, check, client_windows, desk, equal, eventually, keys, scenario, shot

APP = "calorivo"
MENU_ONLY = {"isFirstLaunch": "false", "updateIntervalSecs": "1", "appMode": "1", "showTempInMenuBar": "true"}
TITLE = r"\d+°C"


@scenario(tray="xfce-label")
def menu_only_mode_on_a_tray_with_text():
    with Program("--simulate", settings=MENU_ONLY) as program:
        item = TrayItem(program)
        title = eventually(lambda: re.search(TITLE, item.title()) and item.title(), "a temperature in the title")
        eventually(lambda: re.search(TITLE, item.get("XAyatanaLabel")), "a temperature beside the icon")
        eventually(lambda: re.search(r"\d\d", desk("traytext")), "the temperature on the screen", 15)
        equal(client_windows(), [], "windows in the task bar")
        eventually(lambda: item.title() != title, "the title follows the sensors", 20)
        desk("clicktray")
        shot("tray-menu")
        keys("Down", "Down", "Return")
        desk("waitwin", "^Calorivo")
        equal(program.terminate(), 0, "exit code")


@scenario(tray="xfce")
def menu_only_mode_on_a_tray_without_text():
    with Program("--simulate", settings=MENU_ONLY) as program:
        item = TrayItem(program)
        eventually(lambda: re.search(TITLE, item.title()), "a temperature in the title")
        eventually(lambda: item.get("IconPixmap"), "the digits as a picture")
        check(re.search(TITLE, item.get("ToolTip")[2] + item.get("ToolTip")[3]), "the tool tip holds the title")
        desk("trayitem")
        shot("tray-digits")
        item.activate()
        desk("waitwin", "^Calorivo")
        eventually(client_windows, "the window is in the task bar")


@scenario(tray="xfce-label")
def item_comes_back_whenever_the_host_restarts():
    with Program("--simulate", settings=MENU_ONLY) as program:
        for _ in range(20):
            desk("restart", "tray")
            desk("trayitem")
        eventually(lambda: re.search(r"\d\d", desk("traytext")), "the temperature on the screen", 15)
        check(program.process.poll() is None, "the program runs on")


@scenario(tray="xfce-label")
def item_appears_when_a_host_starts_later():
    desk("stop", "tray")
    with Program("--simulate", settings=MENU_ONLY) as program:
        item = TrayItem(program)
        eventually(lambda: re.search(TITLE, item.title()), "a temperature in the title")
        check(program.process.poll() is None, "no host at all is no failure")
        desk("start", "tray")
        desk("trayitem")
        eventually(lambda: re.search(r"\d\d", desk("traytext")), "the temperature on the screen", 15)


@scenario(tray="xfce-label")
def menu_opens_windows_and_quits():
    with Program("--simulate", settings=MENU_ONLY) as program:
        item = TrayItem(program)
        labels = eventually(item.menu, "a menu")
        check(any(re.match(r"Calorivo \d", label or "") for _, label in labels), f"no About entry: {labels}")
        for label in [label for _, label in labels if label and "reference" in label]:
            item.choose(label)
        deskui.wait(APP, "-", "Fahrenheit")
        item.choose(next(label for _, label in labels if label and "Quit" in label))
        equal(program.ends(), 0, "exit code")


@scenario(tray="mate")
def a_host_that_shows_text_in_place_of_the_icon():
    with Program("--simulate", settings=MENU_ONLY) as program:
        item = TrayItem(program)
        eventually(lambda: re.search(TITLE, item.title()), "a temperature in the title")
        desk("trayitem")
        shot("tray-mate")
