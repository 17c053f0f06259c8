"""A disk that sleeps is left asleep, through a thousand checks: nothing is read from it, nothing is switched in it, and
it keeps the value that it had. One that the kernel has suspended is not even asked whether it sleeps.
"""

from expect import StampedLog
from guest import Machine

MACHINE = Machine()
# How many checks, of which about the first 20 find the disk awake.
CHECKS = {"smart": 1040, "drivetemp": 230, "suspended": 130}
LOG = "calorivo-cli log --print --drives --interval 0.05 --cycles"
SCRIPT = f"""
wait_for_log() {{ while [ -d "/proc/$(cat "/tmp/$1.pid")" ]; do sleep 0.5; done; }}
falls_asleep() {{ # NAME CHECKS: with another temperature than the one that was read
    drive set a "temp 45"
    stamp "$1" {LOG} "$2"
    sleep 1
    mark "$1"
    drive set a "temp 61" "standby 1"
    sleep 0.5
    drive count a >"/out/$1-begin"
    wait_for_log "$1"
    drive count a >"/out/$1-end"
    record "$1" calorivo-cli drives --json
}}
drive add a
falls_asleep smart {CHECKS["smart"]}
drive set a "temp 45"
modprobe drivetemp
sleep 1
falls_asleep drivetemp {CHECKS["drivetemp"]}

drive set a "temp 45"
stamp suspended {LOG} {CHECKS["suspended"]}
sleep 1
mark suspended
echo 10 >/sys/block/sda/device/power/autosuspend_delay_ms
echo auto >/sys/block/sda/device/power/control
sleep 0.5
drive count a >/out/suspended-begin
wait_for_log suspended
drive count a >/out/suspended-end
record suspended calorivo-cli drives --json
record suspended-user as-user calorivo-cli drives --json
"""
# A round finds the disk as it was when the round began.
A_ROUND = 0.1


def check(result, expect):
    for name, checks in CHECKS.items():
        log = StampedLog(result.text(f"{name}.log"))
        expect.equal(f"{name}: rows", len(log.lines) - 1, checks)
        expect.equal(f"{name}: the value stays", log.fields(-1, 0, log.times[-1]), ["45"])
        begin, end = result.counts(f"{name}-begin"), result.counts(f"{name}-end")
        asked = end["power"] - begin["power"]
        expect.equal(f"{name}: nothing but whether it sleeps", end | {"power": 0}, begin | {"power": 0})
        asleep = len(log.between(result.number(f"{name}.mark") + 0.5 + A_ROUND, log.times[-1]))
        if name == "suspended":
            expect.equal(f"{name}: asked", asked, 0)
        else:
            expect.true(f"{name}: asked once a check, {asleep} times", asleep <= asked <= asleep + 4, asked)
        expect.equal(f"{name}: switched and woken", (end["switches"], end["wakes"]), (0, 0))
    thousand = result.counts("smart-end")["power"] - result.counts("smart-begin")["power"]
    expect.true("a thousand checks of a sleeping disk", thousand >= 1000, thousand)

    # Who asks only now has no value from before.
    for name in (*CHECKS, "suspended-user"):
        drive = result.json(f"{name}.out")["drives"][0]
        found = (drive["asleep"], drive["celsius"], drive["problem"])
        expect.equal(f"{name}: the drive", found, (True, None, "it sleeps"))
