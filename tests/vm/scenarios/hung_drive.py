"""A disk that never answers holds neither the other drives nor the end of the program; disks that come and go."""

from guest import Machine

MACHINE = Machine(has_nvme=True)
SCRIPT = """
modprobe -a nvme drivetemp
drive add a
drive set b "temp 51" "model OTHER DRIVE"
drive add b
record both calorivo-cli drives --json
drive remove sda
record removed calorivo-cli drives --json
drive set c "temp 52" "model THIRD DRIVE"
drive add c
record replugged calorivo-cli drives --json

drive set c "hang 1"
record hung calorivo-cli drives --json
record hung-user as-user calorivo-cli drives --json
readers() { ps -o args | grep -c -e '[-]-drive-reader' || true; }
readers >/out/readers-after
# Another one, which is told to end while it waits.
calorivo-cli drives >/out/ended.out 2>/out/ended.err &
sleep 1
mark told
kill -TERM $!
wait $! || true
mark ended
record list calorivo-cli list
"""


def serials(result, name):
    return [(d["serial"], d["celsius"], d["problem"]) for d in result.json(f"{name}.out")["drives"]]


def check(result, expect):
    nvme = ("1", 50, None)
    a, b, c = ("DRIVE-a", 45, None), ("DRIVE-b", 51, None), ("DRIVE-c", 52, None)
    expect.equal("two drives", serials(result, "both"), [a, b, nvme])
    expect.equal("one removed", serials(result, "removed"), [b, nvme])
    expect.equal("another plugged in", sorted(serials(result, "replugged")), sorted([b, c, nvme]))
    # Root hangs asking for the power mode, an ordinary user in the kernel's own reading.
    for name in ("hung", "hung-user"):
        late = ("DRIVE-c", None, "it has not answered yet")
        expect.equal(f"{name}: the others", sorted(serials(result, name)), sorted([b, late, nvme]))
        expect.equal(f"{name}: two seconds", 1.9 < result.number(f"{name}.seconds") < 2.9, True)
    expect.equal("the program ends at once", result.number("ended.mark") - result.number("told.mark") < 1, True)
    listed = result.text("list.out")
    expect.equal("the list has the others", ("OTHER DRIVE (DRIVE-b)" in listed, "THIRD" in listed), (True, False))
    expect.equal("its reader hangs in the kernel", result.number("readers-after") >= 1, True)
