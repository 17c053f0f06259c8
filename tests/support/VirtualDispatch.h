#pragma once

#include "platform/Dispatch.h"

#include <chrono>
#include <cstddef>
#include <deque>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace calorivo::test {

/// Time and queues on the test's own thread: nothing runs until the test says so, and the clock moves only
/// when the test moves it. Waiting that could never end throws std::logic_error, naming the queue.
class VirtualDispatch final : public Dispatch {
  public:
    VirtualDispatch();
    ~VirtualDispatch() override;

    [[nodiscard]] Queue& mainQueue() override;
    [[nodiscard]] std::unique_ptr<Queue> makeSerialQueue(std::string label) override;
    [[nodiscard]] std::unique_ptr<Timer> scheduleTimer(std::chrono::nanoseconds interval, Repeats repeats,
                                                       std::function<void()> action) override;
    [[nodiscard]] Moment now() const override { return now_; }
    [[nodiscard]] WallTime wallTime() const override;
    /// Lets the time pass for everybody else: timers fire and other queues run meanwhile. Who begins to sleep
    /// during another's sleep wakes first.
    void sleep(std::chrono::nanoseconds duration) override;

    /// Runs every block that is queued, and those they queue, until nothing is left but what is held.
    void run();
    /// Moves the clock, firing timers and running queues on the way, each at its own moment.
    void advance(std::chrono::nanoseconds duration);
    /// Runs one block of the queue; false when it has none. Works on a held queue too.
    bool runOne(std::string_view label);
    /// Keeps a queue from running until it is released. The main queue's label is "main".
    void hold(std::string_view label);
    void release(std::string_view label);
    [[nodiscard]] std::size_t pending(std::string_view label) const;
    [[nodiscard]] std::size_t liveTimers() const { return timers_.size(); }
    /// The interval of each live timer, in the order in which they were scheduled.
    [[nodiscard]] std::vector<std::chrono::nanoseconds> timerIntervals() const;
    void setWallTime(WallTime time);

  private:
    class VirtualQueue;
    class QueueHandle;
    class VirtualTimer;
    struct Scheduled;

    VirtualQueue& queue(std::string_view label) const;
    [[nodiscard]] std::shared_ptr<Scheduled> nextTimer() const;
    void queueTick(const std::shared_ptr<Scheduled>& timer);
    void advanceTo(Moment end);

    Moment now_{};
    WallTime wallBase_{};
    std::vector<std::shared_ptr<VirtualQueue>> queues_;
    std::vector<std::shared_ptr<Scheduled>> timers_;
};

}  // namespace calorivo::test
