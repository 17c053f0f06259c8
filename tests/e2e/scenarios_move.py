"""The offer to move the program into an Applications folder."""

import contextlib
import os
import pathlib
import signal
import time

import bundles
import deskui
from harness import Program, check, client_windows, desk, equal, eventually, scenario, shot

APP = "calorivo"
NORMAL = {"isFirstLaunch": "false", "updateIntervalSecs": "1"}
MOVE = "^Move to Applications Folder$"
STAY = "^Do Not Move$"


def home(*parts):
    return pathlib.Path(os.environ["HOME"]).joinpath(*parts)


def trashed():
    files = pathlib.Path(os.environ["XDG_DATA_HOME"]) / "Trash" / "files"
    return sorted(entry.name for entry in files.iterdir()) if files.is_dir() else []


def have_applications_folder():
    """One with a program in it: there the user's programs are."""
    home("Applications").mkdir()
    home("Applications", "Other.AppImage").write_text("another program")


def processes():
    """This desktop's processes of the program: their numbers with their environments."""
    found = {}
    for folder in pathlib.Path("/proc").iterdir():
        try:
            if not folder.name.isdigit() or not os.readlink(folder / "exe").endswith("/bin/calorivo"):
                continue
            environment = dict(
                variable.split("=", 1) for variable in (folder / "environ").read_text().split("\0") if "=" in variable
            )
        except OSError:
            continue
        if environment.get("DESK_ID") == os.environ["DESK_ID"]:
            found[int(folder.name)] = environment
    return found


@contextlib.contextmanager
def relaunched(program):
    """The process that the program left behind, with its environment; ended at the end."""
    equal(program.ends(15), 0, "exit code of the one that moved")
    try:
        yield eventually(lambda: next(iter(processes().items()), None), "the new copy runs", 15)
    finally:
        for number in processes():
            os.kill(number, signal.SIGTERM)
        eventually(lambda: not processes(), "nothing runs any more", 15)


@scenario()
def moves_an_image_and_runs_on_from_there():
    have_applications_folder()
    image = bundles.image(home("Downloads", "Calorivo.AppImage"))
    contents = image.read_bytes()
    destination = home("Applications", "Calorivo.AppImage")
    destination.write_text("an older one")
    with Program(settings=NORMAL, program=image) as program:
        deskui.wait(APP, "push button", MOVE)
        shot("move")
        equal(client_windows(), ["Calorivo"], "windows beside the question")
        deskui.click(APP, "push button", MOVE)
        with relaunched(program) as (number, environment):
            check(number != program.pid, "another process")
            equal(environment["APPIMAGE"], str(destination), "where it runs from")
            desk("waitwin", "^Calorivo")
            deskui.wait(APP, "table", None)
            check(destination.read_bytes() == contents, "the copy is whole")
            check(not image.exists(), "the old one is gone")
            equal(trashed(), ["Calorivo.AppImage", "Calorivo.AppImage.2"], "the trash")
            older = pathlib.Path(os.environ["XDG_DATA_HOME"]) / "Trash" / "files" / "Calorivo.AppImage"
            equal(older.read_text(), "an older one", "the first in the trash")
            check(deskui.find(APP, "push button", MOVE) is None, "it asks no more")


@scenario()
def moves_a_folder_with_a_hostile_name():
    have_applications_folder()
    name = "a'; touch pwned; '$(touch pwned)"
    folder = bundles.portable_folder(home("Downloads", name))
    with Program("--simulate", settings=NORMAL, program=folder / "bin" / "calorivo", folder=home()) as program:
        deskui.click(APP, "push button", MOVE)
        with relaunched(program) as (number, _):
            equal(os.readlink(f"/proc/{number}/exe"), str(home("Applications", name, "bin", "calorivo")), "what runs")
            check(not folder.exists(), "the old one is gone")
            equal(trashed(), [name], "the trash")
    desktop = pathlib.Path(os.environ["DESK_DIR"])
    touched = [*desktop.rglob("pwned"), *pathlib.Path("/").glob("pwned")]
    equal(touched, [], "what a shell did")


@scenario()
def declining_leaves_everything_and_is_remembered_if_wanted():
    have_applications_folder()
    image = bundles.image(home("Downloads", "Calorivo.AppImage"))
    for isChecked in (False, True):
        with Program(settings=NORMAL, program=image) as program:
            deskui.wait(APP, "push button", STAY)
            if not isChecked:
                deskui.press(APP, "check box", "^Do not ask again$")
            deskui.click(APP, "push button", STAY)
            eventually(lambda: deskui.find(APP, "table") is not None, "the program's own window")
            equal(program.terminate(5), 0, "exit code")
            settings = program.settings_file.read_text()
            equal("moveToApplicationsFolderAlertSuppress=true" in settings, isChecked, "what is remembered")
            check(image.exists(), "the program stays")
            equal(sorted(os.listdir(home("Applications"))), ["Other.AppImage"], "the Applications folder")
            equal(trashed(), [], "the trash")
    with Program(program=image):
        eventually(lambda: deskui.find(APP, "table") is not None, "the window, without a question")
        check(deskui.find(APP, "push button", STAY) is None, "no question")


@scenario()
def a_move_that_fails_leaves_the_program_running():
    have_applications_folder()
    image = bundles.image(home("Downloads", "Calorivo.AppImage"))
    destination = home("Applications", "Calorivo.AppImage")
    destination.write_text("an older one")
    # Nothing can be put into such a trash.
    (pathlib.Path(os.environ["XDG_DATA_HOME"]) / "Trash").write_text("")
    with Program(settings=NORMAL, program=image) as program:
        deskui.click(APP, "push button", MOVE)
        deskui.wait(APP, "label", "^Could not move to Applications folder$")
        shot("move-failed")
        deskui.click(APP, "push button", "^OK$")
        eventually(lambda: deskui.find(APP, "table") is not None, "the program's own window")
        equal(destination.read_text(), "an older one", "the older one")
        check(image.exists(), "the program stays")
        equal(program.terminate(5), 0, "exit code")


@scenario()
def ending_it_at_the_question_changes_nothing():
    have_applications_folder()
    image = bundles.image(home("Downloads", "Calorivo.AppImage"))
    with Program(settings={**NORMAL, "tempUnit": "1"}, program=image) as program:
        settings = program.settings_file.read_text()
        deskui.wait(APP, "push button", MOVE)
        equal(program.terminate(5), 0, "exit code")
        equal(program.settings_file.read_text(), settings, "the settings")
        check(image.exists(), "the program stays")


@scenario()
def a_program_that_is_no_bundle_is_offered_nothing():
    have_applications_folder()
    # As of a terminal that runs from an image of its own.
    foreign = home("Terminal.AppImage")
    foreign.write_text("another program")
    environment = {"APPIMAGE": str(foreign), "APPDIR": os.environ["DESK_DIR"]}
    with Program("--simulate", settings=NORMAL, environment=environment) as program:
        eventually(lambda: deskui.find(APP, "table") is not None, "the program's own window")
        time.sleep(0.5)
        check(deskui.find(APP, "push button", MOVE) is None, "no question")
        equal(program.terminate(5), 0, "exit code")
    equal(trashed(), [], "the trash")
