#pragma once

#include <chrono>
#include <functional>
#include <utility>

namespace calorivo {

/// How long the machine has slept since it was started, all its sleeps together. The clocks tell, so it holds
/// in containers and without a session as well. Any thread.
[[nodiscard]] std::chrono::nanoseconds timeAsleep();

/// Notices that the machine has slept. One thread at a time.
class SleepWatch {
  public:
    using Asleep = std::function<std::chrono::nanoseconds()>;

    explicit SleepWatch(Asleep asleep = timeAsleep) : asleep_(std::move(asleep)), noted_(asleep_()) {}

    /// True once after each sleep, or after several of them.
    [[nodiscard]] bool hasSlept();

  private:
    const Asleep asleep_;
    std::chrono::nanoseconds noted_;
};

}  // namespace calorivo
