#pragma once

#include "monitor/CSVRow.h"

#include <memory>
#include <string>
#include <vector>

namespace calorivo {

enum class IncludeDateTime { no, yes };

/// Takes the rows of the log. Any queue.
class CycleLog {
  public:
    CycleLog() = default;
    CycleLog(const CycleLog&) = delete;
    CycleLog& operator=(const CycleLog&) = delete;
    virtual ~CycleLog() = default;
    /// Queues the line; its text is taken when it is written. Returns at once.
    virtual void logStringIncludeDateTime(std::shared_ptr<const CSVRow> row,
                                          IncludeDateTime includeDateTime) = 0;
};

/// Is told of readings above the user's limits. Main thread.
class CycleAlerts {
  public:
    CycleAlerts() = default;
    CycleAlerts(const CycleAlerts&) = delete;
    CycleAlerts& operator=(const CycleAlerts&) = delete;
    virtual ~CycleAlerts() = default;
    virtual void showAlertForOverlimitAreaWithName(double celsius, const std::string& name) = 0;
    virtual void showAlertForOverlimitAverage(double celsius) = 0;
};

/// Shows what a check found. Main thread.
class CycleDisplay {
  public:
    CycleDisplay() = default;
    CycleDisplay(const CycleDisplay&) = delete;
    CycleDisplay& operator=(const CycleDisplay&) = delete;
    virtual ~CycleDisplay() = default;
    virtual void reloadData() = 0;
    virtual void updateStatusItem() = 0;
    virtual void setNeedsDisplay() = 0;
};

/// The drives that have temperatures. Check queue.
class CycleDrives {
  public:
    CycleDrives() = default;
    CycleDrives(const CycleDrives&) = delete;
    CycleDrives& operator=(const CycleDrives&) = delete;
    virtual ~CycleDrives() = default;
    /// Reads every drive; may take long.
    virtual void getDiskTemps() = 0;
    /// The temperatures last read, °C, in the order of the drives.
    [[nodiscard]] virtual std::vector<float> driveTemperatures() = 0;
};

/// Where a check's results go. Each port may be absent: the cycle runs without it.
struct CycleOutputs {
    CycleLog* log = nullptr;
    CycleAlerts* alerts = nullptr;
    CycleDisplay* display = nullptr;
    CycleDrives* drives = nullptr;
};

}  // namespace calorivo
