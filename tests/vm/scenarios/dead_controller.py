"""The controller stops answering while a watch runs, and comes back; and one that is dead from the start.

The driver waits about a second for each key of a dead controller, so one round through the keys takes longer than
values live. No check may take as long as that: with 20 ms between checks a table must come at least every 100 ms.
"""

from expect import WatchLog
from guest import Machine

USERS = {"root": "", "user": "as-user "}
LONGEST_CHECK = 0.1
# A value lives 10 s, then a check must find that out.
LONGEST_EXPIRY = 11
# The driver may be in the middle of its vain waiting for one key.
LONGEST_RETURN = 3
LONGEST_LIST = 5
REASONS = {
    "root": "applesmc: no answer from the controller; left out until the next start",
    "user": "applesmc at /devices/platform/applesmc.768: no answer within 3 seconds; left out until the next start",
}
MACHINE = Machine(keys="macbook.txt")
SCRIPT = "modprobe applesmc\n" + "".join(
    f"""
record {user}-whole {prefix}calorivo-cli list
watch-log {user} {prefix}calorivo-cli watch --interval 0.02
sleep 2
mark {user}-dead
smc dead
sleep 14
mark {user}-alive
smc alive
sleep 5
mark {user}-end
kill $(cat /tmp/{user}.pid)
smc dead
record {user}-list {prefix}calorivo-cli list
smc alive
sleep 1
record {user}-again {prefix}calorivo-cli list
"""
    for user, prefix in USERS.items()
)


def check(result, expect):
    for user in USERS:
        log = WatchLog(result.text(f"{user}.log"))
        dead, alive, end = (result.number(f"{user}-{mark}.mark") for mark in ("dead", "alive", "end"))
        before = log.at(dead)
        expect.true(f"{user}: values before", "N/A" not in (before["TC0P"], before["TA0P"]), before)
        gap = log.longest_gap(dead - 1, end)
        expect.true(f"{user}: a table every {LONGEST_CHECK} s", gap < LONGEST_CHECK, gap)
        expired = log.at(dead + LONGEST_EXPIRY)
        temperatures = [key for key in before if key[0] == "T"]
        expect.equal(f"{user}: expired", {k: expired[k] for k in temperatures}, dict.fromkeys(temperatures, "N/A"))
        expect.equal(f"{user}: back", log.at(alive + LONGEST_RETURN), before)
        expect.equal(f"{user}: values of TC0P", log.values("TC0P"), ["60°C", "N/A", "60°C"])

        expect.equal(f"{user}: `list` of a dead controller", result.text(f"{user}-list.out"), "")
        seconds = result.number(f"{user}-list.seconds")
        expect.true(f"{user}: `list` ends within {LONGEST_LIST} s", seconds < LONGEST_LIST, seconds)
        reasons = result.text(f"{user}-list.err")
        expect.true(f'{user}: `list` says "{REASONS[user]}"', REASONS[user] in reasons, reasons)
        whole, again = result.text(f"{user}-whole.out"), result.text(f"{user}-again.out")
        expect.equal(f"{user}: `list` after that", again, whole)
