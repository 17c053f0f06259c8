"""A chip goes and another one takes its number: its values never show under the old name, nor do those of another chip
at its address; under another number the chip comes back under its old name.
"""

from expect import WatchLog
from guest import Machine

KEY = "TN0x"
MACHINE = Machine()
SCRIPT = """
numbers() { grep -H . /sys/class/hwmon/hwmon*/name | sed 's|.*/\\(hwmon[0-9]*\\)/name:|\\1 |' >"/out/$1"; }

modprobe -a i2c-dev lm75 jc42
modprobe i2c-stub chip_addr=0x18,0x48
chip lm75 0x48 25
chip jc42 0x18 720
chip add lm75 0x48
numbers first
record before calorivo-cli list --json
watch-log watch calorivo-cli watch --interval 0.2
sleep 3
chip remove 0x48
mark removed
sleep 3
chip add jc42 0x18
numbers taken
mark taken
sleep 5
chip lm75 0x48 55
chip add tmp75 0x48
numbers other
mark other
sleep 5
chip remove 0x48
chip lm75 0x48 33
chip add lm75 0x48
numbers back
mark back
sleep 5
mark end
kill $(cat /tmp/watch.pid)
record after calorivo-cli list --json
"""


def check(result, expect):
    for step, numbers in {
        "first": "hwmon0 lm75",
        "taken": "hwmon0 jc42",
        "other": "hwmon0 jc42\nhwmon1 tmp75",
        "back": "hwmon0 jc42\nhwmon1 lm75",
    }.items():
        expect.equal(f"the kernel's numbers, {step}", result.text(step).strip(), numbers)

    names = {sensor["key"]: sensor["name"] for sensor in result.json("before.out")["sensors"]}
    expect.equal("names before", names, {KEY: "lm75 temp1"})
    log = WatchLog(result.text("watch.log"))
    expect.equal("what the watch showed", log.values(KEY), ["25°C", "N/A", "33°C"])
    # A check every 0.2 s sees at once that the files are gone.
    expect.equal("after the chip had gone", log.at(result.number("taken.mark"))[KEY], "N/A")
    expect.equal("after others had come", log.at(result.number("back.mark"))[KEY], "N/A")
    expect.equal("at the end", log.at(result.number("end.mark"))[KEY], "33°C")
    sensors = result.json("after.out")["sensors"]
    expect.equal(
        "names and values afterwards",
        sorted((s["name"], s["text"]) for s in sensors),
        [("DIMM 1", "45°C"), ("lm75 temp1", "33°C")],
    )
    expect.equal("its key afterwards", [s["key"] for s in sensors if s["name"] == "lm75 temp1"], [KEY])
