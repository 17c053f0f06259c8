#pragma once

#include "monitor/CyclePorts.h"
#include "monitor/Fans.h"
#include "monitor/GPUState.h"
#include "monitor/Preferences.h"
#include "monitor/SensorPlan.h"
#include "monitor/TemperatureReader.h"
#include "platform/Dispatch.h"
#include "sensors/SensorLists.h"
#include "sensors/SensorNaming.h"

#include <cstdint>
#include <memory>
#include <string>

namespace calorivo {

/// The averages of the last check.
struct Averages {
    /// Of all sensors that count, in whole degrees Celsius.
    Property<std::int32_t> currentAvgTmp;
    Property<std::string> avgTempAsString;
    Property<std::string> avgCPUTempAsString;
    /// The two averages as they were computed, °C; 0 when no sensor counted.
    Property<double> avgTemp;
    Property<double> avgCPUTemp;
    /// Declared beside the others; no check writes it.
    Property<std::string> ambientTempAsString;
};

/// The parts that a check works on. All must outlive it but the check queue, which is to be destroyed first,
/// or to have nothing left to run: its blocks refer to the cycle.
struct CheckCycleParts {
    Dispatch& dispatch;
    Queue& checkQueue;
    SensorLists& lists;
    const SensorNaming& naming;
    TemperatureReader& reader;
    Fans& fans;
    Preferences& preferences;
    const GPUState& gpu;
    Averages& averages;
    CycleOutputs outputs;
};

/// The pulse of the program: on every tick it reads every sensor, keeps maxima and averages, raises alerts
/// and builds one row of the log; then, on the check queue, it reads the drives and has the display
/// refreshed. Without logging and alerts a check allocates nothing. Main thread, except where a step says
/// otherwise.
class CheckCycle {
  public:
    explicit CheckCycle(const CheckCycleParts& parts) : parts_(parts) {}
    CheckCycle(const CheckCycle&) = delete;
    CheckCycle& operator=(const CheckCycle&) = delete;

    /// Replaces the timer by one of the present period and runs a check at once.
    void restartAndFireCheckTimer();
    /// Stores the new period, as it is, and restarts the timer. The timer itself never runs faster than once
    /// a second.
    void setUpdateIntervalSecs(std::int32_t seconds);
    /// One check.
    void checkTimerFired();
    /// Reads the sensors of the GPU even while they are held: from now on they are held at these values.
    void readGPUSensors();
    /// Clears the recorded maxima; the next check raises them again.
    void resetMaxTempsClicked();

  private:
    /// What one check carries from step to step.
    struct Pass;

    void checkSensor(const PlannedSensor& sensor, Pass& pass);
    [[nodiscard]] double readSensor(const PlannedSensor& sensor);
    void showInCell(const PlannedSensor& sensor, double celsius);
    void logSensor(double celsius, bool isOverLimit, Pass& pass);
    void alertAverage(double average);
    void publishAverages(double average, double cpuAverage);
    void logAverages(double average, double cpuAverage, Pass& pass);
    void logFans(Pass& pass);
    void submitSecondHalf(Pass& pass);
    /// Check queue. `row` is null when the first half was not logged.
    void runSecondHalf(const std::shared_ptr<CSVRow>& row);
    /// Check queue.
    void logDrives(CSVRow& row);
    void refreshDisplay();

    [[nodiscard]] bool isLogging() const;
    [[nodiscard]] bool isLoggingTemperatures() const;
    /// The row of this check, begun when it is first asked for.
    CSVRow& row(Pass& pass);
    /// Any queue.
    void handOver(const std::shared_ptr<CSVRow>& row);

    CheckCycleParts parts_;
    SensorPlan plan_;
    std::unique_ptr<Timer> checkTimer_;
    /// The row of the last check that was logged: used again when nobody else holds it any more.
    std::shared_ptr<CSVRow> lastRow_;
};

}  // namespace calorivo
