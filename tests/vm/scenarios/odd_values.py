"""Values at and beyond the ends of what a temperature can be: shown as N/A while a watch runs, left out by a list that
begins with them, except 120 and more degrees that are no nonsense.
"""

from expect import WatchLog, texts_by_key
from guest import Machine

MACHINE = Machine(keys="macbook.txt", has_thermal_zone=True)
LEFT_OUT = "left out"
LM75, JC42, ZONE, MAC = "lm75 temp1", "DIMM 1", "Thermal Zone 1", "CPU Proximity "
# How to set it, which sensor it is, what a running watch shows, what a new list shows.
CASES = [
    ("chip lm75 0x48 -127", LM75, "N/A", LEFT_OUT),
    ("chip lm75 0x48 0", LM75, "N/A", LEFT_OUT),
    ("chip lm75 0x48 119", LM75, "119°C", "119°C"),
    ("chip lm75 0x48 120", LM75, "N/A", "N/A"),
    ("chip jc42 0x18 1919", JC42, "120°C", "120°C"),  # 119.94 degrees
    ("chip jc42 0x18 1920", JC42, "N/A", "N/A"),
    ("zone 3931", ZONE, "120°C", "120°C"),  # 119.9
    ("zone 3932", ZONE, "N/A", "N/A"),  # 120.0
    ("zone 65535", ZONE, "N/A", LEFT_OUT),  # 6280.3
    ("zone 0", ZONE, "N/A", LEFT_OUT),  # below absolute zero
    ("smc set TC0P sp78 81 00", MAC, "N/A", LEFT_OUT),  # -127
    ("smc set TC0P sp78 00 00", MAC, "N/A", LEFT_OUT),
    # 119.99: the controller's second byte counts as signed, as it always has.
    ("smc set TC0P sp78 77 fd", MAC, "119°C", "119°C"),
    ("smc set TC0P sp78 77 7d", MAC, "119°C", "119°C"),
    ("smc set TC0P sp78 78 00", MAC, "N/A", "N/A"),
]
USERS = {"root": "", "user": "as-user "}
LIST = "calorivo-cli list --all-chips --json"
GOOD = """
chip lm75 0x48 25
chip jc42 0x18 720
zone 3000
smc set TC0P sp78 3c 40
"""
SCRIPT = f"""
modprobe -a i2c-dev applesmc lm75 jc42
modprobe i2c-stub chip_addr=0x18,0x48
{GOOD}
chip add lm75 0x48
chip add jc42 0x18
record good {LIST}
""" + "".join(
    "".join(f"watch-log {u}-watch-{i} {p}calorivo-cli watch --all-chips --interval 0.2\n" for u, p in USERS.items())
    + f"sleep 1\n{command}\nsleep 1\nmark {i}\nkill $(cat /tmp/*.pid)\nrm /tmp/*.pid\n"
    + "".join(f"record {u}-list-{i} {p}{LIST}\n" for u, p in USERS.items())
    + GOOD
    for i, (command, *_) in enumerate(CASES)
)


def check(result, expect):
    good = result.json("good.out")
    keys = {sensor["name"]: sensor["key"] for sensor in good["sensors"]}
    whole = texts_by_key(good)
    for i, (command, name, in_watch, in_list) in enumerate(CASES):
        key = keys[name]
        for user in USERS:
            log = WatchLog(result.text(f"{user}-watch-{i}.log"))
            shown = log.at(result.number(f"{i}.mark"))
            # What was good before stays, whatever one sensor reads.
            wanted = whole | {key: in_watch}
            expect.equal(f"{user}, {command}, watch", {k: shown.get(k) for k in wanted}, wanted)
            wanted = {k: v for k, v in (whole | {key: in_list}).items() if v != LEFT_OUT}
            expect.equal(f"{user}, {command}, list", texts_by_key(result.json(f"{user}-list-{i}.out")), wanted)
