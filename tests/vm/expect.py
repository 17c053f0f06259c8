"""Collects the differences between what a guest printed and what it had to print."""

import json
import re


class Expectations:
    def __init__(self):
        self.differences: list[str] = []

    def fail(self, difference: str) -> None:
        self.differences.append(difference)

    def true(self, statement: str, is_true: bool, found: object = "") -> None:
        if not is_true:
            self.fail(f"not so: {statement}" + (f"; found {found}" if found != "" else ""))

    def equal(self, what: str, found, wanted) -> None:
        """Compares whole values; of lists and objects it names the places that differ."""
        if isinstance(found, dict) and isinstance(wanted, dict):
            for name in dict.fromkeys([*wanted, *found]):
                self.equal(f"{what}.{name}", found.get(name, "nothing"), wanted.get(name, "nothing"))
        elif isinstance(found, list) and isinstance(wanted, list) and len(found) == len(wanted):
            for index, (a, b) in enumerate(zip(found, wanted)):
                self.equal(f"{what}[{index}]", a, b)
        elif found != wanted:
            self.fail(f"{what}: found {shown(found)}, wanted {shown(wanted)}")


def shown(value) -> str:
    return value if isinstance(value, str) else json.dumps(value, ensure_ascii=False)


def texts_by_key(listing: dict) -> dict[str, str]:
    """What each sensor of a `list --json` shows."""
    return {sensor["key"]: sensor["text"] for sensor in listing["sensors"]}


def without_repetitions(values: list[str]) -> list[str]:
    return [v for i, v in enumerate(values) if i == 0 or v != values[i - 1]]


def longest_gap(times: list[float], begin: float, end: float) -> float:
    """Between two of the times, of which the second lies in that time."""
    gaps = [round(b - a, 2) for a, b in zip(times, times[1:]) if begin <= b <= end]
    return max(gaps) if gaps else float("inf")


class WatchLog:
    """The tables that a watch showed: for each the time, and what it showed for each key."""

    ROW = re.compile(r"  .* (?P<key>[A-Z]\w{3}) +(?P<value>N/A|-?\d+(?:°C| RPM))")

    def __init__(self, text: str):
        self.times: list[float] = []
        self.tables: list[dict[str, str]] = []
        for chunk in text.split("@")[1:]:
            time, *lines = chunk.splitlines()
            rows = {row["key"]: row["value"] for row in map(self.ROW.match, lines) if row}
            self.times.append(float(time))
            self.tables.append(rows or self.tables[-1])

    def longest_gap(self, begin: float, end: float) -> float:
        """Between two tables, of which the second came in that time."""
        return longest_gap(self.times, begin, end)

    def values(self, key: str, begin: float = 0, end: float = float("inf")) -> list[str]:
        """What the key showed in that time, without repetitions."""
        shown_values = [t.get(key, "nothing") for time, t in zip(self.times, self.tables) if begin <= time <= end]
        return without_repetitions(shown_values)

    def at(self, time: float) -> dict[str, str]:
        """The last table before that time."""
        return [table for at, table in zip(self.times, self.tables) if at <= time][-1]


class StampedLog:
    """The lines that a command printed, and when."""

    def __init__(self, text: str):
        stamped = [line.partition(" ") for line in text.splitlines()]
        self.times = [float(time) for time, _, _ in stamped]
        self.lines = [line for _, _, line in stamped]

    def between(self, begin: float, end: float) -> list[str]:
        return [line for time, line in zip(self.times, self.lines) if begin <= time <= end]

    def fields(self, column: int, begin: float, end: float) -> list[str]:
        """What the rows of that time have in the column, without repetitions; the titles are no row."""
        values = [row.split(",")[column] for row in self.between(begin, end) if row != self.lines[0]]
        return without_repetitions(values)

    def longest_gap(self, begin: float, end: float) -> float:
        return longest_gap(self.times, begin, end)
