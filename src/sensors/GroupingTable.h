#pragma once

#include "sensors/KeyPattern.h"
#include "sensors/SensorLists.h"

#include <array>

// The rules that sort keys into areas. They are independent of each other: a key may enter several lists, or
// the same list twice.

namespace calorivo {

struct GroupingRule {
    int number = 0;
    KeyPattern pattern;
    /// Null: a key that matches is left out, whatever the further rules say.
    KeyList SensorLists::*list = nullptr;
    /// Must hold as well, unless it is null.
    bool (*condition)(SensorKey) = nullptr;

    [[nodiscard]] constexpr bool takes(SensorKey key) const {
        return pattern.matches(key) && (condition == nullptr || condition(key));
    }
};

constexpr bool isMemoryModuleOrDie(SensorKey key) {
    return key[3] == 'D' || (key[3] == 'P' && key[2] >= '0' && key[2] <= '9');
}

// Kept: rule 0 comes first, so "TeGG" never reaches rule 6. Rules 3 and 4 both take "TCXc". Rule 19 has
// "TPOP" with the letter O, so "TP0P" with a zero is in no area. No rule takes "TA0p" by itself. The drive
// bays of rule 21 are in the enclosure, only the two of rule 8 are drives. All of it decides which sensors
// users have in which place of their windows and logs.
inline constexpr std::array<GroupingRule, 22> groupingRules{{
    {0, {.kind = "Gg"}, nullptr},
    {1, {.keys = "TCAC TCBC TCXr"}, &SensorLists::cpuRelativeSensorNames},
    {2,
     {.except = "TCSA TCSc TCAC TCBC TCXr",
      .component = "C",
      .instance = hexadecimalInstances,
      .kind = "DPHCdph"},
     &SensorLists::cpuSensorNames},
    {3,
     {.except = "TCSA TCSc TCAC TCBC TCXr TCGc", .component = "C", .kind = "c"},
     &SensorLists::cpuSensorNames},
    {4, {.keys = "TCXC TCXc TCGC"}, &SensorLists::cpuSensorNames},
    {5, {.component = "G", .kind = "DPHT"}, &SensorLists::gpuSensorNames},
    {6, {.keys = "TCGc TeGG"}, &SensorLists::gpuSensorNames},
    {7, {.keys = "TB0T TB1T TB2T"}, &SensorLists::batterySensorNames},
    {8, {.keys = "TH0A TH0B"}, &SensorLists::hdSensorNames},
    {9, {.component = "M", .instance = hexadecimalInstances, .kind = "S"}, &SensorLists::memorySensorNames},
    {10, {.component = "M"}, &SensorLists::memorySensorNames, isMemoryModuleOrDie},
    {11, {.component = "O", .kind = "P"}, &SensorLists::opticalSensorNames},
    {12, {.component = "L", .kind = "P"}, &SensorLists::lcdSensorNames},
    {13, {.component = "N"}, &SensorLists::northBridgeSensorNames},
    {14,
     {.keys = "Tp0C Tp1C Tp0P Tp1P Tp2H Tp3H Tp2P Tp3P Tp4P Tp5P Tm0P Ta0P"},
     &SensorLists::powerSupplySensorNames},
    {15, {.component = "W"}, &SensorLists::airportSensorNames},
    {16, {.component = "s", .kind = "P"}, &SensorLists::palmRestSensorNames},
    {17, {.component = "e", .kind = "S"}, &SensorLists::pciSensorNames},
    {18, {.keys = "THSP TI0P TI1P"}, &SensorLists::thunderBoltSensorNames},
    {19, {.keys = "TPOP TPCD Th1H Th2H Th3H TCSA TCSc Ts0S Ts1S"}, &SensorLists::logicBoardSensorNames},
    // Where the machine has "TA0p" too, the hotter of the two is taken in place of the key.
    {20, {.keys = "TA0P"}, &SensorLists::logicBoardSensorNames},
    {21,
     {.keys = "TS2p TS0p TH0P TH1P TH2P TH3P TH4P TH5P TH6P TH7P TH8P"},
     &SensorLists::enclosureSensorNames},
}};

}  // namespace calorivo
