#include "cli/Snapshot.h"

#include "cli/Engine.h"
#include "platform/SensorProvider.h"
#include "sensors/SensorRules.h"

namespace calorivo {

namespace {

/// Sums as the check makes them: its texts are published, its numbers are not.
struct Sum {
    double total = 0;
    int count = 0;
    void add(double celsius) {
        total += celsius;
        ++count;
    }
    [[nodiscard]] std::optional<double> average() const {
        return count > 0 ? std::optional(total / count) : std::nullopt;
    }
};

}  // namespace

Snapshot takeSnapshot(Engine& engine, const SensorProvider& provider) {
    const SensorLists& lists = engine.lists;
    Snapshot snapshot;
    snapshot.model = lists.modelName;
    snapshot.source = provider.sourceName();
    snapshot.isFahrenheit = engine.preferences.tempUnit != 0;
    snapshot.sensors.reserve(lists.validSensorNames.count());
    Sum all;
    Sum cpu;
    for (KeyList SensorLists::*const list : validSensorOrder) {
        const Area& area = areaOf(list);
        for (const SensorKey key : lists.*list) {
            const double celsius = engine.reader.getCachedTemperatureForSensor(key);
            const bool isValid = isTempValid(celsius);
            snapshot.sensors.push_back({key, engine.naming.convertKeyNameToHumanString(key), &area, celsius,
                                        engine.reader.convertDegreesToString(celsius), isValid});
            if (isValid && !isSensorRelativeCPU(key)) all.add(celsius);
            const bool isCounted = isValid || lists.gpuSensorNames.containsString(key);
            if (isCounted && lists.cpuSensorNames.containsString(key)) cpu.add(celsius);
        }
    }
    snapshot.allAverage = {all.average(), engine.averages.avgTempAsString};
    snapshot.cpuAverage = {cpu.average(), engine.averages.avgCPUTempAsString};
    snapshot.fans = engine.fans.fansArray();
    snapshot.averageRPM = engine.fans.avgRPM;
    snapshot.averageRPMText = engine.fans.avgRPMAsString;
    return snapshot;
}

}  // namespace calorivo
