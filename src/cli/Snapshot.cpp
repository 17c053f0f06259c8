#include "cli/Snapshot.h"

#include "cli/Engine.h"
#include "platform/SensorProvider.h"
#include "sensors/SensorRules.h"

namespace calorivo {

Snapshot takeSnapshot(Engine& engine, SensorProvider& provider) {
    const SensorLists& lists = engine.lists;
    Snapshot snapshot;
    snapshot.model = lists.modelName;
    snapshot.source = provider.sourceName();
    snapshot.isFahrenheit = engine.preferences.tempUnit != 0;
    snapshot.sensors.reserve(lists.validSensorNames.count());
    for (KeyList SensorLists::*const list : validSensorOrder) {
        const Area& area = areaOf(list);
        for (const SensorKey key : lists.*list) {
            const double celsius = engine.reader.getCachedTemperatureForSensor(key);
            snapshot.sensors.push_back({key, engine.naming.convertKeyNameToHumanString(key), &area, celsius,
                                        engine.reader.convertDegreesToString(celsius), isTempValid(celsius),
                                        provider.driveMeasuredBy(key.view())});
        }
    }
    snapshot.allAverage = {engine.averages.avgTemp, engine.averages.avgTempAsString};
    snapshot.cpuAverage = {engine.averages.avgCPUTemp, engine.averages.avgCPUTempAsString};
    snapshot.fans = engine.fans.fansArray();
    snapshot.averageRPM = engine.fans.avgRPM;
    snapshot.averageRPMText = engine.fans.avgRPMAsString;
    return snapshot;
}

}  // namespace calorivo
