#include "monitor/GPUGuard.h"

#include "monitor/GPUState.h"
#include "support/VirtualDispatch.h"

#include <gtest/gtest.h>

namespace calorivo {
namespace {

using namespace std::chrono_literals;

struct Guarded {
    test::VirtualDispatch dispatch;
    GPUState state;
    std::unique_ptr<Queue> checkQueue = dispatch.makeSerialQueue("check");
    GPUGuard guard{dispatch, *checkQueue, state};

    void change(std::int32_t gpuType) {
        guard.GPUDidChangeTo(gpuType);
        dispatch.run();
    }
    [[nodiscard]] bool isOk() const { return state.isOkToCheckGPUSensors; }
};

TEST(GPUGuard, LetsGPUSensorsBeReadUntilTheGPUChanges) {
    Guarded g;
    g.dispatch.advance(10s);
    EXPECT_TRUE(g.isOk());
    EXPECT_EQ(g.state.currentGPUType, 0);
}

TEST(GPUGuard, PausesTwoSecondsAfterAChange) {
    Guarded g;
    g.change(1);
    EXPECT_FALSE(g.isOk());
    EXPECT_EQ(g.state.currentGPUType, 1);
    EXPECT_EQ(g.dispatch.timerIntervals(), (std::vector<std::chrono::nanoseconds>{2s}));
    g.dispatch.advance(1999ms);
    EXPECT_FALSE(g.isOk());
    g.dispatch.advance(1ms);
    EXPECT_TRUE(g.isOk());
    EXPECT_EQ(g.dispatch.liveTimers(), 0U);
    EXPECT_EQ(g.state.currentGPUType, 1);
}

TEST(GPUGuard, BeginsThePauseAnewWhenTheGPUChangesOneSecondLater) {
    Guarded g;
    g.change(1);
    g.dispatch.advance(1s);
    g.change(0);
    EXPECT_EQ(g.dispatch.liveTimers(), 1U);
    g.dispatch.advance(1999ms);
    EXPECT_FALSE(g.isOk());
    g.dispatch.advance(1ms);
    EXPECT_TRUE(g.isOk());
    EXPECT_EQ(g.state.currentGPUType, 0);
}

TEST(GPUGuard, HasOneTimerInAStorm) {
    Guarded g;
    for (int i = 0; i < 50; ++i) {
        g.change(i % 2);
        g.dispatch.advance(100ms);
        EXPECT_FALSE(g.isOk());
    }
    EXPECT_EQ(g.dispatch.liveTimers(), 1U);
    EXPECT_EQ(g.state.currentGPUType, 1);
    g.dispatch.advance(1899ms);
    EXPECT_FALSE(g.isOk());
    g.dispatch.advance(1ms);
    EXPECT_TRUE(g.isOk());
}

TEST(GPUGuard, PausesAgainAfterAPause) {
    Guarded g;
    g.change(1);
    g.dispatch.advance(3s);
    g.change(0);
    EXPECT_FALSE(g.isOk());
    g.dispatch.advance(2s);
    EXPECT_TRUE(g.isOk());
}

TEST(GPUGuard, TellsTheGPUAtOnceAndPausesWhenTheCheckQueueIsFree) {
    Guarded g;
    g.dispatch.hold("check");
    g.guard.GPUDidChangeTo(1);
    EXPECT_EQ(g.state.currentGPUType, 1);
    g.dispatch.advance(5s);
    EXPECT_TRUE(g.isOk());
    g.dispatch.release("check");
    g.dispatch.run();
    EXPECT_FALSE(g.isOk());
    g.dispatch.advance(2s);
    EXPECT_TRUE(g.isOk());
}

TEST(GPUGuard, IsNotOpenedByATimerThatFiredBeforeTheNextChangeWasHandled) {
    Guarded g;
    g.change(1);
    g.dispatch.hold("check");
    g.guard.GPUDidChangeTo(0);
    g.dispatch.advance(2s);
    EXPECT_EQ(g.dispatch.pending("check"), 2U);
    g.dispatch.release("check");
    g.dispatch.run();
    EXPECT_FALSE(g.isOk());
    g.dispatch.advance(1999ms);
    EXPECT_FALSE(g.isOk());
    g.dispatch.advance(1ms);
    EXPECT_TRUE(g.isOk());
}

TEST(GPUGuard, AnnouncesNothing) {
    Guarded g;
    int announcements = 0;
    const Observation type = g.state.currentGPUType.observe([&] { ++announcements; });
    const Observation flag = g.state.isOkToCheckGPUSensors.observe([&] { ++announcements; });
    g.change(1);
    g.dispatch.advance(3s);
    EXPECT_EQ(announcements, 0);
}

}  // namespace
}  // namespace calorivo
