#include "platform/linux/PollDispatch.h"

#include "platform/std/ThreadQueue.h"
#include "support/MachineSleep.h"

#include <gtest/gtest.h>

#include <unistd.h>

#include <array>
#include <atomic>
#include <csignal>
#include <memory>
#include <string>
#include <thread>
#include <vector>

// The loop waits in the kernel, so these tests take real milliseconds; none depends on how many.

namespace calorivo {
namespace {

using std::chrono::milliseconds;
using std::chrono::seconds;

struct PollDispatchTest : testing::Test {
    PollDispatch dispatch{[](std::string label) { return std::make_unique<ThreadQueue>(std::move(label)); }};
    std::string log;

    void note(char c) { log += c; }
    /// Ends a test that would never end by itself, as a failure.
    std::unique_ptr<Timer> watchdog = dispatch.scheduleTimer(seconds(20), Repeats::no, [this] {
        ADD_FAILURE() << "the loop did not end";
        dispatch.stop();
    });
};

struct Pipe {
    Pipe() { EXPECT_EQ(pipe(ends.data()), 0); }
    ~Pipe() {
        for (const int end : ends)
            if (end >= 0) close(end);
    }
    Pipe(const Pipe&) = delete;
    Pipe& operator=(const Pipe&) = delete;
    void put() const { EXPECT_EQ(write(ends[1], "x", 1), 1); }
    void take() const {
        char byte = 0;
        EXPECT_EQ(read(ends[0], &byte, 1), 1);
    }
    void closeWriter() {
        close(ends[1]);
        ends[1] = -1;
    }
    std::array<int, 2> ends{-1, -1};
};

TEST_F(PollDispatchTest, RunsTheBlocksOfTheMainQueueInOrder) {
    dispatch.mainQueue().async([this] {
        note('a');
        dispatch.mainQueue().async([this] {
            note('c');
            dispatch.stop();
        });
    });
    dispatch.mainQueue().async([this] { note('b'); });
    dispatch.run();
    EXPECT_EQ(log, "abc");
}

TEST_F(PollDispatchTest, NamesItsMainQueueAndTheOthersAsAsked) {
    EXPECT_EQ(dispatch.mainQueue().label(), "main");
    EXPECT_EQ(dispatch.makeSerialQueue("check")->label(), "check");
}

TEST_F(PollDispatchTest, ReturnsAtOnceWhenItWasStoppedBefore) {
    dispatch.stop();
    dispatch.mainQueue().async([this] { note('x'); });
    dispatch.run();
    EXPECT_FALSE(dispatch.runReady());
    EXPECT_EQ(log, "");
}

TEST_F(PollDispatchTest, RunsATimerOnceOrAgainAndAgain) {
    int ticks = 0;
    const auto once = dispatch.scheduleTimer(milliseconds(1), Repeats::no, [this] { note('o'); });
    const auto again = dispatch.scheduleTimer(milliseconds(2), Repeats::yes, [&] {
        note('r');
        if (++ticks == 3) dispatch.stop();
    });
    dispatch.run();
    EXPECT_EQ(log, "orrr");
}

TEST_F(PollDispatchTest, AnIntervalOfZeroOrLessCountsAsAMillisecond) {
    for (const int interval : {0, -5}) {
        SCOPED_TRACE(interval);
        PollDispatch loop({});
        const Moment start = loop.now();
        const auto timer = loop.scheduleTimer(seconds(interval), Repeats::yes, [&] { loop.stop(); });
        loop.run();
        EXPECT_GE(loop.now() - start, milliseconds(1));
    }
}

TEST_F(PollDispatchTest, ADroppedTimerIsNotBegunAnyMore) {
    std::unique_ptr<Timer> dropped;
    // Scheduled first, so that it is due first however slowly these lines are run.
    const auto first = dispatch.scheduleTimer(milliseconds(1), Repeats::no, [&] { dropped.reset(); });
    dropped = dispatch.scheduleTimer(milliseconds(2), Repeats::yes, [this] { note('x'); });
    const auto last = dispatch.scheduleTimer(milliseconds(4), Repeats::no, [&] { dispatch.stop(); });
    dispatch.run();
    EXPECT_EQ(log, "");
}

TEST_F(PollDispatchTest, ATimerMayEndItselfInItsOwnAction) {
    std::unique_ptr<Timer> timer;
    const std::string text = "still here after the timer is gone";
    timer = dispatch.scheduleTimer(milliseconds(1), Repeats::yes, [&, text] {
        timer.reset();
        log += text;
        dispatch.stop();
    });
    dispatch.run();
    EXPECT_EQ(log, text);
}

TEST_F(PollDispatchTest, FiresATimerBesideItsSchedule) {
    const auto timer = dispatch.scheduleTimer(seconds(100), Repeats::yes, [this] { note('f'); });
    timer->fire();
    EXPECT_EQ(log, "f");
}

TEST_F(PollDispatchTest, DoesNotMakeUpForLateTicks) {
    constexpr milliseconds interval(2);
    std::vector<Moment> ticks;
    const auto timer = dispatch.scheduleTimer(interval, Repeats::yes, [&] {
        ticks.push_back(dispatch.now());
        if (ticks.size() == 1) dispatch.sleep(10 * interval);
        if (ticks.size() == 4) dispatch.stop();
    });
    dispatch.run();
    ASSERT_EQ(ticks.size(), 4U);
    // The tick that was held is counted from when it ran: what follows it comes at once, but only one time.
    EXPECT_GE(ticks[2] - ticks[1], interval);
    EXPECT_GE(ticks[3] - ticks[2], interval);
}

TEST_F(PollDispatchTest, ASleepOfTheMachineIsOneTickAndNoMore) {
    std::chrono::nanoseconds asleep(0);
    PollDispatch sleeper({}, [&] { return timeSinceBoot() + asleep; });
    test::expectOneTickAfterASleep(
        sleeper, asleep, [&] { sleeper.run(); }, [&] { sleeper.stop(); });
}

TEST_F(PollDispatchTest, AnotherThreadsBlockRunsOnTheMainThreadBeforeSyncReturns) {
    const auto queue = dispatch.makeSerialQueue("other");
    const auto mainThread = std::this_thread::get_id();
    queue->async([&] {
        dispatch.mainQueue().sync([&] { note(std::this_thread::get_id() == mainThread ? 'm' : 'o'); });
        note('s');
        dispatch.mainQueue().async([this] { dispatch.stop(); });
    });
    dispatch.run();
    EXPECT_EQ(log, "ms");
}

TEST_F(PollDispatchTest, AnotherThreadStopsASleepingLoop) {
    const auto queue = dispatch.makeSerialQueue("other");
    queue->async([this] { dispatch.stop(); });
    dispatch.run();
    EXPECT_FALSE(dispatch.runReady());
}

TEST_F(PollDispatchTest, ClosingTheMainQueueLetsWaitersGoAndRefusesBlocks) {
    std::atomic<int> released = 0;
    {
        const auto queue = dispatch.makeSerialQueue("other");
        queue->async([&] {
            dispatch.mainQueue().sync([this] { note('x'); });
            ++released;
            dispatch.mainQueue().sync([this] { note('y'); });
            ++released;
            dispatch.stop();
        });
        // Never run: the queue's end would wait for ever.
        dispatch.closeMainQueue();
        dispatch.mainQueue().async([this] { note('z'); });
        dispatch.run();
    }
    EXPECT_EQ(released, 2);
    EXPECT_EQ(log, "");
}

TEST_F(PollDispatchTest, RunReadyDoesNotWait) {
    dispatch.mainQueue().async([this] { note('a'); });
    const auto timer = dispatch.scheduleTimer(seconds(100), Repeats::yes, [this] { note('x'); });
    EXPECT_TRUE(dispatch.runReady());
    EXPECT_TRUE(dispatch.runReady());
    EXPECT_EQ(log, "a");
}

TEST_F(PollDispatchTest, TellsOfADescriptorThatCanBeReadUntilTheHandleIsDropped) {
    const Pipe pipe;
    Observation watch = dispatch.watchDescriptor(pipe.ends[0], [&] {
        pipe.take();
        note('r');
    });
    EXPECT_TRUE(dispatch.runReady());
    EXPECT_EQ(log, "");
    pipe.put();
    EXPECT_TRUE(dispatch.runReady());
    EXPECT_EQ(log, "r");
    watch.drop();
    pipe.put();
    EXPECT_TRUE(dispatch.runReady());
    EXPECT_EQ(log, "r");
}

TEST_F(PollDispatchTest, AHandlerMayEndItselfAndOthersThatAreReady) {
    const Pipe first;
    const Pipe second;
    Observation one;
    Observation two;
    const auto end = [&] {
        one.drop();
        two.drop();
        note('e');
    };
    one = dispatch.watchDescriptor(first.ends[0], end);
    two = dispatch.watchDescriptor(second.ends[0], end);
    first.put();
    second.put();
    EXPECT_TRUE(dispatch.runReady());
    EXPECT_EQ(log, "e");
}

TEST_F(PollDispatchTest, TellsOfADescriptorThatWasHungUp) {
    Pipe pipe;
    Observation watch = dispatch.watchDescriptor(pipe.ends[0], [this] { note('h'); });
    pipe.closeWriter();
    EXPECT_TRUE(dispatch.runReady());
    EXPECT_EQ(log, "h");
}

TEST_F(PollDispatchTest, SignalsArriveInTheLoop) {
    std::vector<int> arrived;
    {
        const Observation signals =
            dispatch.watchSignals({SIGUSR1, SIGUSR2}, [&](int signal) { arrived.push_back(signal); });
        raise(SIGUSR1);
        raise(SIGUSR2);
        EXPECT_TRUE(arrived.empty());
        EXPECT_TRUE(dispatch.runReady());
    }
    EXPECT_EQ(arrived, (std::vector<int>{SIGUSR1, SIGUSR2}));
    sigset_t mask;
    pthread_sigmask(SIG_BLOCK, nullptr, &mask);
    EXPECT_EQ(sigismember(&mask, SIGUSR1), 0) << "the handle puts the mask back";
}

TEST_F(PollDispatchTest, ASignalThatIsIgnoredStaysSo) {
    const auto before = std::signal(SIGUSR1, SIG_IGN);
    {
        const Observation signals = dispatch.watchSignals({SIGUSR1}, [this](int) { note('x'); });
        raise(SIGUSR1);
        EXPECT_TRUE(dispatch.runReady());
    }
    std::signal(SIGUSR1, before);
    EXPECT_EQ(log, "");
}

}  // namespace
}  // namespace calorivo
