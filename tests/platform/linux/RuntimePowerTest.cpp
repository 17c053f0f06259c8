#include "platform/linux/RuntimePower.h"

#include "platform/linux/Sysfs.h"
#include "support/FakeTree.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace calorivo {
namespace {

using namespace std::chrono_literals;
using Advice = RuntimePower::Advice;

/// A device that falls asleep when nobody has used it for five seconds.
class RuntimePowerTest : public testing::Test {
  protected:
    RuntimePowerTest() {
        set("runtime_status", "active");
        set("control", "auto");
        set("autosuspend_delay_ms", "5000");
        set("runtime_usage", "0");
    }
    void set(const std::string& file, const std::string& text) {
        tree.file("device/power/" + file, text + "\n");
    }
    void without(const std::string& file) { tree.remove("device/power/" + file); }
    void open() { power.open(openFolder(tree.root() + "/device").get()); }
    /// What it advises at each of these times.
    std::vector<Advice> adviceAt(const std::vector<std::chrono::nanoseconds>& times) {
        std::vector<Advice> result;
        for (const auto time : times) result.push_back(power.advice(time));
        return result;
    }

    test::FakeTree tree;
    RuntimePower power;
};

TEST_F(RuntimePowerTest, ADeviceThatIsIdleMayFallAsleepBetweenTwoReadings) {
    open();
    EXPECT_EQ(adviceAt({100s, 102s, 105s, 105999ms, 106s, 108s, 112s}),
              (std::vector{Advice::read, Advice::wait, Advice::wait, Advice::wait, Advice::read, Advice::wait,
                           Advice::read}));
}

TEST_F(RuntimePowerTest, ADeviceThatFellAsleepIsLeftUntilItAwakes) {
    open();
    EXPECT_EQ(power.advice(100s), Advice::read);
    for (const char* const asleep : {"suspended", "suspending"}) {
        set("runtime_status", asleep);
        EXPECT_EQ(power.advice(110s), Advice::leave) << asleep;
    }
    set("runtime_status", "active");
    EXPECT_EQ(power.advice(112s), Advice::read);
}

TEST_F(RuntimePowerTest, ADeviceInUseIsReadAtEachCheck) {
    set("runtime_usage", "2");
    open();
    EXPECT_EQ(adviceAt({100s, 101s, 102s}), (std::vector{Advice::read, Advice::read, Advice::read}));
    set("runtime_usage", "0");
    EXPECT_EQ(power.advice(103s), Advice::wait) << "nobody uses it any more";
}

TEST_F(RuntimePowerTest, ADeviceThatDoesNotFallAsleepByItselfIsReadAtEachCheck) {
    struct Row {
        const char* file;
        const char* text;
    };
    for (const Row& row : std::vector<Row>{{"control", "on"},
                                           {"autosuspend_delay_ms", "0"},
                                           {"autosuspend_delay_ms", "-1"},
                                           {"autosuspend_delay_ms", "3600000"},
                                           {"autosuspend_delay_ms", "soon"}}) {
        set("control", "auto");
        set("autosuspend_delay_ms", "5000");
        set(row.file, row.text);
        power = {};
        open();
        EXPECT_EQ(adviceAt({100s, 101s}), (std::vector{Advice::read, Advice::read}))
            << row.file << ' ' << row.text;
    }
}

TEST_F(RuntimePowerTest, AKernelThatDoesNotTellTheUsersMakesItWait) {
    without("runtime_usage");
    open();
    EXPECT_EQ(adviceAt({100s, 101s}), (std::vector{Advice::read, Advice::wait}));
}

TEST_F(RuntimePowerTest, AKernelThatTellsNothingHasItReadAlways) {
    for (const char* const file : {"runtime_status", "runtime_usage", "control", "autosuspend_delay_ms"})
        without(file);
    open();
    EXPECT_FALSE(power.isOpen());
    EXPECT_EQ(adviceAt({100s, 101s}), (std::vector{Advice::read, Advice::read}));
}

}  // namespace
}  // namespace calorivo
