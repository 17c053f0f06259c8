#pragma once

#include "cli/ListText.h"
#include "cli/Snapshot.h"

#include <string>
#include <vector>

namespace calorivo {

/// "model (serial)"; the device's name for a drive that told neither.
[[nodiscard]] std::string descriptionOf(const DriveDetails& drive);

/// One line for each drive; empty when there is none.
[[nodiscard]] std::string drivesText(const std::vector<DriveRow>& drives, const ListLook& look);

/// Where a drive's temperature comes from, or why there is none.
[[nodiscard]] std::string driveExplanationText(const DriveRow& drive);

}  // namespace calorivo
