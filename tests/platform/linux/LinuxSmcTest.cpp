#include "platform/linux/LinuxSmc.h"

#include "platform/Format.h"
#include "smc/SmcClient.h"
#include "smc/SmcReaders.h"
#include "support/FakeTree.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <sstream>

namespace calorivo {
namespace {

using test::FakeTree;

/// A recorded machine behind the module's own calls. Every reading is taken anew.
class LinuxSmcTest : public testing::Test {
  protected:
    ~LinuxSmcTest() override {
        smcSetIOKit(nullptr);
        smcSetOutput(nullptr);
    }
    int open(bool isUsingAllChips = false) {
        LinuxSmcOptions options;
        options.sys = tree.root();
        options.stateFolder = stateFolder;
        options.namingFiles = {std::string(CALORIVO_SOURCE_DIR) + "/data/hwmon-names.conf"};
        options.pciIds = tree.path("pci.ids");
        options.isUsingAllChips = isUsingAllChips;
        options.minimumAge = std::chrono::milliseconds(0);
        options.patience = std::chrono::minutes(1);  // on a busy machine, too, each reading is the new one
        smc = std::make_unique<LinuxSmc>(options);
        smcSetIOKit(smc.get());
        smcSetOutput(stderr);
        return smcOpen();
    }
    /// All keys in their order, with what they read: "TC0D sp78 45.25".
    std::vector<std::string> keys() const {
        std::vector<std::string> lines;
        for (int i = 0; i < smcKeyCount(); ++i) {
            std::uint32_t packed = 0;
            if (smcReadKeyByIndex(static_cast<std::uint32_t>(i), packed) != 0) continue;
            const std::string key = smcKeyToString(packed);
            SmcValue value;
            if (smcReadKey(key, value) != 0) {
                lines.push_back(key + " fails");
            } else if (value.hasType("sp78")) {
                lines.push_back(key + " " + shortestText(smcTemperature(key)));
            } else if (value.hasType("fpe2")) {
                lines.push_back(key + format(" %d rpm", smcFanSpeed(key)));
            } else {
                lines.push_back(key + " " + std::string(value.dataType.data()));
            }
        }
        return lines;
    }
    std::vector<std::string> names() const {
        std::vector<std::string> lines;
        for (const ModelTableEntry& entry : smc->machineSensors())
            lines.push_back(entry.key + " " + entry.area + ": " + entry.name);
        return lines;
    }

    FakeTree tree;
    std::string stateFolder;
    std::unique_ptr<LinuxSmc> smc;
};

TEST_F(LinuxSmcTest, AMachineWithoutSensorsHasNoController) {
    EXPECT_EQ(open(), 1);
    EXPECT_EQ(smc->sourceName(), "none");
    EXPECT_EQ(smcKeyCount(), 0);
    EXPECT_EQ(smcTemperature("TC0D"), 0.0);
    tree.folder("class/hwmon");
    EXPECT_EQ(open(), 1);
}

class DesktopTest : public LinuxSmcTest {
  protected:
    DesktopTest() {
        cpu = tree.chip(0, "k10temp", "pci0000:00/0000:00:18.3");
        tree.temperature(cpu, 1, "47125", "Tctl").temperature(cpu, 3, "44500", "Tccd1");
        board = tree.chip(1, "nct6798", "platform/nct6775.656");
        tree.temperature(board, 1, "33000", "SYSTIN").temperature(board, 2, "-62000", "CPUTIN");
        tree.fan(board, 2, "1180").file(board + "/fan2_min", "0\n").fan(board, 3, "0");
        tree.fan(board, 7, "9120", "Pump");
        gpuDevice = "devices/pci0000:00/0000:03:00.0";
        gpu = tree.chip(2, "amdgpu", "pci0000:00/0000:03:00.0");
        tree.file(gpuDevice + "/class", "0x030000\n").file(gpuDevice + "/vendor", "0x1002\n");
        tree.file(gpuDevice + "/device", "0x73ff\n").file(gpuDevice + "/power/runtime_status", "suspended\n");
        tree.temperature(gpu, 1, "51000", "edge").temperature(gpu, 2, "60000", "junction");
        tree.file("pci.ids", "1002  Maker\n\t73ff  Navi 23 [Radeon RX 6600]\n");
        const std::string drive = tree.chip(3, "drivetemp", "pci0000:00/0000:00:17.0/ata1/0:0:0:0");
        tree.temperature(drive, 1, "38000");
        tree.file("class/dmi/id/product_name", "System Product Name\n")
            .file("class/dmi/id/board_name", "X570-P\n");
    }

