#include "platform/qt/QtDispatch.h"

#include "platform/std/ThreadQueue.h"
#include "support/MachineSleep.h"

#include <gtest/gtest.h>

#include <QEventLoop>

#include <memory>
#include <string>
#include <thread>
#include <vector>

// The loop waits in the kernel, so these tests take real milliseconds; none depends on how many.

namespace calorivo {
namespace {

using std::chrono::milliseconds;
using std::chrono::seconds;

struct QtDispatchTest : testing::Test {
    QtDispatch dispatch{[](std::string label) { return std::make_unique<ThreadQueue>(std::move(label)); }};
    QEventLoop loop;
    std::string log;

    void note(char c) { log += c; }
    /// Ends a test that would never end by itself, as a failure.
    std::unique_ptr<Timer> watchdog = dispatch.scheduleTimer(seconds(20), Repeats::no, [this] {
        ADD_FAILURE() << "the loop did not end";
        loop.quit();
    });
};

TEST_F(QtDispatchTest, RunsTheBlocksOfTheMainQueueInOrder) {
    dispatch.mainQueue().async([this] {
        note('a');
        dispatch.mainQueue().async([this] {
            note('c');
            loop.quit();
        });
    });
    dispatch.mainQueue().async([this] { note('b'); });
    loop.exec();
    EXPECT_EQ(log, "abc");
}

TEST_F(QtDispatchTest, NamesItsMainQueueAndTheOthersAsAsked) {
    EXPECT_EQ(dispatch.mainQueue().label(), "main");
    EXPECT_EQ(dispatch.makeSerialQueue("check")->label(), "check");
}

TEST_F(QtDispatchTest, RunsOtherBlocksWhileOneRunsALoopOfItsOwn) {
    dispatch.mainQueue().async([this] {
        QEventLoop inner;
        dispatch.mainQueue().async([&] {
            note('b');
            inner.quit();
        });
        note('a');
        inner.exec();
        note('c');
        loop.quit();
    });
    loop.exec();
    EXPECT_EQ(log, "abc");
}

TEST_F(QtDispatchTest, LetsAQueueWaitForTheMainQueue) {
    const auto queue = dispatch.makeSerialQueue("check");
    queue->async([this] {
        dispatch.mainQueue().sync([this] { note('m'); });
        dispatch.mainQueue().async([this] { loop.quit(); });
    });
    loop.exec();
    EXPECT_EQ(log, "m");
}

TEST_F(QtDispatchTest, LetsWhoWaitsGoOnWhenTheMainQueueIsClosed) {
    auto queue = dispatch.makeSerialQueue("check");
    queue->async([this] { dispatch.mainQueue().sync([this] { note('m'); }); });
    dispatch.closeMainQueue();
    queue.reset();
    EXPECT_EQ(log, "");
}

TEST_F(QtDispatchTest, RunsATimerOnceOrAgainAndAgain) {
    int ticks = 0;
    const auto once = dispatch.scheduleTimer(milliseconds(1), Repeats::no, [this] { note('o'); });
    const auto again = dispatch.scheduleTimer(milliseconds(20), Repeats::yes, [&] {
        note('r');
        if (++ticks == 3) loop.quit();
    });
    loop.exec();
    EXPECT_EQ(log, "orrr");
}

TEST_F(QtDispatchTest, AnIntervalOfZeroOrLessCountsAsAMillisecond) {
    for (const int interval : {0, -5}) {
        SCOPED_TRACE(interval);
        const Moment start = dispatch.now();
        const auto timer = dispatch.scheduleTimer(seconds(interval), Repeats::yes, [this] { loop.quit(); });
        loop.exec();
        EXPECT_GE(dispatch.now() - start, milliseconds(1));
    }
}

TEST_F(QtDispatchTest, DoesNotMakeUpForTicksThatCameLate) {
    int ticks = 0;
    const auto timer = dispatch.scheduleTimer(milliseconds(10), Repeats::yes, [&] {
        if (++ticks == 1) std::this_thread::sleep_for(milliseconds(100));
    });
    const auto end = dispatch.scheduleTimer(milliseconds(105), Repeats::no, [this] { loop.quit(); });
    const Moment start = dispatch.now();
    loop.exec();
    // One tick before the hold, and from then on never more than one in ten milliseconds.
    const auto sinceHold = dispatch.now() - start - milliseconds(110);
    EXPECT_LE(ticks, 2 + std::max<std::int64_t>(0, sinceHold / milliseconds(10)));
    EXPECT_GE(ticks, 1);
}

TEST_F(QtDispatchTest, ASleepOfTheMachineIsOneTickAndNoMore) {
    std::chrono::nanoseconds asleep(0);
    QtDispatch sleeper({}, [&] { return dispatch.now() + asleep; });
    test::expectOneTickAfterASleep(
        sleeper, asleep, [this] { loop.exec(); }, [this] { loop.quit(); });
}

TEST_F(QtDispatchTest, ADroppedTimerIsNotBegunAnyMore) {
    std::unique_ptr<Timer> dropped;
    const auto first = dispatch.scheduleTimer(milliseconds(1), Repeats::no, [&] { dropped.reset(); });
    dropped = dispatch.scheduleTimer(milliseconds(200), Repeats::yes, [this] { note('x'); });
    const auto last = dispatch.scheduleTimer(milliseconds(250), Repeats::no, [this] { loop.quit(); });
    loop.exec();
    EXPECT_EQ(log, "");
}

TEST_F(QtDispatchTest, ATimerMayEndItselfInItsOwnAction) {
    std::unique_ptr<Timer> timer;
    const std::string text = "still here after the timer is gone";
    timer = dispatch.scheduleTimer(milliseconds(1), Repeats::yes, [&, text] {
        timer.reset();
        log += text;
        loop.quit();
    });
    loop.exec();
    EXPECT_EQ(log, text);
}

TEST_F(QtDispatchTest, FiresATimerAtOnceBesideItsSchedule) {
    const auto timer = dispatch.scheduleTimer(seconds(1000), Repeats::yes, [this] { note('f'); });
    timer->fire();
    EXPECT_EQ(log, "f");
}

TEST_F(QtDispatchTest, SleepsAsLongAsItIsAskedTo) {
    const Moment start = dispatch.now();
    std::thread([this] { dispatch.sleep(milliseconds(3)); }).join();
    EXPECT_GE(dispatch.now() - start, milliseconds(3));
}

}  // namespace
}  // namespace calorivo
