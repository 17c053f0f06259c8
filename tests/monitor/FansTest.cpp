#include "monitor/Fans.h"

#include "support/Machine.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <vector>

namespace calorivo {
namespace {

using test::CountingUserDefaults;
using test::FakeSmc;
using test::Machine;

/// Fans over a controller of their own, without a cycle.
struct FanBench {
    FakeSmc smc;
    SensorLists lists;
    CountingUserDefaults userDefaults;
    Fans fans{lists, userDefaults};

    FanBench& fan(int rpm, int minimum, int maximum, std::string_view name = {}) {
        smc.addFan(rpm, minimum, maximum, name);
        lists.numFans = lists.numFans + 1;
        return *this;
    }
    /// The identification of fan 0: four bytes that are no text, then these.
    FanBench& identification(std::string_view bytes) {
        std::vector<std::uint8_t> value{'j', 'u', 'n', 'k'};
        value.insert(value.end(), bytes.begin(), bytes.end());
        smc.set("F0ID", "{fds", value);
        return *this;
    }
    const FanModel& built() {
        fans.getAllFanSensors();
        return fans.fansArray().front();
    }
    std::vector<std::string> names() const {
        std::vector<std::string> names;
        for (const FanModel& fan : fans.fansArray()) names.push_back(fan.name);
        return names;
    }
    std::vector<std::int32_t> speeds() const {
        std::vector<std::int32_t> speeds;
        for (const FanModel& fan : fans.fansArray()) speeds.push_back(fan.actualRPM);
        return speeds;
    }
};

TEST(Fans, BuildsAFanWithEverythingButItsSpeed) {
    FanBench bench;
    bench.fan(2000, 1200, 6000, "Exhaust");
    FanModel expected;
    expected.fanNumber = 0;
    expected.name = "Exhaust";
    expected.minRPM = 1200;
    expected.maxRPM = 6000;
    expected.warningRPM = 4500.0F;
    expected.criticalRPM = 5400.0F;
    expected.userSetMinRPM = 2147483647;
    expected.isUserControlEnabled = false;
    expected.minRPMAsString = "1200 RPM";
    expected.maxRPMAsString = "6000 RPM";
    expected.actualRPMSensorName = "F0Ac";
    EXPECT_EQ(bench.built(), expected);
}

TEST(Fans, NamesAFanByItsNumberWhenItsIdentificationCannotBeRead) {
    FanBench bench;
    bench.fan(1000, 900, 3000).fan(1000, 900, 3000, "CPU").fan(1000, 900, 3000);
    bench.fans.getAllFanSensors();
    EXPECT_EQ(bench.names(), (std::vector<std::string>{"Fan 1", "CPU", "Fan 3"}));
}

TEST(Fans, HasAnEmptyNameWhenTheIdentificationHoldsNoData) {
    FanBench bench;
    bench.fan(1000, 900, 3000, "Exhaust");
    bench.smc.remove("F0ID");
    EXPECT_EQ(bench.built().name, "");
}

TEST(Fans, CleansTheNameThatTheHardwareGives) {
    struct Case {
        std::string_view bytes;
        std::string_view name;
    };
    using namespace std::string_view_literals;
    for (const Case& c : {
             Case{"Exhaust\0junk"sv, "Exhaust"},
             Case{" \t Exhaust \r\n"sv, "Exhaust"},
             Case{"Left\nSide"sv, "Left Side"},
             Case{"A\x1b[2JB"sv, "A [2JB"},
             Case{"A\xff\x42"sv, "A\uFFFDB"},
             Case{"1234567890123456789012345678"sv, "1234567890123456789012345678"},
             Case{"1234567890123456789012345678 and more than a value holds"sv,
                  "1234567890123456789012345678"},
             Case{""sv, ""},
         }) {
        FanBench bench;
        bench.fan(1000, 900, 3000).identification(c.bytes);
        bench.smc.fail("F0ID", io_return::success);
        EXPECT_EQ(bench.built().name, c.name);
    }
}

TEST(Fans, WritesLeftSideWithACapital) {
    FanBench bench;
    bench.fan(1000, 900, 3000, "Left side").fan(1000, 900, 3000, "left side").fan(1000, 900, 3000, "x");
    bench.fans.getAllFanSensors();
    EXPECT_EQ(bench.names(), (std::vector<std::string>{"Left Side", "left side", "x"}));
}

TEST(Fans, PutsTheLeftOneOfTwoFansFirst) {
    FanBench bench;
    bench.fan(1000, 900, 3000, "Right Side").fan(2000, 1900, 5000, "Left side");
    bench.fans.getAllFanSensors();
    const std::vector<FanModel>& fans = bench.fans.fansArray();
    EXPECT_EQ(bench.names(), (std::vector<std::string>{"Left Side", "Right Side"}));
    EXPECT_EQ(fans[0].fanNumber, 0);
    EXPECT_EQ(fans[1].fanNumber, 1);
    EXPECT_EQ(fans[0].maxRPM, 5000);
    EXPECT_EQ(fans[1].maxRPM, 3000);
    EXPECT_EQ(fans[0].actualRPMSensorName, "F1Ac");
    EXPECT_EQ(fans[1].actualRPMSensorName, "F0Ac");
}

TEST(Fans, LeavesTwoFansInEveryOtherCase) {
    const std::vector<std::vector<std::string>> cases{{"Left Side", "Right Side"},
                                                      {"Right Side", "Right Side"},
                                                      {"Right side", "Left Side"},
                                                      {"Right Side", "Left Side", "Top"}};
    for (const auto& names : cases) {
        FanBench bench;
        for (const std::string& name : names) bench.fan(1000, 900, 3000, name);
        bench.fans.getAllFanSensors();
        EXPECT_EQ(bench.names(), names);
    }
}

TEST(Fans, ReadTheSpeedOfTheirPlaceAfterChangingPlaces) {
    FanBench bench;
    bench.fan(1000, 900, 3000, "Right Side").fan(2000, 1900, 5000, "Left side");
    bench.fans.getAllFanSensors();
    bench.fans.updateFans();
    EXPECT_EQ(bench.names(), (std::vector<std::string>{"Left Side", "Right Side"}));
    EXPECT_EQ(bench.speeds(), (std::vector<std::int32_t>{1000, 2000}));
}

TEST(Fans, SynchronizesTheStoreWhenTheyAreFound) {
    FanBench bench;
    bench.fans.getAllFanSensors();
    EXPECT_EQ(bench.userDefaults.synchronizations, 1);
    bench.fans.updateFans();
    EXPECT_EQ(bench.userDefaults.synchronizations, 1);
}

TEST(Fans, StoreMinusOneForLimitsThatCannotBeRead) {
    FanBench bench;
    bench.fan(1000, 900, 3000, "Exhaust");
    bench.smc.fail("F0Mn").set("F0Mx", "ui16", {1, 2});
    const FanModel& fan = bench.built();
    EXPECT_EQ(fan.minRPM, -1);
    EXPECT_EQ(fan.maxRPM, -1);
    EXPECT_EQ(fan.minRPMAsString, "-1 RPM");
    EXPECT_EQ(fan.maxRPMAsString, "-1 RPM");
    EXPECT_EQ(fan.warningRPM, -0.75F);
    EXPECT_EQ(fan.criticalRPM, -0.9F);
}

TEST(Fans, AreNoneForACountOfZeroOrLess) {
    for (const std::int32_t count : {0, -1, -128}) {
        FanBench bench;
        bench.fan(1000, 900, 3000, "Exhaust");
        bench.fans.getAllFanSensors();
        bench.fans.updateFans();
        ASSERT_EQ(bench.fans.avgRPM, 1000);
        bench.lists.numFans = count;
        bench.fans.getAllFanSensors();
        bench.fans.updateFans();
        EXPECT_EQ(bench.fans.fansArray(), std::vector<FanModel>{});
        EXPECT_EQ(bench.fans.avgRPM, 0);
        EXPECT_EQ(bench.fans.avgRPMAsString.get(), "0 RPM");
    }
}

TEST(Fans, UseTheFirstDigitOfTheirIndexOnly) {
    FanBench bench;
    for (int i = 0; i < 10; ++i) bench.fan(1000 + i, 500 + i, 3000 + i, "Bay " + std::to_string(i));
    bench.lists.numFans = 21;
    bench.fans.getAllFanSensors();
    bench.fans.updateFans();
    const std::vector<FanModel>& fans = bench.fans.fansArray();
    ASSERT_EQ(fans.size(), 21U);
    EXPECT_EQ(fans[9].actualRPM, 1009);
    for (const std::size_t index : {10U, 19U}) {
        EXPECT_EQ(fans[index].fanNumber, static_cast<std::int32_t>(index));
        EXPECT_EQ(fans[index].name, "Bay 1");
        EXPECT_EQ(fans[index].minRPM, 501);
        EXPECT_EQ(fans[index].maxRPM, 3001);
        EXPECT_EQ(fans[index].actualRPM, 1001);
    }
    EXPECT_EQ(fans[10].actualRPMSensorName, "F10Ac");
    EXPECT_EQ(fans[20].actualRPM, 1002);
}

TEST(Fans, RefreshSpeedsTextsAndTheAverage) {
    FanBench bench;
    bench.fan(1000, 900, 3000).fan(2000, 900, 3000).fan(2001, 900, 3000);
    bench.fans.getAllFanSensors();
    bench.fans.updateFans();
    EXPECT_EQ(bench.speeds(), (std::vector<std::int32_t>{1000, 2000, 2001}));
    EXPECT_EQ(bench.fans.fansArray()[2].actualRPMAsString, "2001 RPM");
    EXPECT_EQ(bench.fans.avgRPM, 1667);
    EXPECT_EQ(bench.fans.avgRPMAsString.get(), "1667 RPM");
    bench.smc.setSpeed("F2Ac", 2500);
    bench.fans.updateFans();
    EXPECT_EQ(bench.fans.fansArray()[2].actualRPMAsString, "2500 RPM");
    EXPECT_EQ(bench.fans.avgRPM, 1833);
}

TEST(Fans, ShowTheMinimumForAFanThatReadsZero) {
    FanBench bench;
    bench.fan(0, 1200, 6000).fan(2000, 1200, 6000);
    bench.fans.getAllFanSensors();
    bench.fans.updateFans();
    EXPECT_EQ(bench.speeds(), (std::vector<std::int32_t>{1200, 2000}));
    EXPECT_EQ(bench.fans.fansArray()[0].actualRPMAsString, "1200 RPM");
    EXPECT_EQ(bench.fans.avgRPM, 1600);
}

TEST(Fans, WriteTheTextOfAFanThatStandsStillWithoutAMinimum) {
    FanBench bench;
    bench.fan(0, 0, 6000);
    bench.fans.getAllFanSensors();
    bench.fans.updateFans();
    EXPECT_EQ(bench.fans.fansArray()[0].actualRPMAsString, "0 RPM");
}

TEST(Fans, ShowAndCountMinusOneForASpeedThatCannotBeRead) {
    FanBench bench;
    bench.fan(1000, 900, 3000).fan(2000, 900, 3000);
    bench.smc.fail("F0Ac");
    bench.fans.getAllFanSensors();
    bench.fans.updateFans();
    EXPECT_EQ(bench.fans.fansArray()[0].actualRPMAsString, "-1 RPM");
    EXPECT_EQ(bench.fans.avgRPM, 999) << "1999 / 2, cut";
    bench.smc.fail("F1Ac");
    bench.fans.updateFans();
    EXPECT_EQ(bench.fans.avgRPM, -1);
}

TEST(Fans, CutTheAverageTowardZero) {
    FanBench bench;
    bench.fan(1000, 900, 3000).fan(1000, 900, 3000);
    bench.smc.fail("F0Ac").set("F1Ac", "fpe2", {0xff, 0xf8});  // -64 and 62: -2
    bench.fans.getAllFanSensors();
    bench.fans.updateFans();
    EXPECT_EQ(bench.speeds(), (std::vector<std::int32_t>{-1, -2}));
    EXPECT_EQ(bench.fans.avgRPM, -1) << "-3 / 2, cut";
}

TEST(Fans, DivideByTheNumberOfFansThatTheMachineHas) {
    FanBench bench;
    bench.fan(1000, 900, 3000).fan(2000, 900, 3000);
    bench.fans.getAllFanSensors();
    bench.lists.numFans = 3;
    bench.fans.updateFans();
    EXPECT_EQ(bench.fans.avgRPM, 1000);
}

TEST(Fans, TellTheirObserversOncePerUpdate) {
    FanBench bench;
    bench.fan(1000, 900, 3000).fan(2000, 900, 3000);
    std::vector<std::vector<std::int32_t>> seen;
    const Observation watch = bench.fans.observeFansArray([&] { seen.push_back(bench.speeds()); });
    bench.fans.getAllFanSensors();
    bench.fans.updateFans();
    bench.fans.updateFans();
    EXPECT_EQ(seen, (std::vector<std::vector<std::int32_t>>{{0, 0}, {1000, 2000}, {1000, 2000}}));
}

TEST(Fans, AnnounceTheAverageOnEveryUpdate) {
    FanBench bench;
    bench.fan(1000, 900, 3000);
    bench.fans.getAllFanSensors();
    std::vector<std::string> seen;
    const Observation number =
        bench.fans.avgRPM.observe([&] { seen.push_back(std::to_string(bench.fans.avgRPM)); });
    const Observation text =
        bench.fans.avgRPMAsString.observe([&] { seen.push_back(bench.fans.avgRPMAsString.get()); });
    bench.fans.updateFans();
    bench.fans.updateFans();
    EXPECT_EQ(seen, (std::vector<std::string>{"1000", "1000 RPM", "1000", "1000 RPM"}));
}

TEST(Fans, ChangeByInsertingAndRemoving) {
    FanBench bench;
    int announcements = 0;
    const Observation watch = bench.fans.observeFansArray([&] { ++announcements; });
    const auto named = [](const char* name) {
        FanModel fan;
        fan.name = name;
        return fan;
    };
    bench.fans.setFansArray({named("B")});
    bench.fans.insertObjectInFansArrayAtIndex(named("A"), 0);
    bench.fans.insertObjectInFansArrayAtIndex(named("C"), 99);
    EXPECT_EQ(bench.names(), (std::vector<std::string>{"A", "B", "C"}));
    bench.fans.removeObjectFromFansArrayAtIndex(1);
    EXPECT_EQ(bench.names(), (std::vector<std::string>{"A", "C"}));
    EXPECT_EQ(announcements, 4);
    bench.fans.removeObjectFromFansArrayAtIndex(2);
    EXPECT_EQ(bench.names(), (std::vector<std::string>{"A", "C"}));
    EXPECT_EQ(announcements, 4);
}

}  // namespace
}  // namespace calorivo