    std::string cpu;
    std::string board;
    std::string gpu;
    std::string gpuDevice;
};

TEST_F(DesktopTest, HasAKeyForEveryChannel) {
    ASSERT_EQ(open(), 0);
    EXPECT_EQ(smc->sourceName(), "hwmon");
    EXPECT_EQ(smc->modelName(), "X570-P");
    EXPECT_EQ(keys(), (std::vector<std::string>{"#KEY ui32", "F0Ac 1180 rpm", "F0Mn 0 rpm", "F0Mx 0 rpm",
                                                "F1Ac 9120 rpm", "F1ID {fds", "F1Mn 0 rpm", "F1Mx 0 rpm",
                                                "FNum ui8 ", "FS!  ui16", "TA0P 33", "TC0D 47.25",
                                                "TC1C 44.5", "TG0D 0", "TG0P 0"}))
        << "the third fan and the second temperature are empty connectors";
    EXPECT_EQ(names(), (std::vector<std::string>{
                           "TC0D CPU: CPU", "TC1C CPU: CPU CCD 1", "TG0D GPU: AMD Radeon RX 6600",
                           "TG0P GPU: AMD Radeon RX 6600 Hot Spot", "TA0P Logic Board: Motherboard"}));
}

TEST_F(DesktopTest, ReadsNewValuesFromTheOpenFiles) {
    ASSERT_EQ(open(), 0);
    EXPECT_EQ(smcTemperature("TC0D"), 47.25);
    tree.file(cpu + "/temp1_input", "90000\n");
    EXPECT_EQ(smcTemperature("TC0D"), 90.0);
    tree.file(cpu + "/temp1_input", "6280000\n");
    EXPECT_EQ(smcTemperature("TC0D"), 0.0);
    tree.file(cpu + "/temp1_input", "-19\n");
    EXPECT_EQ(smcTemperature("TC0D"), 0.0);
    tree.file(cpu + "/temp1_input", "119990\n");
    EXPECT_EQ(smcTemperature("TC0D"), 119.75);
    EXPECT_EQ(smcTemperature("TC1C"), 44.5);
}

TEST_F(DesktopTest, ASleepingGPUAnswersZeroAndIsNotRead) {
    ASSERT_EQ(open(), 0);
    SmcValue value;
    EXPECT_EQ(smcReadKey("TG0D", value), 0);
    EXPECT_TRUE(value.hasType("sp78"));
    EXPECT_EQ(value.dataSize, 2U);
    EXPECT_EQ(smcTemperature("TG0D"), 0.0);
    tree.file(gpuDevice + "/power/runtime_status", "active\n");
    EXPECT_EQ(smcTemperature("TG0D"), 51.0);
}

TEST_F(DesktopTest, AFanSpeedNeverChangesItsLengthInTheMiddleOfAReading) {
    ASSERT_EQ(open(), 0);
    EXPECT_EQ(smcFanSpeed("F1Ac"), 9120);
    tree.file(board + "/fan7_input", "2000\n");
    EXPECT_EQ(smcFanSpeed("F1Ac"), 2000);
    tree.file(board + "/fan7_input", "not a number\n");
    EXPECT_EQ(smcFanSpeed("F1Ac"), -1);
}

TEST_F(DesktopTest, AFanWithoutALabelHasNoIdentificationToRead) {
    ASSERT_EQ(open(), 0);
    SmcValue value;
    EXPECT_NE(smcReadKey("F0ID", value), 0);
    EXPECT_EQ(smcReadKey("F1ID", value), 0);
    EXPECT_STREQ(reinterpret_cast<const char*>(value.bytes.data()) + 4, "Pump");
}

TEST_F(DesktopTest, RefusesToWrite) {
    ASSERT_EQ(open(), 0);
    smcSetFanSpeed("F0Mn", 1500);
    EXPECT_EQ(smc->writeCount(), 1U);
    EXPECT_EQ(smcFanSpeed("F0Mn"), 0);
}

TEST_F(DesktopTest, KeysSurviveRenumberingAndNewDevices) {
    const FakeTree state;
    stateFolder = state.path("calorivo");
    ASSERT_EQ(open(), 0);
    const auto before = names();
    for (const int number : {0, 1, 2, 3}) tree.removeChip(number);
    tree.temperature(tree.chip(0, "coretemp", "platform/coretemp.0"), 2, "20000", "Core 0");
    cpu = tree.chip(5, "k10temp", "pci0000:00/0000:00:18.3");
    tree.temperature(cpu, 1, "48000", "Tctl").temperature(cpu, 3, "45000", "Tccd1");
    ASSERT_EQ(open(), 0);
    EXPECT_EQ(smcTemperature("TC0D"), 48.0);
    EXPECT_EQ(smcTemperature("TC1C"), 45.0) << "not the new chip's first core";
    EXPECT_EQ(smcTemperature("TC2C"), 20.0);
}

TEST_F(DesktopTest, AFanThatIsGoneLeavesNoEmptyOneBehind) {
    const FakeTree state;
    stateFolder = state.path("calorivo");
    ASSERT_EQ(open(), 0);
    ASSERT_EQ(smcFanCount(), 2);
    tree.remove(board + "/fan2_input");
    ASSERT_EQ(open(), 0);
    EXPECT_EQ(smcFanCount(), 1);
    EXPECT_EQ(smcFanSpeed("F0Ac"), 9120);
}

TEST_F(DesktopTest, TellsWhereAValueComesFrom) {
    ASSERT_EQ(open(), 0);
    const auto origin = smc->originOf("TC0D");
    ASSERT_TRUE(origin);
    EXPECT_EQ(origin->device, "k10temp at /devices/pci0000:00/0000:00:18.3");
    EXPECT_EQ(origin->file, tree.root() + "/class/hwmon/hwmon0/temp1_input");
    EXPECT_EQ(origin->content, "47125");
    EXPECT_NE(smc->originOf("TG0D")->note.find("asleep"), std::string::npos);
    tree.file(cpu + "/temp3_input", "-62000\n");
    static_cast<void>(smcTemperature("TC1C"));
    EXPECT_NE(smc->originOf("TC1C")->note.find("not used"), std::string::npos);
    EXPECT_FALSE(smc->originOf("TZZZ"));
}

class MacTest : public LinuxSmcTest {
  protected:
    MacTest() {
        files = "devices/platform/applesmc.768";
        tree.file(files + "/name", "applesmc\n").folder(files + "/hwmon/hwmon1");
        tree.link(files + "/hwmon/hwmon1/device", "../../../applesmc.768");
        tree.link("class/hwmon/hwmon1", "../../" + files + "/hwmon/hwmon1");
        tree.temperature(files, 1, "60250", "TC0P").temperature(files, 2, "49500", "TG0D");
        tree.temperature(files, 3, "-127000", "Ts0P").temperature(files, 4, "30000", "odd label");
        tree.fan(files, 1, "2000", "Left side  ")
            .file(files + "/fan1_min", "1200\n")
            .file(files + "/fan1_max", "6200\n");
        tree.file(files + "/fan1_safe", "nothing\n")
            .file(files + "/fan1_output", "2100\n")
            .file(files + "/fan1_manual", "1\n");
        tree.temperature(tree.chip(0, "coretemp", "platform/coretemp.0"), 1, "61000", "Package id 0");
    }
    std::string files;
};

TEST_F(MacTest, ShowsTheControllersOwnKeysOnly) {
    ASSERT_EQ(open(), 0);
    EXPECT_EQ(smc->sourceName(), "applesmc");
    EXPECT_EQ(keys(), (std::vector<std::string>{"#KEY ui32", "F0Ac 2000 rpm", "F0ID {fds", "F0Mn 1200 rpm",
                                                "F0Mx 6200 rpm", "F0Sf fails", "F0Tg 2100 rpm", "FNum ui8 ",
                                                "FS!  ui16", "TC0P 60.25", "TG0D 48.5", "Ts0P -127"}));
    EXPECT_TRUE(smc->machineSensors().empty());
    SmcValue forced;
    EXPECT_EQ(smcReadKey("FS! ", forced), 0);
    EXPECT_EQ(forced.bytes[1], 1);
}

TEST_F(MacTest, ShowsTheOtherChipsWhenAskedFor) {
    ASSERT_EQ(open(true), 0);
    EXPECT_EQ(names(), (std::vector<std::string>{"TC0D CPU: CPU Package"}));
    EXPECT_EQ(smcTemperature("TC0D"), 61.0);
    EXPECT_EQ(smcTemperature("TC0P"), 60.25);
    EXPECT_EQ(smcFanCount(), 1);
}

TEST_F(LinuxSmcTest, AProblemInTheRulesIsTold) {
    tree.temperature(tree.chip(0, "lm75", "platform/i2c-0/0-0048"), 1, "25000");
    tree.file("bad.conf", "lm75 temp1 * nonsense \"Logic Board\" Inlet\n");
    LinuxSmcOptions options;
    options.sys = tree.root();
    options.namingFiles = {std::string(CALORIVO_SOURCE_DIR) + "/data/hwmon-names.conf",
                           tree.path("bad.conf")};
    LinuxSmc provider(options);
    smcSetIOKit(&provider);
    ASSERT_EQ(smcOpen(), 0);
    ASSERT_EQ(provider.problems().size(), 1U);
    EXPECT_EQ(provider.problems()[0].find(tree.path("bad.conf") + ":1: "), 0U) << provider.problems()[0];
    EXPECT_EQ(smcKeyCount(), 4) << "#KEY, FNum, FS!, and the sensor by the rule that is left";
}

}  // namespace
}  // namespace calorivo
