"""One key that fails: all others stay, `why` tells, and a running watch shows N/A until it is back."""

from expect import WatchLog, texts_by_key
from guest import Machine

KEY = "TC0D"
USERS = {"root": "", "user": "as-user "}
MACHINE = Machine(keys="macbook.txt")
SCRIPT = "modprobe applesmc\n" + "".join(
    f"""
record {user}-whole {prefix}calorivo-cli list --json
watch-log {user}-watch {prefix}calorivo-cli watch --interval 1
sleep 3
mark {user}-fail
smc fail {KEY}
record {user}-less {prefix}calorivo-cli list --json
record {user}-why {prefix}calorivo-cli why {KEY}
sleep 4
mark {user}-ok
smc ok {KEY}
sleep 4
mark {user}-end
kill $(cat /tmp/{user}-watch.pid)
record {user}-again {prefix}calorivo-cli list --json
"""
    for user, prefix in USERS.items()
)


def check(result, expect):
    for user in USERS:
        whole = texts_by_key(result.json(f"{user}-whole.out"))
        less = texts_by_key(result.json(f"{user}-less.out"))
        again = texts_by_key(result.json(f"{user}-again.out"))
        expect.equal(f"{user}: while it fails", less, {k: v for k, v in whole.items() if k != KEY})
        expect.equal(f"{user}: after it failed", again, whole)

        why = result.text(f"{user}-why.out")
        for sentence in ("Reading failed: Input/output error.", "no. It gives no data now."):
            expect.true(f'{user}: `why {KEY}` says "{sentence}"', sentence in why, why)

        log = WatchLog(result.text(f"{user}-watch.log"))
        fail, ok, end = (result.number(f"{user}-{mark}.mark") for mark in ("fail", "ok", "end"))
        expect.equal(f"{user}: the watch, failing", log.at(ok) | {KEY: "N/A"}, log.at(ok))
        others = {k: v for k, v in log.at(fail).items() if k != KEY}
        expect.equal(f"{user}: its other keys", {k: log.at(ok).get(k) for k in others}, others)
        expect.equal(f"{user}: the watch, afterwards", log.at(end), log.at(fail))
