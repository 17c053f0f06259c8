#include "sensors/SensorNaming.h"

#include "sensors/NamingTable.h"
#include "support/FixedGPUNames.h"

#include <gtest/gtest.h>

#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace calorivo {
namespace {

class SensorNamingTest : public testing::Test {
  protected:
    [[nodiscard]] std::string name(SensorKey key) const { return naming.convertKeyNameToHumanString(key); }

    SensorLists lists;
    test::FixedGPUNames gpuNames;
    SensorNaming naming{lists, gpuNames};
};

struct Row {
    int number;
    SensorKey key;
    std::string_view name;
    /// The valid sensors beside the key itself.
    KeyList others{};
};

const std::vector<Row> rowsBySensor{
    {1, "TCAC", "CPU A Core, Relative to ProcHot"},
    {2, "TCBC", "CPU B Core, Relative to ProcHot"},
    {3, "TCXr", "CPU Relative"},
    {4, "THSP", "Thunderbolt Proximity"},
    {4, "TI0P", "Thunderbolt Proximity"},
    {4, "TI1P", "Thunderbolt Proximity"},
    {5, "Ts0S", "Heatpipe Outgoing Air"},
    {5, "Ts1S", "Heatpipe Outgoing Air"},
    {6, "TeGG", "PCIe GPU"},
    {7, "TA0P", "Ambient"},
    {7, "TA0p", "Ambient"},
    {8, "TPCD", "Platform Controller Hub Die"},
    {9, "TP0P", "Platform Controller Hub Proximity"},
    {10, "Th3H", "Heatsink Proximity"},
    {11, "Th2H", "Left Heatsink Proximity"},
    {12, "Th1H", "Right Heatsink Proximity"},
    {13, "TS2p", "Internal Upper Enclosure"},
    {13, "TS0p", "Internal Upper Enclosure"},
    {14, "TH0P", "HDD Bay "},
    {14, "TH0P", "HDD Bay 0", {"TH1P"}},
    {14, "TH1P", "HDD Bay 1", {"TH0P"}},
    {14, "TH2P", "HDD Bay 2"},
    {14, "TH3P", "HDD Bay 3"},
    {14, "TH4P", "HDD Bay 4"},
    {14, "TH5P", "HDD Bay 5"},
    {14, "TH6P", "HDD Bay 6"},
    {14, "TH7P", "HDD Bay 7"},
    {14, "TH8P", "HDD Bay 8"},
    {15, "Ta0P", "Air Flow Proximity"},
    {16, "TCSA", "PECI System Agent"},
    {16, "TCSc", "PECI System Agent"},
    {17, "TCXc", "CPU PECI"},
    {17, "TCXC", "CPU PECI"},
    {18, "TCGc", "GPU PECI"},
    {19, "TCGC", "CPU GFX Core"},
    {20, "TG1D", "GPU 2", {"TG0D"}},
    {21, "TG1P", "GPU Proximity", {"TG0D", "TG1D"}},
    {22, "TG0D", "GPU 1", {"TG1D"}},
    {23, "TG0P", "GPU Proximity", {"TG0D", "TG1D"}},
    {24, "TCFP", "SMC F Proximity"},
    {25, "TCAD", "CPU A Diode"},
    {26, "TCBD", "CPU B Diode"},
    {27, "TC0D", "CPU Diode "},
    {27, "TC2d", "CPU Diode 2"},
    {28, "TC0P", "CPU Proximity "},
    {28, "TC3p", "CPU Proximity 3"},
    {29, "TC4H", "CPU Heatsink 4"},
    {29, "TCAh", "CPU Heatsink A"},
    {30, "TC5C", "CPU Core 5"},
    {30, "TCKc", "CPU Core K"},
    {31, "TC0E", "CPU TC0E"},
    {31, "TCXR", "CPU TCXR"},
    {32, "TG0D", "GPU Diode "},
    {32, "TG4d", "GPU Diode 5"},
    {33, "TG1P", "GPU Proximity "},
    {33, "TG9p", "GPU Proximity 10"},
    {34, "TG2H", "GPU Heatsink 3"},
    {34, "TGAh", "GPU Heatsink A"},
    {35, "TG0T", "GPU Diode (Analog) ", {"TG0D"}},
    {35, "TG0T", "GPU Diode (Analog) 1", {"TG0D", "TG1T"}},
    {35, "TG0T", "GPU Diode (Analog) 1", {"TG1D", "TG1T"}},
    {35, "TG0T", "GPU Heatsink ", {"TG0D", "TG1D"}},
    {35, "TG0T", "GPU Heatsink 1", {"TG0D", "TG1D", "TG1T"}},
    {36, "TG0S", "GPU TG0S"},
    {37, "TH0A", "SSD A"},
    {38, "TH0B", "SSD B"},
    {39, "TB0T", "Battery Sensor Max"},
    {40, "TB1T", "Battery Sensor 1"},
    {41, "TB2T", "Battery Sensor 2"},
    {42, "TMCS", "Memory Controller"},
    {42, "Tm0D", "Memory Controller"},
    {42, "TmCP", "Memory Controller"},
    {43, "TM0P", "Memory Module Proximity "},
    {43, "TM3P", "Memory Module Proximity 4"},
    {43, "Tm1P", "Memory Module Proximity 1", {"Tm2P"}},
    {44, "TM0S", "Memory Slot 1", {"TM1S"}},
    {44, "TmAS", "Memory Slot A"},
    {45, "TMA1", "Memory DIMM SPD A"},
    {45, "TmBx", "Memory DIMM SPD B"},
    {46, "TM0V", "Memory TM0V"},
    {47, "TO0P", "Optical Drive Proximity "},
    {47, "TO4P", "Optical Drive Proximity 5"},
    {48, "TO0p", "Optical - TO0p"},
    {49, "TL0P", "LCD Monitor Proximity"},
    {50, "TL0p", "LCD - TL0p"},
    {51, "TN0D", "Northbridge Core"},
    {51, "TNFC", "Northbridge Core"},
    {52, "TNFP", "Northbridge F Proximity"},
    {53, "TN0P", "Northbridge Proximity"},
    {54, "TN1H", "Northbridge Heatsink"},
    {55, "TN0d", "Northbridge - TN0d"},
    {56, "Tp0C", "AC/DC Supply 1"},
    {57, "Tp1C", "AC/DC Supply 2"},
    {58, "Tp0P", "Power Supply Proximity"},
    {58, "Tp1P", "Power Supply Proximity"},
    {58, "Tp2P", "Power Supply Proximity"},
    {58, "Tp3P", "Power Supply Proximity"},
    {58, "Tp4P", "Power Supply Proximity"},
    {58, "Tp5P", "Power Supply Proximity"},
    {59, "Tp2H", "Power Supply Heatsink"},
    {59, "Tp3H", "Power Supply Heatsink"},
    {60, "Tm0P", "DC In Proximity"},
    {61, "Tp6P", "Power Supply - Tp6P"},
    {61, "TPOP", "Power Supply - TPOP"},
    {61, "TP0C", "Power Supply - TP0C"},
    {62, "TW0P", "AirPort Proximity"},
    {63, "TW0p", "Airport - TW0p"},
    {64, "Ts0P", "Palmrest Proximity"},
    {64, "Ts1P", "Palmrest Proximity"},
    {65, "Ts2P", "Palm Rest - Ts2P"},
    {65, "Ts2S", "Palm Rest - Ts2S"},
    {66, "TeAS", "PCI Slot A Ambient"},
    {67, "TeBS", "PCI Slot B Ambient"},
    {68, "TeCS", "PCI Slot C Ambient"},
    {69, "TeDS", "RAID Card Ambient"},
    {69, "TeES", "RAID Card Ambient"},
    {70, "Te1S", "PCIe Slot 1"},
    {70, "Te2S", "PCIe Slot 2"},
    {70, "Te3S", "PCIe Slot 3"},
    {70, "Te4S", "PCIe Slot 4"},
    {71, "Te5S", "PCIe RAID Card"},
    {72, "Te6S", "PCIe - Te6S"},
    {73, "TZ0Q", "Unknown Name - TZ0Q"},
    {73, "TB3T", "Unknown Name - TB3T"},
    {73, "TH9P", "Unknown Name - TH9P"},
    {73, "Th4H", "Unknown Name - Th4H"},
};

TEST_F(SensorNamingTest, NamesEverySensorByTheFirstRowThatMatches) {
    for (const Row& row : rowsBySensor) {
        lists.validSensorNames = row.others;
        lists.validSensorNames.append(row.key);
        EXPECT_EQ(name(row.key), row.name) << row.key.view();
        EXPECT_EQ(naming.namingRow(row.key), row.number) << row.key.view();
    }
}

TEST_F(SensorNamingTest, HasASensorForEveryRow) {
    std::set<int> reached;
    std::set<int> all;
    for (const Row& row : rowsBySensor) reached.insert(row.number);
    for (const NamingRow& row : namingRows()) all.insert(row.number);
    EXPECT_EQ(all.size(), 73U);
    EXPECT_EQ(reached, all);
}

TEST_F(SensorNamingTest, PutsTheModelsOwnNameBeforeEveryRow) {
    lists.validSensorNames = {"TC0P", "TCAC"};
    lists.customSensorsToReadableNamesMap["TCAC"] = "Left, 100%@ of it";
    EXPECT_EQ(name("TCAC"), "Left, 100%@ of it");
    EXPECT_EQ(naming.namingRow("TCAC"), 0);
    EXPECT_EQ(name("TC0P"), "CPU Proximity ");
    EXPECT_EQ(naming.namingRow("TC0P"), 28);
}

TEST_F(SensorNamingTest, LeavesTMPVWithoutAName) {
    EXPECT_EQ(name("TMPV"), "Unknown Name - TMPV");
    EXPECT_EQ(naming.namingRow("TMPV"), 73);
    EXPECT_EQ(name("TmPV"), "Memory TmPV");
}

TEST_F(SensorNamingTest, CallsTheBatterySensorByTheNumberOfBatterySensors) {
    lists.batterySensorNames = {"TB0T"};
    EXPECT_EQ(name("TB0T"), "Battery");
    lists.batterySensorNames = {"TB0T", "TB1T", "TB2T"};
    EXPECT_EQ(name("TB0T"), "Battery Sensor Max");
    lists.batterySensorNames = {"TB0T", "TB0T"};
    EXPECT_EQ(name("TB0T"), "Battery Sensor Max");
}

TEST_F(SensorNamingTest, NamesTheSensorsOfAnExampleMachine) {
    lists.validSensorNames = {"TC0C", "TC1C", "TC0D", "TG0D", "TG0P", "TH0P"};
    std::vector<std::string> names;
    for (const SensorKey key : lists.validSensorNames) names.push_back(name(key));
    EXPECT_EQ(names, (std::vector<std::string>{"CPU Core 1", "CPU Core 2", "CPU Diode ", "GPU Diode ",
                                               "GPU Proximity ", "HDD Bay "}));
}

TEST_F(SensorNamingTest, GivesEveryKeyAName) {
    constexpr std::string_view characters = "0123456789ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz";
    lists.validSensorNames = {"TC0C", "TC1C", "TG0D", "TG1D", "TM0S", "TM1S"};
    for (const char component : characters)
        for (const char instance : std::string_view("019AGcC"))
            for (const char kind : characters) {
                const SensorKey key = SensorKey("T...").with(1, component).with(2, instance).with(3, kind);
                const std::string given = name(key);
                ASSERT_FALSE(given.empty()) << key.view();
                ASSERT_EQ(given.find('%'), std::string::npos) << given;
                ASSERT_GE(naming.namingRow(key), 1) << key.view();
                ASSERT_LE(naming.namingRow(key), 73) << key.view();
            }
}

TEST_F(SensorNamingTest, GivesKeysThatAreNoTextANameToo) {
    EXPECT_EQ(name(SensorKey()), "Unknown Name - ");
    EXPECT_EQ(name(SensorKey(std::string_view("TC\xff\x80"))), "CPU TC\xff\x80");
    EXPECT_EQ(name(SensorKey(std::string_view("T%@d"))), "Unknown Name - T%@d");
}

TEST_F(SensorNamingTest, AsksForTheNorthbridgeByBothOfItsFirstCharacters) {
    EXPECT_EQ(name("FN0D"), "Unknown Name - FN0D");
    EXPECT_EQ(name("FW0P"), "AirPort Proximity");
}

class DualGPUNaming : public SensorNamingTest {
  protected:
    /// The names of both GPUs' diodes and proximities.
    [[nodiscard]] std::vector<std::string> names() const {
        return {name("TG0D"), name("TG0P"), name("TG1D"), name("TG1P")};
    }

