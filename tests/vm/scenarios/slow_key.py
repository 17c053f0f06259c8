"""A key that takes its time: it keeps its value, and neither the checks nor the other keys and chips wait for it. One
that takes longer than the driver waits is N/A, and it alone.
"""

from expect import WatchLog
from guest import Machine

SLOW, OTHER, CHIP = "TC0P", "TG0D", "TN0x"
USERS = {"root": "", "user": "as-user "}
LONGEST_CHECK = 0.1
# Twice the time of a round through the keys with the slow one, and of the checks around it.
LONGEST_DELAY = 0.6
MACHINE = Machine(keys="macbook.txt")
SCRIPT = """
modprobe -a i2c-dev applesmc lm75
modprobe i2c-stub chip_addr=0x48
chip lm75 0x48 25
chip add lm75 0x48
""" + "".join(
    f"""
watch-log {user} {prefix}calorivo-cli watch --interval 0.02 --all-chips
sleep 2
smc slow {SLOW} 60
mark {user}-slow
sleep 2
mark {user}-change
smc set {OTHER} sp78 46 00
smc set {SLOW} sp78 48 00
chip lm75 0x48 35
sleep 2
smc slow {SLOW} 1000
sleep 2
mark {user}-broken
smc set {OTHER} sp78 32 80
chip lm75 0x48 25
sleep 2
mark {user}-end
kill $(cat /tmp/{user}.pid)
smc ok {SLOW}
smc set {SLOW} sp78 3c 40
"""
    for user, prefix in USERS.items()
)


def check(result, expect):
    for user in USERS:
        log = WatchLog(result.text(f"{user}.log"))
        slow, change, broken, end = (result.number(f"{user}-{m}.mark") for m in ("slow", "change", "broken", "end"))
        gap = log.longest_gap(slow, end)
        expect.true(f"{user}: a table every {LONGEST_CHECK} s", gap < LONGEST_CHECK, gap)
        expect.equal(f"{user}: {SLOW} itself", log.values(SLOW), ["60°C", "72°C", "N/A"])
        expect.equal(f"{user}: {OTHER}", log.values(OTHER), ["50°C", "70°C", "50°C"])
        expect.equal(f"{user}: the other chip", log.values(CHIP), ["25°C", "35°C", "25°C"])
        for time, values in (
            (change, {SLOW: "72°C", OTHER: "70°C", CHIP: "35°C"}),
            (broken, {SLOW: "N/A", OTHER: "50°C", CHIP: "25°C"}),
        ):
            found = log.at(time + LONGEST_DELAY)
            expect.equal(f"{user}: {LONGEST_DELAY} s after a change", {k: found[k] for k in values}, values)
