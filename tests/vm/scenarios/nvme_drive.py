"""An NVMe drive: the kernel's reading of its temperature and, without that, its own log, which only root may ask for;
a drive without a namespace, one that is being reset, one that stops answering, one that breaks; and another drive in
the same place, which takes over nothing from the one before it.
"""

from expect import StampedLog
from guest import Machine

MACHINE = Machine(has_nvme=True)
SCRIPT = """
both() {
    record "$1-root" calorivo-cli drives --json
    record "$1-user" as-user calorivo-cli drives --json
}
modprobe nvme_core admin_timeout=20
modprobe nvme
sleep 1
both kernel
nvme hide
both log
chmod 666 /dev/nvme0
both opened
nvme show

stamp log calorivo-cli log --print --drives --interval 1
sleep 2
mark unplugged
nvme unplug
both unplugged
sleep 2
mark replaced
nvme plug 2
both replaced
sleep 2
nvme unplug
nvme plug-bare 3
both bare
nvme unplug
nvme plug 1
sleep 2
mark returned

nvme stall
mark stalled
both stalled
sleep 30
mark recovered
both recovered

nvme break
cat /sys/class/nvme/nvme0/state >/out/broken.state
both broken
sleep 7
mark lost
both lost
kill "$(cat /tmp/log.pid)"
"""
MODEL = "QEMU NVMe Ctrl"
ONLY_ROOT = "the kernel gives no reading of it, and only root may ask the drive itself"
BY_KERNEL = (50, "nvme", None)
REFUSED = (None, None, ONLY_ROOT)
LATE = (None, None, "it has not answered yet")
IN_RESET = (None, None, "No such device")
# For each step: the serial number, and what root and an ordinary user are told.
STEPS = {
    "kernel": ("1", BY_KERNEL, BY_KERNEL),
    "log": ("1", (50, "nvme log", None), REFUSED),
    # Whoever may open it may still not ask it.
    "opened": ("1", (50, "nvme log", None), REFUSED),
    "unplugged": None,
    "replaced": ("2", BY_KERNEL, BY_KERNEL),
    "bare": ("3", BY_KERNEL, BY_KERNEL),
    "stalled": ("1", LATE, LATE),
    "recovered": ("1", BY_KERNEL, BY_KERNEL),
    "broken": ("1", IN_RESET, IN_RESET),
    "lost": None,
}
# A reading lives 10 s; a check and a second go by before that is seen.
LONGEST_STALE = 13


def check(result, expect):
    for step, wanted in STEPS.items():
        for number, user in enumerate(("root", "user"), start=1):
            found = [
                (d["device"], d["model"], d["serial"], (d["celsius"], d["source"], d["problem"]), d["listed"])
                for d in result.json(f"{step}-{user}.out")["drives"]
            ]
            drive = wanted and ("nvme0", MODEL, wanted[0], wanted[number], wanted[number][0] is not None)
            expect.equal(f"{user}, {step}", found, [drive] if drive else [])
            seconds = result.number(f"{step}-{user}.seconds")
            expect.true(f"{user}, {step}: within three seconds", seconds < 3, seconds)
    expect.equal("its state", result.text("broken.state").strip(), "resetting")

    log = StampedLog(result.text("log.log"))
    marks = ("unplugged", "replaced", "returned", "stalled", "recovered", "lost")
    unplugged, replaced, returned, stalled, recovered, lost = (result.number(f"{mark}.mark") for mark in marks)
    # The last two columns: the chip's, and the drive's own.
    titles = log.lines[0].split(",")
    expect.equal("titles", (titles[2], titles[-1]), (f"{MODEL} (C)", f"{MODEL} (C)"))
    expect.equal("drive 1", log.fields(-1, 0, unplugged), ["50"])
    expect.equal("drive 1, while another one is there", log.fields(-1, replaced, returned - 3), ["N/A"])
    expect.equal("its chip, while another one is there", log.fields(2, replaced, returned - 3), ["0"])
    expect.equal("drive 1, back", log.fields(-1, returned - 1, stalled), ["50"])
    expect.equal("stalled", log.fields(-1, stalled + LONGEST_STALE, stalled + 19), ["N/A"])
    expect.equal("recovered", log.fields(-1, recovered - 5, recovered), ["50"])
    expect.equal("lost", log.fields(-1, lost - 1, lost + 5), ["N/A"])
    expect.true("a row each second", log.longest_gap(0, lost) < 1.6, log.longest_gap(0, lost))
