#pragma once

#include "platform/Dispatch.h"
#include "platform/MainQueue.h"
#include "platform/Property.h"
#include "platform/linux/SleepWatch.h"

#include <atomic>
#include <cstddef>
#include <functional>
#include <initializer_list>
#include <memory>
#include <string>
#include <vector>

namespace calorivo {

/// The main loop of a program without a desktop: timers, the main queue, descriptors and signals, all waited
/// for in one place. The thread that makes it is the main thread. While nothing is due it sleeps in the
/// kernel.
class PollDispatch final : public Dispatch {
  public:
    using QueueFactory = std::function<std::unique_ptr<Queue>(std::string label)>;

    /// `makeQueue` makes the queues that have a thread of their own; `sinceBoot` is the clock.
    explicit PollDispatch(QueueFactory makeQueue, MachineClocks::Clock sinceBoot = timeSinceBoot);
    ~PollDispatch() override;

    [[nodiscard]] Queue& mainQueue() override;
    [[nodiscard]] std::unique_ptr<Queue> makeSerialQueue(std::string label) override;
    [[nodiscard]] std::unique_ptr<Timer> scheduleTimer(std::chrono::nanoseconds interval, Repeats repeats,
                                                       std::function<void()> action) override;
    [[nodiscard]] Moment now() const override;
    [[nodiscard]] WallTime wallTime() const override;
    void sleep(std::chrono::nanoseconds duration) override;

    /// Runs what becomes due until stop() is called; returns at once when it was called before. Main thread.
    void run();
    /// Runs what is due now, without waiting; false once stop() was called. Main thread.
    bool runReady();
    /// Any thread.
    void stop();

    /// Drops the waiting blocks of the main queue and refuses later ones; whoever waits for such a block goes
    /// on. Call it at the end, before the serial queues are destroyed: they may be waiting for this one.
    void closeMainQueue();

    /// Calls `ready` whenever the descriptor can be read or has been hung up, until the handle is dropped.
    /// The handle must not outlive this object. Main thread.
    [[nodiscard]] Observation watchDescriptor(int descriptor, std::function<void()> ready);
    /// From now on these signals call `arrived` from the loop and do nothing else, until the handle is
    /// dropped; those that are ignored stay so. Threads inherit this: call it before any is made. Main
    /// thread.
    [[nodiscard]] Observation watchSignals(std::initializer_list<int> signals,
                                           std::function<void(int signal)> arrived);

  private:
    class PollTimer;
    struct Descriptors;
    struct Scheduled {
        Moment due;
        std::chrono::nanoseconds interval;
        Repeats repeats;
        std::shared_ptr<std::function<void()>> action;
    };

    void runDueTimers();
    void waitForEvents(bool mayWait);

    QueueFactory makeQueue_;
    const MachineClocks::Clock sinceBoot_;
    std::vector<Scheduled*> timers_;
    std::unique_ptr<Descriptors> descriptors_;
    MainQueue mainQueue_;
    std::atomic<bool> isStopped_ = false;
};

}  // namespace calorivo
