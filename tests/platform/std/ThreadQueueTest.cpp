#include "platform/std/ThreadQueue.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <atomic>
#include <future>
#include <memory>
#include <numeric>
#include <string>
#include <thread>
#include <vector>

namespace calorivo {
namespace {

using testing::ElementsAre;

TEST(ThreadQueue, KnowsItsLabel) {
    const ThreadQueue queue("logQueue");
    EXPECT_EQ(queue.label(), "logQueue");
}

TEST(ThreadQueue, RunsItsBlocksInOrderOnAThreadOfItsOwn) {
    ThreadQueue queue("work");
    std::vector<int> order;
    std::vector<std::thread::id> threads(1000);
    for (std::size_t i = 0; i < 1000; ++i)
        queue.async([&order, &threads, i] {
            order.push_back(static_cast<int>(i));
            threads[i] = std::this_thread::get_id();
        });
    queue.sync([] {});
    std::vector<int> expected(1000);
    std::iota(expected.begin(), expected.end(), 0);
    EXPECT_EQ(order, expected);
    EXPECT_NE(threads[0], std::this_thread::get_id());
    EXPECT_THAT(threads, testing::Each(threads[0]));
}

TEST(ThreadQueue, ReturnsFromSyncWhenTheBlockAndThoseBeforeItHaveRun) {
    ThreadQueue queue("work");
    std::vector<std::string> order;
    queue.async([&] { order.push_back("earlier"); });
    queue.sync([&] { order.push_back("sync"); });
    order.push_back("after");
    EXPECT_THAT(order, ElementsAre("earlier", "sync", "after"));
}

TEST(ThreadQueue, RunsBlocksThatBlocksHaveQueued) {
    ThreadQueue queue("work");
    std::promise<std::vector<int>> finished;
    std::vector<int> order;
    queue.async([&] {
        order.push_back(1);
        queue.async([&] {
            order.push_back(3);
            finished.set_value(order);
        });
        order.push_back(2);
    });
    EXPECT_THAT(finished.get_future().get(), ElementsAre(1, 2, 3));
}

TEST(ThreadQueue, LosesNoBlockOfSeveralThreads) {
    constexpr int each = 2000;
    ThreadQueue queue("work");
    std::vector<std::vector<int>> heard(4);
    int total = 0;  // only the queue's own thread touches it
    {
        std::vector<std::jthread> givers;
        for (std::size_t giver = 0; giver < heard.size(); ++giver)
            givers.emplace_back([&, giver] {
                for (int i = 0; i < each; ++i)
                    queue.async([&, giver, i] {
                        heard[giver].push_back(i);
                        ++total;
                    });
                queue.sync([&] { ++total; });
            });
    }
    int seen = 0;
    queue.sync([&] { seen = total; });
    EXPECT_EQ(seen, 4 * (each + 1));
    std::vector<int> expected(each);
    std::iota(expected.begin(), expected.end(), 0);
    EXPECT_THAT(heard, testing::Each(expected));
}

/// Queues itself again each time it runs.
struct Endless {
    ThreadQueue& queue;
    std::atomic<int>& begun;
    std::atomic<int>& ended;
    std::shared_ptr<int> held;
    void operator()() const {
        ++begun;
        queue.async(*this);
        ++ended;
    }
};

TEST(ThreadQueue, DropsWhatHasNotBegunAndWaitsForWhatRunsWhenDestroyed) {
    std::atomic<int> begun = 0;
    std::atomic<int> ended = 0;
    const auto held = std::make_shared<int>(1);
    {
        // Would it run what is waiting, it would never end.
        ThreadQueue queue("endless");
        for (int i = 0; i < 3; ++i) queue.async(Endless{queue, begun, ended, held});
        while (begun < 10) std::this_thread::yield();
    }
    EXPECT_EQ(begun, ended);
    EXPECT_EQ(held.use_count(), 1);
}

TEST(ThreadQueue, FreesWhatABlockHoldsAsSoonAsItHasRun) {
    ThreadQueue queue("work");
    const auto token = std::make_shared<int>(1);
    queue.async([copy = token] { ++*copy; });
    long users = 0;
    queue.sync([&] { users = token.use_count(); });
    EXPECT_EQ(users, 1);
    EXPECT_EQ(*token, 2);
}

TEST(ThreadQueue, EndsAtOnceWithNothingToDo) {
    for (int i = 0; i < 100; ++i) const ThreadQueue queue("idle");
}

}  // namespace
}  // namespace calorivo
