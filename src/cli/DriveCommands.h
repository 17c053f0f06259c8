#pragma once

#include "cli/ListText.h"
#include "cli/Session.h"
#include "cli/Snapshot.h"

#include <string>
#include <vector>

namespace calorivo {

/// Reads the drives of the source that the options name, once; none where it has none.
[[nodiscard]] std::vector<DriveRow> readDrives(const Options& options, const Surroundings& surroundings);

/// Prints every drive; the exit code.
[[nodiscard]] int runDrives(const Options& options, const Surroundings& surroundings);
/// Prints where the temperature of the drive with this serial number comes from; false when there is none.
[[nodiscard]] bool explainDrive(const Options& options, const Surroundings& surroundings);

/// How text is to look on this output.
[[nodiscard]] ListLook lookOf(const Output& out);

}  // namespace calorivo