    DualGPUNaming() { lists.validSensorNames = {"TG0D", "TG0P", "TG1D", "TG1P"}; }
};

TEST_F(DualGPUNaming, UsesTheNamesOfTheGPUs) {
    gpuNames.integrated = "Intel HD Graphics 4000";
    gpuNames.discrete = "GeForce 650M";
    EXPECT_EQ(names(), (std::vector<std::string>{"Intel HD Graphics 4000", "Intel HD Graphics 4000 Proximity",
                                                 "GeForce 650M", "GeForce 650M Proximity"}));
}

TEST_F(DualGPUNaming, NumbersTheGPUsWhenNoNameIsKnown) {
    EXPECT_EQ(names(), (std::vector<std::string>{"GPU 1", "GPU Proximity", "GPU 2", "GPU Proximity"}));
}

TEST_F(DualGPUNaming, DoesNotUseTheDiscreteNameWithoutTheIntegratedOne) {
    gpuNames.discrete = "GeForce 650M";
    EXPECT_EQ(names(), (std::vector<std::string>{"GPU 1", "GPU Proximity", "GPU 2", "GPU Proximity"}));
}

TEST_F(DualGPUNaming, NumbersTheDiscreteGPUWhenOnlyTheIntegratedNameIsKnown) {
    gpuNames.integrated = "Intel Iris";
    EXPECT_EQ(names(),
              (std::vector<std::string>{"Intel Iris", "Intel Iris Proximity", "GPU 2", "GPU Proximity"}));
}

TEST_F(DualGPUNaming, AppliesToTheFourKeysOnly) {
    gpuNames.integrated = "Intel Iris";
    gpuNames.discrete = "Radeon";
    EXPECT_EQ(name("TG0d"), "GPU Diode ");
    EXPECT_EQ(name("TG2D"), "GPU Diode 3");
}

TEST_F(DualGPUNaming, DoesNotApplyWhenOneDiodeIsMissing) {
    gpuNames.integrated = "Intel Iris";
    gpuNames.discrete = "Radeon";
    lists.validSensorNames = {"TG0P", "TG1D", "TG1P"};
    EXPECT_EQ(names(),
              (std::vector<std::string>{"GPU Diode 1", "GPU Proximity 1", "GPU Diode ", "GPU Proximity 2"}));
}

}  // namespace
}  // namespace calorivo
