#pragma once

#include <chrono>
#include <functional>
#include <memory>
#include <string>
#include <string_view>

namespace calorivo {

/// A moment on a clock that only runs forward and goes on while the machine sleeps; its zero means nothing.
struct MonotonicClock {
    using duration = std::chrono::nanoseconds;
    using rep = duration::rep;
    using period = duration::period;
    using time_point = std::chrono::time_point<MonotonicClock>;
    static constexpr bool is_steady = true;
};
using Moment = MonotonicClock::time_point;
/// Date and time of day, as the user's clock shows it: may be set forward and back.
using WallTime = std::chrono::system_clock::time_point;

/// Runs blocks one after another, in the order in which they were given.
class Queue {
  public:
    Queue() = default;
    Queue(const Queue&) = delete;
    Queue& operator=(const Queue&) = delete;
    virtual ~Queue() = default;

    [[nodiscard]] virtual std::string_view label() const = 0;
    /// Runs the block later, on this queue. Any thread.
    virtual void async(std::function<void()> block) = 0;
    /// Runs the block on this queue and returns when it has run. Never call it from the queue itself, nor
    /// from a queue that this one waits for: that is a deadlock. Any other thread.
    virtual void sync(const std::function<void()>& block) = 0;
};

/// A scheduled action; destroying the timer invalidates it: the action is not begun any more.
class Timer {
  public:
    Timer() = default;
    Timer(const Timer&) = delete;
    Timer& operator=(const Timer&) = delete;
    virtual ~Timer() = default;

    /// Runs the action now, on the calling thread, beside its schedule.
    virtual void fire() = 0;
};

enum class Repeats { no, yes };

/// The only source of time and of concurrency.
class Dispatch {
  public:
    Dispatch() = default;
    Dispatch(const Dispatch&) = delete;
    Dispatch& operator=(const Dispatch&) = delete;
    virtual ~Dispatch() = default;

    [[nodiscard]] virtual Queue& mainQueue() = 0;
    /// A queue with a thread of its own. Destroying it drops the blocks that have not begun and waits for the
    /// one that runs.
    [[nodiscard]] virtual std::unique_ptr<Queue> makeSerialQueue(std::string label) = 0;
    /// Runs `action` on the main queue after `interval`, and every `interval` from then on if it repeats.
    /// Ticks that could not run in time (a busy thread, a sleeping machine) are not made up for: the next one
    /// comes one interval after the late one. An interval of zero or less counts as one millisecond. Main
    /// thread.
    [[nodiscard]] virtual std::unique_ptr<Timer> scheduleTimer(std::chrono::nanoseconds interval,
                                                               Repeats repeats,
                                                               std::function<void()> action) = 0;
    [[nodiscard]] virtual Moment now() const = 0;
    [[nodiscard]] virtual WallTime wallTime() const = 0;
    /// Holds the calling thread. Never on the main thread.
    virtual void sleep(std::chrono::nanoseconds duration) = 0;
};

}  // namespace calorivo
