#pragma once

#include "platform/Dispatch.h"

#include <stdexcept>

namespace calorivo {

/// A queue that runs every block at once, on the thread that gives it.
class InlineQueue final : public Queue {
  public:
    [[nodiscard]] std::string_view label() const override { return "inline"; }
    void async(std::function<void()> block) override { block(); }
    void sync(const std::function<void()>& block) override { block(); }
};

/// Time and queues of a program that gives one answer and ends: its clock stands still, everything runs at
/// once on the calling thread, and there are no timers.
class InlineDispatch final : public Dispatch {
  public:
    explicit InlineDispatch(WallTime wallTime) : wallTime_(wallTime) {}

    [[nodiscard]] Queue& mainQueue() override { return queue_; }
    [[nodiscard]] std::unique_ptr<Queue> makeSerialQueue(std::string /*label*/) override {
        return std::make_unique<InlineQueue>();
    }
    [[nodiscard]] std::unique_ptr<Timer> scheduleTimer(std::chrono::nanoseconds /*interval*/,
                                                       Repeats /*repeats*/,
                                                       std::function<void()> /*action*/) override {
        throw std::logic_error("a program that gives one answer has no timers");
    }
    [[nodiscard]] Moment now() const override { return {}; }
    [[nodiscard]] WallTime wallTime() const override { return wallTime_; }
    void sleep(std::chrono::nanoseconds /*duration*/) override {}

  private:
    InlineQueue queue_;
    WallTime wallTime_;
};

}  // namespace calorivo
