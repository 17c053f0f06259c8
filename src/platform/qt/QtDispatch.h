#pragma once

#include "platform/Dispatch.h"
#include "platform/MainQueue.h"

#include <functional>
#include <memory>
#include <string>

class QSocketNotifier;

namespace calorivo {

/// Time and concurrency on the event loop of Qt: its thread is the main thread. Between two timers, and while
/// no block is given, nothing wakes the process. There must be an application object as long as this lives.
class QtDispatch final : public Dispatch {
  public:
    using QueueFactory = std::function<std::unique_ptr<Queue>(std::string label)>;

    using Clock = std::function<Moment()>;

    /// `makeQueue` makes the queues that have a thread of their own; `clock` is the machine's unless a test
    /// has one of its own.
    explicit QtDispatch(QueueFactory makeQueue, Clock clock = {});
    QtDispatch(const QtDispatch&) = delete;
    QtDispatch& operator=(const QtDispatch&) = delete;
    ~QtDispatch() override;

    [[nodiscard]] Queue& mainQueue() override { return mainQueue_; }
    [[nodiscard]] std::unique_ptr<Queue> makeSerialQueue(std::string label) override;
    [[nodiscard]] std::unique_ptr<Timer> scheduleTimer(std::chrono::nanoseconds interval, Repeats repeats,
                                                       std::function<void()> action) override;
    [[nodiscard]] Moment now() const override;
    [[nodiscard]] WallTime wallTime() const override;
    void sleep(std::chrono::nanoseconds duration) override;

    /// Drops the waiting blocks of the main queue and refuses later ones; whoever waits for such a block goes
    /// on. Call it at the end, before the serial queues are destroyed: they may be waiting for this one.
    void closeMainQueue() { mainQueue_.close(); }

  private:
    QueueFactory makeQueue_;
    const Clock clock_;
    /// The descriptor that other threads wake the loop by.
    const int wake_;
    MainQueue mainQueue_;
    std::unique_ptr<QSocketNotifier> notifier_;
};

}  // namespace calorivo
