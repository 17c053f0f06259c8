#pragma once

#include "platform/Dispatch.h"

#include <gtest/gtest.h>

#include <chrono>
#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace calorivo::test {

/// Checks that a repeating timer ticks once, at once, after the machine has slept for an hour, and that
/// nothing is made up for. `asleep` is what the loop's clock is ahead of this machine's; `run` runs the loop
/// until `stop` is called. Takes real milliseconds; does not depend on how many.
inline void expectOneTickAfterASleep(Dispatch& loop, std::chrono::nanoseconds& asleep,
                                     const std::function<void()>& run, const std::function<void()>& stop) {
    constexpr std::chrono::milliseconds interval(10);
    std::vector<Moment> ticks;
    std::string order;
    std::unique_ptr<Timer> later;
    const auto timer = loop.scheduleTimer(interval, Repeats::yes, [&] {
        ticks.push_back(loop.now());
        order += 'r';
        if (ticks.size() == 2) {
            asleep += std::chrono::hours(1);
            later = loop.scheduleTimer(interval, Repeats::no, [&] { order += 'l'; });
        }
        if (ticks.size() == 5) stop();
    });
    run();
    ASSERT_EQ(ticks.size(), 5U);
    EXPECT_GE(ticks[3] - ticks[2], interval) << "nothing is made up for";
    EXPECT_GE(ticks[4] - ticks[3], interval);
    EXPECT_EQ(order.substr(0, 3), "rrr") << "the first tick after it comes within one interval";
}

}  // namespace calorivo::test
