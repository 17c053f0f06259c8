#include "sensors/NamingTable.h"

#include "sensors/SensorRules.h"

#include <array>

namespace calorivo {

namespace {

using enum Wording;

bool isMemoryController(const SensorLists& /*lists*/, SensorKey key) {
    return key[2] == 'C' || key[3] == 'D';
}

// Kept: "TMPV" is excluded from memory and no later row knows it, so that it stays without a name; "Tm0P" is
// the power input although it looks like memory.
constexpr KeySet noMemoryKeys = "TMPV Tm0P";

constexpr std::array<NamingRow, 73> rows{{
    {1, {.keys = "TCAC"}, fixed, "CPU A Core, Relative to ProcHot"},
    {2, {.keys = "TCBC"}, fixed, "CPU B Core, Relative to ProcHot"},
    {3, {.keys = "TCXr"}, fixed, "CPU Relative"},
    {4, {.keys = "THSP TI0P TI1P"}, fixed, "Thunderbolt Proximity"},
    {5, {.keys = "Ts0S Ts1S"}, fixed, "Heatpipe Outgoing Air"},
    {6, {.keys = "TeGG"}, fixed, "PCIe GPU"},
    {7, {.keys = "TA0P TA0p"}, fixed, "Ambient"},
    {8, {.keys = "TPCD"}, fixed, "Platform Controller Hub Die"},
    {9, {.keys = "TP0P"}, fixed, "Platform Controller Hub Proximity"},
    {10, {.keys = "Th3H"}, fixed, "Heatsink Proximity"},
    {11, {.keys = "Th2H"}, fixed, "Left Heatsink Proximity"},
    {12, {.keys = "Th1H"}, fixed, "Right Heatsink Proximity"},
    {13, {.keys = "TS2p TS0p"}, fixed, "Internal Upper Enclosure"},
    {14, {.keys = "TH0P TH1P TH2P TH3P TH4P TH5P TH6P TH7P TH8P"}, withIndex, "HDD Bay %@"},
    {15, {.keys = "Ta0P"}, fixed, "Air Flow Proximity"},
    {16, {.keys = "TCSA TCSc"}, fixed, "PECI System Agent"},
    {17, {.keys = "TCXc TCXC"}, fixed, "CPU PECI"},
    {18, {.keys = "TCGc"}, fixed, "GPU PECI"},
    {19, {.keys = "TCGC"}, fixed, "CPU GFX Core"},
    {20, {}, discreteGPU, "GPU 2", "%@", isSensorDiscreteGPU},
    {21, {}, discreteGPU, "GPU Proximity", "%@ Proximity", isSensorDiscreteGPU_Proximity},
    {22, {}, integratedGPU, "GPU 1", "%@", isSensorIntegratedGPU},
    {23, {}, integratedGPU, "GPU Proximity", "%@ Proximity", isSensorIntegratedGPU_Proximity},
    {24, {.keys = "TCFP"}, fixed, "SMC F Proximity"},
    {25, {.keys = "TCAD"}, fixed, "CPU A Diode"},
    {26, {.keys = "TCBD"}, fixed, "CPU B Diode"},
    {27, {.component = "C", .kind = "dD"}, withIndex, "CPU Diode %@"},
    {28, {.component = "C", .kind = "pP"}, withIndex, "CPU Proximity %@"},
    {29, {.component = "C", .kind = "hH"}, withIndex, "CPU Heatsink %@"},
    {30, {.component = "C", .kind = "cC"}, withIndex, "CPU Core %@"},
    {31, {.component = "C"}, withKey, "CPU %@"},
    {32, {.component = "G", .kind = "dD"}, withIndex, "GPU Diode %@"},
    {33, {.component = "G", .kind = "pP"}, withIndex, "GPU Proximity %@"},
    {34, {.component = "G", .kind = "hH"}, withIndex, "GPU Heatsink %@"},
    {35, {.component = "G", .kind = "T"}, analogGPUDiode, "GPU Diode (Analog) %@", "GPU Heatsink %@"},
    {36, {.component = "G"}, withKey, "GPU %@"},
    {37, {.keys = "TH0A"}, fixed, "SSD A"},
    {38, {.keys = "TH0B"}, fixed, "SSD B"},
    {39, {.keys = "TB0T"}, battery, "Battery Sensor Max", "Battery"},
    {40, {.keys = "TB1T"}, fixed, "Battery Sensor 1"},
    {41, {.keys = "TB2T"}, fixed, "Battery Sensor 2"},
    {42, {.except = noMemoryKeys, .component = "mM"}, fixed, "Memory Controller", {}, isMemoryController},
    {43, {.except = noMemoryKeys, .component = "mM", .kind = "P"}, withIndex, "Memory Module Proximity %@"},
    {44, {.except = noMemoryKeys, .component = "mM", .kind = "S"}, withIndex, "Memory Slot %@"},
    {45, {.except = noMemoryKeys, .component = "mM", .instance = "AB"}, withIndex, "Memory DIMM SPD %@"},
    {46, {.except = noMemoryKeys, .component = "mM"}, withKey, "Memory %@"},
    {47, {.component = "O", .kind = "P"}, withIndex, "Optical Drive Proximity %@"},
    {48, {.component = "O"}, withKey, "Optical - %@"},
    {49, {.component = "L", .kind = "P"}, fixed, "LCD Monitor Proximity"},
    {50, {.component = "L"}, withKey, "LCD - %@"},
    {51, {.start = "T", .component = "N", .kind = "DC"}, fixed, "Northbridge Core"},
    {52, {.keys = "TNFP"}, fixed, "Northbridge F Proximity"},
    {53, {.start = "T", .component = "N", .kind = "P"}, fixed, "Northbridge Proximity"},
    {54, {.start = "T", .component = "N", .kind = "H"}, fixed, "Northbridge Heatsink"},
    {55, {.start = "T", .component = "N"}, withKey, "Northbridge - %@"},
    {56, {.keys = "Tp0C"}, fixed, "AC/DC Supply 1"},
    {57, {.keys = "Tp1C"}, fixed, "AC/DC Supply 2"},
    {58, {.keys = "Tp0P Tp1P Tp2P Tp3P Tp4P Tp5P"}, fixed, "Power Supply Proximity"},
    {59, {.keys = "Tp2H Tp3H"}, fixed, "Power Supply Heatsink"},
    {60, {.keys = "Tm0P"}, fixed, "DC In Proximity"},
    {61, {.component = "pP"}, withKey, "Power Supply - %@"},
    {62, {.component = "W", .kind = "P"}, fixed, "AirPort Proximity"},
    {63, {.component = "W"}, withKey, "Airport - %@"},
    {64, {.component = "s", .instance = "01", .kind = "P"}, fixed, "Palmrest Proximity"},
    {65, {.component = "s"}, withKey, "Palm Rest - %@"},
    {66, {.keys = "TeAS"}, fixed, "PCI Slot A Ambient"},
    {67, {.keys = "TeBS"}, fixed, "PCI Slot B Ambient"},
    {68, {.keys = "TeCS"}, fixed, "PCI Slot C Ambient"},
    {69, {.keys = "TeDS TeES"}, fixed, "RAID Card Ambient"},
    {70, {.keys = "Te1S Te2S Te3S Te4S"}, withInstance, "PCIe Slot %@"},
    {71, {.keys = "Te5S"}, fixed, "PCIe RAID Card"},
    {72, {.component = "e"}, withKey, "PCIe - %@"},
    {73, {}, withKey, "Unknown Name - %@"},
}};

constexpr bool areNumberedInOrder() {
    for (std::size_t i = 0; i < rows.size(); ++i)
        if (rows[i].number != static_cast<int>(i) + 1) return false;
    return true;
}
static_assert(areNumberedInOrder());

}  // namespace

std::span<const NamingRow> namingRows() { return rows; }

const NamingRow& namingRowFor(SensorKey key, const SensorLists& lists) {
    for (const NamingRow& row : rows)
        if (row.pattern.matches(key) && (row.condition == nullptr || row.condition(lists, key))) return row;
    return rows.back();
}

}  // namespace calorivo
