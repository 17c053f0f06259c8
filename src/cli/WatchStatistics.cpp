#include "cli/WatchStatistics.h"

#include "cli/Engine.h"
#include "sensors/SensorRules.h"

#include <algorithm>

namespace calorivo {

namespace {

/// A drive may get another name when it is plugged in again; one without a serial number is known by it.
bool isSameDrive(const DriveDetails& first, const DriveDetails& second) {
    return first.model == second.model && first.serial == second.serial &&
           (!first.serial.empty() || first.device == second.device);
}

}  // namespace

void Extent::add(double value) {
    minimum = count > 0 ? std::min(minimum, value) : value;
    maximum = count > 0 ? std::max(maximum, value) : value;
    sum += value;
    ++count;
}

WatchStatistics::WatchStatistics(const Engine& engine, const DriveMeasuredBy& driveMeasuredBy)
    : engine_(engine) {
    for (const Area& area : areas) {
        if (area.tag == allAreasTag) continue;
        for (const SensorKey key : engine.lists.*area.sensors)
            sensors_.push_back({key, &area, nullptr, {}, driveMeasuredBy ? driveMeasuredBy(key) : ""});
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

void WatchStatistics::addDrives(const std::vector<DriveDetails>& drives) {
    for (Drive& drive : drives_) drive.isThere = false;
    for (const DriveDetails& details : drives) {
        if (!details.isListed) continue;
        auto drive = std::ranges::find_if(
            drives_, [&](const Drive& seen) { return !seen.isThere && isSameDrive(seen.details, details); });
        if (drive == drives_.end()) drive = drives_.insert(drives_.end(), {details, {}});
        drive->details = details;
        drive->isThere = true;
        if (details.celsius && !details.isAsleep) drive->extent.add(*details.celsius);
    }
}

}  // namespace calorivo
