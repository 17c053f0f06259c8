#include "platform/linux/SleepWatch.h"

#include <gtest/gtest.h>

namespace calorivo {
namespace {

using namespace std::chrono_literals;

class SleepWatchTest : public testing::Test {
  protected:
    std::chrono::nanoseconds asleep = 3h;
    SleepWatch watch{[this] { return asleep; }};
};

TEST_F(SleepWatchTest, WhatTheMachineSleptBeforeDoesNotCount) { EXPECT_FALSE(watch.hasSlept()); }

TEST_F(SleepWatchTest, ASleepIsToldOnce) {
    asleep += 10s;
    EXPECT_TRUE(watch.hasSlept());
    EXPECT_FALSE(watch.hasSlept());
    asleep += 1s;
    EXPECT_TRUE(watch.hasSlept());
}

TEST_F(SleepWatchTest, SeveralSleepsBetweenTwoQuestionsAreOne) {
    asleep += 10s;
    asleep += 10s;
    EXPECT_TRUE(watch.hasSlept());
    EXPECT_FALSE(watch.hasSlept());
}

TEST_F(SleepWatchTest, ClocksThatAreReadOneAfterTheOtherAreNoSleep) {
    asleep -= 150ms;
    EXPECT_FALSE(watch.hasSlept());
    asleep += 150ms;
    EXPECT_FALSE(watch.hasSlept());
}

TEST_F(SleepWatchTest, NoiseDoesNotAddUpToASleep) {
    for (int i = 0; i < 10; ++i) {
        asleep += 100ms;
        EXPECT_FALSE(watch.hasSlept()) << i;
    }
}

TEST(TimeAsleep, IsNeverNegative) { EXPECT_GE(timeAsleep(), 0ns); }

}  // namespace
}  // namespace calorivo
