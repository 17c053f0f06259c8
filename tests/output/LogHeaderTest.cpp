#include "output/LogHeader.h"

#include "support/Machine.h"

#include <gtest/gtest.h>

#include <string>

namespace calorivo {
namespace {

using test::Machine;

/// One sensor, "CPU Core 1", and two fans, "Left" and "Right".
struct LogHeaderTest : testing::Test {
    LogHeaderTest() {
        machine.cpu("TC1C", 40).fan(1000, 500, 6000, "Left").fan(2000, 500, 6000, "Right");
        machine.lists.customSensorsToReadableNamesMap["TC1C"] = "CPU Core 1";
    }
    std::string header() {
        return logHeader(machine.lists, machine.naming, machine.fans.fansArray(), machine.preferences);
    }
    Machine machine;
};

TEST_F(LogHeaderTest, IsDateAndTimeWithNothingToLog) {
    machine.preferences.logTemperatures = false;
    machine.preferences.logFanSpeeds = false;
    EXPECT_EQ(header(), "Date,Time");
}

TEST_F(LogHeaderTest, NamesSensorsFansAndAveragesInFahrenheit) {
    machine.preferences.logTemperatures = true;
    machine.preferences.logFanSpeeds = true;
    machine.preferences.tempUnit = 1;
    EXPECT_EQ(header(),
              "Date,Time,CPU Core 1 (F),CPU Average (F),Computer Average(F),"
              "Left (RPM),Right (RPM),Fan Average (RPM)");
}

TEST_F(LogHeaderTest, TheSecondAverageHasNoSpaceBeforeItsUnit) {
    machine.preferences.logTemperatures = true;
    machine.preferences.logFanSpeeds = false;
    EXPECT_EQ(header(), "Date,Time,CPU Core 1 (C),CPU Average (C),Computer Average(C)");
}

TEST_F(LogHeaderTest, HasFansAlone) {
    machine.preferences.logTemperatures = false;
    machine.preferences.logFanSpeeds = true;
    EXPECT_EQ(header(), "Date,Time,Left (RPM),Right (RPM),Fan Average (RPM)");
}

TEST_F(LogHeaderTest, OnlyUnitOneIsFahrenheit) {
    machine.preferences.logTemperatures = true;
    machine.preferences.tempUnit = 2;
    EXPECT_EQ(header(), "Date,Time,CPU Core 1 (C),CPU Average (C),Computer Average(C)");
}

TEST_F(LogHeaderTest, DoesNotQuoteNamesWithCommas) {
    machine.lists.customSensorsToReadableNamesMap["TC1C"] = "CPU, the \"hot\" one";
    machine.preferences.logTemperatures = true;
    EXPECT_EQ(header(), "Date,Time,CPU, the \"hot\" one (C),CPU Average (C),Computer Average(C)");
}

}  // namespace
}  // namespace calorivo
