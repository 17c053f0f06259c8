#include "platform/data/ModelTableFiles.h"

#include "platform/data/AreaNames.h"

#include <gtest/gtest.h>

#include <ostream>
#include <set>
#include <string>
#include <utility>
#include <vector>

namespace calorivo {

/// Shown by a failing comparison.
void PrintTo(const ModelTableEntry& entry, std::ostream* out) {
    *out << entry.key << " \"" << entry.name << "\" " << entry.area;
}

namespace test {
namespace {

using Entries = std::vector<ModelTableEntry>;
using Texts = std::vector<std::string>;

const std::string shippedFolder = std::string(CALORIVO_SOURCE_DIR) + "/data/model-tables";

const Entries laptopEntries{
    {"TC1C", "CPU Core 1", "CPU"},
    {"TC2C", "CPU Core 2", "CPU"},
    {"TC3C", "CPU Core 3", "CPU"},
    {"TC4C", "CPU Core 4", "CPU"},
    {"TC0P", "CPU Proximity", "CPU"},
    {"TCXC", "CPU PECI", "CPU"},
    {"TCSA", "CPU System Agent Core", "CPU"},
    {"TCGC", "Intel Iris Pro GPU", "GPU"},
    {"TB1T", "Battery Sensor 1", "Battery"},
    {"TB2T", "Battery Sensor 2", "Battery"},
    {"TB0T", "Battery Sensor Max", "Battery"},
    {"Ts0S", "Left Heatpipe Outgoing Air", "Logic Board"},
    {"Ts1S", "Right Heatpipe Outgoing Air", "Logic Board"},
    {"Th2H", "Left Heatsink Proximity", "Logic Board"},
    {"Th1H", "Right Heatsink Proximity", "Logic Board"},
    {"TPCD", "Platform Controller Hub Die", "Logic Board"},
    {"Ta0P", "Air Flow Proximity", "Logic Board"},
    {"TW0P", "AirPort Proximity", "Logic Board"},
    {"TM0P", "Memory Module Proximity", "Memory"},
    {"TM0S", "Memory Slot", "Memory"},
    {"Ts0P", "Left Palm Rest", "Palm Rest"},
    {"Ts1P", "Right Palm Rest", "Palm Rest"},
    {"TH0A", "SSD A", "Hard Drive"},
    {"TH0B", "SSD B", "Hard Drive"},
};

const Entries dualGraphicsLaptopEntries{
    {"TC1C", "CPU Core 1", "CPU"},
    {"TC2C", "CPU Core 2", "CPU"},
    {"TC3C", "CPU Core 3", "CPU"},
    {"TC4C", "CPU Core 4", "CPU"},
    {"TC0P", "CPU Proximity", "CPU"},
    {"TCXC", "CPU PECI", "CPU"},
    {"TG0D", "AMD Radeon GPU", "GPU"},
    {"TG0P", "AMD Radeon GPU Proximity", "GPU"},
    {"TCGC", "Intel Iris Pro GPU", "GPU"},
    {"TB1T", "Battery Sensor 1", "Battery"},
    {"TB2T", "Battery Sensor 2", "Battery"},
    {"TB0T", "Battery Sensor Max", "Battery"},
    {"Ts0S", "Left Heatpipe Outgoing Air", "Logic Board"},
    {"Ts1S", "Right Heatpipe Outgoing Air", "Logic Board"},
    {"Th2H", "Left Heatsink Proximity", "Logic Board"},
    {"Th1H", "Right Heatsink Proximity", "Logic Board"},
    {"TCSA", "PECI System Agent", "Logic Board"},
    {"TPCD", "Platform Controller Hub Die", "Logic Board"},
    {"Ta0P", "Air Flow Proximity", "Logic Board"},
    {"TW0P", "AirPort Proximity", "Logic Board"},
    {"TM0P", "Memory Module Proximity", "Memory"},
    {"TM0S", "Memory Slot", "Memory"},
    {"Ts0P", "Left Palm Rest", "Palm Rest"},
    {"Ts1P", "Right Palm Rest", "Palm Rest"},
    {"TH0A", "SSD A", "Hard Drive"},
    {"TH0B", "SSD B", "Hard Drive"},
};

TEST(ShippedModelTables, AreReadWithoutProblems) {
    const ModelTableFiles files = readModelTables(shippedFolder, areaNames);
    EXPECT_EQ(files.problems, Texts{});
    Texts identifiers;
    for (const ModelTable& table : files.tables) identifiers.push_back(table.identifier);
    EXPECT_EQ(identifiers, (Texts{"MacBookPro11,4", "MacBookPro11,5", "MacPro6,1"}));
}

TEST(ShippedModelTables, AreFoundByTheNamesOfTheirFiles) {
    for (const ModelTable& table : readModelTables(shippedFolder, areaNames).tables) {
        const ModelTableFiles named = readModelTableNamed(shippedFolder, table.identifier, areaNames);
        ASSERT_EQ(named.tables.size(), 1U) << table.identifier;
        EXPECT_EQ(named.tables[0].entries, table.entries);
    }
}

TEST(ShippedModelTables, HoldTheEntriesOfTheLaptopWithOneGPU) {
    const ModelTableFiles files = readModelTables(shippedFolder, areaNames, "MacBookPro11,4");
    ASSERT_EQ(files.tables.size(), 1U);
    EXPECT_EQ(files.tables[0].entries.size(), 24U);
    EXPECT_EQ(files.tables[0].entries, laptopEntries);
}

TEST(ShippedModelTables, HoldTheEntriesOfTheLaptopWithTwoGPUs) {
    const ModelTableFiles files = readModelTables(shippedFolder, areaNames, "MacBookPro11,5");
    ASSERT_EQ(files.tables.size(), 1U);
    EXPECT_EQ(files.tables[0].entries.size(), 26U);
    EXPECT_EQ(files.tables[0].entries, dualGraphicsLaptopEntries);
}

TEST(ShippedModelTables, HoldTheAreasOfTheTowerInTheirOrder) {
    const ModelTableFiles files = readModelTables(shippedFolder, areaNames, "MacPro6,1");
    ASSERT_EQ(files.tables.size(), 1U);
    std::vector<std::pair<std::string, int>> runs;
    std::set<std::string> keys;
    std::set<std::string> names;
    for (const auto& [key, name, area] : files.tables[0].entries) {
        if (runs.empty() || runs.back().first != area) runs.emplace_back(area, 0);
        ++runs.back().second;
        keys.insert(key);
        names.insert(name);
    }
    const std::vector<std::pair<std::string, int>> expected{{"Logic Board", 9}, {"GPU", 8},        {"CPU", 8},
                                                            {"Memory", 2},      {"Hard Drive", 2}, {"PCI", 1},
                                                            {"Power Supply", 7}};
    EXPECT_EQ(runs, expected);
    EXPECT_EQ(keys.size(), 37U);
    EXPECT_EQ(names.size(), 37U);
    // Both together would stand for an integrated and a discrete unit; this machine has two discrete ones.
    EXPECT_FALSE(keys.contains("TG0D") && keys.contains("TG1D"));
}

}  // namespace
}  // namespace test
}  // namespace calorivo
