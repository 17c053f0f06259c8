#pragma once

#include "monitor/DriveTemperatures.h"
#include "monitor/TemperatureReader.h"
#include "sensors/SmartInfo.h"

#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace calorivo {

/// The drives as columns at the end of a row, those that are there at the beginning, each known by its serial
/// number. Main thread.
class LogDrives {
  public:
    /// Reads the drives. `controller` is null where there are none; `reader` must outlive this object.
    LogDrives(std::unique_ptr<SmartController> controller, const TemperatureReader& reader);

    /// A title for each column, with the letter of the unit: ",Disk (C)".
    [[nodiscard]] std::string titles(std::string_view unit) const;
    /// Reads the drives again, and gives a field for each column: ",38", or ",N/A" where a drive has told
    /// nothing or has gone.
    [[nodiscard]] std::string readFields();
    [[nodiscard]] bool isEmpty() const { return columns_.empty(); }

  private:
    SmartInfo smartInfo_;
    DriveTemperatures drives_;
    const TemperatureReader& reader_;
    std::vector<DriveDictionary> columns_;
};

}  // namespace calorivo
