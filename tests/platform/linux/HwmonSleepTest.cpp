#include "FakeMachineClocks.h"
#include "platform/linux/HwmonDevice.h"
#include "support/FakeTree.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <optional>
#include <string>

// A sleep of the machine, as a chip goes through it.

namespace calorivo {
namespace {

using namespace std::chrono_literals;
using test::FakeTree;

class HwmonSleepTest : public testing::Test {
  protected:
    HwmonDevice& describe(std::size_t place = 0) {
        device.emplace(tree.root(), locateHwmonChips(tree.root()).at(place), clocks.clocks());
        device->perform(DeviceJob::describe);
        return *device;
    }
    Reading read(std::string_view file = "temp1_input") {
        static_cast<void>(device->ask(device->itemOf(file)));
        device->perform(DeviceJob::refresh);
        return device->ask(device->itemOf(file));
    }
    /// A file that takes the place of another one: who has that one open goes on to read the old text.
    void replaceFile(const std::string& file, std::string_view text) { tree.remove(file).file(file, text); }

    FakeTree tree;
    test::FakeMachineClocks clocks;
    std::optional<HwmonDevice> device;
};

TEST_F(HwmonSleepTest, FilesAreOpenedAnewAfterIt) {
    const std::string chip = tree.chip(0, "coretemp", "platform/coretemp.0");
    tree.temperature(chip, 1, "40000");
    describe();
    replaceFile(chip + "/temp1_input", "55000\n");
    EXPECT_EQ(read().value, 40000) << "the file stays open";
    clocks.sleep(3s);
    EXPECT_EQ(read().value, 55000);
    replaceFile(chip + "/temp1_input", "60000\n");
    EXPECT_EQ(read().value, 55000) << "and stays open again";
}

TEST_F(HwmonSleepTest, TheChipIsFoundAtOnceUnderItsNewNumber) {
    tree.temperature(tree.chip(0, "lm75", "platform/i2c-0/0-0048"), 1, "30000", "Inlet");
    describe();
    tree.removeChip(0);
    clocks.sleep(1h);
    tree.temperature(tree.chip(0, "jc42", "platform/i2c-0/0-0018"), 1, "70000", "Inlet");
    tree.temperature(tree.chip(4, "lm75", "platform/i2c-0/0-0048"), 1, "32000", "Inlet");
    const Reading after = read();
    EXPECT_EQ(after.error, 0);
    EXPECT_EQ(after.value, 32000);
    EXPECT_EQ(device->pathOf(device->itemOf("temp1_input")), tree.root() + "/class/hwmon/hwmon4/temp1_input");
}

TEST_F(HwmonSleepTest, AChipThatComesBackLateIsFoundThen) {
    tree.temperature(tree.chip(0, "lm75", "platform/i2c-0/0-0048"), 1, "30000");
    describe();
    tree.removeChip(0);
    clocks.sleep(3s);
    EXPECT_EQ(read().error, ENODEV);
    tree.temperature(tree.chip(2, "lm75", "platform/i2c-0/0-0048"), 1, "33000");
    clocks.pass(1s);
    EXPECT_EQ(read().error, ENODEV) << "it is looked for now and then only";
    clocks.pass(1s);
    EXPECT_EQ(read().value, 33000);
}

TEST_F(HwmonSleepTest, AChipThatIsAwayDuringTwoOfThemIsLookedForAfterEach) {
    tree.temperature(tree.chip(0, "lm75", "platform/i2c-0/0-0048"), 1, "30000");
    describe();
    tree.removeChip(0);
    clocks.sleep(300ms);
    EXPECT_EQ(read().error, ENODEV);
    tree.temperature(tree.chip(2, "lm75", "platform/i2c-0/0-0048"), 1, "33000");
    EXPECT_EQ(read().error, ENODEV);
    clocks.sleep(300ms);
    EXPECT_EQ(read().value, 33000);
}

TEST_F(HwmonSleepTest, ChipsThatAreToldApartByCountingOnlyGoOn) {
    for (const int number : {0, 1}) {
        const std::string chip = "devices/virtual/hwmon/hwmon" + std::to_string(number);
        tree.file(chip + "/name", "acpitz\n").temperature(chip, 1, std::to_string(40000 + number));
        tree.link("class/hwmon/hwmon" + std::to_string(number), "../../" + chip);
    }
    describe(1);
    const long before = read().value;
    clocks.sleep(3s);
    const Reading after = read();
    EXPECT_EQ(after.error, 0);
    EXPECT_EQ(after.value, before);
}

TEST_F(HwmonSleepTest, FirstReadingsThatFailCostTheChipNothing) {
    const std::string chip = tree.chip(0, "nct6798", "platform/nct6775.656");
    tree.temperature(chip, 1, "40000");
    describe();
    clocks.sleep(3s);
    replaceFile(chip + "/temp1_input", "");
    EXPECT_EQ(read().error, EINVAL);
    EXPECT_EQ(read().error, EINVAL);
    tree.file(chip + "/temp1_input", "44000\n");
    EXPECT_EQ(read().error, 0);
    EXPECT_EQ(read().value, 44000);
}

TEST_F(HwmonSleepTest, AFileThatIsNotThereAtFirstCostsTheChipNothing) {
    const std::string chip = tree.chip(0, "nct6798", "platform/nct6775.656");
    tree.temperature(chip, 1, "40000");
    describe();
    clocks.sleep(3s);
    tree.remove(chip + "/temp1_input");
    EXPECT_EQ(read().error, ENOENT);
    tree.file(chip + "/temp1_input", "44000\n");
    EXPECT_EQ(read().value, 44000);
}

TEST_F(HwmonSleepTest, ASensorThatBrokeMeanwhileIsNotBelievedForReadingAsBefore) {
    const std::string chip = tree.chip(0, "lm90", "platform/i2c-0/0-004c");
    tree.temperature(chip, 1, "40000").file(chip + "/temp1_fault", "0\n");
    describe();
    tree.file(chip + "/temp1_fault", "1\n");
    EXPECT_EQ(read().error, 0) << "while its values change little it is not asked";
    clocks.sleep(3s);
    EXPECT_EQ(read().error, ENODATA);
}

/// A graphics processor, whose inputs wake it.
class GPUSleepTest : public HwmonSleepTest {
  protected:
    GPUSleepTest() {
        chip = tree.chip(0, "amdgpu", "pci0000:00/0000:01:00.0");
        tree.file(pci + "/class", "0x030000\n").file(pci + "/power/runtime_status", "active\n");
        tree.temperature(chip, 1, "51000", "edge");
    }
    const std::string pci = "devices/pci0000:00/0000:01:00.0";
    std::string chip;
};

TEST_F(GPUSleepTest, AGraphicsProcessorThatSleepsAfterItIsNotRead) {
    describe();
    clocks.sleep(3s);
    replaceFile(pci + "/power/runtime_status", "suspended\n");
    tree.file(chip + "/temp1_input", "99000\n");
    const Reading asleep = read();
    EXPECT_TRUE(asleep.isAsleep);
    EXPECT_EQ(asleep.value, 0);
    tree.file(pci + "/power/runtime_status", "active\n");
    EXPECT_EQ(read().value, 99000);
}

TEST_F(GPUSleepTest, AnIdleGraphicsProcessorIsNotKeptAwakeByItsReadings) {
    tree.temperature(chip, 2, "60000", "junction");
    tree.file(pci + "/power/control", "auto\n").file(pci + "/power/autosuspend_delay_ms", "5000\n");
    describe();
    clocks.pass(2s);
    tree.file(chip + "/temp1_input", "70000\n").file(chip + "/temp2_input", "80000\n");
    const Reading held = read();
    EXPECT_EQ(held.value, 51000) << "what it read last holds";
    EXPECT_EQ(held.error, 0);
    EXPECT_EQ(held.at, clocks.clocks().sinceBoot()) << "and does not grow old";
    clocks.pass(2s);
    EXPECT_EQ(read().value, 51000);
    clocks.pass(2s);
    EXPECT_EQ(read().value, 70000) << "it did not fall asleep: somebody else uses it";
    clocks.pass(5s);
    tree.file(chip + "/temp1_input", "71000\n");
    EXPECT_EQ(read().value, 70000);
    tree.file(pci + "/power/runtime_status", "suspended\n");
    EXPECT_TRUE(read().isAsleep);
}

TEST_F(GPUSleepTest, AnInputThatFailsDoesNotKeepAnIdleGraphicsProcessorAwake) {
    tree.file(pci + "/power/control", "auto\n").file(pci + "/power/autosuspend_delay_ms", "5000\n");
    describe();
    clocks.pass(6s);
    tree.file(chip + "/temp1_input", "");
    EXPECT_EQ(read().error, EINVAL);
    tree.file(chip + "/temp1_input", "52000\n");
    clocks.pass(2s);
    EXPECT_EQ(read().error, EINVAL) << "not tried again before it may have fallen asleep";
    clocks.pass(4s);
    EXPECT_EQ(read().value, 52000);
}

TEST_F(GPUSleepTest, AValueThatNobodyAskedForMeanwhileIsNotTakenForANewOne) {
    tree.temperature(chip, 2, "60000", "junction");
    tree.file(pci + "/power/control", "auto\n").file(pci + "/power/autosuspend_delay_ms", "5000\n");
    describe();
    for (int i = 0; i < 5; ++i) {  // the second one is forgotten
        clocks.pass(6s);
        EXPECT_EQ(read().value, 51000);
    }
    tree.file(chip + "/temp2_input", "80000\n");
    static_cast<void>(device->ask(device->itemOf("temp2_input")));
    clocks.pass(1s);
    device->perform(DeviceJob::refresh);  // notes that it was asked for
    EXPECT_EQ(read("temp2_input").value, 80000);
}

TEST_F(GPUSleepTest, AStatusThatCannotBeOpenedAnewIsReadAsBefore) {
    describe();
    tree.file(pci + "/power/runtime_status", "suspended\n").remove(pci + "/power/runtime_status");
    clocks.sleep(3s);
    EXPECT_TRUE(read().isAsleep);
}

}  // namespace
}  // namespace calorivo
