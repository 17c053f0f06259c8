#pragma once

#include "monitor/CyclePorts.h"
#include "monitor/Fans.h"
#include "monitor/GPUState.h"
#include "monitor/Preferences.h"
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
    /// Declared beside the others; no check writes it.
    Property<std::string> ambientTempAsString;
};

/// The parts that a check works on; all must outlive it.
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
/// refreshed. Main thread, except where a step says otherwise.
class CheckCycle {
  public:
    explicit CheckCycle(const CheckCycleParts& parts) : parts_(parts) {}

    /// Replaces the timer by one of the present period and runs a check at once.
    void restartAndFireCheckTimer();
    /// Stores the new period, as it is, and restarts the timer. The timer itself never runs faster than once
    /// a second.
    void setUpdateIntervalSecs(std::int32_t seconds);
    /// One check.
    void checkTimerFired();
    /// Clears the recorded maxima.
    void resetMaxTempsClicked();

  private:
    struct Sums;
    void checkSensor(SensorKey key, Sums& sums);
    void publishAverages(double all, double cpu);
    void logFans();
    void finishOnCheckQueue(const std::shared_ptr<CSVRow>& row, bool wasLogging);
    void appendField(double celsius, bool isAlert);

    CheckCycleParts parts_;
    std::unique_ptr<Timer> checkTimer_;
    std::shared_ptr<CSVRow> row_;
};

}  // namespace calorivo
