#pragma once

#include <atomic>

namespace calorivo {

/// A lock that is only ever tried, never waited for. Any thread.
class TryLock {
  public:
    /// True when it was free; it is held then.
    [[nodiscard]] bool tryLock() { return !isHeld_.test_and_set(std::memory_order_acquire); }
    void unlock() { isHeld_.clear(std::memory_order_release); }

  private:
    std::atomic_flag isHeld_;
};

}  // namespace calorivo
