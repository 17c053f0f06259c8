"""The machine sleeps for longer than a check's period: the first check comes within one period after it has woken, what
was missed is not made up for, and values are those of now, also of chips that have other numbers than before.
"""

from expect import StampedLog, WatchLog
from guest import Machine

PERIOD = 1
# What a check takes, and the way of its table to the log.
TOLERANCE = 0.1
USERS = {"root": "", "user": "as-user "}
CHIP, MEMORY, MAC = "TN0x", "TM3S", "TC0P"
MACHINE = Machine(keys="macbook.txt", has_nvme=True, can_sleep=True)
SCRIPT = f"""
numbers() {{ grep -H . /sys/class/hwmon/hwmon*/name | sed 's|.*/\\(hwmon[0-9]*\\)/name:|\\1 |' >"/out/$1"; }}
# Time since the start without sleep, in nanoseconds.
awake() {{ sed -n 's/^now at \\([0-9]*\\).*/\\1/p' /proc/timer_list >"/out/$1"; }}

modprobe -a applesmc i2c-dev lm75 jc42 nvme
modprobe i2c-stub chip_addr=0x18,0x48
chip lm75 0x48 25
chip jc42 0x18 720
chip add lm75 0x48
chip add jc42 0x18
sleep 1
numbers before
""" + "".join(
    f"stamp {user} {prefix}calorivo-cli log --print --drives --interval {PERIOD}\n"
    f"watch-log {user}-watch {prefix}calorivo-cli watch --all-chips --interval {PERIOD}\n"
    for user, prefix in USERS.items()
) + """
sleep 3.5
mark asleep
smc set TC0P sp78 46 00
awake before-sleep
suspend 4
awake after-sleep
mark awake
chip remove 0x48
chip remove 0x18
chip lm75 0x48 35
chip jc42 0x18 640
chip add jc42 0x18
chip add lm75 0x48
numbers after
sleep 6
mark end
kill $(cat /tmp/*.pid)
"""
# A chip that went is looked for once a second.
LONGEST_SEARCH = 3


def check(result, expect):
    expect.equal("numbers before", result.text("before"), "hwmon1 nvme\nhwmon2 lm75\nhwmon3 jc42\n")
    expect.equal("numbers after", result.text("after"), "hwmon1 nvme\nhwmon2 jc42\nhwmon3 lm75\n")
    asleep, awake, end = (result.number(f"{mark}.mark") for mark in ("asleep", "awake", "end"))
    slept = awake - asleep - (result.number("after-sleep") - result.number("before-sleep")) / 1e9
    expect.true("the machine slept", slept > 2 * PERIOD, slept)
    for user in USERS:
        log = StampedLog(result.text(f"{user}.log"))
        watch = WatchLog(result.text(f"{user}-watch.log"))
        for name, times in (("log", log.times[1:]), ("watch", watch.times)):
            after = [time for time in times if time >= awake - TOLERANCE]
            expect.true(f"{user}, {name}: the first check", after[0] - awake < PERIOD + TOLERANCE, after[0] - awake)
            gaps = [round(b - a, 2) for a, b in zip(after, after[1:])]
            as_usual = [gap for gap in gaps if abs(gap - PERIOD) < TOLERANCE]
            expect.equal(f"{user}, {name}: all others as usual", gaps, as_usual)
        column = log.lines[0].split(",").index("CPU Proximity  (C)")
        expect.equal(f"{user}: the controller before", log.fields(column, 0, asleep), ["60"])
        expect.equal(f"{user}: the controller after", log.fields(column, awake, end), ["70"])
        expect.equal(f"{user}: the drive", log.fields(-1, 0, end), ["50"])
        widths = {line.count(",") for line in log.lines}
        expect.equal(f"{user}: all columns", widths, {log.lines[0].count(",")})
        for key, before, now in ((CHIP, "25°C", "35°C"), (MEMORY, "45°C", "40°C")):
            shown = [value for value in watch.values(key) if value != "N/A"]
            expect.equal(f"{user}: {key}", shown, [before, now])
            later = watch.values(key, awake + LONGEST_SEARCH, end)
            expect.equal(f"{user}: {key} in the end", later, [now])
