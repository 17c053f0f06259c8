#include "platform/linux/HwmonNaming.h"

#include "HwmonRows.h"
#include "platform/linux/KeySlots.h"

#include <algorithm>
#include <set>

namespace calorivo {
namespace {

using namespace machines;
using testing::ElementsAre;
using testing::IsEmpty;

TEST(HwmonKeys, KeepsTheKeysOfBatteriesWhenOneIsTakenOut) {
    KeyStore store("");
    named({battery("BAT0"), battery("BAT1")}, store);
    EXPECT_EQ(rowsOf(named({battery("BAT1")}, store)),
              (Rows{"TB0T | Battery | Battery Maximum", "TB2T | Battery | Battery"}));
}

TEST(HwmonKeys, GivesTheOnlyBatteryKeysOfItsOwnWhenAnotherComes) {
    KeyStore store("");
    EXPECT_EQ(rowsOf(named({battery("BAT0")}, store)), (Rows{"TB0T | Battery | Battery"}));
    EXPECT_EQ(rowsOf(named({battery("BAT0"), battery("BAT1"), battery("BAT2")}, store)),
              (Rows{"TB0T | Battery | Battery Maximum", "TB1T | Battery | Battery 1",
                    "TB2T | Battery | Battery 2", "TN0x | Battery | Battery 3"}));
}

TEST(HwmonKeys, CountsTheCoresOfAllPackages) {
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

TEST(HwmonKeys, DropsNothingOfThousandsOfChannels) {
    const Rows many = rowsOf(manyChannels(100));
    EXPECT_EQ(many.size(), 600U);
    EXPECT_EQ(many[0], "TN0x | Logic Board | pmbus0 phase");
    EXPECT_EQ(many[599], "TNFS | Logic Board | pmbus99 phase 6");
    EXPECT_EQ(rowsOf(manyChannels(500)).size(), 3000U);
}

std::vector<std::vector<HwmonChip>> allMachines() {
    return {intelLaptop(),  amdDesktop(), machines::thinkpad(), dell(),
            appleSilicon(), server(),     manyChannels(500)};
}

TEST(HwmonKeys, SaysForWhichChannelNoKeyIsLeft) {
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

TEST(HwmonKeys, GivesOnlyKeysThatDiscoveryAcceptsAndNoNameTwice) {
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

TEST(HwmonKeys, GivesTheSameKeysInWhateverOrderChipsAndChannelsComeAndAfterAReload) {
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

TEST(HwmonKeys, KeepsKeysWhenOtherSensorsComeAndGo) {
    const auto module = [](int i) { return memoryModule(i); };
    KeyStore store("");
    EXPECT_EQ(rowsOf(named({module(2), module(4)}, store)),
              (Rows{"TM0S | Memory | DIMM 1", "TM1S | Memory | DIMM 2"}));
    EXPECT_EQ(rowsOf(named({module(1), module(4)}, store)),
              (Rows{"TM3S | Memory | DIMM 1", "TM1S | Memory | DIMM 2"}));
    EXPECT_EQ(rowsOf(named({module(1), module(2), module(4)}, store)),
              (Rows{"TM3S | Memory | DIMM 1", "TM0S | Memory | DIMM 2", "TM1S | Memory | DIMM 3"}));
}

TEST(HwmonKeys, PassesOverReservedKeys) {
    KeyStore store("");
    store.assign("TC1C", "/devices/platform/coretemp.0|coretemp|temp2|Core 0");
    for (const char* key : {"TC0D", "TC1C", "TB0T", "F0"}) store.reserve(key);
    EXPECT_EQ(rowsOf(named({coretemp(0, 2), battery("BAT0"), chip("a", "/devices/z", {fan(1)})}, store)),
              (Rows{"TB1T | Battery | Battery", "TC1D | CPU | CPU Package", "TC2C | CPU | CPU Core 1",
                    "TC3C | CPU | CPU Core 2", "F1 |  | "}));
}

TEST(HwmonKeys, GivesDiscreteGPUsSlotsThatDoNotLookLikeAPairThatTakesTurns) {
    EXPECT_EQ(
        rowsOf({amdCard("0000:01:00.0"), amdCard("0000:02:00.0", 0x67ef)}),
        (Rows{"TG1D | GPU | AMD Radeon RX 6800/6900 XT", "TG1P | GPU | AMD Radeon RX 6800/6900 XT Hot Spot",
              "TG5D | GPU | AMD Radeon RX 6800/6900 XT Memory", "F0 |  | ",
              "TG2D | GPU | AMD Radeon RX 460/560D", "TG2P | GPU | AMD Radeon RX 460/560D Hot Spot",
              "TG6D | GPU | AMD Radeon RX 460/560D Memory", "F1 |  | "}));
}

TEST(HwmonKeys, GivesAnIntegratedGPUTheFirstSlotEvenBehindACard) {
    EXPECT_EQ(
        rowsOf({amdCard("0000:01:00.0"), amdIntegrated("0000:05:00.0")}),
        (Rows{"TG1D | GPU | AMD Radeon RX 6800/6900 XT", "TG1P | GPU | AMD Radeon RX 6800/6900 XT Hot Spot",
              "TG5D | GPU | AMD Radeon RX 6800/6900 XT Memory", "F0 |  | ",
              "TG0D | GPU | AMD Radeon Vega 8"}));
}

TEST(HwmonKeys, KnowsAnUnlistedIntegratedGPUByItsScreenAndItsOneSensor) {
    HwmonChip integrated = gpu("amdgpu", "0000:05:00.0", 0x1002, 0xfff0, {temperature(1, "edge")});
    integrated.isBootVGA = true;
    EXPECT_EQ(rowsOf({amdCard("0000:01:00.0"), integrated}).back(), "TG0D | GPU | AMD GPU fff0");
}

TEST(HwmonKeys, NeverGivesTheSecondSlotBesideACardThatHasTheFirst) {
    KeyStore store("");
    named({amdCard("0000:03:00.0")}, store);
    const Rows rows = rowsOf(named({amdCard("0000:01:00.0", 0x67ef), amdCard("0000:03:00.0")}, store));
    EXPECT_EQ(rows[0], "TG2D | GPU | AMD Radeon RX 460/560D");
    EXPECT_EQ(rows[4], "TG0D | GPU | AMD Radeon RX 6800/6900 XT");
}

TEST(HwmonKeys, KeepsTheKeysOfFiveGPUsApart) {
    std::vector<HwmonChip> cards;
    for (const char* address :
         {"0000:01:00.0", "0000:02:00.0", "0000:03:00.0", "0000:04:00.0", "0000:05:00.0"})
        cards.push_back(amdCard(address));
    const Rows rows = rowsOf(cards);
    EXPECT_EQ(rows[16], "TG9D | GPU | AMD Radeon RX 6800/6900 XT 5");
    EXPECT_EQ(rows[17], "TG9P | GPU | AMD Radeon RX 6800/6900 XT Hot Spot 5");
    EXPECT_EQ(rows[18], "TGDD | GPU | AMD Radeon RX 6800/6900 XT Memory 5");
}

TEST(HwmonKeys, RemembersHostileLabels) {
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

TEST(HwmonKeys, TellsApartDevicesThatLookAlike) {
    const HwmonChip same = chip("odd", "odd", {temperature(1, "x")});
    EXPECT_THAT(rowsOf({same, same}),
                ElementsAre("TN0x | Logic Board | odd x", "TN1x | Logic Board | odd x 2"));
}

TEST(HwmonKeys, LeavesOutFansThatAreNone) {
    HwmonChannel faulty = fan(5);
    faulty.isFaulty = true;
    HwmonChannel notRead = fan(6, "", 0);
    notRead.wasRead = false;
    EXPECT_EQ(rowsOf({chip("nct6798", "/devices/platform/nct",
                           {fan(1, "", 0), fan(2, "Pump", 0), fan(3, "", 0, 300), fan(4), faulty, notRead}),
                      chip("thinkpad", "/devices/platform/tp", {fan(1, "", 65535), fan(2, "", 0)})}),
              (Rows{"F0 |  | Pump", "F1 |  | ", "F2 |  | ", "F3 |  | ", "F4 |  | "}));
}

TEST(HwmonKeys, KeepsAKnownFanThatStandsAtTheStart) {
    const auto machine = [](long speed) {
        return chip("nct6798", "/devices/platform/nct", {fan(1, "", speed), fan(2)});
    };
    KeyStore store("");
    EXPECT_EQ(rowsOf(named({machine(900)}, store)), (Rows{"F0 |  | ", "F1 |  | "}));
    EXPECT_EQ(rowsOf(named({machine(0)}, store)), (Rows{"F0 |  | ", "F1 |  | "}));
}

TEST(HwmonKeys, TakesTenFansAndGivesAwayTheNumbersOfFansThatAreGone) {
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

TEST(HwmonKeys, LeavesOutFaultyTemperaturesUntilTheyAreKnown) {
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
