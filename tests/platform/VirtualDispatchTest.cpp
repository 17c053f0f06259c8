#include "support/VirtualDispatch.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <stdexcept>

namespace calorivo {
namespace {

using namespace std::chrono_literals;
using test::VirtualDispatch;
using testing::ElementsAre;
using testing::IsEmpty;
using Log = std::vector<std::string>;

/// A dispatch and a log whose lines begin with the seconds passed.
struct Stage {
    VirtualDispatch dispatch;
    Log log;
    std::function<void()> note(std::string text) {
        return [this, text = std::move(text)] { write(text); };
    }
    void write(const std::string& text) {
        const auto seconds =
            std::chrono::duration_cast<std::chrono::seconds>(dispatch.now().time_since_epoch());
        log.push_back(std::to_string(seconds.count()) + " " + text);
    }
};

std::string thrownBy(const std::function<void()>& action) {
    try {
        action();
    } catch (const std::logic_error& error) {
        return error.what();
    }
    return "nothing";
}

TEST(VirtualDispatch, RunsNothingByItself) {
    Stage stage;
    const auto queue = stage.dispatch.makeSerialQueue("work");
    queue->async(stage.note("work"));
    stage.dispatch.mainQueue().async(stage.note("main"));
    EXPECT_THAT(stage.log, IsEmpty());
    EXPECT_EQ(stage.dispatch.pending("work"), 1U);
    stage.dispatch.run();
    EXPECT_THAT(stage.log, ElementsAre("0 main", "0 work"));
    EXPECT_EQ(stage.dispatch.pending("work"), 0U);
}

TEST(VirtualDispatch, RunsTheBlocksOfAQueueInOrderAndWhatTheyQueue) {
    Stage stage;
    const auto queue = stage.dispatch.makeSerialQueue("work");
    queue->async([&] {
        stage.write("one");
        queue->async(stage.note("three"));
        stage.dispatch.mainQueue().async(stage.note("main"));
    });
    queue->async(stage.note("two"));
    stage.dispatch.run();
    EXPECT_THAT(stage.log, ElementsAre("0 one", "0 main", "0 two", "0 three"));
}

TEST(VirtualDispatch, FiresTimersInOrderEachAtItsOwnMoment) {
    Stage stage;
    const auto late = stage.dispatch.scheduleTimer(5s, Repeats::no, stage.note("late"));
    const auto early = stage.dispatch.scheduleTimer(2s, Repeats::no, stage.note("early"));
    const auto same = stage.dispatch.scheduleTimer(5s, Repeats::no, stage.note("same"));
    stage.dispatch.advance(4s);
    EXPECT_THAT(stage.log, ElementsAre("2 early"));
    stage.dispatch.advance(1s);
    EXPECT_THAT(stage.log, ElementsAre("2 early", "5 late", "5 same"));
    EXPECT_EQ(stage.dispatch.liveTimers(), 0U);
}

TEST(VirtualDispatch, RepeatsATimer) {
    Stage stage;
    const auto timer = stage.dispatch.scheduleTimer(3s, Repeats::yes, stage.note("tick"));
    stage.dispatch.advance(10s);
    EXPECT_THAT(stage.log, ElementsAre("3 tick", "6 tick", "9 tick"));
    EXPECT_THAT(stage.dispatch.timerIntervals(), ElementsAre(3s));
    EXPECT_EQ(stage.dispatch.now().time_since_epoch(), 10s);
}

TEST(VirtualDispatch, TakesAnIntervalOfZeroOrLessForAMillisecond) {
    VirtualDispatch dispatch;
    int ticks = 0;
    const auto timer = dispatch.scheduleTimer(-1s, Repeats::yes, [&] { ++ticks; });
    dispatch.advance(5ms);
    EXPECT_EQ(ticks, 5);
}

TEST(VirtualDispatch, FiresATimerByHandBesideItsSchedule) {
    Stage stage;
    const auto timer = stage.dispatch.scheduleTimer(3s, Repeats::yes, stage.note("tick"));
    stage.dispatch.advance(2s);
    timer->fire();
    stage.dispatch.advance(1s);
    EXPECT_THAT(stage.log, ElementsAre("2 tick", "3 tick"));
}

TEST(VirtualDispatch, DoesNotMakeUpForTicksThatWereLate) {
    Stage stage;
    const auto timer = stage.dispatch.scheduleTimer(2s, Repeats::yes, stage.note("tick"));
    stage.dispatch.hold("main");
    stage.dispatch.advance(9s);
    EXPECT_EQ(stage.dispatch.pending("main"), 1U);
    stage.dispatch.release("main");
    stage.dispatch.advance(3s);
    EXPECT_THAT(stage.log, ElementsAre("9 tick", "11 tick"));
}

TEST(VirtualDispatch, DropsTheTickOfADestroyedTimer) {
    Stage stage;
    auto timer = stage.dispatch.scheduleTimer(2s, Repeats::yes, stage.note("tick"));
    stage.dispatch.hold("main");
    stage.dispatch.advance(2s);
    timer.reset();
    stage.dispatch.release("main");
    stage.dispatch.advance(10s);
    EXPECT_THAT(stage.log, IsEmpty());
    EXPECT_EQ(stage.dispatch.liveTimers(), 0U);
}

TEST(VirtualDispatch, LetsAnActionDestroyOrReplaceItsTimer) {
    Stage stage;
    std::unique_ptr<Timer> timer;
    timer = stage.dispatch.scheduleTimer(2s, Repeats::yes, [&] {
        timer = stage.dispatch.scheduleTimer(3s, Repeats::no, stage.note("new"));
        stage.write("old");
    });
    stage.dispatch.advance(20s);
    EXPECT_THAT(stage.log, ElementsAre("2 old", "5 new"));
}

TEST(VirtualDispatch, HoldsAQueueUntilItIsReleased) {
    Stage stage;
    const auto queue = stage.dispatch.makeSerialQueue("work");
    stage.dispatch.hold("work");
    queue->async(stage.note("one"));
    queue->async(stage.note("two"));
    stage.dispatch.advance(1s);
    EXPECT_THAT(stage.log, IsEmpty());
    EXPECT_TRUE(stage.dispatch.runOne("work"));
    EXPECT_THAT(stage.log, ElementsAre("1 one"));
    stage.dispatch.release("work");
    stage.dispatch.run();
    EXPECT_THAT(stage.log, ElementsAre("1 one", "1 two"));
    EXPECT_FALSE(stage.dispatch.runOne("work"));
}

TEST(VirtualDispatch, RunsWhatIsBeforeASyncBlock) {
    Stage stage;
    const auto queue = stage.dispatch.makeSerialQueue("work");
    queue->async(stage.note("before"));
    queue->sync(stage.note("sync"));
    EXPECT_THAT(stage.log, ElementsAre("0 before", "0 sync"));
}

TEST(VirtualDispatch, RunsMainWhileAnotherQueueWaitsForIt) {
    Stage stage;
    const auto queue = stage.dispatch.makeSerialQueue("work");
    queue->async([&] {
        stage.dispatch.mainQueue().sync(stage.note("main"));
        stage.write("work");
    });
    stage.dispatch.run();
    EXPECT_THAT(stage.log, ElementsAre("0 main", "0 work"));
}

TEST(VirtualDispatch, NamesTheQueueThatWaitsForItself) {
    Stage stage;
    const auto queue = stage.dispatch.makeSerialQueue("checkQueue");
    queue->async([&] { queue->sync([] {}); });
    EXPECT_EQ(thrownBy([&] { stage.dispatch.run(); }), "deadlock: checkQueue waits for itself");
}

TEST(VirtualDispatch, NamesTheQueueThatTwoWaitForInACircle) {
    Stage stage;
    const auto queue = stage.dispatch.makeSerialQueue("checkQueue");
    stage.dispatch.mainQueue().async([&] { queue->sync([&] { stage.dispatch.mainQueue().sync([] {}); }); });
    EXPECT_EQ(thrownBy([&] { stage.dispatch.run(); }), "deadlock: main waits for itself");
}

TEST(VirtualDispatch, NamesTheHeldQueueThatIsWaitedFor) {
    Stage stage;
    const auto queue = stage.dispatch.makeSerialQueue("logQueue");
    stage.dispatch.hold("logQueue");
    EXPECT_EQ(thrownBy([&] { queue->sync([] {}); }), "deadlock: waiting for logQueue, which is held");
}

TEST(VirtualDispatch, GoesOnAfterABlockThatThrew) {
    Stage stage;
    const auto queue = stage.dispatch.makeSerialQueue("work");
    queue->async([] { throw std::logic_error("broken"); });
    queue->async(stage.note("next"));
    EXPECT_EQ(thrownBy([&] { stage.dispatch.run(); }), "broken");
    stage.dispatch.run();
    EXPECT_THAT(stage.log, ElementsAre("0 next"));
}

TEST(VirtualDispatch, LetsOthersRunDuringASleep) {
    Stage stage;
    const auto sleeper = stage.dispatch.makeSerialQueue("sleeper");
    const auto other = stage.dispatch.makeSerialQueue("other");
    const auto timer = stage.dispatch.scheduleTimer(2s, Repeats::yes, [&] {
        stage.write("tick");
        sleeper->async(stage.note("queued behind"));
        other->async(stage.note("other"));
    });
    sleeper->async([&] {
        stage.write("asleep");
        stage.dispatch.sleep(3s);
        stage.write("awake");
    });
    stage.dispatch.run();
    EXPECT_THAT(stage.log, ElementsAre("0 asleep", "2 tick", "2 other", "3 awake", "3 queued behind"));
}

TEST(VirtualDispatch, DropsTheBlocksOfADestroyedQueue) {
    Stage stage;
    auto queue = stage.dispatch.makeSerialQueue("work");
    queue->async(stage.note("never"));
    stage.dispatch.mainQueue().async([&] { queue.reset(); });
    stage.dispatch.run();
    EXPECT_THAT(stage.log, IsEmpty());
    EXPECT_EQ(thrownBy([&] { stage.dispatch.hold("work"); }), "no queue work");
}

TEST(VirtualDispatch, OutlivesQueuesAndTimersThatItsBlocksOwn) {
    VirtualDispatch dispatch;
    const std::shared_ptr<Queue> queue = dispatch.makeSerialQueue("work");
    const std::shared_ptr<Timer> timer = dispatch.scheduleTimer(1s, Repeats::yes, [] {});
    queue->async([timer] { timer->fire(); });
    dispatch.mainQueue().async([queue] { queue->sync([] {}); });
    EXPECT_EQ(dispatch.pending("main"), 1U);
}

TEST(VirtualDispatch, MovesTheWallClockWithItsOwnAndAsItIsSet) {
    VirtualDispatch dispatch;
    dispatch.advance(10s);
    const WallTime noon{std::chrono::hours(12)};
    dispatch.setWallTime(noon);
    dispatch.advance(5s);
    EXPECT_EQ(dispatch.wallTime(), noon + 5s);
    dispatch.setWallTime(noon - 1h);
    EXPECT_EQ(dispatch.wallTime(), noon - 1h);
    EXPECT_EQ(dispatch.now().time_since_epoch(), 15s);
}

}  // namespace
}  // namespace calorivo
