#include "sensors/DiscoveryFixture.h"
#include "support/FakeSmc.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace calorivo {
namespace {

using test::ByArea;
using Names = std::vector<std::string>;

/// A machine that has a table in the program, and one that has none.
class ModelTables : public test::DiscoveryFixture {
  protected:
    ModelTables() {
        smc.setTemperature("TC0P", 42).setTemperature("TCSA", 43).setTemperature("TW0P", 44);
        modelTables = {
            {"First1,1", {{"TC0P", "Zeta", "CPU"}}},
            {"Book1,1",
             {{"TCSA", "CPU System Agent Core", "CPU"},
              {"TC2C", "CPU Core 2", "CPU"},
              {"TC2c", "cpu core 10", "CPU"},
              {"TW0P", "AirPort Proximity", "Logic Board"},
              {"TH0A", "SSD A", "Hard Drive"}}},
            {"Book1,1", {{"TC0P", "Never", "CPU"}}},
        };
    }
    void discoverAs(const std::optional<std::string>& model) {
        lists.modelName = model;
        discover();
    }

    test::FakeSmc smc;
};

TEST_F(ModelTables, DecideWhichSensorsThereAreWhateverTheScanFound) {
    discoverAs("Book1,1");
    EXPECT_TRUE(lists.isUsingCustomSensorNames);
    EXPECT_EQ(lists.tempSensorNames, (KeyList{"TC0P", "TCSA", "TW0P"}));
    EXPECT_EQ(
        byArea(),
        (ByArea{{"CPU", {"TC2c", "TC2C", "TCSA"}}, {"Logic Board", {"TW0P"}}, {"Hard Drive", {"TH0A"}}}));
    EXPECT_EQ(validNames(),
              (Names{"cpu core 10", "CPU Core 2", "CPU System Agent Core", "AirPort Proximity", "SSD A"}));
}

TEST_F(ModelTables, AreChosenByTheExactIdentifier) {
    for (const std::optional<std::string>& model :
         {std::optional<std::string>("book1,1"), std::optional<std::string>("Book1,1 "),
          std::optional<std::string>("Book1"), std::optional<std::string>(""),
          std::optional<std::string>()}) {
        SensorLists other;
        const SensorNaming otherNaming(other, gpuNames);
        other.tempSensorNames = {"TC0P", "TCSA", "TW0P"};
        SensorDiscovery(other, otherNaming, files, modelTables).findValidSensorNamesForModel(model, steps);
        EXPECT_FALSE(other.isUsingCustomSensorNames);
        EXPECT_TRUE(other.customSensorsToReadableNamesMap.empty());
        EXPECT_EQ(other.cpuSensorNames, (KeyList{"TC0P"}));
        EXPECT_EQ(other.logicBoardSensorNames, (KeyList{"TCSA"}));
        EXPECT_EQ(other.airportSensorNames, (KeyList{"TW0P"}));
    }
}

TEST_F(ModelTables, AreTriedInOrder) {
    discoverAs("First1,1");
    EXPECT_EQ(validNames(), (Names{"Zeta"}));
}

TEST_F(ModelTables, AreAddedInTheirOrderBeforeTheyAreSorted) {
    discovery.findValidSensorNamesForModel("Book1,1", steps);
    EXPECT_EQ(lists.cpuSensorNames, (KeyList{"TCSA", "TC2C", "TC2c"}));
}

TEST_F(ModelTables, PassOverEntriesOfUnknownAreasOrWithoutAKey) {
    modelTables = {{"Odd1,1",
                    {{"TC0P", "No such area", "Cpu"},
                     {"TC1P", "All is no area", "All"},
                     {"TC2", "Short", "CPU"},
                     {"TC3PP", "Long", "CPU"},
                     {"", "Empty", "CPU"},
                     {"TC4P", "Good", "CPU"}}}};
    discoverAs("Odd1,1");
    EXPECT_TRUE(lists.isUsingCustomSensorNames);
    EXPECT_EQ(lists.validSensorNames, (KeyList{"TC4P"}));
    EXPECT_EQ(lists.customSensorsToReadableNamesMap,
              (std::unordered_map<SensorKey, std::string>{{SensorKey("TC4P"), "Good"}}));
}

TEST_F(ModelTables, MayBeEmpty) {
    modelTables = {{"None1,1", {}}};
    discoverAs("None1,1");
    EXPECT_TRUE(lists.isUsingCustomSensorNames);
    EXPECT_TRUE(lists.validSensorNames.isEmpty());
}

TEST_F(ModelTables, HaveTheSensorsOfTheProviderWithoutEffect) {
    steps.machineSensors = {{"TC0P", "Socket", "LCD"}};
    discoverAs("Book1,1");
    EXPECT_FALSE(lists.validSensorNames.containsString("TC0P"));
    EXPECT_TRUE(lists.lcdSensorNames.isEmpty());
}

TEST_F(ModelTables, RecordTheNameAndAppendTheKey) {
    lists.lcdSensorNames = {"TL0P"};
    discovery.addSensorWithNameToArray("TC7P", "first", lists.lcdSensorNames);
    discovery.addSensorWithNameToArray("TC7P", "second", lists.lcdSensorNames);
    EXPECT_EQ(lists.lcdSensorNames, (KeyList{"TL0P", "TC7P", "TC7P"}));
    EXPECT_EQ(naming.convertKeyNameToHumanString("TC7P"), "second");
}

class MachineSensors : public test::DiscoveryFixture {
  protected:
    test::FakeSmc smc;
};

TEST_F(MachineSensors, TakeTheirNamesAndAreasFromTheProvider) {
    smc.setTemperature("TC1C", 42).setTemperature("TC2C", 43).setTemperature("TN0x", 44);
    smc.setTemperature("TW0P", 45).setTemperature("TM0S", 46);
    steps.machineSensors = {{"TC2C", "CPU Core 2", "CPU"},
                            {"TC1C", "CPU Core 1", "CPU"},
                            {"TN0x", "Thermal Zone 1", "Logic Board"},
                            {"TG0D", "Radeon", "GPU"},
                            {"TW0P", "Wi-Fi", "Radio"}};
    discover();
    EXPECT_FALSE(lists.isUsingCustomSensorNames);
    EXPECT_EQ(byArea(), (ByArea{{"CPU", {"TC1C", "TC2C"}},
                                {"Logic Board", {"TN0x"}},
                                {"Memory", {"TM0S"}},
                                {"Wireless", {"TW0P"}}}));
    EXPECT_EQ(validNames(),
              (Names{"CPU Core 1", "CPU Core 2", "Thermal Zone 1", "Memory Slot ", "AirPort Proximity"}));
}

TEST_F(MachineSensors, AreAddedInTheOrderGivenBeforeTheOthers) {
    lists.tempSensorNames = {"TC0P", "TC1P", "TC2P"};
    steps.machineSensors = {{"TC2P", "b", "CPU"}, {"TC1P", "a", "CPU"}};
    discovery.findValidSensorNamesForModel("Any1,1", steps);
    EXPECT_EQ(lists.cpuSensorNames, (KeyList{"TC2P", "TC1P", "TC0P"}));
}

TEST_F(MachineSensors, AreNoTwinsOfOneAnother) {
    smc.setTemperature("TCCC", 42).setTemperature("TCCc", 43).setTemperature("TCDC", 44);
    smc.setTemperature("TCDc", 45);
    steps.machineSensors = {{"TCCC", "CPU Core 2", "CPU"}, {"TCCc", "CPU Core 1", "CPU"}};
    discover();
    EXPECT_EQ(lists.validSensorNames, (KeyList{"TCCc", "TCCC", "TCDC"}));
    EXPECT_EQ(validNames(), (Names{"CPU Core 1", "CPU Core 2", "CPU Core D"}));
}

TEST_F(MachineSensors, SayNothingAboutTheMachineOfAKeysFile) {
    files.add("keys.txt", "TC0P [sp78] (bytes 3c 00)\n");
    steps.machineSensors = {{"TC0P", "Socket", "LCD"}};
    discover({"calorivo", "-keysfile", "keys.txt"});
    EXPECT_EQ(byArea(), (ByArea{{"CPU", {"TC0P"}}}));
    EXPECT_EQ(validNames(), (Names{"CPU Proximity "}));
}

}  // namespace
}  // namespace calorivo
