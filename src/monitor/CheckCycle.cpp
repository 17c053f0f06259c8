#include "monitor/CheckCycle.h"

#include "sensors/SensorRules.h"

#include <algorithm>
#include <chrono>
#include <utility>

namespace calorivo {

namespace {

constexpr std::string_view alertField = "ALERT:%.0f,";
constexpr std::string_view plainField = "%.0f,";

}  // namespace

struct CheckCycle::Pass {
    /// When the check began: the moment that its row tells.
    WallTime moment;
    std::shared_ptr<CSVRow> row = nullptr;
    double sumAll = 0.0;
    double sumCPU = 0.0;
    std::int32_t nAll = 0;
    std::int32_t nCPU = 0;

    [[nodiscard]] double average() const { return nAll > 0 ? sumAll / nAll : 0.0; }
    [[nodiscard]] double cpuAverage() const { return nCPU > 0 ? sumCPU / nCPU : 0.0; }
};

void CheckCycle::restartAndFireCheckTimer() {
    constexpr std::int32_t shortestPeriod = 1;
    checkTimer_.reset();
    const std::chrono::seconds period(std::max(parts_.preferences.updateIntervalSecs.get(), shortestPeriod));
    checkTimer_ = parts_.dispatch.scheduleTimer(period, Repeats::yes, [this] { checkTimerFired(); });
    checkTimer_->fire();
}

void CheckCycle::setUpdateIntervalSecs(std::int32_t seconds) {
    parts_.preferences.updateIntervalSecs = seconds;
    restartAndFireCheckTimer();
}

void CheckCycle::checkTimerFired() {
    Pass pass{.moment = parts_.dispatch.wallTime()};
    for (const PlannedSensor& sensor : plan_.sensorsOf(parts_.lists)) checkSensor(sensor, pass);
    const double average = pass.average();
    const double cpuAverage = pass.cpuAverage();
    alertAverage(average);
    publishAverages(average, cpuAverage);
    if (isLoggingTemperatures()) logAverages(average, cpuAverage, pass);
    parts_.fans.updateFans();
    if (isLogging()) {
        if (parts_.preferences.logFanSpeeds) logFans(pass);
        row(pass).removeCommaSuffix();
        handOver(pass.row);
    }
    submitSecondHalf(pass);
    if (pass.row != nullptr) lastRow_ = std::move(pass.row);
}

void CheckCycle::checkSensor(const PlannedSensor& sensor, Pass& pass) {
    const double celsius = readSensor(sensor);
    const bool isValid = isTempValid(celsius);
    // Kept: such a sensor leaves no field either, so that the row is a field shorter than its header.
    if (!sensor.isGPU && !isValid) return;

    if (isValid && !sensor.isRelative) {
        pass.sumAll += celsius;
        ++pass.nAll;
    }
    showInCell(sensor, celsius);
    // Kept: relative sensors and invalid readings count here. What the CPU area shows is what is averaged.
    if (sensor.isCPU) {
        pass.sumCPU += celsius;
        ++pass.nCPU;
    }
    const Preferences& preferences = parts_.preferences;
    const bool isOverLimit = preferences.showAlerts && celsius > preferences.limitForSpecificArea.get();
    if (isOverLimit && parts_.outputs.alerts != nullptr)
        parts_.outputs.alerts->showAlertForOverlimitAreaWithName(
            celsius, parts_.naming.convertKeyNameToHumanString(sensor.key));
    if (isLoggingTemperatures()) logSensor(celsius, isOverLimit, pass);
}

double CheckCycle::readSensor(const PlannedSensor& sensor) {
    // While the GPUs change over, their sensors give nonsense.
    if (sensor.isGPU && !parts_.gpu.isOkToCheckGPUSensors)
        return parts_.reader.getCachedTemperatureForSensor(sensor.key);
    return parts_.reader.getTemperatureForSensor(sensor.key);
}

void CheckCycle::readGPUSensors() {
    for (const SensorKey key : parts_.lists.gpuSensorNames.keys())
        static_cast<void>(parts_.reader.getTemperatureForSensor(key));
}

void CheckCycle::showInCell(const PlannedSensor& sensor, double celsius) {
    // Looked up every time: a cell may be replaced between two checks.
    auto& cells = parts_.lists.sensorNameToCustomCellMap;
    if (const auto cell = cells.find(sensor.cellName); cell != cells.end())
        cell->second.setObjectValue(static_cast<float>(celsius));
}

void CheckCycle::logSensor(double celsius, bool isOverLimit, Pass& pass) {
    if (isOverLimit || isTempValid(celsius))
        row(pass).appendFormat(isOverLimit ? alertField : plainField, parts_.reader.convertDegrees(celsius));
    else
        row(pass).append("N/A,");
}

void CheckCycle::alertAverage(double average) {
    const Preferences& preferences = parts_.preferences;
    if (preferences.showAlerts && average > preferences.limitForAverage.get() &&
        parts_.outputs.alerts != nullptr)
        parts_.outputs.alerts->showAlertForOverlimitAverage(average);
}

void CheckCycle::publishAverages(double average, double cpuAverage) {
    Averages& averages = parts_.averages;
    averages.avgTemp = average;
    averages.avgCPUTemp = cpuAverage;
    averages.currentAvgTmp = static_cast<std::int32_t>(average);
    averages.avgTempAsString = parts_.reader.convertDegreesToString(average);
    averages.avgCPUTempAsString = parts_.reader.convertDegreesToString(cpuAverage);
}

void CheckCycle::logAverages(double average, double cpuAverage, Pass& pass) {
    const Preferences& preferences = parts_.preferences;
    row(pass).appendFormat(plainField, parts_.reader.convertDegrees(cpuAverage));
    // Kept: the mark of the average follows logAlerts, those of sensors and drives follow showAlerts.
    const bool isMarked = preferences.logAlerts && average > preferences.limitForAverage.get();
    row(pass).appendFormat(isMarked ? alertField : plainField, parts_.reader.convertDegrees(average));
}

void CheckCycle::logFans(Pass& pass) {
    for (const FanModel& fan : parts_.fans.fansArray()) row(pass).appendFormat("%d,", fan.actualRPM);
    row(pass).appendFormat("%d,", parts_.fans.avgRPM.get());
}

void CheckCycle::submitSecondHalf(Pass& pass) {
    const CycleOutputs& outputs = parts_.outputs;
    if (isLogging()) {
        row(pass);  // begins the row if logging was switched on a moment ago
        parts_.checkQueue.async([this, row = pass.row] { runSecondHalf(row); });
    } else if (outputs.display != nullptr ||
               (outputs.drives != nullptr && parts_.preferences.checkDriveTemps)) {
        // One pointer fits into the function object: nothing is allocated.
        parts_.checkQueue.async([this] { runSecondHalf(nullptr); });
    }
}

void CheckCycle::runSecondHalf(const std::shared_ptr<CSVRow>& row) {
    if (parts_.outputs.drives != nullptr && parts_.preferences.checkDriveTemps) {
        parts_.outputs.drives->getDiskTemps();
        if (row != nullptr && parts_.preferences.logTemperatures) logDrives(*row);
    }
    if (row != nullptr) {
        row->removeCommaSuffix();
        // Kept: the row is handed over a second time, now with its drives.
        handOver(row);
    }
    if (parts_.outputs.display != nullptr) parts_.dispatch.mainQueue().sync([this] { refreshDisplay(); });
}

void CheckCycle::logDrives(CSVRow& row) {
    // Kept: the row ends without a comma by now, so the first drive's field is glued to the one before it.
    const auto limit = static_cast<float>(parts_.preferences.limitForSpecificArea.get());
    std::string fields;
    for (const float celsius : parts_.outputs.drives->driveTemperatures()) {
        const bool isOverLimit = parts_.preferences.showAlerts && celsius > limit;
        const double degrees = parts_.reader.convertDegrees(static_cast<double>(celsius));
        appendFormat(fields, isOverLimit ? alertField : plainField, {degrees});
    }
    // In one piece: the writer may take the row at any moment.
    row.append(fields);
}

void CheckCycle::refreshDisplay() {
    parts_.outputs.display->reloadData();
    parts_.outputs.display->updateStatusItem();
}

void CheckCycle::resetMaxTempsClicked() {
    for (auto& [name, cell] : parts_.lists.sensorNameToCustomCellMap) cell.setMaxUsedValue(0.0F);
    if (parts_.outputs.display != nullptr) parts_.outputs.display->setNeedsDisplay();
}

bool CheckCycle::isLogging() const { return parts_.outputs.log != nullptr && parts_.preferences.logToFile; }

bool CheckCycle::isLoggingTemperatures() const { return isLogging() && parts_.preferences.logTemperatures; }

CSVRow& CheckCycle::row(Pass& pass) {
    if (pass.row == nullptr) {
        // Taken out while this check uses it: an observer may start another check in the middle of this one.
        pass.row = std::exchange(lastRow_, nullptr);
        if (pass.row == nullptr || pass.row.use_count() > 1) pass.row = std::make_shared<CSVRow>();
        pass.row->assign(createCSVRowPrefix(pass.moment));
    }
    return *pass.row;
}

void CheckCycle::handOver(const std::shared_ptr<CSVRow>& row) {
    parts_.outputs.log->logStringIncludeDateTime(row, IncludeDateTime::no);
}

}  // namespace calorivo
