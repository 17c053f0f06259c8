"""A SATA disk: what root and an ordinary user are told of it, with the kernel's own reading and without; one that takes
seconds to answer keeps the value that it had, and another one in its place does not take it over. Nothing is ever
switched in the drive.
"""

from expect import StampedLog
from guest import Machine

MACHINE = Machine(has_nvme=True)
SCRIPT = """
both() {
    record "$1-root" calorivo-cli drives --json
    record "$1-user" as-user calorivo-cli drives --json
}
# A drive that takes its time for each command, without a value to keep and with one; then another one in its place.
replaced() {
    user=$1
    delay=$2
    shift 2
    drive set a "temp 45" "delay $delay"
    record "$user-late" "$@" calorivo-cli drives --json
    drive set a "temp 45"
    sleep 2
    stamp "$user" "$@" calorivo-cli log --print --drives --interval 1
    sleep 2
    mark "$user-late"
    drive set a "temp 58" "delay $delay"
    sleep 10
    drive set a "temp 31" "serial OTHER"
    mark "$user-replugged"
    drive replug sda
    record "$user-replugged" "$@" calorivo-cli drives --json
    sleep 2
    mark "$user-end"
    kill "$(cat "/tmp/$user.pid")"
    drive set a "temp 39"
    drive replug sda
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
replaced root 1500

modprobe drivetemp
sleep 1
both drivetemp
replaced user 800 as-user # the kernel gives up after 1 s
record list-user as-user calorivo-cli list
record why-user as-user calorivo-cli why DRIVE-a
drive count a >/out/count
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


# What is told of a slow drive within two seconds: the kernel's own reading takes one command, root's takes four.
LATE = {
    "root": ("DRIVE-a", None, "it has not answered yet"),
    "user": ("DRIVE-a", 45, None),
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
    expect.equal("SMART was never switched", result.counts("count")["switches"], 0)
    for user, late in LATE.items():
        check_replacement(result, expect, user, late)


def check_replacement(result, expect, user, late):
    def told(name):
        drive = drives_in(result, f"{user}-{name}")[0]
        return drive["serial"], drive["celsius"], drive["problem"]

    expect.equal(f"{user}: late", told("late"), late)
    source = "smart" if user == "root" else "drivetemp"
    expect.equal(f"{user}: its source", drives_in(result, f"{user}-replugged")[0]["source"], source)
    expect.equal(f"{user}: another one", told("replugged"), ("OTHER", 31, None))
    log = StampedLog(result.text(f"{user}.log"))  # its last two columns are the disk and the NVMe drive
    slow, replugged, end = (result.number(f"{user}-{mark}.mark") for mark in ("late", "replugged", "end"))
    # No row goes without a value, and none waits for the drive longer than half a second.
    expect.equal(f"{user}: while it is late", log.fields(-2, 0, replugged), ["45", "58"])
    expect.equal(f"{user}: afterwards", log.fields(-2, replugged + 1, end), ["N/A"])
    gap = log.longest_gap(slow, replugged)
    expect.true(f"{user}: a row each second", gap < 1.6, gap)
