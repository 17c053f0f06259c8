#pragma once

#include "platform/linux/SleepWatch.h"

#include <chrono>
#include <condition_variable>
#include <deque>
#include <functional>
#include <memory>
#include <mutex>
#include <thread>
#include <utility>

namespace calorivo::test {

/// The clocks of a machine that wakes and sleeps when the test says so. The thread that makes it owns it.
class FakeMachineClocks {
  public:
    using Duration = std::chrono::nanoseconds;

    void pass(Duration duration) { state_->move(duration, Duration(0)); }
    /// Any thread.
    void sleep(Duration duration) { state_->move(duration, duration); }
    /// From now on every other thread that looks at the clock hangs, until release().
    void hold() { state_->setHeld(true); }
    void release() { state_->setHeld(false); }
    /// The next times that other threads look at the clock, each of them does one of these just afterwards.
    void afterLooks(std::deque<std::function<void()>> actions) {
        const std::lock_guard lock(state_->mutex);
        state_->afterLooks = std::move(actions);
    }
    /// They may outlive this object, as a reader thread may that is left to itself.
    [[nodiscard]] MachineClocks clocks() const {
        return {[state = state_] { return state->look(); },
                [state = state_] { return state->asleepSoFar(); }};
    }

  private:
    struct State {
        void move(Duration all, Duration asleepOfIt) {
            const std::lock_guard lock(mutex);
            sinceBoot += all;
            asleep += asleepOfIt;
        }
        void setHeld(bool value) {
            {
                const std::lock_guard lock(mutex);
                isHeld = value;
            }
            released.notify_all();
        }
        Duration look() {
            std::unique_lock lock(mutex);
            const Duration now = sinceBoot;
            if (std::this_thread::get_id() == owner) return now;
            released.wait(lock, [this] { return !isHeld; });
            if (afterLooks.empty()) return now;
            const auto action = std::move(afterLooks.front());
            afterLooks.pop_front();
            lock.unlock();
            action();
            return now;
        }
        Duration asleepSoFar() {
            const std::lock_guard lock(mutex);
            return asleep;
        }

        const std::thread::id owner = std::this_thread::get_id();
        std::mutex mutex;
        std::condition_variable released;
        bool isHeld = false;
        std::deque<std::function<void()>> afterLooks;
        Duration sinceBoot = std::chrono::hours(1);
        Duration asleep = std::chrono::minutes(7);
    };

    std::shared_ptr<State> state_ = std::make_shared<State>();
};

}  // namespace calorivo::test
