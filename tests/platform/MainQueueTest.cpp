#include "platform/MainQueue.h"

#include <gtest/gtest.h>

#include <atomic>
#include <string>
#include <thread>
#include <vector>

namespace calorivo {
namespace {

using Names = std::vector<std::string>;

TEST(MainQueue, WakesItsLoopOnceForAllThatWaits) {
    int wakes = 0;
    MainQueue queue([&wakes] { ++wakes; });
    Names ran;
    queue.async([&] { ran.emplace_back("a"); });
    queue.async([&] { ran.emplace_back("b"); });
    EXPECT_EQ(wakes, 1);
    EXPECT_TRUE(queue.hasWaiting());
    queue.runWaiting();
    EXPECT_EQ(ran, (Names{"a", "b"}));
    EXPECT_FALSE(queue.hasWaiting());
    queue.async([] {});
    EXPECT_EQ(wakes, 2);
}

TEST(MainQueue, RunsWhatABlockAddsTheNextTime) {
    MainQueue queue([] {});
    Names ran;
    queue.async([&] {
        ran.emplace_back("a");
        queue.async([&] { ran.emplace_back("c"); });
    });
    queue.async([&] { ran.emplace_back("b"); });
    queue.runWaiting();
    EXPECT_EQ(ran, (Names{"a", "b"}));
    EXPECT_TRUE(queue.hasWaiting());
    queue.runWaiting();
    EXPECT_EQ(ran, (Names{"a", "b", "c"}));
}

TEST(MainQueue, GoesOnWhileABlockRunsALoopOfItsOwn) {
    MainQueue queue([] {});
    Names ran;
    queue.async([&] {
        ran.emplace_back("a begins");
        queue.runWaiting();
        ran.emplace_back("a ends");
    });
    queue.async([&] { ran.emplace_back("b"); });
    queue.runWaiting();
    EXPECT_EQ(ran, (Names{"a begins", "b", "a ends"}));
}

TEST(MainQueue, LetsAThreadWaitForItsBlock) {
    std::atomic<bool> isWoken = false;
    MainQueue queue([&isWoken] { isWoken = true; });
    bool hasRun = false;
    bool hasRunBeforeReturn = false;
    std::thread other([&] {
        queue.sync([&] { hasRun = true; });
        hasRunBeforeReturn = hasRun;
    });
    while (!isWoken) std::this_thread::yield();
    queue.runWaiting();
    other.join();
    EXPECT_TRUE(hasRunBeforeReturn);
}

TEST(MainQueue, LetsThoseWhoWaitGoOnWhenItIsClosed) {
    std::atomic<bool> isWoken = false;
    MainQueue queue([&isWoken] { isWoken = true; });
    bool hasRun = false;
    std::thread other([&] {
        queue.sync([&] { hasRun = true; });
        queue.sync([&] { hasRun = true; });
    });
    while (!isWoken) std::this_thread::yield();
    queue.close();
    other.join();
    EXPECT_FALSE(hasRun);
    EXPECT_FALSE(queue.hasWaiting());
}

}  // namespace
}  // namespace calorivo
