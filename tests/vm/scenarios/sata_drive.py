"""A SATA disk: what root and an ordinary user are told of it, with the kernel's own reading and without, and that
nothing is ever switched in the drive and no sleeping drive is woken.
"""

from guest import Machine

MACHINE = Machine(has_nvme=True)
SCRIPT = """
both() {
    record "$1-root" calorivo-cli drives --json
    record "$1-user" as-user calorivo-cli drives --json
}
drive add a
modprobe nvme
sleep 1

both plain
drive set a "temp 50" "attr 231"
both attribute231
drive set a "life 97" "temp 36" "rotation 1"
both wear
drive set a "attr 0"
both none
drive set a "badsum 1"
both badsum
drive set a "readfail 1"
both refused
drive set a "statusfail 1"
both nostatus
drive set a "smartoff 1"
both smartoff
drive set a "short 100"
both short
drive set a "delay 300"
both delay

drive set a "temp 39"
modprobe drivetemp
sleep 1
both drivetemp
record list-user as-user calorivo-cli list
record why-user as-user calorivo-cli why DRIVE-a
drive set a "standby 1"
record standby-root calorivo-cli drives --json
drive count a >/out/count
record powered-user as-user calorivo-cli drives
"""
NVME = ("QEMU NVMe Ctrl", "1", 50, "nvme", False, None)
MODEL = "TEST SATA DRIVE"
NO_MODULE = "the kernel module drivetemp is not loaded, and only root may ask the drive itself"
# What root is told of the disk in each step: temperature, source, listed, problem.
AS_ROOT = {
    "plain": (45, "smart", True, None),
    "attribute231": (50, "smart", True, None),
    "wear": (36, "smart", True, None),
    "none": (None, None, False, "it has no temperature"),
    "badsum": (None, None, False, "its SMART data is damaged"),
    "refused": (None, None, False, "Input/output error"),
    "nostatus": (None, None, True, "Input/output error"),
    "smartoff": (None, None, True, "its SMART is switched off"),
    "short": (None, None, False, "Input/output error"),
    "delay": (45, "smart", True, None),
    "drivetemp": (39, "drivetemp", True, None),
}


def drives_in(result, name):
    return result.json(f"{name}.out")["drives"]


def check(result, expect):
    for step, wanted in AS_ROOT.items():
        drives = drives_in(result, f"{step}-root")
        found = [(d["celsius"], d["source"], d["listed"], d["problem"]) for d in drives]
        expect.equal(f"root, {step}", found, [wanted, (50, "nvme", True, None)])
        drives = drives_in(result, f"{step}-user")
        found = [(d["celsius"], d["source"], d["listed"], d["problem"]) for d in drives]
        as_user = wanted if step == "drivetemp" else (None, None, False, NO_MODULE)
        expect.equal(f"user, {step}", found, [as_user, (50, "nvme", True, None)])
    disk = drives_in(result, "plain-user")[0]
    expect.equal("model", disk["model"], MODEL)
    expect.equal("serial number", disk["serial"], "DRIVE-a")
    expect.equal("why", result.text("why-user.out").splitlines()[0], f"{MODEL} (DRIVE-a)")
    expect.equal("list", f"{MODEL} (DRIVE-a)" in result.text("list-user.out"), True)
    asleep = drives_in(result, "standby-root")[0]
    expect.equal("standby", (asleep["asleep"], asleep["celsius"], asleep["problem"]), (True, None, "it sleeps"))
    count = result.text("count").split()
    counted = dict(zip(count[::2], count[1::2]))
    expect.equal("SMART was never switched", counted["switches"], "0")
    expect.equal("the drive was never woken", counted["wakes"], "0")
