"""An NVMe drive's temperatures, none among them, by the kernel's reading and by its own log; a drive that refuses its
log, one that takes its time, and one that has vanished while the kernel still looks for it.
"""

from expect import StampedLog
from guest import Machine

# Kelvin, and what is told: degrees, what is shown, problem. 120 degrees and more are none that a sensor shows.
NONE = (None, "N/A", "it has no temperature")
TEMPERATURES = {
    0: NONE,
    273: NONE,
    274: (1, "1°C", None),
    311: (38, "38°C", None),
    392: (119, "119°C", None),
    393: (120, "N/A", "it tells 120 °C, and only what is below 120 °C counts"),
    65535: NONE,
}
# What no thermometer measures is no reading of the kernel's; then only the log, which is root's, could tell.
NONSENSE = (0, 65535)
MACHINE = Machine()
SCRIPT = f"""
both() {{
    record "$1-root" calorivo-cli drives --json
    record "$1-user" as-user calorivo-cli drives --json
}}
temperatures() {{
    for kelvin in {" ".join(map(str, TEMPERATURES))}; do
        nvme-tcp set "kelvin $kelvin"
        both "$1-$kelvin"
    done
}}
nvme-tcp add
temperatures kernel
nvme-tcp hide
temperatures log
nvme-tcp set "refuse 1"
both refused

nvme-tcp set "kelvin 300"
stamp rows calorivo-cli log --print --drives --interval 1
sleep 2
nvme-tcp set "kelvin 333" "delay 3000"
sleep 0.5
record slow calorivo-cli drives --json
sleep 8
mark vanished
nvme-tcp vanish
cat /sys/class/nvme/nvme0/state >/out/state
both vanished
sleep 2
kill "$(cat /tmp/rows.pid)"
"""
ONLY_ROOT = (None, "N/A", "the kernel gives no reading of it, and only root may ask the drive itself")


def check(result, expect):
    def told(name):
        (drive,) = result.json(f"{name}.out")["drives"]
        expect.equal(f"{name}: which", (drive["model"], drive["serial"]), ("TEST NVME DRIVE", "NVME-a"))
        return drive["celsius"], drive["text"], drive["problem"]

    for kelvin, wanted in TEMPERATURES.items():
        expect.equal(f"root, kernel, {kelvin}", told(f"kernel-{kelvin}-root"), wanted)
        as_user = ONLY_ROOT if kelvin in NONSENSE else wanted
        expect.equal(f"user, kernel, {kelvin}", told(f"kernel-{kelvin}-user"), as_user)
        expect.equal(f"root, log, {kelvin}", told(f"log-{kelvin}-root"), wanted)
        expect.equal(f"user, log, {kelvin}", told(f"log-{kelvin}-user"), ONLY_ROOT)
    expect.equal("root, refused", told("refused-root"), (None, "N/A", "Input/output error"))
    expect.equal("user, refused", told("refused-user"), ONLY_ROOT)
    expect.equal("slow", told("slow"), (None, "N/A", "it has not answered yet"))
    expect.equal("its state", result.text("state").strip(), "connecting")
    for user in ("root", "user"):
        expect.equal(f"{user}, vanished", told(f"vanished-{user}"), (None, "N/A", "No such device"))
        seconds = result.number(f"vanished-{user}.seconds")
        expect.true(f"{user}, vanished: told at once", seconds < 0.5, seconds)
    rows = StampedLog(result.text("rows.log"))
    vanished = result.number("vanished.mark")
    expect.equal("rows: while it is slow", rows.fields(-1, 0, vanished), ["27", "60"])
    expect.equal("rows: vanished", rows.fields(-1, vanished + 1, vanished + 9), ["N/A"])
