#include "support/Machine.h"

#include "sensors/Areas.h"
#include "smc/SmcClient.h"

#include <chrono>

namespace calorivo::test {

Machine::Machine() : cycle(parts({&log, &alerts, &display, &drives})) {
    using namespace std::chrono;
    dispatch.setWallTime(sys_days(2024y / March / 5) + 14h + 7min + 9s);
    preferences.updateIntervalSecs = 3;
    smcOpen();
}

Machine::~Machine() = default;

Machine& Machine::sensor(KeyList SensorLists::*area, SensorKey key, double celsius) {
    (lists.*area).append(key);
    lists.tempSensorNames.append(key);
    lists.validSensorNames.clear();
    for (KeyList SensorLists::*list : validSensorOrder) lists.validSensorNames.append(lists.*list);
    lists.sensorNameToCustomCellMap[key.text()] = lists.customCell;
    return temperature(key, celsius);
}

Machine& Machine::temperature(SensorKey key, double celsius) {
    smc.setTemperature(key.view(), celsius);
    return *this;
}

Machine& Machine::fan(int rpm, int minimum, int maximum, std::string_view name) {
    smc.addFan(rpm, minimum, maximum, name);
    lists.numFans = lists.numFans + 1;
    fans.getAllFanSensors();
    return *this;
}

Machine& Machine::drive(float celsius) {
    drives.next.push_back(celsius);
    preferences.checkDriveTemps = true;
    return *this;
}

Machine& Machine::logging() {
    preferences.logToFile = true;
    preferences.logTemperatures = true;
    return *this;
}

Machine& Machine::alerting(std::int32_t limitForSpecificArea, std::int32_t limitForAverage) {
    preferences.showAlerts = true;
    preferences.limitForSpecificArea = limitForSpecificArea;
    preferences.limitForAverage = limitForAverage;
    return *this;
}

Machine& Machine::fahrenheit() {
    preferences.tempUnit = 1;
    return *this;
}

Machine& Machine::check() {
    cycle.checkTimerFired();
    dispatch.run();
    return *this;
}

CheckCycleParts Machine::parts(const CycleOutputs& outputs) {
    return {.dispatch = dispatch,
            .checkQueue = *checkQueue,
            .lists = lists,
            .naming = naming,
            .reader = reader,
            .fans = fans,
            .preferences = preferences,
            .gpu = gpuState,
            .averages = averages,
            .outputs = outputs};
}

QZTemperatureLevelIndicatorCell& Machine::cell(SensorKey key) {
    return lists.sensorNameToCustomCellMap.at(key.text());
}

}  // namespace calorivo::test
