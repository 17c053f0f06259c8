#include "sensors/SensorDiscovery.h"

#include "sensors/DiscoveryFixture.h"
#include "support/FakeSmc.h"

#include <gtest/gtest.h>

#include <array>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace calorivo {
namespace {

using test::ByArea;
using Names = std::vector<std::string>;

class SensorDiscoveryTest : public test::DiscoveryFixture {
  protected:
    test::FakeSmc smc;
};

constexpr std::array<std::pair<std::string_view, double>, 43> laptopTemperatures{
    {{"TA0P", 28},  {"TA0p", 31}, {"TB0T", 30.5},  {"TB1T", 30.25}, {"TB2T", 29},  {"TC0C", 60}, {"TC0D", 61},
     {"TC0E", 62},  {"TC0P", 50}, {"TC0c", 58},    {"TC1C", 59},    {"TC1c", 57},  {"TC2C", 63}, {"TCGC", 55},
     {"TCSA", 52},  {"TCXC", 64}, {"TCXr", 3.5},   {"TG0D", 48},    {"TG0P", 47},  {"TG1D", 0},  {"TG1P", 0},
     {"TG1T", 0},   {"TG1d", 0},  {"TH0A", 33},    {"TH0P", 34},    {"TH1P", 35},  {"TM0P", 46}, {"TM0S", 45},
     {"TN0D", -2},  {"TN1D", 49}, {"TP0P", 51},    {"TPCD", 54},    {"TS0p", 27},  {"TW0P", 40}, {"Ta0P", 38},
     {"TeGG", 44},  {"Th1H", 41}, {"Th2H", 42.75}, {"Tm0P", 37},    {"Tp0C", 125}, {"Ts0P", 26}, {"Ts0S", 36},
     {"Ts1P", 26.5}}};

void addLaptop(test::FakeSmc& smc) {
    for (const auto& [key, celsius] : laptopTemperatures) smc.setTemperature(key, celsius);
    smc.addFan(2160, 2000, 6200).addFan(2000, 1900, 5800);
    smc.set("MSLD", "ui8 ", {0}).set("B0Te", "ui16", {1, 2}).set("TNTM", "ui16", {0x3c, 0x40});
}

TEST_F(SensorDiscoveryTest, FindsAWholeLaptop) {
    addLaptop(smc);
    discover();
    EXPECT_EQ(lists.numFans.get(), 2);
    EXPECT_EQ(lists.tempSensorNames,
              (KeyList{"TA0P", "TA0p", "TB0T", "TB1T", "TB2T", "TC0C", "TC0D", "TC0E", "TC0P", "TC0c", "TC1C",
                       "TC1c", "TC2C", "TCGC", "TCSA", "TCXC", "TCXr", "TG0D", "TG0P", "TG1D", "TG1P", "TG1d",
                       "TH0A", "TH0P", "TH1P", "TM0P", "TM0S", "TN1D", "TP0P", "TPCD", "TS0p", "TW0P", "Ta0P",
                       "TeGG", "Th1H", "Th2H", "Tm0P", "Tp0C", "Ts0P", "Ts0S", "Ts1P"}));
    EXPECT_EQ(byArea(), (ByArea{
                            {"CPU", {"TC0C", "TC1C", "TC2C", "TC0D", "TCGC", "TCXC", "TC0P"}},
                            {"CPU Relative", {"TCXr"}},
                            {"GPU", {"TG0D", "TG1D", "TG0P", "TG1P"}},
                            {"Battery", {"TB1T", "TB2T", "TB0T"}},
                            {"Enclosure", {"TH0P", "TH1P", "TS0p"}},
                            {"Hard Drive", {"TH0A"}},
                            {"Logic Board", {"TA0p", "Ts0S", "Th2H", "TCSA", "TPCD", "Th1H"}},
                            {"Memory", {"TM0P", "TM0S"}},
                            {"Northbridge", {"TN1D"}},
                            {"Palm Rest", {"Ts0P", "Ts1P"}},
                            {"Power Supply", {"Tp0C", "Ta0P", "Tm0P"}},
                            {"Wireless", {"TW0P"}},
                        }));
    EXPECT_EQ(lists.validSensorNames,
              (KeyList{"TC0C", "TC1C", "TC2C", "TC0D", "TCGC", "TCXC", "TC0P", "TCXr", "TG0D",
                       "TG1D", "TG0P", "TG1P", "TB1T", "TB2T", "TB0T", "TH0P", "TH1P", "TS0p",
                       "TA0p", "Ts0S", "Th2H", "TCSA", "TPCD", "Th1H", "TM0P", "TM0S", "TN1D",
                       "Ts0P", "Ts1P", "Tp0C", "Ta0P", "Tm0P", "TW0P", "TH0A"}));
    EXPECT_FALSE(lists.isUsingKeysFile);
    EXPECT_FALSE(lists.isUsingCustomSensorNames);
    EXPECT_TRUE(lists.fakeSensorToTempMap.empty());
    EXPECT_TRUE(lists.customSensorsToReadableNamesMap.empty());
}

TEST_F(SensorDiscoveryTest, NamesAWholeLaptop) {
    addLaptop(smc);
    gpuNames.integrated = "Intel HD Graphics 4000";
    gpuNames.discrete = "GeForce 650M";
    discover();
    EXPECT_EQ(validNames(), (Names{"CPU Core 1",
                                   "CPU Core 1",
                                   "CPU Core 3",
                                   "CPU Diode ",
                                   "CPU GFX Core",
                                   "CPU PECI",
                                   "CPU Proximity ",
                                   "CPU Relative",
                                   "Intel HD Graphics 4000",
                                   "GeForce 650M",
                                   "Intel HD Graphics 4000 Proximity",
                                   "GeForce 650M Proximity",
                                   "Battery Sensor 1",
                                   "Battery Sensor 2",
                                   "Battery Sensor Max",
                                   "HDD Bay 0",
                                   "HDD Bay 1",
                                   "Internal Upper Enclosure",
                                   "Ambient",
                                   "Heatpipe Outgoing Air",
                                   "Left Heatsink Proximity",
                                   "PECI System Agent",
                                   "Platform Controller Hub Die",
                                   "Right Heatsink Proximity",
                                   "Memory Module Proximity ",
                                   "Memory Slot ",
                                   "Northbridge Core",
                                   "Palmrest Proximity",
                                   "Palmrest Proximity",
                                   "AC/DC Supply 1",
                                   "Air Flow Proximity",
                                   "DC In Proximity",
                                   "AirPort Proximity",
                                   "SSD A"}));
}

TEST_F(SensorDiscoveryTest, JoinsTheAreasInTheirOrder) {
    for (const std::string_view key : {"TC0P", "TCAC", "TG0D", "TB0T", "TH0P", "TL0P", "TPCD", "TM0S", "TN0D",
                                       "TO0P", "Ts0P", "Te1S", "Tp0C", "TI0P", "TW0P", "TH0A"})
        smc.setTemperature(key, 42);
    discover();
    EXPECT_EQ(lists.validSensorNames,
              (KeyList{"TC0P", "TCAC", "TG0D", "TB0T", "TH0P", "TL0P", "TPCD", "TM0S", "TN0D", "TO0P", "Ts0P",
                       "Te1S", "Tp0C", "TI0P", "TW0P", "TH0A"}));
}

TEST_F(SensorDiscoveryTest, SortsByTheNamesWithoutTheNumbersThatNeedTheOtherSensors) {
    gpuNames.integrated = "Intel Iris";
    gpuNames.discrete = "AMD Radeon";
    for (const std::string_view key : {"TG0D", "TG0P", "TG1D", "TG1P", "TG2D"}) smc.setTemperature(key, 42);
    discover();
    EXPECT_EQ(lists.gpuSensorNames, (KeyList{"TG0D", "TG1D", "TG2D", "TG0P", "TG1P"}));
    EXPECT_EQ(validNames(), (Names{"Intel Iris", "AMD Radeon", "GPU Diode 3", "Intel Iris Proximity",
                                   "AMD Radeon Proximity"}));
}

TEST_F(SensorDiscoveryTest, ListsASensorTwiceWhenTwoRulesTakeIt) {
    smc.setTemperature("TCXc", 42);
    discover();
    EXPECT_EQ(lists.validSensorNames, (KeyList{"TCXc", "TCXc"}));
}

TEST_F(SensorDiscoveryTest, TakesItsStepsInOrder) {
    smc.setTemperature("TC0P", 42).addFan(2000, 1000, 6000);
    Names events;
    const auto state = [&] {
        return std::to_string(lists.tempSensorNames.count()) + std::to_string(lists.cpuSensorNames.count()) +
               std::to_string(lists.validSensorNames.count()) +
               std::to_string(lists.sensorNameToCustomCellMap.size());
    };
    const Observation fans = lists.numFans.observe(
        [&] { events.push_back("numFans " + std::to_string(lists.numFans.get()) + " " + state()); });
    steps.getAllFanSensors = [&] { events.push_back("fans " + state()); };
    steps.setupSourceList = [&] { events.push_back("source list " + state()); };
    discover();
    events.push_back("end " + state());
    EXPECT_EQ(events, (Names{"numFans 1 0000", "fans 1000", "source list 1110", "end 1111"}));
}

TEST_F(SensorDiscoveryTest, NeedsNoneOfTheStepsAbove) {
    smc.setTemperature("TA0P", 42).setTemperature("TA0p", 41);
    steps = {};
    discover();
    EXPECT_EQ(lists.validSensorNames, (KeyList{"TA0p"}));
}

TEST_F(SensorDiscoveryTest, GivesEverySensorAFreshCopyOfThePrototypeCell) {
    smc.setTemperature("TC0P", 42).setTemperature("TZ0Q", 43);
    lists.customCell.setObjectValue(7);
    lists.sensorNameToCustomCellMap["TC0P"].setMaxUsedValue(99);
    lists.sensorNameToCustomCellMap["SERIAL"].setMaxUsedValue(55);
    discover();
    EXPECT_EQ(lists.sensorNameToCustomCellMap.size(), 2U);
    EXPECT_EQ(lists.sensorNameToCustomCellMap.at("TC0P"), lists.customCell);
    EXPECT_EQ(lists.sensorNameToCustomCellMap.at("SERIAL").maxUsedValue(), 55);
}

TEST_F(SensorDiscoveryTest, GivesNoCellsWhileThereIsNoMapForThem) {
    smc.setTemperature("TC0P", 42);
    lists.hasCustomCellMap = false;
    discover();
    EXPECT_EQ(lists.validSensorNames, (KeyList{"TC0P"}));
    EXPECT_TRUE(lists.sensorNameToCustomCellMap.empty());
}

TEST_F(SensorDiscoveryTest, TakesTheHotterAmbientSensorByALiveReading) {
    smc.setTemperature("TA0P", 30).setTemperature("TA0p", 35);
    discover();
    EXPECT_EQ(lists.logicBoardSensorNames, (KeyList{"TA0p"}));
}

class KeysFileDiscovery : public SensorDiscoveryTest {
  protected:
    const ProcessArguments arguments{"calorivo", "-custommodel", "Other2,2", "-keysfile", "/dumps/keys.txt"};
};

TEST_F(KeysFileDiscovery, FindsTheSensorsOfTheFileInPlaceOfTheMachines) {
    smc.setTemperature("TM0P", 42).addFan(2000, 1000, 6000);
    files.add("/dumps/keys.txt",
              "  TC1P  [sp78]  (bytes 3c 40)\n  TC0P  [sp78]  (bytes 00 00)\n"
              "  TG0D  [sp78]  (bytes 00 00)\n  TC2P  [sp78]  (bytes 2b 00\n  TC1P  [sp78]  (bytes 3d 00)\n");
    discover(arguments);
    EXPECT_TRUE(lists.isUsingKeysFile);
    EXPECT_EQ(lists.tempSensorNames, (KeyList{"TC1P", "TG0D", "TC1P"}));
    EXPECT_EQ(lists.fakeSensorToTempMap,
              (std::unordered_map<SensorKey, int>{{SensorKey("TC1P"), 61}, {SensorKey("TG0D"), 0}}));
    EXPECT_EQ(lists.validSensorNames, (KeyList{"TC1P", "TC1P", "TG0D"}));
    EXPECT_EQ(lists.numFans.get(), 1);
    EXPECT_EQ(discovery.keysFileProblem(), "");
    EXPECT_EQ(discovery.keysFileLineProblems(), (std::vector<KeysFileProblem>{{4, "no \")\""}}));
    EXPECT_EQ(files.reads, (Names{"/dumps/keys.txt"}));
}

TEST_F(KeysFileDiscovery, FindsNothingWhenTheFileIsMissing) {
    smc.setTemperature("TM0P", 42);
    discover(arguments);
    EXPECT_TRUE(lists.isUsingKeysFile);
    EXPECT_TRUE(lists.tempSensorNames.isEmpty());
    EXPECT_TRUE(lists.validSensorNames.isEmpty());
    EXPECT_EQ(discovery.keysFileProblem(), "No such file or directory");
}

TEST_F(KeysFileDiscovery, SaysWhyTheFileCouldNotBeRead) {
    files.fail("/dumps/keys.txt", "Is a directory");
    discover(arguments);
    EXPECT_TRUE(lists.isUsingKeysFile);
    EXPECT_TRUE(lists.tempSensorNames.isEmpty());
    EXPECT_EQ(discovery.keysFileProblem(), "Is a directory");
}

TEST_F(KeysFileDiscovery, DoesNotReadAFileBeyondTheLimit) {
    const std::string line = "TC0P [sp78] (bytes 3c 00)\n";
    files.add("/dumps/keys.txt", line + std::string(keysFileLimit - line.size(), ' '));
    discovery.getAllTempSensorNames(arguments);
    EXPECT_EQ(lists.tempSensorNames, (KeyList{"TC0P"}));

    files.add("/dumps/keys.txt", line + std::string(keysFileLimit - line.size() + 1, ' '));
    lists.tempSensorNames.clear();
    discovery.getAllTempSensorNames(arguments);
    EXPECT_TRUE(lists.tempSensorNames.isEmpty());
    EXPECT_EQ(discovery.keysFileProblem(), "File too large");
}

}  // namespace
}  // namespace calorivo
