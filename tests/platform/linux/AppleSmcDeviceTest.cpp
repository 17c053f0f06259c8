#include "platform/linux/AppleSmcDevice.h"

#include "FakeMachineClocks.h"
#include "smc/SmcService.h"
#include "support/FakeTree.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cerrno>
#include <map>

namespace calorivo {
namespace {

/// A key space whose selection another program changes now and then.
struct FakeKeySpace {
    struct Key {
        std::string name;
        std::string type;
        std::vector<std::uint8_t> data;
        int error = 0;
    };
    std::vector<Key> keys;
    std::uint32_t selected = 0;
    int thefts = 0;
    int selections = 0;
    bool isGone = false;
    int openings = 0;
};

class FakeWindow final : public SmcKeyWindow {
  public:
    explicit FakeWindow(FakeKeySpace& space) : space_(space) {}
    std::uint32_t keyCount() override { return static_cast<std::uint32_t>(space_.keys.size()); }
    int select(std::uint32_t index) override {
        if (space_.isGone) return ENODEV;
        if (index >= space_.keys.size()) return EINVAL;
        ++space_.selections;
        space_.selected = index;
        return 0;
    }
    std::optional<std::uint32_t> selected() override {
        if (space_.thefts > 0) {
            --space_.thefts;
            space_.selected = 0;
        }
        return space_.selected;
    }
    std::optional<std::string> name() override { return space_.keys[space_.selected].name; }
    std::optional<std::string> type() override { return space_.keys[space_.selected].type; }
    std::optional<std::uint32_t> length() override {
        return static_cast<std::uint32_t>(space_.keys[space_.selected].data.size());
    }
    int data(std::array<std::uint8_t, 32>& bytes) override {
        const auto& key = space_.keys[space_.selected];
        if (key.error == 0) std::copy(key.data.begin(), key.data.end(), bytes.begin());
        return key.error;
    }

  private:
    FakeKeySpace& space_;
};

class AppleSmcDeviceTest : public testing::Test {
  protected:
    AppleSmcDeviceTest() {
        space.keys = {{"#KEY", "ui32", {0, 0, 0, 4}},
                      {"FS! ", "ui16", {0, 2}},
                      {"TC0P", "sp78", {0x3c, 0x40}},
                      {"TG0D", "sp78", {0, 0}}};
    }
    Reading read(std::size_t item) {
        device.request(item);
        device.perform(DeviceJob::refreshRequested);
        return device.peek(item);
    }

    FakeKeySpace space;
    test::FakeMachineClocks clocks;
    AppleSmcDevice device{[this]() -> std::unique_ptr<SmcKeyWindow> {
                              ++space.openings;
                              return space.isGone ? nullptr : std::make_unique<FakeWindow>(space);
                          },
                          clocks.clocks()};
};

TEST_F(AppleSmcDeviceTest, WalksTheWholeKeySpaceOnce) {
    device.perform(DeviceJob::describe);
    ASSERT_TRUE(device.isDescribed());
    std::vector<std::string> lines;
    for (const auto& key : device.keys())
        lines.push_back(std::to_string(key.index) + " " + std::to_string(key.length) +
                        (key.type == smcCode("sp78") ? " sp78" : ""));
    EXPECT_EQ(lines, (std::vector<std::string>{"0 4", "1 2", "2 2 sp78", "3 2 sp78"}));
    EXPECT_EQ(device.keys()[1].key, smcCode("FS! ")) << "the blank is part of the key";
}

TEST_F(AppleSmcDeviceTest, TemperaturesAreReadAtOnceAndOtherKeysWhenAskedFor) {
    device.perform(DeviceJob::describe);
    EXPECT_EQ(device.peek(2).bytes[0], 0x3c);
    EXPECT_EQ(device.peek(2).bytes[1], 0x40);
    EXPECT_FALSE(device.peek(1).wasRead);
    EXPECT_EQ(read(1).bytes[1], 2);
}

TEST_F(AppleSmcDeviceTest, ReadsAgainWhenAnotherProgramSelectsInBetween) {
    device.perform(DeviceJob::describe);
    space.thefts = 2;
    const Reading reading = read(2);
    EXPECT_EQ(reading.error, 0);
    EXPECT_EQ(reading.bytes[0], 0x3c);
}

TEST_F(AppleSmcDeviceTest, GivesUpAfterThreeTriesRatherThanGiveAnotherKeysValue) {
    device.perform(DeviceJob::describe);
    space.thefts = 3;
    EXPECT_EQ(read(2).error, EAGAIN);
    EXPECT_EQ(read(2).bytes[0], 0x3c);
}

TEST_F(AppleSmcDeviceTest, OneFailingKeyHarmsNoOther) {
    space.keys[2].error = EIO;
    device.perform(DeviceJob::describe);
    EXPECT_EQ(device.peek(2).error, EIO);
    EXPECT_EQ(device.peek(3).error, 0);
    EXPECT_TRUE(device.peek(3).wasRead);
}

TEST_F(AppleSmcDeviceTest, AKeyThatMovedIsNotReadByItsOldIndex) {
    device.perform(DeviceJob::describe);
    std::swap(space.keys[2], space.keys[3]);
    EXPECT_EQ(read(2).error, EAGAIN);
}

TEST_F(AppleSmcDeviceTest, OpensTheWindowAgainWhenTheDriverComesBack) {
    device.perform(DeviceJob::describe);
    space.isGone = true;
    EXPECT_EQ(read(2).error, ENODEV);
    EXPECT_EQ(read(2).error, ENODEV);
    EXPECT_EQ(space.openings, 2) << "once at the start, once when it was lost; not at each reading";
}

TEST_F(AppleSmcDeviceTest, OpensTheWindowAnewAfterASleepOfTheMachine) {
    device.perform(DeviceJob::describe);
    clocks.sleep(std::chrono::seconds(3));
    EXPECT_EQ(read(2).bytes[0], 0x3c);
    EXPECT_EQ(read(2).bytes[0], 0x3c);
    EXPECT_EQ(space.openings, 2);
}

TEST_F(AppleSmcDeviceTest, FirstReadingsThatFailAfterASleepCostNothing) {
    device.perform(DeviceJob::describe);
    clocks.sleep(std::chrono::seconds(3));
    space.keys[2].error = EIO;
    EXPECT_EQ(read(2).error, EIO);
    space.keys[2].error = 0;
    EXPECT_EQ(read(2).error, 0);
    space.isGone = true;
    clocks.sleep(std::chrono::seconds(3));
    EXPECT_EQ(read(2).error, ENODEV);
    space.isGone = false;
    clocks.pass(std::chrono::seconds(2));
    EXPECT_EQ(read(2).bytes[0], 0x3c);
}

TEST_F(AppleSmcDeviceTest, AMachineWithoutTheWindowIsOfNoUse) {
    space.isGone = true;
    device.perform(DeviceJob::describe);
    EXPECT_FALSE(device.isDescribed());
}

TEST(SmcKeyWindow, IsNeverOpenedInACopyOfATree) {
    test::FakeTree tree;
    tree.file("applesmc/key_at_index", "0\n").file("applesmc/key_count", "1\n");
    EXPECT_EQ(openSmcKeyWindow(tree.path("applesmc")), nullptr);
    EXPECT_EQ(openSmcKeyWindow(tree.path("absent")), nullptr);
}

}  // namespace
}  // namespace calorivo
