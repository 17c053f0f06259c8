#include "platform/linux/HwmonDevice.h"

#include "support/FakeTree.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <filesystem>

namespace calorivo {
namespace {

using test::FakeTree;

/// A board chip with two temperatures and a fan.
class HwmonDeviceTest : public testing::Test {
  protected:
    HwmonDeviceTest() {
        const std::string chip = tree.chip(2, "nct6798", "platform/nct6775.656");
        folder = chip;
        tree.temperature(chip, 1, "41000", "SYSTIN").temperature(chip, 2, "52500").fan(chip, 1, "900");
        tree.file(chip + "/fan1_min", "300\n")
            .file(chip + "/fan1_max", "2100\n")
            .file(chip + "/fan1_target", "1000\n");
    }
    HwmonDevice& describe() {
        device.emplace(tree.root(), locateHwmonChips(tree.root()).front());
        device->perform(DeviceJob::describe);
        return *device;
    }
    Reading read(std::string_view file) {
        static_cast<void>(device->ask(device->itemOf(file)));
        device->perform(DeviceJob::refresh);
        return device->ask(device->itemOf(file));
    }

    FakeTree tree;
    std::string folder;
    std::optional<HwmonDevice> device;
};

TEST_F(HwmonDeviceTest, ReadsEveryInputWhenItIsDescribed) {
    const HwmonDevice& chip = describe();
    EXPECT_TRUE(chip.isDescribed());
    EXPECT_EQ(chip.peek(chip.itemOf("temp1_input")).value, 41000);
    EXPECT_EQ(chip.peek(chip.itemOf("temp2_input")).value, 52500);
    EXPECT_EQ(chip.peek(chip.itemOf("fan1_max")).value, 2100);
    EXPECT_EQ(chip.chip().channels[0].firstValue, 41000);
    EXPECT_TRUE(chip.chip().channels[0].wasRead);
    EXPECT_EQ(chip.chip().channels[2].minimum, 300);
    EXPECT_EQ(chip.itemOf("temp9_input"), HwmonDevice::none);
}

TEST_F(HwmonDeviceTest, LeavesUnusualFilesUntilTheyAreAskedFor) {
    HwmonDevice& chip = describe();
    const std::size_t target = chip.itemOf("fan1_target");
    EXPECT_FALSE(chip.peek(target).wasRead);
    chip.request(target);
    chip.perform(DeviceJob::refreshRequested);
    EXPECT_EQ(chip.peek(target).value, 1000);
}

TEST_F(HwmonDeviceTest, RefreshesWhatWasAskedForLately) {
    HwmonDevice& chip = describe();
    static_cast<void>(chip.ask(chip.itemOf("temp1_input")));
    tree.file(folder + "/temp1_input", "43000\n").file(folder + "/temp2_input", "60000\n");
    for (int pass = 0; pass < 4; ++pass) {
        chip.perform(DeviceJob::refresh);
        EXPECT_EQ(chip.ask(chip.itemOf("temp1_input")).value, 43000);
    }
    tree.file(folder + "/temp2_input", "70000\n");
    chip.perform(DeviceJob::refresh);
    EXPECT_EQ(chip.peek(chip.itemOf("temp2_input")).value, 60000) << "nobody asks for it";
}

TEST_F(HwmonDeviceTest, AFailedReadingIsToldWithItsReason) {
    describe();
    tree.file(folder + "/temp1_input", "not available\n");
    EXPECT_EQ(read("temp1_input").error, EINVAL);
    tree.file(folder + "/temp1_input", "44000\n");
    EXPECT_EQ(read("temp1_input").error, 0);
    EXPECT_EQ(read("temp1_input").value, 44000);
}

TEST_F(HwmonDeviceTest, ASensorThatTheDriverCallsBrokenIsNotBelieved) {
    tree.file(folder + "/temp2_fault", "1\n");
    const HwmonDevice& chip = describe();
    EXPECT_TRUE(chip.chip().channels[1].isFaulty);
    EXPECT_EQ(chip.peek(chip.itemOf("temp2_input")).error, ENODATA);
    EXPECT_FALSE(chip.chip().channels[1].wasRead);
}

TEST_F(HwmonDeviceTest, ASensorThatBreaksLaterIsNoticedByItsJump) {
    tree.file(folder + "/temp1_fault", "0\n");
    describe();
    tree.file(folder + "/temp1_fault", "1\n").file(folder + "/temp1_input", "127000\n");
    EXPECT_EQ(read("temp1_input").error, ENODATA);
}

TEST_F(HwmonDeviceTest, AFileThatVanishesHarmsNoOther) {
    HwmonDevice& chip = describe();
    tree.remove(folder + "/fan1_target");
    const std::size_t target = chip.itemOf("fan1_target");
    chip.request(target);
    chip.perform(DeviceJob::refreshRequested);
    EXPECT_EQ(chip.peek(target).error, ENOENT);
    EXPECT_EQ(read("temp1_input").value, 41000);
}

TEST_F(HwmonDeviceTest, AChipWithoutChannelsIsOfNoUse) {
    FakeTree empty;
    empty.chip(0, "hp", "platform/hp-wmi");
    HwmonDevice chip(empty.root(), locateHwmonChips(empty.root()).front());
    chip.perform(DeviceJob::describe);
    EXPECT_FALSE(chip.isDescribed());
}

TEST_F(HwmonDeviceTest, NeverReadsAGraphicsProcessorThatSleeps) {
    FakeTree gpu;
    const std::string pci = "devices/pci0000:00/0000:01:00.0";
    const std::string chip = gpu.chip(0, "amdgpu", "pci0000:00/0000:01:00.0");
    gpu.file(pci + "/class", "0x030000\n").file(pci + "/power/runtime_status", "suspended\n");
    gpu.temperature(chip, 1, "51000", "edge").fan(chip, 1, "700");
    HwmonDevice sleeper(gpu.root(), locateHwmonChips(gpu.root()).front());
    sleeper.perform(DeviceJob::describe);
    const std::size_t edge = sleeper.itemOf("temp1_input");
    const auto accessedBefore = sleeper.ask(edge);
    EXPECT_TRUE(accessedBefore.isAsleep);
    EXPECT_EQ(accessedBefore.value, 0);
    EXPECT_FALSE(sleeper.chip().channels[0].wasRead);

    gpu.file(pci + "/power/runtime_status", "active\n");
    sleeper.perform(DeviceJob::refresh);
    EXPECT_EQ(sleeper.ask(edge).value, 51000);

    gpu.file(pci + "/power/runtime_status", "suspended\n").file(chip + "/temp1_input", "99000\n");
    sleeper.perform(DeviceJob::refresh);
    EXPECT_TRUE(sleeper.ask(edge).isAsleep);
    EXPECT_NE(sleeper.ask(edge).value, 99000);
}

/// The kernel answers an open file of a device that went away with ENODEV, which a copy of the tree cannot:
/// the files of these tests are opened anew for each case instead.
class LostDeviceTest : public testing::Test {
  protected:
    LostDeviceTest() {
        folder = tree.chip(0, "lm75", "platform/i2c-0/0-0048");
        tree.temperature(folder, 1, "30000", "Inlet")
            .fan(folder, 1, "800")
            .file(folder + "/fan1_target", "850\n");
        device.emplace(tree.root(), locateHwmonChips(tree.root()).front());
        device->perform(DeviceJob::describe);
    }
    /// Reads a file that was never opened before: its folder decides whether it is there.
    Reading readTarget() {
        device->request(device->itemOf("fan1_target"));
        device->perform(DeviceJob::refreshRequested);
        return device->peek(device->itemOf("fan1_target"));
    }
    void addAgain(int number, std::string_view label = "Inlet") {
        folder = tree.chip(number, "lm75", "platform/i2c-0/0-0048");
        tree.temperature(folder, 1, "31000", label)
            .fan(folder, 1, "800")
            .file(folder + "/fan1_target", "900\n");
    }

