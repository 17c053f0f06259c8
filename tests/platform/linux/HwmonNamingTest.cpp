#include "platform/linux/HwmonNaming.h"

#include "HwmonRows.h"

namespace calorivo {
namespace {

using namespace machines;
using testing::ElementsAre;
using testing::IsEmpty;

TEST(HwmonNaming, NamesAnIntelLaptopWithTwoGPUs) {
    EXPECT_EQ(rowsOf(intelLaptop()), (Rows{
                                         "TB0T | Battery | Battery",
                                         "TG0D | GPU | Intel UHD Graphics 630",
                                         "TH0A | Hard Drive | Fast Drive 512",
                                         "TG1D | GPU | AMD Radeon RX 460/560D",
                                         "TG1P | GPU | AMD Radeon RX 460/560D Hot Spot",
                                         "TG5D | GPU | AMD Radeon RX 460/560D Memory",
                                         "F0 |  | ",
                                         "TC0D | CPU | CPU Package",
                                         "TC1C | CPU | CPU Core 1",
                                         "TC2C | CPU | CPU Core 2",
                                         "TC3C | CPU | CPU Core 3",
                                         "TC4C | CPU | CPU Core 4",
                                         "TA0P | Logic Board | Thermal Zone 1",
                                         "TN0x | Logic Board | Thermal Zone 2",
                                         "TW0P | Wireless | Wi-Fi",
                                         "TPCD | Logic Board | PCH",
                                     }));
}

TEST(HwmonNaming, NamesAnAMDDesktop) {
    EXPECT_EQ(rowsOf(amdDesktop()), (Rows{
                                        "TH0A | Hard Drive | Solid 2TB",
                                        "TH0B | Hard Drive | Solid 2TB 2",
                                        "TM0S | Memory | DIMM 1",
                                        "TM1S | Memory | DIMM 2",
                                        "TM3S | Memory | DIMM 3",
                                        "TM4S | Memory | DIMM 4",
                                        "TCXr | CPU Relative | CPU Control (Tctl)",
                                        "TC0D | CPU | CPU Die",
                                        "TC1C | CPU | CPU CCD 1",
                                        "TC2C | CPU | CPU CCD 2",
                                        "TG0D | GPU | AMD Radeon RX 6800/6900 XT",
                                        "TG0P | GPU | AMD Radeon RX 6800/6900 XT Hot Spot",
                                        "TG4D | GPU | AMD Radeon RX 6800/6900 XT Memory",
                                        "F0 |  | ",
                                        "TA0P | Logic Board | Motherboard",
                                        "TC0H | CPU | CPU Socket",
                                        "TS0p | Logic Board | Board Sensor 1",
                                        "TS2p | Logic Board | Board Sensor 2",
                                        "TN0x | Logic Board | Board Sensor 3",
                                        "TPCD | Logic Board | Chipset",
                                        "TN1x | Logic Board | PCH CPU TEMP",
                                        "TN2x | Logic Board | CPU PECI",
                                        "TN3x | Logic Board | Board Sensor 4",
                                        "F1 |  | ",
                                        "F2 |  | ",
                                    }));
}

TEST(HwmonNaming, TakesTctlForTheProcessorWhereThereIsNoDieSensor) {
    EXPECT_THAT(rowsOf({chip("k10temp", "/devices/a", {temperature(1, "Tctl")})}),
                ElementsAre("TC0D | CPU | CPU"));
    EXPECT_THAT(rowsOf({chip("k10temp", "/devices/a", {temperature(1)})}), ElementsAre("TC0D | CPU | CPU"));
}

TEST(HwmonNaming, LeavesOutK10tempBesideZenpowerOnTheSameDevice) {
    EXPECT_THAT(
        rowsOf({chip("k10temp", "/devices/a", {temperature(1, "Tctl")}),
                chip("zenpower", "/devices/a", {temperature(1, "Tdie"), temperature(2, "Tctl")}),
                chip("k10temp", "/devices/b", {temperature(1, "Tctl")})}),
        ElementsAre("TC0D | CPU | CPU Die", "TCXr | CPU Relative | CPU Control (Tctl)", "TC1D | CPU | CPU"));
}

TEST(HwmonNaming, NamesAThinkPadWhoseControllerRepeatsOtherChips) {
    EXPECT_EQ(rowsOf(machines::thinkpad()), (Rows{
                                                "TC0D | CPU | CPU Package",
                                                "TC1C | CPU | CPU Core 1",
                                                "TC2C | CPU | CPU Core 2",
                                                "TN0x | Logic Board | ThinkPad CPU",
                                                "TG0P | GPU | ThinkPad GPU",
                                                "TN1x | Logic Board | ThinkPad Sensor 3",
                                                "TN2x | Logic Board | ThinkPad Sensor 4",
                                                "F0 |  | ",
                                                "TN3x | Logic Board | Thermal Zone 1",
                                            }));
}

TEST(HwmonNaming, LeavesOutThinkPadSensorsThatDoNotExist) {
    HwmonChannel absent = temperature(3);
    absent.wasRead = false;
    EXPECT_THAT(rowsOf({chip("thinkpad", "/devices/t", {temperature(1), absent})}),
                ElementsAre("TC0P | CPU | ThinkPad Sensor 1"));
}

TEST(HwmonNaming, NamesADellWithTwoBatteriesAndTwoWirelessCards) {
    const HwmonNames names = [] {
        KeyStore store("");
        return named(dell(), store);
    }();
    EXPECT_EQ(rowsOf(names), (Rows{
                                 "TB0T | Battery | Battery Maximum",
                                 "TB1T | Battery | Battery 1",
                                 "TB2T | Battery | Battery 2",
                                 "Te1S | PCI | enp2s0 NIC",
                                 "TC0P | CPU | CPU",
                                 "TG0P | GPU | GPU",
                                 "TM0S | Memory | SODIMM",
                                 "TA0P | Logic Board | Ambient",
                                 "TS0p | Logic Board | Other",
                                 "TS2p | Logic Board | Other 2",
                                 "TN0x | Logic Board | Other 3",
                                 "F0 |  | Processor Fan",
                                 "F1 |  | Other Fan",
                                 "TW0P | Wireless | Wi-Fi",
                                 "TW1x | Wireless | Wi-Fi 2",
                             }));
    EXPECT_EQ(names.channels[0], (NamedChannel{.chip = 1,
                                               .channel = 0,
                                               .key = "TB0T",
                                               .name = "Battery Maximum",
                                               .area = "Battery",
                                               .maximumOf = {{2, 0}}}));
}

TEST(HwmonNaming, LeavesOutSuppliesThatAreNoBatteriesOfTheMachine) {
    HwmonChip mains = battery("ADP1");
    mains.supplyType = "Mains";
    EXPECT_THAT(rowsOf({mains, battery("wacom_battery_0", "Device")}), IsEmpty());
}

TEST(HwmonNaming, NamesAnAppleSiliconLaptop) {
    const Rows expected{
        "TH0A | Hard Drive | NAND Flash",         "TB0T | Battery | Battery Hotspot",
        "Tp0C | Power Supply | Charge Regulator", "TW0P | Wireless | WiFi/BT Module",
        "TN0x | Logic Board | Palm Area",         "F0 |  | Left Fan",
    };
    EXPECT_EQ(rowsOf(appleSilicon()), expected);
    std::vector<HwmonChip> withoutKeys = appleSilicon();
    withoutKeys[0].labelKeys.clear();
    EXPECT_EQ(rowsOf(withoutKeys), expected);
}

TEST(HwmonNaming, TakesTheControllersOwnKeyForALabelThatSaysNothing) {
    HwmonChip controller = chip("macsmc_hwmon", "/devices/smc", {temperature(1, "Hotspot Temp")});
    controller.labelKeys = {{"Hotspot Temp", "TB0T"}};
    EXPECT_THAT(rowsOf({controller}), ElementsAre("TB0T | Battery | Hotspot"));
}

TEST(HwmonNaming, NamesTheTwoSensorsOfIntelsNewerDriver) {
    EXPECT_EQ(
        rowsOf({gpu("xe", "0000:03:00.0", 0x8086, 0x56a0, {temperature(2, "pkg"), temperature(3, "vram")})}),
        (Rows{"TG0D | GPU | Intel GPU 56a0", "TG4D | GPU | Intel GPU 56a0 Memory"}));
}

TEST(HwmonNaming, TellsChipsWithoutLabelsByNumbers) {
    EXPECT_EQ(rowsOf({chip("it8728", "/devices/platform/it87.552",
                           {temperature(1), temperature(2), temperature(3, "", 127000), temperature(4)})}),
              (Rows{"TA0P | Logic Board | Board Sensor 1", "TC0H | Logic Board | Board Sensor 2",
                    "TS0p | Logic Board | Board Sensor 3"}));
}

TEST(HwmonNaming, TellsFreeLabelsByTheirWords) {
    EXPECT_EQ(
        rowsOf({chip("hp_wmi_sensors", "/devices/wmi",
                     {temperature(1, "CPU0"), temperature(2, "Ambient"), temperature(3, "CPU VRM"),
                      temperature(4, "PSU 1"), temperature(5, "P1 DIMM Channel 2"), temperature(6, "GPU"),
                      temperature(7, "Battery"), temperature(8, "Chassis"), temperature(9)})}),
        (Rows{"TC0P | CPU | CPU0", "TA0P | Logic Board | Ambient", "Tp0P | Logic Board | CPU VRM",
              "Tp0C | Power Supply | PSU 1", "TM0S | Memory | P1 DIMM Channel 2", "TG0P | GPU | GPU",
              "TB0T | Battery | Battery", "TN0x | Logic Board | Chassis",
              "TN1x | Logic Board | hp_wmi_sensors temp9"}));
}

TEST(HwmonNaming, TakesTheProcessorFromTheMainboardOnlyWithoutItsOwnDriver) {
    const HwmonChip board = chip("nct6775", "/devices/platform/nct", {temperature(1, "PECI Agent 0")});
    EXPECT_THAT(rowsOf({board}), ElementsAre("TCXC | CPU | CPU PECI"));
    EXPECT_THAT(rowsOf({board, chip("k10temp", "/devices/z", {temperature(1)})}),
                ElementsAre("TN0x | Logic Board | CPU PECI", "TC0D | CPU | CPU"));
}

TEST(HwmonNaming, CleansHostileLabels) {
    const std::string invalid = "50%n %s\xff\xc3(\x1b[31m";
    const Rows rows = rowsOf({chip(
        "odd", "/devices/odd",
        {temperature(1, invalid), temperature(2, "two\nlines\tand\r"), temperature(3, std::string(4096, 'x')),
         temperature(4, " \x01 "), temperature(5, "{gpu}"), temperature(6, "\xe2\x80\xaeright")})});
    EXPECT_EQ(rows, (Rows{
                        "TN0x | Logic Board | odd 50%n %s\xef\xbf\xbd\xef\xbf\xbd( [31m",
                        "TN1x | Logic Board | odd two lines and",
                        "TN2x | Logic Board | odd " + std::string(96, 'x') + "\xe2\x80\xa6",
                        "TN3x | Logic Board | odd temp4",
                        "TN4x | Logic Board | odd {gpu}",
                        "TN5x | Logic Board | odd right",
                    }));
}

TEST(HwmonNaming, LetsAUsersFileWin) {
    const TemporaryFolder folder;
    const std::string own = folder.write("own.conf",
                                         "coretemp temp* \"Core 1\" skip\n"
                                         "coretemp temp2 * TZ9z \"Palm Rest\" \"Hot {label}\"\n"
                                         "coretemp temp9 * nonsense CPU x\n"
                                         "absent temp9 * nonsense CPU x\n"
                                         "* fan1 * fan - \"CPU {label}\"\n");
    HwmonChip processor = coretemp(0, 3);
    processor.channels.push_back(fan(1, "front_fan"));
    KeyStore store("");
    const HwmonNames names =
        nameHwmonChannels({processor}, store, {shippedRules, folder.path("absent"), own}, "");
    EXPECT_EQ(rowsOf(names), (Rows{"TC0D | CPU | CPU Package", "TZ9z | Palm Rest | Hot Core 0",
                                   "TC1C | CPU | CPU Core 1", "F0 |  | CPU front fan"}));
    EXPECT_THAT(names.problems, ElementsAre(own + ":3: unknown kind of sensor \"nonsense\""));
}

TEST(HwmonNaming, NamesNothingWithoutRules) {
    KeyStore store("");
    EXPECT_EQ(rowsOf(nameHwmonChannels(intelLaptop(), store, {}, "")), Rows{});
}

}  // namespace
}  // namespace calorivo
