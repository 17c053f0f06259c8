#include "monitor/TemperatureReader.h"

#include "support/Machine.h"

#include <gtest/gtest.h>

#include <map>
#include <string>

namespace calorivo {
namespace {

using test::Machine;

/// A machine with both GPUs: the integrated one is TG0D, the discrete one TG1D.
struct DualGPUMachine : Machine {
    DualGPUMachine() { gpu("TG0D", 51).gpu("TG1D", 52).gpu("TG0P", 53).gpu("TG1P", 54); }
};

std::map<std::string, double> cacheOf(const TemperatureReader& reader) {
    std::map<std::string, double> cache;
    for (const auto& [key, celsius] : reader.cachedSensorToTemperatureMap()) cache[key.text()] = celsius;
    return cache;
}

TEST(TemperatureReader, ReadsZeroForNoKeyAndCachesNothing) {
    Machine machine;
    EXPECT_EQ(machine.reader.getTemperatureForSensor(std::nullopt), 0.0);
    EXPECT_TRUE(machine.reader.cachedSensorToTemperatureMap().empty());
}

TEST(TemperatureReader, ReadsNowAndCachesWhatItRead) {
    Machine machine;
    machine.cpu("TC0P", 40.25);
    EXPECT_EQ(machine.reader.getTemperatureForSensor(SensorKey("TC0P")), 40.25);
    machine.temperature("TC0P", 41.5);
    EXPECT_EQ(machine.reader.getTemperatureForSensor(SensorKey("TC0P")), 41.5);
    EXPECT_EQ(cacheOf(machine.reader), (std::map<std::string, double>{{"TC0P", 41.5}}));
}

TEST(TemperatureReader, CachesUnreadableAndInvalidReadingsLikeAnyOther) {
    Machine machine;
    machine.cpu("TC0P", 40).cpu("TC1C", 125);
    machine.smc.fail("TC0P");
    machine.smc.set("TC2C", "ui16", {40, 0});
    EXPECT_EQ(machine.reader.getTemperatureForSensor(SensorKey("TC0P")), 0.0);
    EXPECT_EQ(machine.reader.getTemperatureForSensor(SensorKey("TC1C")), 125.0);
    EXPECT_EQ(machine.reader.getTemperatureForSensor(SensorKey("TC2C")), 0.0);
    EXPECT_EQ(machine.reader.getTemperatureForSensor(SensorKey("TC9C")), 0.0);
    EXPECT_EQ(cacheOf(machine.reader),
              (std::map<std::string, double>{{"TC0P", 0}, {"TC1C", 125}, {"TC2C", 0}, {"TC9C", 0}}));
}

TEST(TemperatureReader, AnswersACachedReadFromTheCacheHoweverOldItIs) {
    Machine machine;
    machine.cpu("TC0P", 40);
    machine.reader.getTemperatureForSensor(SensorKey("TC0P"));
    machine.temperature("TC0P", 77);
    EXPECT_EQ(machine.reader.getCachedTemperatureForSensor("TC0P"), 40.0);
    machine.reader.getTemperatureForSensor(SensorKey("TC0P"));
    EXPECT_EQ(machine.reader.getCachedTemperatureForSensor("TC0P"), 77.0);
}

TEST(TemperatureReader, AnswersACachedReadOfAnInvalidEntryAsItStands) {
    Machine machine;
    machine.cpu("TC0P", 0);
    machine.reader.getTemperatureForSensor(SensorKey("TC0P"));
    machine.temperature("TC0P", 40);
    EXPECT_EQ(machine.reader.getCachedTemperatureForSensor("TC0P"), 0.0);
}

TEST(TemperatureReader, ReadsASensorThatWasNeverReadAndCachesIt) {
    Machine machine;
    machine.cpu("TC0P", 43);
    EXPECT_EQ(machine.reader.getCachedTemperatureForSensor("TC0P"), 43.0);
    EXPECT_EQ(cacheOf(machine.reader), (std::map<std::string, double>{{"TC0P", 43}}));
}

TEST(TemperatureReader, TakesAnIntegratedGPUAbove95AsUnreadable) {
    DualGPUMachine machine;
    machine.temperature("TG0D", 95);
    EXPECT_EQ(machine.reader.getTemperatureForSensor(SensorKey("TG0D")), 95.0);
    machine.temperature("TG0D", 95.5);
    EXPECT_EQ(machine.reader.getTemperatureForSensor(SensorKey("TG0D")), 0.0);
    EXPECT_EQ(machine.reader.getCachedTemperatureForSensor("TG0D"), 0.0);
}

TEST(TemperatureReader, LetsEveryOtherSensorReadAbove95) {
    DualGPUMachine machine;
    for (const char* key : {"TC0P", "TG1D", "TG0P", "TG1P"}) {
        machine.smc.setTemperature(key, 110);
        EXPECT_EQ(machine.reader.getTemperatureForSensor(SensorKey(std::string_view(key))), 110.0);
    }
    Machine oneGPU;
    oneGPU.gpu("TG0D", 110);
    EXPECT_EQ(oneGPU.reader.getTemperatureForSensor(SensorKey("TG0D")), 110.0);
}

TEST(TemperatureReader, TakesTheValuesOfAKeysFileAsTheyAre) {
    DualGPUMachine machine;
    machine.lists.isUsingKeysFile = true;
    machine.lists.fakeSensorToTempMap["TG0D"] = 99;
    machine.lists.fakeSensorToTempMap["TC0P"] = 40;
    machine.temperature("TC0P", 55);
    EXPECT_EQ(machine.reader.getTemperatureForSensor(SensorKey("TG0D")), 99.0);
    EXPECT_EQ(machine.reader.getTemperatureForSensor(SensorKey("TC0P")), 40.0);
    EXPECT_EQ(machine.reader.getTemperatureForSensor(SensorKey("TG1D")), 0.0);
    EXPECT_EQ(cacheOf(machine.reader),
              (std::map<std::string, double>{{"TG0D", 99}, {"TC0P", 40}, {"TG1D", 0}}));
    EXPECT_EQ(machine.smc.reads, 0);
}

/// A reader on the one model whose discrete GPU keeps its last value while it is switched off.
struct RetainingMachine : DualGPUMachine {
    RetainingMachine() { lists.modelName = "Example7,3"; }
    TemperatureReader retaining{lists, preferences, gpuState, "Example7,3"};

