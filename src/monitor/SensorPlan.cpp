#include "monitor/SensorPlan.h"

#include "sensors/SensorRules.h"

#include <cstring>
#include <type_traits>

namespace calorivo {

namespace {

bool areEqual(const std::vector<SensorKey>& a, const std::vector<SensorKey>& b) {
    static_assert(std::has_unique_object_representations_v<SensorKey>);
    return a.size() == b.size() &&
           (a.empty() || std::memcmp(a.data(), b.data(), a.size() * sizeof(SensorKey)) == 0);
}

}  // namespace

const std::vector<PlannedSensor>& SensorPlan::sensorsOf(const SensorLists& lists) {
    if (isFor(lists)) return sensors_;
    valid_ = lists.validSensorNames.keys();
    gpu_ = lists.gpuSensorNames.keys();
    cpu_ = lists.cpuSensorNames.keys();
    sensors_.clear();
    for (const SensorKey key : valid_)
        sensors_.push_back({.key = key,
                            .isGPU = lists.gpuSensorNames.containsString(key),
                            .isCPU = lists.cpuSensorNames.containsString(key),
                            .isRelative = isSensorRelativeCPU(key),
                            .cellName = key.text()});
    return sensors_;
}

bool SensorPlan::isFor(const SensorLists& lists) const {
    return areEqual(valid_, lists.validSensorNames.keys()) && areEqual(gpu_, lists.gpuSensorNames.keys()) &&
           areEqual(cpu_, lists.cpuSensorNames.keys());
}

}  // namespace calorivo
