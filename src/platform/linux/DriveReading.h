#pragma once

#include "platform/AtaSmart.h"

#include <cstdint>
#include <type_traits>

namespace calorivo {

/// Where the temperature of a drive came from.
enum class DriveSource : std::uint8_t {
    none,
    /// The kernel's own reading, which needs no privilege.
    drivetemp,
    nvme,
    /// The drive's SMART data, by commands that only a privileged process may send.
    smart,
    smartLog,
    /// The service UDisks2, which asks the drive for ordinary users too.
    udisks,
};

/// What one reading of a drive gave. Plain bytes: it is sent from one process to another.
struct DriveReading {
    AtaBlock identify{};
    /// The drive's own, or made from the temperature that the source told.
    AtaBlock smart{};
    DriveSource source = DriveSource::none;
    bool hasIdentify = false;
    /// SMART is switched on.
    bool isSwitchedOn = false;
    /// The drive told whether it expects to fail; sources that are not asked count as if they had.
    bool hasStatus = false;
    bool hasData = false;
    /// The drive sleeps and was left alone: there is no data.
    bool isAsleep = false;
    /// Why there is no data, an errno; 0 for no particular reason.
    std::int32_t error = 0;
    /// The source that the error is of, where that was UDisks2.
    DriveSource failed = DriveSource::none;
    friend bool operator==(const DriveReading&, const DriveReading&) = default;
};
static_assert(std::is_trivially_copyable_v<DriveReading>);

}  // namespace calorivo
