"""An ordinary user sees the list that root sees, root gets every key of the controller, and nothing is written to it.

An ordinary user reads the driver's text files, which hold quarters of a degree; root reads the controller's own bytes.
"""

import math
import re

from guest import HERE, Machine

MACHINE = Machine(keys="macbook.txt")
SCRIPT = """
modprobe applesmc
smc zero
record root calorivo-cli list --json
record user as-user calorivo-cli list --json
record keys calorivo-cli keys
record user-keys as-user calorivo-cli keys
record row calorivo-cli row --fans
smc count >/out/counters
"""
KEY_LINE = re.compile(r"  (.{4})  \[(.{4})\].*\(bytes ?(.*)\)$")


def keys_of(dump: str) -> dict[str, tuple[str, str]]:
    """Type and bytes of each key of a dump."""
    return {m[1]: (m[2], m[3].strip()) for m in map(KEY_LINE.match, dump.splitlines()) if m}


def in_quarters(listing: dict) -> dict:
    for sensor in listing["sensors"]:
        sensor["celsius"] = math.floor(sensor["celsius"] * 4) / 4
    for average in (listing["averages"]["all"], listing["averages"]["cpu"]):
        del average["celsius"]  # of values that may differ by less than a quarter; its text may not
    return listing


def decoded(hexadecimal: str) -> float:
    """The second byte counts as signed too, and its last two bits are not used."""
    high, low = (int.from_bytes(bytes.fromhex(byte), "big", signed=True) for byte in hexadecimal.split())
    return high + (low >> 2) / 64


def check(result, expect):
    table = keys_of((HERE / "keys" / MACHINE.keys).read_text())
    root, user = result.json("root.out"), result.json("user.out")
    expect.equal("source", root["source"], "applesmc")
    fans = [(fan["name"], fan["rpm"]) for fan in root["fans"]]
    expect.equal("fans", fans, [("Left Side", 2000), ("Right side", 2100)])
    wanted = {k: decoded(v) for k, (kind, v) in table.items() if k[0] == "T" and kind == "sp78"}
    # Probes that are not there read 0 or less; a GPU that reads so may only be asleep.
    wanted = {k: celsius for k, celsius in wanted.items() if celsius > 0 or k == "TG0P"}
    expect.equal("root's values", {s["key"]: s["celsius"] for s in root["sensors"]}, wanted)
    expect.equal("user", in_quarters(user), in_quarters(root))
    table["#KEY"] = ("ui32", f"00 00 00 {len(table) + 1:02x}")
    expect.equal("root's keys", keys_of(result.text("keys.out")), table)
    for name in ("root", "user", "keys", "row"):
        expect.equal(f"messages of {name}", result.text(name + ".err"), "")
    read, written, _, _ = map(int, result.text("counters").split())
    expect.true("values were read from the controller", read > 0, read)
    expect.equal("values written to the controller", written, 0)