    /// What TG1D reads after `cached` when the controller says `now`.
    double after(double cached, double now) {
        temperature("TG1D", cached);
        TemperatureReader fresh(lists, preferences, gpuState, "Example7,3");
        fresh.getTemperatureForSensor(SensorKey("TG1D"));
        temperature("TG1D", now);
        const double result = fresh.getTemperatureForSensor(SensorKey("TG1D"));
        EXPECT_EQ(fresh.getCachedTemperatureForSensor("TG1D"), result);
        return result;
    }
};

TEST(TemperatureReader, KeepsTheLastValueOfASwitchedOffDiscreteGPU) {
    RetainingMachine machine;
    EXPECT_EQ(machine.after(50, 95), 50.0) << "a jump of 45";
    EXPECT_EQ(machine.after(50, 90.25), 50.0) << "a jump of 40.25";
    EXPECT_EQ(machine.after(50, 90), 90.0) << "a jump of exactly 40 is accepted";
    EXPECT_EQ(machine.after(50, 3), 3.0) << "cooling down is accepted";
    EXPECT_EQ(machine.after(50, 0), 50.0);
    EXPECT_EQ(machine.after(50, -5), 50.0);
    EXPECT_EQ(machine.after(100, 120), 100.0) << "120 is not valid";
    EXPECT_EQ(machine.after(0, 95), 95.0) << "0 is no value to keep";
    EXPECT_EQ(machine.after(-4, 0), 0.0);
}

TEST(TemperatureReader, TakesTheFirstReadingOfADiscreteGPUWhateverItIs) {
    for (const double celsius : {95.0, 0.0, 126.0}) {
        RetainingMachine machine;
        machine.temperature("TG1D", celsius);
        EXPECT_EQ(machine.retaining.getTemperatureForSensor(SensorKey("TG1D")), celsius);
    }
}

TEST(TemperatureReader, KeepsNoValueWhileTheDiscreteGPUIsInUse) {
    RetainingMachine machine;
    machine.gpuState.currentGPUType = 1;
    EXPECT_EQ(machine.after(50, 95), 95.0);
    EXPECT_EQ(machine.after(50, 0), 0.0);
}

TEST(TemperatureReader, KeepsNoValueOfAnotherSensor) {
    RetainingMachine machine;
    machine.temperature("TG1P", 50);
    machine.retaining.getTemperatureForSensor(SensorKey("TG1P"));
    machine.temperature("TG1P", 95);
    EXPECT_EQ(machine.retaining.getTemperatureForSensor(SensorKey("TG1P")), 95.0);
}

TEST(TemperatureReader, KeepsNoValueOnAnotherModel) {
    RetainingMachine machine;
    machine.lists.modelName = "Example7,2";
    EXPECT_EQ(machine.after(50, 95), 95.0);
    machine.lists.modelName = std::nullopt;
    EXPECT_EQ(machine.after(50, 95), 95.0);
}

TEST(TemperatureReader, NeverKeepsAValueWhenNoModelIsConfigured) {
    RetainingMachine machine;
    machine.lists.modelName = "";
    machine.temperature("TG1D", 50);
    machine.reader.getTemperatureForSensor(SensorKey("TG1D"));
    machine.temperature("TG1D", 95);
    EXPECT_EQ(machine.reader.getTemperatureForSensor(SensorKey("TG1D")), 95.0);
}

TEST(TemperatureReader, KeepsTheLastValueInKeysFileModeToo) {
    RetainingMachine machine;
    machine.lists.isUsingKeysFile = true;
    machine.lists.fakeSensorToTempMap["TG1D"] = 50;
    machine.retaining.getTemperatureForSensor(SensorKey("TG1D"));
    machine.lists.fakeSensorToTempMap["TG1D"] = 95;
    EXPECT_EQ(machine.retaining.getTemperatureForSensor(SensorKey("TG1D")), 50.0);
}

TEST(TemperatureReader, ConvertsToTheUsersUnit) {
    Machine machine;
    EXPECT_EQ(machine.reader.convertDegrees(47.6), 47.6);
    machine.preferences.tempUnit = 1;
    EXPECT_EQ(machine.reader.convertDegrees(50), 50 * 1.7999999523162842 + 32.0);
    machine.preferences.tempUnit = 2;
    EXPECT_EQ(machine.reader.convertDegrees(50), 50 * 1.7999999523162842 + 32.0);
}

TEST(TemperatureReader, UsesTheSinglePrecisionFactorInTexts) {
    Machine machine;
    machine.fahrenheit();
    EXPECT_LT(machine.reader.convertDegrees(100), 212.0);
    // 243.49999: the exact factor would give 243.5, which reads as 244.
    EXPECT_EQ(machine.reader.convertDegreesToString(117.5), "243°F");
}

TEST(TemperatureReader, ConvertsInvalidTemperaturesToZero) {
    Machine machine;
    for (const std::int32_t unit : {0, 1}) {
        machine.preferences.tempUnit = unit;
        for (const double celsius : {130.0, 120.0, 0.0, -3.0})
            EXPECT_EQ(machine.reader.convertDegrees(celsius), 0.0);
    }
}

TEST(TemperatureReader, WritesWholeDegreesWithTheUnit) {
    Machine machine;
    EXPECT_EQ(machine.reader.convertDegreesToString(47.6),
              "48\xC2\xB0"
              "C");
    EXPECT_EQ(machine.reader.convertDegreesToString(0.1), "0°C");
    EXPECT_EQ(machine.reader.convertDegreesToString(119.9), "120°C");
    machine.fahrenheit();
    EXPECT_EQ(machine.reader.convertDegreesToString(0.1), "32°F");
    EXPECT_EQ(machine.reader.convertDegreesToString(100), "212°F");
}

TEST(TemperatureReader, WritesNotAvailableForInvalidTemperatures) {
    Machine machine;
    for (const std::int32_t unit : {0, 1}) {
        machine.preferences.tempUnit = unit;
        for (const double celsius : {120.0, 0.0, -1.0, 500.0})
            EXPECT_EQ(machine.reader.convertDegreesToString(celsius), "N/A");
    }
}

TEST(TemperatureReader, LabelsDegreesByTheUnit) {
    Machine machine;
    EXPECT_EQ(machine.reader.degreesLabelString(),
              "\xC2\xB0"
              "C");
    for (const std::int32_t unit : {1, 2, -1}) {
        machine.preferences.tempUnit = unit;
        EXPECT_EQ(machine.reader.degreesLabelString(),
                  "\xC2\xB0"
                  "F");
    }
}

TEST(TemperatureReader, LeavesTheCacheInCelsiusWhenTheUnitChanges) {
    Machine machine;
    machine.cpu("TC0P", 50);
    machine.reader.getTemperatureForSensor(SensorKey("TC0P"));
    machine.fahrenheit();
    EXPECT_EQ(machine.reader.getCachedTemperatureForSensor("TC0P"), 50.0);
}

}  // namespace
}  // namespace calorivo
