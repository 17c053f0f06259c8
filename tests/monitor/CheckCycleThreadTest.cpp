#include "monitor/CheckCycle.h"
#include "platform/std/ThreadQueue.h"
#include "support/Machine.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <cstddef>
#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace calorivo {
namespace {

using test::Machine;

/// Queues with threads of their own under a clock that stands still.
class ThreadedDispatch final : public Dispatch {
  public:
    [[nodiscard]] Queue& mainQueue() override { return main_; }
    [[nodiscard]] std::unique_ptr<Queue> makeSerialQueue(std::string label) override {
        return std::make_unique<ThreadQueue>(std::move(label));
    }
    [[nodiscard]] std::unique_ptr<Timer> scheduleTimer(std::chrono::nanoseconds, Repeats,
                                                       std::function<void()> action) override {
        struct FiredOnly final : Timer {
            explicit FiredOnly(std::function<void()> action) : action_(std::move(action)) {}
            void fire() override { action_(); }
            std::function<void()> action_;
        };
        return std::make_unique<FiredOnly>(std::move(action));
    }
    [[nodiscard]] Moment now() const override { return {}; }
    [[nodiscard]] WallTime wallTime() const override { return {}; }
    void sleep(std::chrono::nanoseconds) override {}

  private:
    ThreadQueue main_{"main"};
};

/// Runs checks on a main thread, with the drives on a check queue and the writer on a log queue, and changes
/// meanwhile what may be changed from elsewhere. A data race is for the sanitizer to find; the lines must
/// come out whole either way.
TEST(CheckCycle, SharesItsRowsAmongThreads) {
    constexpr int checks = 200;
    Machine machine;
    machine.cpu("TC1C", 40).gpu("TG0D", 60).fan(1800, 1200, 6000).drive(38).drive(41).logging();
    {
        ThreadedDispatch dispatch;
        const auto logQueue = dispatch.makeSerialQueue("log");
        test::RecordingLog log(*logQueue);
        const auto checkQueue = dispatch.makeSerialQueue("check");
        const CheckCycleParts own = machine.parts({&log, &machine.alerts, &machine.display, &machine.drives});
        CheckCycle cycle({.dispatch = dispatch,
                          .checkQueue = *checkQueue,
                          .lists = own.lists,
                          .naming = own.naming,
                          .reader = own.reader,
                          .fans = own.fans,
                          .preferences = own.preferences,
                          .gpu = own.gpu,
                          .averages = own.averages,
                          .outputs = own.outputs});
        dispatch.mainQueue().sync([&] { cycle.restartAndFireCheckTimer(); });
        for (int i = 1; i < checks; ++i) {
            dispatch.mainQueue().async([&] { cycle.checkTimerFired(); });
            checkQueue->async([&, i] { machine.gpuState.isOkToCheckGPUSensors.store(i % 2 == 0); });
            machine.gpuState.currentGPUType.store(i % 2);
        }
        dispatch.mainQueue().sync([] {});
        checkQueue->sync([] {});
        logQueue->sync([] {});

        const std::string row = "1970-01-01,00:00:00,40,60,40,50";
        EXPECT_EQ(log.lines.size(), std::size_t{2 * checks});
        EXPECT_TRUE(std::ranges::all_of(log.lines, [&](const std::string& line) {
            return line == row || line == row + "38,41," || line == row + "38,41";
        }));
        EXPECT_EQ(log.lines.back(), row + "38,41");
    }
    EXPECT_EQ(machine.drives.readings, checks);
    EXPECT_EQ(machine.display.calls.size(), std::size_t{2 * checks});
}

}  // namespace
}  // namespace calorivo