    FakeTree tree;
    std::string folder;
    std::optional<HwmonDevice> device;
};

TEST_F(LostDeviceTest, ADeviceThatIsGoneGivesNothing) {
    tree.removeChip(0);
    EXPECT_EQ(readTarget().error, ENOENT);
    EXPECT_EQ(readTarget().error, ENODEV);
}

TEST_F(LostDeviceTest, AnotherChipWithItsNumberNeverAnswersInItsPlace) {
    tree.removeChip(0);
    static_cast<void>(readTarget());
    const std::string other = tree.chip(0, "jc42", "platform/i2c-0/0-0018");
    tree.temperature(other, 1, "55000", "Inlet").fan(other, 1, "700").file(other + "/fan1_target", "777\n");
    EXPECT_EQ(readTarget().error, ENODEV);
}

TEST_F(LostDeviceTest, TheSameDeviceIsFoundAgainUnderAnotherNumber) {
    tree.removeChip(0);
    static_cast<void>(readTarget());
    addAgain(7);
    EXPECT_EQ(readTarget().value, 900);
    EXPECT_EQ(device->pathOf(device->itemOf("fan1_target")), tree.root() + "/class/hwmon/hwmon7/fan1_target");
}

TEST_F(LostDeviceTest, AChangedLabelIsAnotherSensor) {
    tree.removeChip(0);
    static_cast<void>(readTarget());
    addAgain(0, "Outlet");
    EXPECT_EQ(readTarget().error, ENODEV);
}

/// The one that was there before comes back, or another one of the same model.
Reading readingAfterReplug(std::string_view serial) {
    FakeTree tree;
    const auto plugIn = [&tree](std::string_view number) {
        const std::string chip = tree.chip(0, "nvme", "pci0000:00/0000:02:00.0/nvme/nvme0");
        tree.fan(chip, 1, "800").file(chip + "/fan1_target", "850\n");
        tree.file("devices/pci0000:00/0000:02:00.0/nvme/nvme0/serial", number);
    };
    plugIn("N1\n");
    HwmonDevice device(tree.root(), locateHwmonChips(tree.root()).front());
    device.perform(DeviceJob::describe);
    const auto readTarget = [&device] {
        device.request(device.itemOf("fan1_target"));
        device.perform(DeviceJob::refreshRequested);
        return device.peek(device.itemOf("fan1_target"));
    };
    tree.removeChip(0);
    static_cast<void>(readTarget());
    plugIn(serial);
    return readTarget();
}

TEST(HwmonDrive, AnswersAgainWhenItIsBackButNotForAnotherOneInItsSlot) {
    EXPECT_EQ(readingAfterReplug("N1\n").value, 850);
    EXPECT_EQ(readingAfterReplug("N2\n").error, ENODEV);
}

}  // namespace
}  // namespace calorivo
