#pragma once

#include "sensors/SensorLists.h"

#include <array>
#include <cstdint>
#include <string_view>

namespace calorivo {

/// One area of the source list. The tags are fixed numbers, not positions.
struct Area {
    std::string_view name;
    /// The name of the area's icon resource.
    std::string_view icon;
    std::int32_t tag;
    KeyList SensorLists::*sensors;
};

inline constexpr std::int32_t allAreasTag = 17;
inline constexpr std::int32_t hardDriveAreaTag = 2;

/// Every area in the order of the source list; "All" comes first.
inline constexpr std::array<Area, 17> areas{{
    {"All", "computer", allAreasTag, &SensorLists::validSensorNames},
    {"CPU", "cpu", 0, &SensorLists::cpuSensorNames},
    {"CPU Relative", "cpu_relative", 18, &SensorLists::cpuRelativeSensorNames},
    {"GPU", "gpu", 1, &SensorLists::gpuSensorNames},
    {"Battery", "battery", 5, &SensorLists::batterySensorNames},
    {"Enclosure", "enclosure", 16, &SensorLists::enclosureSensorNames},
    {"Hard Drive", "hd", hardDriveAreaTag, &SensorLists::hdSensorNames},
    {"LCD", "lcd", 9, &SensorLists::lcdSensorNames},
    {"Logic Board", "motherboard", 15, &SensorLists::logicBoardSensorNames},
    {"Memory", "memory", 7, &SensorLists::memorySensorNames},
    {"Northbridge", "northbridge", 10, &SensorLists::northBridgeSensorNames},
    {"Optical Drive", "optical", 3, &SensorLists::opticalSensorNames},
    {"Palm Rest", "trackpad", 12, &SensorLists::palmRestSensorNames},
    {"PCI", "pci", 13, &SensorLists::pciSensorNames},
    {"Power Supply", "power", 11, &SensorLists::powerSupplySensorNames},
    {"Thunderbolt", "thunderbolt", 14, &SensorLists::thunderBoltSensorNames},
    {"Wireless", "wireless", 4, &SensorLists::airportSensorNames},
}};

/// The area of this source-list name, not "All"; null for any other text.
[[nodiscard]] constexpr const Area* areaNamed(std::string_view name) {
    for (const Area& area : areas)
        if (area.name == name && area.tag != allAreasTag) return &area;
    return nullptr;
}

/// The lists in the order in which `validSensorNames` joins them. It is not the order of the source list.
inline constexpr std::array<KeyList SensorLists::*, 16> validSensorOrder{
    &SensorLists::cpuSensorNames,         &SensorLists::cpuRelativeSensorNames,
    &SensorLists::gpuSensorNames,         &SensorLists::batterySensorNames,
    &SensorLists::enclosureSensorNames,   &SensorLists::lcdSensorNames,
    &SensorLists::logicBoardSensorNames,  &SensorLists::memorySensorNames,
    &SensorLists::northBridgeSensorNames, &SensorLists::opticalSensorNames,
    &SensorLists::palmRestSensorNames,    &SensorLists::pciSensorNames,
    &SensorLists::powerSupplySensorNames, &SensorLists::thunderBoltSensorNames,
    &SensorLists::airportSensorNames,     &SensorLists::hdSensorNames,
};

/// The area whose list this is. `list` must be one of the sixteen.
[[nodiscard]] constexpr const Area& areaOf(KeyList SensorLists::*list) {
    for (const Area& area : areas)
        if (area.sensors == list) return area;
    return areas.front();
}

}  // namespace calorivo
