#include "platform/linux/HwmonNaming.h"

#include "HwmonMachines.h"
#include "TemporaryFolder.h"
#include "platform/linux/KeySlots.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <set>

namespace calorivo {
namespace {

using namespace machines;
using testing::ElementsAre;
using testing::IsEmpty;

const std::string shippedRules = CALORIVO_SOURCE_DIR "/data/hwmon-names.conf";
constexpr std::string_view pciIds =
    "# comment\n"
    "1002  Advanced Micro Devices\n"
    "\t1638  Cezanne [Radeon Vega 8]\n"
    "\t67ef  Baffin [Radeon RX 460/560D]\n"
    "\t73bf  Navi 21 [Radeon RX 6800/6900 XT]\n"
    "8086  Intel Corporation\n"
    "\t3e9b  CoffeeLake-H GT2 [UHD Graphics 630]\n"
    "C 03  Display controller\n";

using Rows = std::vector<std::string>;

Rows rowsOf(const HwmonNames& names) {
    Rows rows;
    for (const NamedChannel& channel : names.channels)
        rows.push_back(channel.key + " | " + channel.area + " | " + channel.name);
    return rows;
}

HwmonNames named(const std::vector<HwmonChip>& chips, KeyStore& store) {
    const TemporaryFolder folder;
    HwmonNames names = nameHwmonChannels(chips, store, {shippedRules}, folder.write("pci.ids", pciIds));
    EXPECT_THAT(names.problems, IsEmpty());
    return names;
}

Rows rowsOf(const std::vector<HwmonChip>& chips) {
    KeyStore store("");
    return rowsOf(named(chips, store));
}

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

TEST(HwmonNaming, KeepsTheKeysOfBatteriesWhenOneIsTakenOut) {
    KeyStore store("");
    named({battery("BAT0"), battery("BAT1")}, store);
    EXPECT_EQ(rowsOf(named({battery("BAT1")}, store)),
              (Rows{"TB0T | Battery | Battery Maximum", "TB2T | Battery | Battery"}));
}

TEST(HwmonNaming, GivesTheOnlyBatteryKeysOfItsOwnWhenAnotherComes) {
    KeyStore store("");
    EXPECT_EQ(rowsOf(named({battery("BAT0")}, store)), (Rows{"TB0T | Battery | Battery"}));
    EXPECT_EQ(rowsOf(named({battery("BAT0"), battery("BAT1"), battery("BAT2")}, store)),
              (Rows{"TB0T | Battery | Battery Maximum", "TB1T | Battery | Battery 1",
                    "TB2T | Battery | Battery 2", "TN0x | Battery | Battery 3"}));
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

TEST(HwmonNaming, CountsTheCoresOfAllPackages) {
    const Rows rows = rowsOf(server());
    ASSERT_EQ(rows.size(), 82U);
    EXPECT_EQ(rows[0], "TC0D | CPU | CPU Package");
    EXPECT_EQ(rows[9], "TC9C | CPU | CPU Core 9");
    EXPECT_EQ(rows[10], "TCAc | CPU | CPU Core 10");
    EXPECT_EQ(rows[40], "TChc | CPU | CPU Core 40");
    EXPECT_EQ(rows[41], "TC1D | CPU | CPU Package 1");
    EXPECT_EQ(rows[42], "TCic | CPU | CPU Core 41");
    EXPECT_EQ(rows[59], "TCzc | CPU | CPU Core 58");
    EXPECT_EQ(rows[60], "TN0x | CPU | CPU Core 59");
    EXPECT_EQ(rows[81], "TNLx | CPU | CPU Core 80");
}

TEST(HwmonNaming, DropsNothingOfThousandsOfChannels) {
    const Rows many = rowsOf(manyChannels(100));
    EXPECT_EQ(many.size(), 600U);
    EXPECT_EQ(many[0], "TN0x | Logic Board | pmbus0 phase");
    EXPECT_EQ(many[599], "TNFS | Logic Board | pmbus99 phase 6");
    EXPECT_EQ(rowsOf(manyChannels(500)).size(), 3000U);
}

TEST(HwmonNaming, SaysForWhichChannelNoKeyIsLeft) {
    KeyStore store("");
    const HwmonNames names = nameHwmonChannels(manyChannels(621), store, {shippedRules}, "");
    EXPECT_EQ(names.channels.size(), 3720U);
    EXPECT_THAT(names.problems,
                ElementsAre("there is no free key for /devices/platform/i2c/1620|pmbus620|temp1|phase",
                            "there is no free key for /devices/platform/i2c/1620|pmbus620|temp2|phase",
                            "there is no free key for /devices/platform/i2c/1620|pmbus620|temp3|phase",
                            "there is no free key for /devices/platform/i2c/1620|pmbus620|temp4|phase",
                            "there is no free key for /devices/platform/i2c/1620|pmbus620|temp5|phase",
                            "there is no free key for /devices/platform/i2c/1620|pmbus620|temp6|phase"));
}

std::vector<std::vector<HwmonChip>> allMachines() {
    return {intelLaptop(),  amdDesktop(), machines::thinkpad(), dell(),
            appleSilicon(), server(),     manyChannels(500)};
}

TEST(HwmonNaming, GivesOnlyKeysThatDiscoveryAcceptsAndNoNameTwice) {
    for (const std::vector<HwmonChip>& machine : allMachines()) {
        KeyStore store("");
        std::set<std::string> keys;
        std::set<std::string> names;
        for (const NamedChannel& channel : named(machine, store).channels) {
            EXPECT_TRUE(keys.insert(channel.key).second) << channel.key;
            if (channel.area.empty()) {
                EXPECT_TRUE(isFanKey(channel.key)) << channel.key;
                continue;
            }
            ASSERT_EQ(channel.key.size(), 4U);
            EXPECT_EQ(channel.key[0], 'T') << channel.key;
            EXPECT_THAT(std::string("Gg"), testing::Not(testing::HasSubstr(channel.key.substr(3))))
                << channel.key;
            EXPECT_THAT((std::vector<std::string>{"TC0C", "TC0c", "TCAC", "TCBC"}),
                        testing::Not(testing::Contains(channel.key)));
            EXPECT_TRUE(names.insert(channel.name).second) << channel.name;
        }
    }
}

TEST(HwmonNaming, GivesTheSameKeysInWhateverOrderChipsAndChannelsComeAndAfterAReload) {
    for (std::vector<HwmonChip> machine : allMachines()) {
        const TemporaryFolder folder;
        KeyStore first(folder.path());
        first.load();
        const Rows before = rowsOf(named(machine, first));
        first.save();
        EXPECT_THAT(first.problems(), IsEmpty());

        std::ranges::reverse(machine);
        for (HwmonChip& each : machine) {
            std::ranges::reverse(each.channels);
            if (each.name == "iwlwifi_1") each.name = each.devicePath = "iwlwifi_7";
        }
        EXPECT_EQ(rowsOf(machine), before);
        KeyStore second(folder.path());
        second.load();
        EXPECT_EQ(rowsOf(named(machine, second)), before);
        EXPECT_THAT(second.problems(), IsEmpty());
    }
}

TEST(HwmonNaming, KeepsKeysWhenOtherSensorsComeAndGo) {
    const auto module = [](int i) { return memoryModule(i); };
    KeyStore store("");
    EXPECT_EQ(rowsOf(named({module(2), module(4)}, store)),
              (Rows{"TM0S | Memory | DIMM 1", "TM1S | Memory | DIMM 2"}));
    EXPECT_EQ(rowsOf(named({module(1), module(4)}, store)),
              (Rows{"TM3S | Memory | DIMM 1", "TM1S | Memory | DIMM 2"}));
    EXPECT_EQ(rowsOf(named({module(1), module(2), module(4)}, store)),
              (Rows{"TM3S | Memory | DIMM 1", "TM0S | Memory | DIMM 2", "TM1S | Memory | DIMM 3"}));
}

TEST(HwmonNaming, PassesOverReservedKeys) {
    KeyStore store("");
    store.assign("TC1C", "/devices/platform/coretemp.0|coretemp|temp2|Core 0");
    for (const char* key : {"TC0D", "TC1C", "TB0T", "F0"}) store.reserve(key);
    EXPECT_EQ(rowsOf(named({coretemp(0, 2), battery("BAT0"), chip("a", "/devices/z", {fan(1)})}, store)),
              (Rows{"TB1T | Battery | Battery", "TC1D | CPU | CPU Package", "TC2C | CPU | CPU Core 1",
                    "TC3C | CPU | CPU Core 2", "F1 |  | "}));
}

TEST(HwmonNaming, GivesDiscreteGPUsSlotsThatDoNotLookLikeAPairThatTakesTurns) {
    EXPECT_EQ(
        rowsOf({amdCard("0000:01:00.0"), amdCard("0000:02:00.0", 0x67ef)}),
        (Rows{"TG1D | GPU | AMD Radeon RX 6800/6900 XT", "TG1P | GPU | AMD Radeon RX 6800/6900 XT Hot Spot",
              "TG5D | GPU | AMD Radeon RX 6800/6900 XT Memory", "F0 |  | ",
              "TG2D | GPU | AMD Radeon RX 460/560D", "TG2P | GPU | AMD Radeon RX 460/560D Hot Spot",
              "TG6D | GPU | AMD Radeon RX 460/560D Memory", "F1 |  | "}));
}

TEST(HwmonNaming, GivesAnIntegratedGPUTheFirstSlotEvenBehindACard) {
    EXPECT_EQ(
        rowsOf({amdCard("0000:01:00.0"), amdIntegrated("0000:05:00.0")}),
        (Rows{"TG1D | GPU | AMD Radeon RX 6800/6900 XT", "TG1P | GPU | AMD Radeon RX 6800/6900 XT Hot Spot",
              "TG5D | GPU | AMD Radeon RX 6800/6900 XT Memory", "F0 |  | ",
              "TG0D | GPU | AMD Radeon Vega 8"}));
}

TEST(HwmonNaming, KnowsAnUnlistedIntegratedGPUByItsScreenAndItsOneSensor) {
    HwmonChip integrated = gpu("amdgpu", "0000:05:00.0", 0x1002, 0xfff0, {temperature(1, "edge")});
    integrated.isBootVGA = true;
    EXPECT_EQ(rowsOf({amdCard("0000:01:00.0"), integrated}).back(), "TG0D | GPU | AMD GPU fff0");
}

TEST(HwmonNaming, NeverGivesTheSecondSlotBesideACardThatHasTheFirst) {
    KeyStore store("");
    named({amdCard("0000:03:00.0")}, store);
    const Rows rows = rowsOf(named({amdCard("0000:01:00.0", 0x67ef), amdCard("0000:03:00.0")}, store));
    EXPECT_EQ(rows[0], "TG2D | GPU | AMD Radeon RX 460/560D");
    EXPECT_EQ(rows[4], "TG0D | GPU | AMD Radeon RX 6800/6900 XT");
}

TEST(HwmonNaming, NamesSixEqualGPUs) {
    std::vector<HwmonChip> cards;
    for (const char* address :
         {"0000:01:00.0", "0000:02:00.0", "0000:03:00.0", "0000:04:00.0", "0000:05:00.0"})
        cards.push_back(amdCard(address));
    const Rows rows = rowsOf(cards);
    EXPECT_EQ(rows[16], "TG9D | GPU | AMD Radeon RX 6800/6900 XT 5");
    EXPECT_EQ(rows[17], "TG9P | GPU | AMD Radeon RX 6800/6900 XT Hot Spot 5");
    EXPECT_EQ(rows[18], "TGDD | GPU | AMD Radeon RX 6800/6900 XT Memory 5");
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

TEST(HwmonNaming, RemembersHostileLabels) {
    const std::vector<HwmonChip> machine{chip("odd", "/devices/odd",
                                              {temperature(1, "a\tb\nc\\n"), temperature(2, "a\tb\nc\\\n"),
                                               temperature(3, std::string(4096, '\xfe'))})};
    const TemporaryFolder folder;
    KeyStore first(folder.path());
    const Rows before = rowsOf(named(machine, first));
    first.save();
    std::vector<HwmonChip> reversed = machine;
    std::ranges::reverse(reversed[0].channels);
    KeyStore second(folder.path());
    second.load();
    EXPECT_THAT(second.problems(), IsEmpty());
    EXPECT_EQ(rowsOf(named(reversed, second)), before);
    EXPECT_EQ(second.keyOf(identityOf(machine[0], machine[0].channels[2])), "TN2x");
}

TEST(HwmonNaming, TellsApartDevicesThatLookAlike) {
    const HwmonChip same = chip("odd", "odd", {temperature(1, "x")});
    EXPECT_THAT(rowsOf({same, same}),
                ElementsAre("TN0x | Logic Board | odd x", "TN1x | Logic Board | odd x 2"));
}

TEST(HwmonNaming, LeavesOutFansThatAreNone) {
    HwmonChannel faulty = fan(5);
    faulty.isFaulty = true;
    HwmonChannel notRead = fan(6, "", 0);
    notRead.wasRead = false;
    EXPECT_EQ(rowsOf({chip("nct6798", "/devices/platform/nct",
                           {fan(1, "", 0), fan(2, "Pump", 0), fan(3, "", 0, 300), fan(4), faulty, notRead}),
                      chip("thinkpad", "/devices/platform/tp", {fan(1, "", 65535), fan(2, "", 0)})}),
              (Rows{"F0 |  | Pump", "F1 |  | ", "F2 |  | ", "F3 |  | ", "F4 |  | "}));
}

TEST(HwmonNaming, KeepsAKnownFanThatStandsAtTheStart) {
    const auto machine = [](long speed) {
        return chip("nct6798", "/devices/platform/nct", {fan(1, "", speed), fan(2)});
    };
    KeyStore store("");
    EXPECT_EQ(rowsOf(named({machine(900)}, store)), (Rows{"F0 |  | ", "F1 |  | "}));
    EXPECT_EQ(rowsOf(named({machine(0)}, store)), (Rows{"F0 |  | ", "F1 |  | "}));
}

TEST(HwmonNaming, TakesTenFansAndGivesAwayTheNumbersOfFansThatAreGone) {
    const auto fans = [](int from, int to) {
        HwmonChip result = chip("big", "/devices/big", {});
        for (int i = from; i <= to; ++i) result.channels.push_back(fan(i, "fan_" + std::to_string(i)));
        return result;
    };
    KeyStore store("");
    EXPECT_EQ(rowsOf(named({fans(1, 12)}, store)).size(), 10U);
    EXPECT_EQ(rowsOf(named({fans(9, 12)}, store)),
              (Rows{"F8 |  | fan 9", "F9 |  | fan 10", "F0 |  | fan 11", "F1 |  | fan 12"}));
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

TEST(HwmonNaming, LeavesOutFaultyTemperaturesUntilTheyAreKnown) {
    const auto machine = [](bool isFaulty) {
        HwmonChip result = chip("odd", "/devices/odd", {temperature(1, "x")});
        result.channels[0].isFaulty = isFaulty;
        return std::vector{result};
    };
    KeyStore store("");
    EXPECT_THAT(rowsOf(named(machine(true), store)), IsEmpty());
    EXPECT_THAT(rowsOf(named(machine(false), store)), ElementsAre("TN0x | Logic Board | odd x"));
    EXPECT_THAT(rowsOf(named(machine(true), store)), ElementsAre("TN0x | Logic Board | odd x"));
}

TEST(HwmonNaming, NamesNothingWithoutRules) {
    KeyStore store("");
    EXPECT_EQ(rowsOf(nameHwmonChannels(intelLaptop(), store, {}, "")), Rows{});
}

TEST(HwmonChip, HasAnIdentityWithoutNumbersThatMove) {
    HwmonChip card = chip("iwlwifi_3", "iwlwifi_3", {temperature(1)});
    EXPECT_EQ(identityOf(card, card.channels[0]), "iwlwifi|iwlwifi|temp1|");
    card.devicePath = "/devices/pci/net_2";
    EXPECT_EQ(identityOf(card, card.channels[0]), "/devices/pci/net_2|iwlwifi|temp1|");
    HwmonChip processor = coretemp(0, 1);
    EXPECT_EQ(identityOf(processor, processor.channels[1]),
              "/devices/platform/coretemp.0|coretemp|temp2|Core 0");
    EXPECT_EQ(identityOf(chip("nct6798", "/d", {}), fan(12, "cpu ")), "/d|nct6798|fan12|cpu ");
}

}  // namespace
}  // namespace calorivo
