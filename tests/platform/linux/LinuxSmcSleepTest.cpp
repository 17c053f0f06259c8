#include "FakeMachineClocks.h"
#include "platform/linux/LinuxSmc.h"
#include "smc/SmcClient.h"
#include "smc/SmcReaders.h"
#include "support/FakeTree.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>

// A sleep of the machine, as whoever asks for values goes through it.

namespace calorivo {
namespace {

using namespace std::chrono_literals;
using test::FakeTree;

class LinuxSmcSleepTest : public testing::Test {
  protected:
    LinuxSmcSleepTest() {
        cpu = tree.chip(0, "k10temp", "pci0000:00/0000:00:18.3");
        tree.temperature(cpu, 1, "47000", "Tctl");
        board = tree.chip(1, "nct6798", "platform/nct6775.656");
        tree.temperature(board, 1, "33000", "SYSTIN").fan(board, 1, "1180");
    }
    ~LinuxSmcSleepTest() override {
        clocks.release();
        smcSetIOKit(nullptr);
    }
    void open(std::chrono::milliseconds patience = 1min) {
        LinuxSmcOptions options;
        options.sys = tree.root();
        options.namingFiles = {std::string(CALORIVO_SOURCE_DIR) + "/data/hwmon-names.conf"};
        options.patience = patience;
        options.clocks = clocks.clocks();
        smc = std::make_unique<LinuxSmc>(options);
        smcSetIOKit(smc.get());
        ASSERT_EQ(smcOpen(), 0);
        ASSERT_EQ(smcTemperature("TC0D"), 47.0);
        ASSERT_EQ(smcTemperature("TA0P"), 33.0);
    }

    FakeTree tree;
    test::FakeMachineClocks clocks;
    std::string cpu;
    std::string board;
    std::unique_ptr<LinuxSmc> smc;
};

TEST_F(LinuxSmcSleepTest, TheFirstRequestAfterItReadsAnew) {
    open();
    tree.file(cpu + "/temp1_input", "60000\n").file(board + "/temp1_input", "41000\n");
    EXPECT_EQ(smcTemperature("TC0D"), 47.0) << "just read";
    clocks.sleep(300ms);
    EXPECT_EQ(smcTemperature("TC0D"), 60.0);
    EXPECT_EQ(smcTemperature("TA0P"), 41.0);
}

TEST_F(LinuxSmcSleepTest, EveryChipIsFoundAgainWhenTheNumbersHaveMoved) {
    open();
    tree.removeChip(0).removeChip(1);
    clocks.sleep(8h);
    board = tree.chip(0, "nct6798", "platform/nct6775.656");
    tree.temperature(board, 1, "35000", "SYSTIN").fan(board, 1, "900");
    tree.temperature(tree.chip(5, "k10temp", "pci0000:00/0000:00:18.3"), 1, "39000", "Tctl");
    EXPECT_EQ(smcTemperature("TC0D"), 39.0);
    EXPECT_EQ(smcTemperature("TA0P"), 35.0);
    EXPECT_EQ(smcFanSpeed("F0Ac"), 900);
}

TEST_F(LinuxSmcSleepTest, AChipThatIsStillAwayHasNoValueUntilItIsBack) {
    open();
    tree.removeChip(0);
    clocks.sleep(3s);
    EXPECT_EQ(smcTemperature("TC0D"), 0.0);
    EXPECT_EQ(smcTemperature("TA0P"), 33.0);
    tree.temperature(tree.chip(2, "k10temp", "pci0000:00/0000:00:18.3"), 1, "39000", "Tctl");
    clocks.pass(2s);
    EXPECT_EQ(smcTemperature("TC0D"), 39.0);
}

TEST_F(LinuxSmcSleepTest, FirstReadingsThatFailOrMakeNoSenseGiveNoValue) {
    open();
    clocks.sleep(3s);
    for (const char* const text : {"", "-274000\n", "255000\n"}) {
        tree.file(cpu + "/temp1_input", text);
        EXPECT_EQ(smcTemperature("TC0D"), 0.0) << text;
        clocks.pass(1s);
    }
    tree.file(cpu + "/temp1_input", "48000\n");
    EXPECT_EQ(smcTemperature("TC0D"), 48.0);
}

TEST_F(LinuxSmcSleepTest, WhatWasBeingReadAsTheMachineFellAsleepIsReadAgain) {
    open();
    clocks.pass(1s);
    clocks.afterLooks({[this] { clocks.sleep(3s); }, [] {},
                       [this] {
                           tree.file(cpu + "/temp1_input", "60000\n");
                           tree.file(board + "/temp1_input", "41000\n");
                       }});
    EXPECT_EQ(smcTemperature("TC0D"), 60.0);
    EXPECT_EQ(smcTemperature("TA0P"), 41.0);
}

TEST_F(LinuxSmcSleepTest, AChipThatHangsKeepsItsLastValueOnlyWhileTheMachineIsAwake) {
    open(5ms);
    clocks.hold();
    clocks.pass(1s);
    EXPECT_EQ(smcTemperature("TC0D"), 47.0) << "a second old, and no newer one comes";
    clocks.sleep(3s);
    EXPECT_EQ(smcTemperature("TC0D"), 0.0) << "not four seconds old, but from before the sleep";
    clocks.pass(1s);
    EXPECT_EQ(smcTemperature("TC0D"), 0.0);
}

}  // namespace
}  // namespace calorivo
