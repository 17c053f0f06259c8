#pragma once

#include "cli/JSONText.h"
#include "cli/Snapshot.h"

#include <string>
#include <vector>

namespace calorivo {

/// One object for each drive.
[[nodiscard]] JSON driveObjects(const std::vector<DriveRow>& drives);
/// One JSON object with a line end.
[[nodiscard]] std::string drivesJSON(const std::vector<DriveRow>& drives, bool isFahrenheit);
/// The same for one drive.
[[nodiscard]] std::string driveExplanationJSON(const DriveRow& drive);

}  // namespace calorivo
