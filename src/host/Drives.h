#pragma once

#include "host/DriveDetails.h"
#include "host/SourceOptions.h"
#include "monitor/DriveTemperatures.h"

#include <chrono>
#include <memory>
#include <string>
#include <vector>

namespace calorivo {

/// The drives of the machine that is shown, and what else is known of them.
class Drives : public SmartController {
  public:
    /// As of the last update(). Any thread.
    [[nodiscard]] virtual std::vector<DriveDetails> details() const = 0;
};

/// The drives of the source that the options name: this machine's, or those of a recorded tree; null where
/// the source has none (a keys file, the simulation). An update takes at most twice `patience` (a second
/// round is for the disks that are only tried where no other has a temperature), the double over a sleep of
/// the machine, and destroying it never waits, whatever a drive does. `reader` is the program that reads
/// drives for this one, in a process of its own: any whose main() begins with runAsDriveReader(); see
/// driveReaderProgram().
[[nodiscard]] std::unique_ptr<Drives> makeDrives(
    const SourceOptions& options, const std::string& reader,
    std::chrono::nanoseconds patience = std::chrono::milliseconds(500));

/// The terminal program beside the running one, which starts quicker than a desktop program; the running one
/// where there is none.
[[nodiscard]] std::string driveReaderProgram();

}  // namespace calorivo
