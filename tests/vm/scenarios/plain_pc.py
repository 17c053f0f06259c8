"""A PC without a controller: names and areas for root and an ordinary user, and keys that stay when the kernel finds
the chips in another order or one of them is missing for a while.
"""

from guest import Machine

MACHINE = Machine(has_thermal_zone=True, has_nvme=True)
SCRIPT = """
numbers() { grep -H . /sys/class/hwmon/hwmon*/name | sed 's|.*/\\(hwmon[0-9]*\\)/name:|\\1 |' >"/out/$1"; }
list() {
    record "$1-root" calorivo-cli list --json
    record "$1-user" as-user calorivo-cli list --json
    numbers "$1"
}

modprobe -a i2c-dev lm75
modprobe i2c-stub chip_addr=0x48,0x49
chip lm75 0x48 25
chip lm75 0x49 35
modprobe nvme
sleep 1
chip add lm75 0x48
chip add lm75 0x49
list first

chip remove 0x48
chip remove 0x49
rmmod nvme
chip add lm75 0x49
list alone
chip add lm75 0x48
modprobe nvme
sleep 1
list turned
"""
# By key: name, area, value.
WHOLE = {
    "TA0P": ("Thermal Zone 1", "Logic Board", "27°C"),
    "TN0x": ("lm75 temp1", "Logic Board", "25°C"),
    "TN1x": ("lm75 temp1 2", "Logic Board", "35°C"),
    "TH0A": ("QEMU NVMe Ctrl", "Hard Drive", "50°C"),
}
# Without the first of the equal chips the second one needs no number.
ALONE = {"TA0P": WHOLE["TA0P"], "TN1x": ("lm75 temp1", "Logic Board", "35°C")}
STEPS = {
    "first": ("hwmon0 acpitz\nhwmon1 nvme\nhwmon2 lm75\nhwmon3 lm75\n", WHOLE),
    "alone": ("hwmon0 acpitz\nhwmon1 lm75\n", ALONE),
    "turned": ("hwmon0 acpitz\nhwmon1 lm75\nhwmon2 lm75\nhwmon3 nvme\n", WHOLE),
}


def check(result, expect):
    for step, (numbers, sensors) in STEPS.items():
        expect.equal(f"the kernel's numbers, {step}", result.text(step), numbers)
        for user in ("root", "user"):
            listing = result.json(f"{step}-{user}.out")
            found = {s["key"]: (s["name"], s["area"], s["text"]) for s in listing["sensors"]}
            expect.equal(f"{user}, {step}", found, sensors)
            expect.equal(f"{user}, {step}: source", listing["source"], "hwmon")
            expect.equal(f"{user}, {step}: messages", result.text(f"{step}-{user}.err"), "")
