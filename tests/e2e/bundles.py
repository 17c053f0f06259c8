"""Programs as their users have them: a single file that carries everything in it, and an unpacked folder.

The single file is a stand-in for an image: its head unpacks the rest of it, where an image would be mounted, tells the
program about both as images do, and becomes the program.
"""

import io
import os
import pathlib
import shutil
import tarfile
import tempfile

SOURCES = pathlib.Path(__file__).resolve().parent.parent.parent

HEAD = """#!/bin/sh
APPIMAGE=$(readlink -f "$0")
APPDIR=$(mktemp -d "$DESK_DIR/mounted.XXXXXX")
export APPIMAGE APPDIR
tail -n +7 "$APPIMAGE" | tar -x -C "$APPDIR" -f -
exec "$APPDIR/usr/bin/calorivo" -style fusion --simulate
"""


def portable_folder(path):
    """The program with its data as a folder, as it comes out of an archive."""
    (path / "bin").mkdir(parents=True)
    (path / "portable").touch()
    shutil.copy(os.environ["E2E_PROGRAM"], path / "bin" / "calorivo")
    (path / "share" / "calorivo").mkdir(parents=True)
    shutil.copy(SOURCES / "data" / "Defaults.plist", path / "share" / "calorivo")
    shutil.copytree(SOURCES / "data" / "strings", path / "share" / "calorivo" / "strings")
    return path


def image(path):
    """The same as one executable file."""
    packed = io.BytesIO()
    with tempfile.TemporaryDirectory() as folder:
        unpacked = portable_folder(pathlib.Path(folder) / "usr")
        (unpacked / "portable").unlink()
        with tarfile.open(fileobj=packed, mode="w") as archive:
            archive.add(unpacked, arcname="usr")
    path.parent.mkdir(parents=True, exist_ok=True)
    path.write_bytes(HEAD.encode() + packed.getvalue())
    path.chmod(0o755)
    return path
