#include "platform/linux/SleepWatch.h"

#include <algorithm>
#include <ctime>

namespace calorivo {

namespace {

std::chrono::nanoseconds read(clockid_t clock) {
    timespec time{};
    clock_gettime(clock, &time);
    return std::chrono::seconds(time.tv_sec) + std::chrono::nanoseconds(time.tv_nsec);
}

}  // namespace

std::chrono::nanoseconds timeSinceBoot() { return read(CLOCK_BOOTTIME); }

std::chrono::nanoseconds timeAsleep() {
    // The first of these stands still while the machine sleeps. It is read last, so that what the kernel does
    // between makes the sleep shorter, not longer.
    const std::chrono::nanoseconds sinceBoot = read(CLOCK_BOOTTIME);
    return std::max(sinceBoot - read(CLOCK_MONOTONIC), std::chrono::nanoseconds(0));
}

bool SleepWatch::hasSlept() {
    const std::chrono::nanoseconds now = asleep_();
    if (now - noted_ < shortest) {
        // An answer that was too short by accident must not make the next one look like a sleep.
        noted_ = std::max(noted_, now);
        return false;
    }
    noted_ = now;
    return true;
}

}  // namespace calorivo
