#pragma once

#include "platform/Property.h"
#include "sensors/KeyList.h"
#include "ui/CellMapArchive.h"
#include "ui/QZTemperatureLevelIndicatorCell.h"

#include <cstdint>
#include <optional>
#include <string>
#include <unordered_map>

namespace calorivo {

/// Which sensors this machine has, to which area each belongs and what the model's own table calls it. Filled
/// once by discovery, only read afterwards. Main thread.
struct SensorLists {
    /// The machine's model identifier, or the one given in its place; none when the machine does not tell it.
    std::optional<std::string> modelName;
    /// Every temperature key found, in the order of discovery.
    KeyList tempSensorNames;
    /// Whole degrees Celsius, from the keys file.
    std::unordered_map<SensorKey, int> fakeSensorToTempMap;
    bool isUsingKeysFile = false;
    /// Set when the model has a table of its own.
    bool isUsingCustomSensorNames = false;
    std::unordered_map<SensorKey, std::string> customSensorsToReadableNamesMap;
    Property<std::int32_t> numFans;

    KeyList cpuSensorNames;
    KeyList cpuRelativeSensorNames;
    KeyList gpuSensorNames;
    KeyList batterySensorNames;
    KeyList hdSensorNames;
    KeyList memorySensorNames;
    KeyList opticalSensorNames;
    KeyList lcdSensorNames;
    KeyList northBridgeSensorNames;
    KeyList powerSupplySensorNames;
    KeyList airportSensorNames;
    KeyList palmRestSensorNames;
    KeyList pciSensorNames;
    KeyList thunderBoltSensorNames;
    KeyList logicBoardSensorNames;
    KeyList enclosureSensorNames;

    /// The area lists one after another: what everything else iterates. A key that stands in an area twice is
    /// here twice and counts twice.
    KeyList validSensorNames;

    /// One level cell for each sensor, by key; drives, by serial, get theirs when they are first shown.
    CellMap sensorNameToCustomCellMap;
    /// Unset when the archived cells could not be read: then there is no map in this run, and nothing may be
    /// entered into it.
    bool hasCustomCellMap = true;
    /// The prototype that new cells are copied from.
    QZTemperatureLevelIndicatorCell customCell;
};

}  // namespace calorivo
