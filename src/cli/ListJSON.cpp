#include "cli/ListJSON.h"

#include "cli/DrivesJSON.h"
#include "cli/JSONText.h"

#include <array>
#include <charconv>
#include <utility>

namespace calorivo {

namespace {

/// The number that people read in the float: 0.1F as 0.1, not as the double nearest to it.
double asRead(float number) {
    double result = 0;
    std::array<char, 32> text{};
    const auto end = std::to_chars(text.data(), text.data() + text.size(), number).ptr;
    std::from_chars(text.data(), end, result);
    return result;
}

JSON sensorObject(const SensorReading& sensor) {
    return {{"key", sensor.key.view()},    {"name", sensor.name},       {"area", sensor.area->name},
            {"areaTag", sensor.area->tag}, {"celsius", sensor.celsius}, {"text", sensor.text},
            {"valid", sensor.isValid}};
}

JSON averageObject(const AverageReading& average) {
    return {{"celsius", average.celsius}, {"text", average.text}};
}

JSON fanObject(const FanModel& fan) {
    return {{"number", fan.fanNumber},
            {"name", fan.name},
            {"key", fan.actualRPMSensorName},
            {"rpm", fan.actualRPM},
            {"minRPM", fan.minRPM},
            {"maxRPM", fan.maxRPM},
            {"warningRPM", asRead(fan.warningRPM)},
            {"criticalRPM", asRead(fan.criticalRPM)},
            {"text", fan.actualRPMAsString}};
}

}  // namespace

std::string listJSON(const Snapshot& snapshot, std::optional<std::int32_t> areaTag) {
    JSON sensors = JSON::array();
    for (const SensorReading& sensor : snapshot.sensors)
        if (!areaTag || areaTag == allAreasTag || areaTag == sensor.area->tag)
            sensors.push_back(sensorObject(sensor));
    JSON fans = JSON::array();
    for (const FanModel& fan : snapshot.fans) fans.push_back(fanObject(fan));
    return textOf({{"model", orNull(snapshot.model)},
                   {"source", snapshot.source},
                   {"unit", snapshot.isFahrenheit ? "F" : "C"},
                   {"sensors", std::move(sensors)},
                   {"averages",
                    {{"all", averageObject(snapshot.allAverage)},
                     {"cpu", averageObject(snapshot.cpuAverage)},
                     {"rpm", {{"value", snapshot.averageRPM}, {"text", snapshot.averageRPMText}}}}},
                   {"fans", std::move(fans)},
                   {"drives", driveObjects(snapshot.drives)}});
}

}  // namespace calorivo
