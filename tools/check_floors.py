#!/usr/bin/env python3
"""Checks who includes whom: each folder sees the floors below it only, and platform headers stay where they belong.

Prints one line per breach, as file:line: reason, and exits with 1 when there is any.
"""

import pathlib
import re
import sys

ROOT = pathlib.Path(__file__).resolve().parent.parent

# Folder of src/ -> its floor. A file may include its own folder and lower floors; siblings never see each other.
FLOORS = {
    "platform": 1,
    "smc": 2,
    "ui": 2,
    "sensors": 3,
    "monitor": 4,
    "output": 5,
    "app": 6,
    "ui/qt": 7,
    "host": 8,
    "cli": 9,
    "desktop": 9,
}
# The platform's implementations see the interfaces, the SMC record and their own folder; only floors 8 and 9 see them.
IMPLEMENTATIONS = {
    "platform/std",
    "platform/linux",
    "platform/simulated",
    "platform/data",
    "platform/qt",
    "platform/macos",
}
# C++20's standard headers, and the C library's as C++ offers them.
STANDARD = set(
    """algorithm any array atomic barrier bit bitset cassert cctype cerrno cfenv cfloat charconv chrono cinttypes
    climits clocale cmath codecvt compare complex concepts condition_variable coroutine csetjmp csignal cstdarg cstddef
    cstdint cstdio cstdlib cstring ctime cuchar cwchar cwctype deque exception execution filesystem forward_list fstream
    functional future initializer_list iomanip ios iosfwd iostream istream iterator latch limits list locale map memory
    memory_resource mutex new numbers numeric optional ostream queue random ranges ratio regex scoped_allocator
    semaphore set shared_mutex source_location span sstream stack stdexcept stop_token streambuf string string_view
    strstream syncstream system_error thread tuple type_traits typeindex typeinfo unordered_map unordered_set utility
    valarray variant vector version""".split()
)
INCLUDE = re.compile(r'\s*#\s*include\s+(["<])([^">]+)[">]')
SYSTEM_FOLDERS = {"platform/linux", "platform/macos", "cli", "host", "desktop", "platform/qt"}
QT_FOLDERS = {"ui/qt", "platform/qt", "desktop"}
LIBRARY_FOLDERS = {"cli": ("CLI/", "nlohmann/"), "desktop": ("CLI/",), "platform/data": ("nlohmann/",), "platform/linux": ("nlohmann/",)}


def folder_of(path: str) -> str:
    """The longest known folder that holds the path (relative to src/)."""
    folder = str(pathlib.PurePosixPath(path).parent)
    while folder not in FLOORS and folder not in IMPLEMENTATIONS:
        folder = str(pathlib.PurePosixPath(folder).parent) if folder not in (".", "") else ""
        if folder in (".", ""):
            return ""
    return folder


def may_see(own: str, other: str) -> bool:
    if own == other:
        return True
    if own in IMPLEMENTATIONS:
        return other in ("platform", "smc")
    if other in IMPLEMENTATIONS:
        return FLOORS[own] >= 8
    return FLOORS[other] < FLOORS[own]


def breach(own: str, bracket: str, header: str) -> str | None:
    if bracket == '"':
        if not (ROOT / "src" / header).is_file():
            return f'"{header}" is no header of src/'
        other = folder_of(header)
        return None if may_see(own, other) else f"src/{own} may not include {header}: it is not on a lower floor"
    if header in STANDARD:
        return None
    if header.startswith("Q"):
        return None if own in QT_FOLDERS else f"<{header}>: Qt belongs in ui/qt and platform/qt"
    if any(header.startswith(prefix) for prefix in LIBRARY_FOLDERS.get(own, ())):
        return None
    if header.startswith(("CLI/", "nlohmann/")):
        return f"<{header}>: this folder uses the standard library only"
    return None if own in SYSTEM_FOLDERS else f"<{header}>: system headers belong in platform/linux and platform/macos"


def main() -> int:
    breaches = 0
    for path in sorted((ROOT / "src").rglob("*")):
        if path.suffix not in (".h", ".cpp", ".mm"):
            continue
        own = folder_of(path.relative_to(ROOT / "src").as_posix())
        lines = path.read_text(encoding="utf-8").splitlines()
        found = [(n, breach(own, *m.groups())) for n, line in enumerate(lines, 1) if (m := INCLUDE.match(line))]
        if len(lines) > 400:
            found.append((401, "longer than 400 lines: split it by subject"))
        for number, reason in found:
            if reason:
                breaches += 1
                print(f"{path.relative_to(ROOT)}:{number}: {reason}")
    return 1 if breaches else 0


if __name__ == "__main__":
    sys.exit(main())
