#include "platform/linux/HwmonScan.h"

#include "platform/linux/Sysfs.h"
#include "support/FakeTree.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>

namespace calorivo {
namespace {

using test::FakeTree;

/// One chip in a line: its name, its lasting device path and whether that tells it from others.
std::vector<std::string> summary(const std::vector<LocatedChip>& chips) {
    std::vector<std::string> lines;
    for (const LocatedChip& chip : chips)
        lines.push_back(chip.folder + " " + chip.name + " " + chip.devicePath +
                        (chip.isPathUnique ? "" : " (alike)"));
    return lines;
}

TEST(HwmonScan, AMachineWithoutTheClassHasNoChips) {
    const FakeTree tree;
    EXPECT_TRUE(locateHwmonChips(tree.root()).empty());
    EXPECT_TRUE(locateHwmonChips(tree.root() + "/absent").empty());
}

TEST(HwmonScan, FindsChipsByTheirDevices) {
    FakeTree tree;
    tree.chip(0, "coretemp", "platform/coretemp.0");
    tree.chip(1, "nct6798", "platform/nct6775.656");
    EXPECT_EQ(summary(locateHwmonChips(tree.root())),
              (std::vector<std::string>{"/class/hwmon/hwmon0 coretemp /devices/platform/coretemp.0",
                                        "/class/hwmon/hwmon1 nct6798 /devices/platform/nct6775.656"}));
}

TEST(HwmonScan, TheNumberOfAChipIsNoPartOfItsIdentity) {
    FakeTree before;
    before.chip(0, "coretemp", "platform/coretemp.0");
    before.chip(1, "nvme", "pci0000:00/0000:02:00.0/nvme/nvme0");
    FakeTree after;
    after.chip(5, "coretemp", "platform/coretemp.0");
    after.chip(0, "nvme", "pci0000:00/0000:02:00.0/nvme/nvme3");
    const auto identities = [](const FakeTree& tree) {
        std::vector<std::string> texts;
        for (const LocatedChip& chip : locateHwmonChips(tree.root()))
            texts.push_back(chip.devicePath + "|" + chip.name);
        return texts;
    };
    EXPECT_EQ(identities(before), identities(after));
    EXPECT_EQ(identities(before), (std::vector<std::string>{"/devices/pci0000:00/0000:02:00.0|nvme",
                                                            "/devices/platform/coretemp.0|coretemp"}));
}

TEST(HwmonScan, DriversOfTheOldRegistrationHaveTheirFilesInTheDevice) {
    FakeTree tree;
    tree.file("devices/platform/applesmc.768/name", "applesmc\n");
    tree.folder("devices/platform/applesmc.768/hwmon/hwmon2");
    tree.link("devices/platform/applesmc.768/hwmon/hwmon2/device", "../../../applesmc.768");
    tree.link("class/hwmon/hwmon2", "../../devices/platform/applesmc.768/hwmon/hwmon2");
    EXPECT_EQ(
        summary(locateHwmonChips(tree.root())),
        (std::vector<std::string>{"/class/hwmon/hwmon2/device applesmc /devices/platform/applesmc.768"}));
}

TEST(HwmonScan, ZonesAndWirelessChipsAreKnownByTheirNames) {
    FakeTree tree;
    tree.chip(0, "acpitz", "virtual/thermal/thermal_zone0");
    tree.chip(1, "iwlwifi_3", "virtual/thermal/thermal_zone7");
    tree.chip(2, "mt7921_phy1", "pci0000:00/0000:03:00.0/ieee80211/phy1");
    EXPECT_EQ(summary(locateHwmonChips(tree.root())),
              (std::vector<std::string>{"/class/hwmon/hwmon2 mt7921_phy /devices/pci0000:00/0000:03:00.0",
                                        "/class/hwmon/hwmon0 acpitz acpitz (alike)",
                                        "/class/hwmon/hwmon1 iwlwifi iwlwifi (alike)"}));
}

TEST(HwmonScan, CountsChipsThatNothingTellsApart) {
    FakeTree tree;
    for (const int n : {0, 1, 2}) tree.file("class/hwmon/hwmon" + std::to_string(n) + "/name", "virt\n");
    EXPECT_EQ(summary(locateHwmonChips(tree.root())),
              (std::vector<std::string>{"/class/hwmon/hwmon0 virt virt (alike)",
                                        "/class/hwmon/hwmon1 virt virt#2 (alike)",
                                        "/class/hwmon/hwmon2 virt virt#3 (alike)"}));
}

TEST(HwmonScan, PassesOverWhatIsNoChip) {
    FakeTree tree;
    tree.folder("class/hwmon/hwmon0")
        .file("class/hwmon/README", "x")
        .link("class/hwmon/hwmon9", "../../devices/gone");
    tree.file("class/hwmon/hwmon1/name", "\n");
    EXPECT_TRUE(locateHwmonChips(tree.root()).empty());
}

TEST(HwmonScan, TheOpenFolderStaysTheChipsOwn) {
    FakeTree tree;
    tree.chip(0, "lm75", "platform/i2c-0/0-0048");
    const LocatedChip found = locateHwmonChips(tree.root()).front();
    EXPECT_EQ(readAttribute(found.files->get(), "name"), "lm75");
    tree.removeChip(0);
    tree.chip(0, "jc42", "platform/i2c-0/0-0048");
    EXPECT_EQ(readAttribute(found.files->get(), "name"), std::nullopt) << "another chip has the number now";
}

TEST(HwmonScan, DescribesChannelsWithTheirLabels) {
    FakeTree tree;
    const std::string chip = tree.chip(3, "nct6798", "platform/nct6775.656");
    tree.temperature(chip, 12, "35000", "AUXTIN ")
        .temperature(chip, 1, "30000")
        .fan(chip, 2, "900", "CPU Fan");
    tree.file(chip + "/temp3_label", "no input\n")
        .file(chip + "/temp_input", "1\n")
        .file(chip + "/tempx_input", "1\n");
    const LocatedChip located = locateHwmonChips(tree.root()).front();
    const HwmonChip described = describeHwmonChip(tree.root(), located).chip;
    using Kind = HwmonChannel::Kind;
    EXPECT_EQ(described.channels,
              (std::vector<HwmonChannel>{{Kind::temperature, 1, "", false, 0, false, 0},
                                         {Kind::temperature, 12, "AUXTIN ", false, 0, false, 0},
                                         {Kind::fan, 2, "CPU Fan", false, 0, false, 0}}));
}

HwmonChip describedOnly(const FakeTree& tree) {
    const LocatedChip located = locateHwmonChips(tree.root()).front();
    return describeHwmonChip(tree.root(), located).chip;
}

TEST(HwmonScan, KnowsTheGraphicsProcessorBehindAChip) {
    FakeTree tree;
    const std::string device = "devices/pci0000:00/0000:03:00.0";
    const std::string chip = tree.chip(0, "amdgpu", "pci0000:00/0000:03:00.0");
    tree.temperature(chip, 1, "40000", "edge");
    tree.file(device + "/class", "0x030000\n")
        .file(device + "/vendor", "0x1002\n")
        .file(device + "/device", "0x73ff\n");
    tree.file(device + "/subsystem_vendor", "0x106b\n").file(device + "/subsystem_device", "0x0123\n");
    tree.file(device + "/boot_vga", "1\n").file(device + "/power/runtime_status", "suspended\n");
    const HwmonChip described = describedOnly(tree);
    EXPECT_EQ(described.pciAddress, "0000:03:00.0");
    EXPECT_EQ(described.pciClass, 0x0300U);
    EXPECT_EQ(described.pciVendor, 0x1002U);
    EXPECT_EQ(described.pciDevice, 0x73ffU);
    EXPECT_EQ(described.pciSubvendor, 0x106bU);
    EXPECT_EQ(described.pciSubdevice, 0x0123U);
    EXPECT_TRUE(described.isBootVGA);
    EXPECT_TRUE(described.isAsleep);
}

TEST(HwmonScan, KnowsDrivesInterfacesAndSupplies) {
    FakeTree nvme;
    nvme.temperature(nvme.chip(0, "nvme", "pci0000:00/0000:02:00.0/nvme/nvme0"), 1, "37850", "Composite");
    nvme.file("devices/pci0000:00/0000:02:00.0/nvme/nvme0/model", "Sample Drive 1TB               \n");
    nvme.file("devices/pci0000:00/0000:02:00.0/nvme/nvme0/serial", "N123           \n");
    EXPECT_EQ(describedOnly(nvme).driveModel, "Sample Drive 1TB");
    EXPECT_EQ(describedOnly(nvme).driveSerial, "N123");

    FakeTree network;
    network.temperature(network.chip(0, "enp4s0", "pci0000:00/0000:04:00.0"), 1, "50000");
    network.file("devices/pci0000:00/0000:04:00.0/class", "0x020000\n");
    network.folder("devices/pci0000:00/0000:04:00.0/net/enp4s0");
    EXPECT_EQ(describedOnly(network).interfaceName, "enp4s0");

    FakeTree supply;
    supply.temperature(supply.chip(0, "BAT0", "platform/PNP0C0A:00/power_supply/BAT0"), 1, "30000");
    supply.file("devices/platform/PNP0C0A:00/power_supply/BAT0/type", "Battery\n");
    supply.file("devices/platform/PNP0C0A:00/power_supply/BAT0/scope", "System\n");
    EXPECT_EQ(describedOnly(supply).supplyType, "Battery");
    EXPECT_EQ(describedOnly(supply).supplyScope, "System");
}

TEST(HwmonScan, OnlyAnActiveDeviceMayBeRead) {
    for (const char* status : {"", "active", "unsupported"}) EXPECT_FALSE(isAsleepStatus(status)) << status;
    for (const char* status : {"suspended", "suspending", "resuming", "error"})
        EXPECT_TRUE(isAsleepStatus(status)) << status;
}

}  // namespace
}  // namespace calorivo
