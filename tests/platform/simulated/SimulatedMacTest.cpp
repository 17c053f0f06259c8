#include "platform/simulated/SimulatedMac.h"

#include "platform/simulated/Connection.h"
#include "platform/simulated/SimulatedKeys.h"
#include "smc/SmcReaders.h"
#include "support/VirtualDispatch.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <cmath>
#include <map>
#include <string>
#include <vector>

namespace calorivo::test {
namespace {

using namespace std::chrono_literals;
using testing::AllOf;
using testing::Ge;
using testing::Gt;
using testing::Le;
using testing::Lt;

constexpr std::string_view goldenKeys =
    "#KEY ACID ALSF B0AV B0FC B0St BATP BNum CLKH F0Ac F0ID F0Mn F0Mx F0Sf F0Tg F1Ac F1ID F1Mn F1Mx F1Sf "
    "F1Tg "
    "FNum FS!  LSOF MSLD NATJ PC0C PDTR REV  RPlt TA0P TA0p TB0T TB1T TB2T TC0D TC0E TC0F TC0G TC0J TC0P "
    "TC1C "
    "TC2C TC3C TC4C TCGC TCGc TCSA TCXC TCXc TCXr TG0D TG0P TG1D TG1P TG1d TH0A TH0B THSP TI0P TI1P TM0P "
    "TM0S "
    "TM1P TM1S TN0D TN0P TPCD TS0p TW0P Ta0P Th1H Th2H Tm0P Tp0C Ts0P Ts0S Ts1P Ts1S VP0R ";

std::vector<std::string> keysByIndex() {
    std::vector<std::string> keys;
    std::uint32_t key = 0;
    for (std::uint32_t i = 0; smcReadKeyByIndex(i, key) == io_return::success; ++i)
        keys.push_back(smcKeyToString(key));
    return keys;
}

/// The keys of readable temperatures, without the probe that the machine was built without.
std::vector<std::string> temperatureKeys() {
    std::vector<std::string> keys;
    for (const SimulatedKey& key : simulatedKeys())
        if (key.type == "sp78" && key.key != "TM1P") keys.emplace_back(key.key);
    return keys;
}

std::map<std::string, double> temperatures() {
    std::map<std::string, double> all;
    for (const std::string& key : temperatureKeys()) all[key] = smcTemperature(key);
    return all;
}

bool isDiscrete(std::string_view key) { return key == "TG1D" || key == "TG1P" || key == "TG1d"; }

TEST(SimulatedMac, HoldsItsKeysInByteOrder) {
    VirtualDispatch dispatch;
    SimulatedMac mac(dispatch, 5);
    const Connection connection(mac);
    ASSERT_EQ(connection.openResult, 0);
    const std::vector<std::string> keys = keysByIndex();
    std::string list;
    for (const std::string& key : keys) list += key + " ";
    EXPECT_EQ(list, goldenKeys);
    EXPECT_TRUE(std::ranges::is_sorted(keys));
}

TEST(SimulatedMac, CountsItsKeys) {
    VirtualDispatch dispatch;
    SimulatedMac mac(dispatch, 5);
    const Connection connection(mac);
    EXPECT_EQ(smcKeyCount(), 80);
    EXPECT_EQ(keysByIndex().size(), 80U);
}

TEST(SimulatedMac, SaysWhatItIs) {
    VirtualDispatch dispatch;
    SimulatedMac mac(dispatch, 5);
    EXPECT_EQ(mac.sourceName(), "simulated");
    EXPECT_EQ(mac.modelName(), "MacBookPro11,3");
    EXPECT_TRUE(mac.machineSensors().empty());
    EXPECT_TRUE(mac.problems().empty());
}

TEST(SimulatedMac, HasOnlyTemperaturesThatReadAsQuarterDegrees) {
    VirtualDispatch dispatch;
    SimulatedMac mac(dispatch, 5);
    const Connection connection(mac);
    for (int minute = 0; minute < 30; ++minute) {
        for (const auto& [key, celsius] : temperatures())
            EXPECT_EQ(celsius * 4, std::floor(celsius * 4)) << key;
        dispatch.advance(1min);
    }
}

TEST(SimulatedMac, HasOneProbeThatIsMissing) {
    VirtualDispatch dispatch;
    SimulatedMac mac(dispatch, 5);
    const Connection connection(mac);
    EXPECT_EQ(smcTemperature("TM1P"), -127.0);
}

TEST(SimulatedMac, HasOneTemperatureKeyOfAnotherType) {
    VirtualDispatch dispatch;
    SimulatedMac mac(dispatch, 5);
    const Connection connection(mac);
    SmcValue value;
    ASSERT_EQ(smcReadKey("TC0J", value), io_return::success);
    EXPECT_EQ(std::string(value.dataType.data()), "sp96");
    EXPECT_EQ(smcTemperature("TC0J"), 0.0);
}

TEST(SimulatedMac, NamesItsFansAsRealOnesAreNamed) {
    VirtualDispatch dispatch;
    SimulatedMac mac(dispatch, 5);
    const Connection connection(mac);
    EXPECT_EQ(smcFanCount(), 2);
    std::vector<std::string> names;
    for (const char* key : {"F0ID", "F1ID"}) {
        SmcValue value;
        ASSERT_EQ(smcReadKey(key, value), io_return::success);
        EXPECT_EQ(value.dataSize, 16U);
        EXPECT_EQ(std::string(value.dataType.data()), "{fds");
        names.emplace_back(std::begin(value.bytes) + 4,
                           std::ranges::find(value.bytes.begin() + 4, value.bytes.end(), 0));
    }
    EXPECT_EQ(names, (std::vector<std::string>{"Right Side", "Left side  "}));
}

TEST(SimulatedMac, GivesTheSameValuesForTheSameSeed) {
    VirtualDispatch dispatch;
    SimulatedMac first(dispatch, 77);
    SimulatedMac second(dispatch, 77);
    dispatch.advance(4h + 321ms);
    const std::string firstKeys = Connection(first).printedKeys();
    EXPECT_EQ(Connection(second).printedKeys(), firstKeys);
}

TEST(SimulatedMac, GivesTheSameValuesWhateverWasAskedBefore) {
    VirtualDispatch dispatch;
    SimulatedMac watched(dispatch, 77);
    SimulatedMac asleep(dispatch, 77);
    for (int i = 0; i < 1500; ++i) {
        const Connection connection(watched);
        EXPECT_GT(smcTemperature("TC0P"), 0.0);
        dispatch.advance(3700ms);
    }
    const std::string watchedKeys = Connection(watched).printedKeys();
    EXPECT_EQ(Connection(asleep).printedKeys(), watchedKeys);
}

TEST(SimulatedMac, CountsItsTimeFromItsConstruction) {
    VirtualDispatch dispatch;
    SimulatedMac early(dispatch, 77);
    dispatch.advance(10min);
    SimulatedMac late(dispatch, 77);
    const std::string lateKeys = Connection(late).printedKeys();
    EXPECT_NE(Connection(early).printedKeys(), lateKeys);
    VirtualDispatch otherDispatch;
    SimulatedMac other(otherDispatch, 77);
    EXPECT_EQ(Connection(other).printedKeys(), lateKeys);
}

TEST(SimulatedMac, GivesOtherValuesForAnotherSeed) {
    VirtualDispatch dispatch;
    SimulatedMac first(dispatch, 77);
    SimulatedMac second(dispatch, 78);
    const std::string firstKeys = Connection(first).printedKeys();
    EXPECT_NE(Connection(second).printedKeys(), firstKeys);
}

TEST(SimulatedMac, WasOnForAWhileWhenItBegins) {
    VirtualDispatch dispatch;
    SimulatedMac mac(dispatch, 5);
    const Connection connection(mac);
    EXPECT_THAT(smcTemperature("TC0P"), AllOf(Gt(30.0), Lt(100.0)));
    EXPECT_THAT(smcTemperature("Ts0P"), AllOf(Gt(24.0), Lt(40.0)));
}

class SimulatedDay : public testing::TestWithParam<std::uint64_t> {};

TEST_P(SimulatedDay, KeepsEveryTemperatureWithinItsBounds) {
    VirtualDispatch dispatch;
    SimulatedMac mac(dispatch, GetParam());
    const Connection connection(mac);
    std::map<std::string, std::pair<double, double>> range;
    for (int i = 0; i < 24 * 60 * 6; ++i) {
        const bool isDiscreteAwake = smcTemperature("TG1D") > 0;
        for (const auto& [key, celsius] : temperatures()) {
            if (isDiscrete(key) && !isDiscreteAwake) {
                ASSERT_EQ(celsius, 0.0) << key;
                continue;
            }
            auto& [lowest, highest] = range.try_emplace(key, celsius, celsius).first->second;
            lowest = std::min(lowest, celsius);
            highest = std::max(highest, celsius);
        }
        dispatch.advance(10s);
    }
    for (const auto& [key, ends] : range) {
        EXPECT_THAT(ends.first, Gt(10.0)) << key;
        EXPECT_THAT(ends.second, Lt(110.0)) << key;
    }
    // An integrated unit above 95 degrees would be taken for unreadable.
    EXPECT_THAT(range["TG0D"].second, Le(95.0));
    EXPECT_THAT(range["TC0D"].second, Gt(90.0));
    EXPECT_THAT(range["TC0D"].first, Lt(55.0));
}

TEST_P(SimulatedDay, KeepsTheFansWithinTheirLimits) {
    VirtualDispatch dispatch;
    SimulatedMac mac(dispatch, GetParam());
    const Connection connection(mac);
    int slowest = 10000;
    int fastest = 0;
    for (int i = 0; i < 24 * 60 * 6; ++i) {
        for (const char fan : {'0', '1'}) {
            const auto speed = [fan](const char* kind) { return smcFanSpeed(std::string("F") + fan + kind); };
            ASSERT_THAT(speed("Ac"), AllOf(Ge(speed("Mn")), Le(speed("Mx"))));
            ASSERT_THAT(speed("Tg"), AllOf(Ge(speed("Mn")), Le(speed("Mx"))));
            slowest = std::min(slowest, speed("Ac"));
            fastest = std::max(fastest, speed("Ac"));
        }
        dispatch.advance(10s);
    }
    EXPECT_THAT(slowest, AllOf(Ge(2000), Lt(2100)));
    EXPECT_THAT(fastest, AllOf(Gt(6000), Le(6200)));
}

TEST_P(SimulatedDay, LetsTheDiscreteUnitSleepAndWake) {
    VirtualDispatch dispatch;
    SimulatedMac mac(dispatch, GetParam());
    const Connection connection(mac);
    int changes = 0;
    bool wasAwake = smcTemperature("TG1D") > 0;
    for (int i = 0; i < 24 * 60; ++i) {
        SmcValue value;
        ASSERT_EQ(smcReadKey("TG1D", value), io_return::success);
        ASSERT_EQ(value.dataSize, 2U);
        const bool isAwake = smcTemperature("TG1D") > 0;
        changes += isAwake != wasAwake ? 1 : 0;
        wasAwake = isAwake;
        dispatch.advance(1min);
    }
    EXPECT_THAT(changes, AllOf(Gt(50), Lt(360)));
}

INSTANTIATE_TEST_SUITE_P(SomeSeeds, SimulatedDay, testing::Values(1, 2, 20260));

TEST(SimulatedMac, LetsTheFansFollowTheHeatWithALag) {
    VirtualDispatch dispatch;
    SimulatedMac mac(dispatch, 1);
    const Connection connection(mac);
    int speedBefore = smcFanSpeed("F0Ac");
    int seconds = 0;
    while (smcTemperature("TC0D") < 90) {
        speedBefore = smcFanSpeed("F0Ac");
        dispatch.advance(1s);
        ASSERT_LT(++seconds, 24 * 3600);
    }
    const int atOnce = smcFanSpeed("F0Ac");
    dispatch.advance(20s);
    EXPECT_LT(atOnce - speedBefore, 1000);
    EXPECT_GT(smcFanSpeed("F0Ac") - atOnce, 1000);
}

TEST(SimulatedMac, MovesItsSlowPartsWithoutJumps) {
    VirtualDispatch dispatch;
    SimulatedMac mac(dispatch, 3);
    const Connection connection(mac);
    const std::vector<std::string> slow{"TB0T", "TM0S", "TN0P", "TH0A", "TW0P", "Ts0P", "TA0P"};
    std::map<std::string, double> before;
    for (int second = 0; second < 2 * 3600; ++second) {
        for (const std::string& key : slow) {
            const double celsius = smcTemperature(key);
            if (second > 0) {
                ASSERT_LE(std::abs(celsius - before[key]), 0.75) << key << " at " << second;
            }
            before[key] = celsius;
        }
        dispatch.advance(1s);
    }
}

TEST(SimulatedMac, GoesOnAfterALongSleepOfTheMachine) {
    VirtualDispatch dispatch;
    SimulatedMac mac(dispatch, 3);
    const Connection connection(mac);
    const double before = smcTemperature("TC0P");
    dispatch.advance(24h * 365 * 20);
    EXPECT_NE(smcTemperature("TC0P"), before);
    EXPECT_THAT(smcTemperature("TC0P"), AllOf(Gt(20.0), Lt(110.0)));
}

TEST(SimulatedMac, RefusesAndCountsEveryWrite) {
    VirtualDispatch dispatch;
    SimulatedMac mac(dispatch, 5);
    const Connection connection(mac);
    EXPECT_EQ(mac.writeCount(), 0U);
    smcSetFanSpeed("F0Mn", 4321);
    smcSetFanSpeed("F1Mn", 4321);
    EXPECT_EQ(mac.writeCount(), 2U);
    EXPECT_EQ(smcFanSpeed("F0Mn"), 2000);
    EXPECT_EQ(smcFanSpeed("F1Mn"), 2160);
}

TEST(SimulatedMac, AnswersAnUnknownKeyWithNoData) {
    VirtualDispatch dispatch;
    SimulatedMac mac(dispatch, 5);
    const Connection connection(mac);
    SmcValue value;
    EXPECT_EQ(smcReadKey("TZ9Q", value), io_return::success);
    EXPECT_EQ(value.dataSize, 0U);
    EXPECT_FALSE(mac.originOf("TZ9Q"));
    EXPECT_FALSE(mac.originOf("TC0"));
    EXPECT_FALSE(mac.originOf("TC0PP"));
}

TEST(SimulatedMac, TellsWhereAValueComesFrom) {
    VirtualDispatch dispatch;
    SimulatedMac mac(dispatch, 18446744073709551615U);
    const auto minimum = mac.originOf("F1Mn");
    ASSERT_TRUE(minimum);
    EXPECT_EQ(minimum->device, "simulated Mac, seed 18446744073709551615");
    EXPECT_EQ(minimum->file, "");
    EXPECT_EQ(minimum->content, "2160");
    EXPECT_EQ(minimum->note, "");
    EXPECT_EQ(mac.originOf("TM1P")->content, "-127");
    EXPECT_EQ(mac.originOf("TC0G")->content, "90");
    EXPECT_EQ(mac.originOf("#KEY")->content, "80");
    EXPECT_EQ(mac.originOf("REV ")->content, "");
}

TEST(SimulatedMac, SaysOfItsDiscreteUnitThatItSleeps) {
    VirtualDispatch dispatch;
    SimulatedMac mac(dispatch, 1);
    for (int minute = 0; minute < 120; ++minute) {
        const auto origin = mac.originOf("TG1D");
        EXPECT_EQ(origin->note, origin->content == "0" ? "the discrete graphics unit sleeps" : "");
        dispatch.advance(1min);
    }
}

}  // namespace
}  // namespace calorivo::test
