#pragma once

#include "host/Drives.h"
#include "monitor/FanModel.h"
#include "sensors/Areas.h"
#include "sensors/SensorKey.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace calorivo {

class Engine;
class SensorProvider;

/// One entry of the sensor list as a check found it.
struct SensorReading {
    SensorKey key;
    std::string name;
    const Area* area;
    /// As it was read, valid or not.
    double celsius;
    std::string text;
    bool isValid;
    /// The serial number of the drive that it is in; empty for other sensors.
    std::string drive;
};

/// An average of temperatures, °C; 0 where nothing counts.
struct AverageReading {
    double celsius = 0;
    std::string text;
};

/// A drive, whether it has a temperature or not.
struct DriveRow {
    DriveDetails details;
    /// The temperature in the user's unit, "N/A" without one.
    std::string text;
};

/// Everything that one check found.
struct Snapshot {
    std::optional<std::string> model;
    std::string source;
    bool isFahrenheit = false;
    /// In the order in which the engine walks them; one for each entry, also of a key that is listed twice.
    std::vector<SensorReading> sensors;
    AverageReading allAverage;
    AverageReading cpuAverage;
    std::vector<FanModel> fans;
    std::int32_t averageRPM = 0;
    std::string averageRPMText;
    /// In the order of the system; not filled by takeSnapshot().
    std::vector<DriveRow> drives;
};

/// What the last check of the engine found; a sensor that was never checked is read now.
[[nodiscard]] Snapshot takeSnapshot(Engine& engine, SensorProvider& provider);

}  // namespace calorivo
