#include "cli/WatchStatistics.h"

#include "cli/Engine.h"
#include "sensors/SensorRules.h"

#include <algorithm>

namespace calorivo {

void Extent::add(double value) {
    minimum = count > 0 ? std::min(minimum, value) : value;
    maximum = count > 0 ? std::max(maximum, value) : value;
    sum += value;
    ++count;
}

WatchStatistics::WatchStatistics(const Engine& engine) : engine_(engine) {
    for (const Area& area : areas) {
        if (area.tag == allAreasTag) continue;
        for (const SensorKey key : engine.lists.*area.sensors) sensors_.push_back({key, &area, nullptr, {}});
    }
}

void WatchStatistics::add() {
    const auto& readings = engine_.reader.cachedSensorToTemperatureMap();
    for (Sensor& sensor : sensors_) {
        // The address of a map's value never changes: it is sought once.
        if (sensor.celsius == nullptr) {
            const auto found = readings.find(sensor.key);
            if (found == readings.end()) continue;
            sensor.celsius = &found->second;
        }
        if (isTempValid(*sensor.celsius)) sensor.extent.add(*sensor.celsius);
    }
    const std::vector<FanModel>& fans = engine_.fans.fansArray();
    fans_.resize(fans.size());
    for (std::size_t i = 0; i < fans.size(); ++i)
        if (fans[i].actualRPM >= 0) fans_[i].add(fans[i].actualRPM);
    ++checks_;
}

}  // namespace calorivo
