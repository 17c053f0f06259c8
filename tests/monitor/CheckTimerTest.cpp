#include "monitor/CheckCycle.h"

#include "support/Machine.h"

#include <gtest/gtest.h>

#include <chrono>
#include <cstdint>
#include <limits>
#include <vector>

namespace calorivo {
namespace {

using namespace std::chrono_literals;
using test::Machine;
using Intervals = std::vector<std::chrono::nanoseconds>;

/// How often a sensor was read so far: once for each check.
int checksOf(const Machine& machine) { return machine.smc.reads; }

TEST(CheckTimer, RunsACheckAtOnceAndOneEveryPeriod) {
    Machine machine;
    machine.cpu("TC1C", 40);
    machine.preferences.updateIntervalSecs = 7;
    machine.cycle.restartAndFireCheckTimer();
    EXPECT_EQ(checksOf(machine), 1);
    machine.dispatch.advance(6999ms);
    EXPECT_EQ(checksOf(machine), 1);
    machine.dispatch.advance(1ms);
    EXPECT_EQ(checksOf(machine), 2);
    machine.dispatch.advance(14s);
    EXPECT_EQ(checksOf(machine), 4);
}

TEST(CheckTimer, ReplacesTheOneBefore) {
    Machine machine;
    machine.cycle.restartAndFireCheckTimer();
    machine.preferences.updateIntervalSecs = 9;
    machine.cycle.restartAndFireCheckTimer();
    EXPECT_EQ(machine.dispatch.timerIntervals(), Intervals{9s});
}

TEST(CheckTimer, NeverRunsFasterThanOnceASecondAndKeepsTheValueAsItIs) {
    struct Case {
        std::int32_t seconds;
        std::chrono::seconds period;
    };
    constexpr std::int32_t longest = std::numeric_limits<std::int32_t>::max();
    for (const Case& c :
         {Case{0, 1s}, Case{-5, 1s}, Case{1, 1s}, Case{7, 7s},
          Case{std::numeric_limits<std::int32_t>::min(), 1s}, Case{longest, std::chrono::seconds(longest)}}) {
        Machine machine;
        machine.cycle.setUpdateIntervalSecs(c.seconds);
        EXPECT_EQ(machine.dispatch.timerIntervals(), Intervals{c.period});
        EXPECT_EQ(machine.preferences.updateIntervalSecs, c.seconds);
    }
}

TEST(CheckTimer, ChecksAtOnceWhenThePeriodChangesAndRestartsItFromThen) {
    Machine machine;
    machine.cpu("TC1C", 40);
    machine.cycle.setUpdateIntervalSecs(10);
    machine.dispatch.advance(8s);
    EXPECT_EQ(checksOf(machine), 1);
    machine.cycle.setUpdateIntervalSecs(5);
    EXPECT_EQ(checksOf(machine), 2);
    machine.dispatch.advance(4s);
    EXPECT_EQ(checksOf(machine), 2) << "neither the old period's tick at 10 s nor the new one's at 13 s";
    machine.dispatch.advance(1s);
    EXPECT_EQ(checksOf(machine), 3);
}

TEST(CheckTimer, RestartsThePeriodWhenItIsSetToTheSameValue) {
    Machine machine;
    machine.cpu("TC1C", 40);
    machine.cycle.setUpdateIntervalSecs(10);
    machine.dispatch.advance(8s);
    machine.cycle.setUpdateIntervalSecs(10);
    machine.dispatch.advance(9s);
    EXPECT_EQ(checksOf(machine), 2);
}

TEST(CheckTimer, AnnouncesThePeriodBeforeItChecks) {
    Machine machine;
    machine.cpu("TC1C", 40);
    std::vector<int> checksWhenTold;
    const Observation watch =
        machine.preferences.updateIntervalSecs.observe([&] { checksWhenTold.push_back(checksOf(machine)); });
    machine.cycle.setUpdateIntervalSecs(4);
    EXPECT_EQ(checksWhenTold, std::vector<int>{0});
    EXPECT_EQ(checksOf(machine), 1);
}

TEST(CheckTimer, EndsWithTheCycle) {
    Machine machine;
    {
        CheckCycle cycle(machine.parts({}));
        cycle.restartAndFireCheckTimer();
        EXPECT_EQ(machine.dispatch.liveTimers(), 1U);
    }
    EXPECT_EQ(machine.dispatch.liveTimers(), 0U);
}

}  // namespace
}  // namespace calorivo
