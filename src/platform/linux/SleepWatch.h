#pragma once

#include <chrono>
#include <functional>
#include <utility>

namespace calorivo {

/// Time since the machine was started, sleep included. Any thread.
[[nodiscard]] std::chrono::nanoseconds timeSinceBoot();

/// How long the machine has slept since it was started, all its sleeps together. The clocks tell, so it holds
/// in containers and without a session as well. Any thread.
[[nodiscard]] std::chrono::nanoseconds timeAsleep();

/// The clocks by which readings grow old: the machine's own, or a test's. To be called from any thread.
struct MachineClocks {
    using Clock = std::function<std::chrono::nanoseconds()>;

    Clock sinceBoot = timeSinceBoot;
    Clock asleep = timeAsleep;
};

/// Notices that the machine has slept. One thread at a time.
class SleepWatch {
  public:
    explicit SleepWatch(MachineClocks::Clock asleep = timeAsleep)
        : asleep_(std::move(asleep)), noted_(asleep_()) {}

    /// True once after each sleep, or after several of them.
    [[nodiscard]] bool hasSlept();

    /// The two clocks behind timeAsleep() are read one after the other, and the kernel may do something else
    /// between: what lies apart by less is no sleep. No machine falls asleep and wakes in so short a time.
    static constexpr std::chrono::nanoseconds shortest = std::chrono::milliseconds(200);

  private:
    const MachineClocks::Clock asleep_;
    std::chrono::nanoseconds noted_;
};

}  // namespace calorivo
