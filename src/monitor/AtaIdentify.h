#pragma once

#include "platform/AtaSmart.h"
#include "sensors/SmartInfo.h"

#include <cstdint>
#include <optional>

// What a drive's identify data says. Pure functions of the block.

namespace calorivo {

/// The drive's model, trimmed, and its serial number as it is told; the temperature is not in there. None for
/// a drive without SMART, and when a text is not UTF-8. Either text may be empty.
[[nodiscard]] std::optional<DriveDictionary> driveFromIdentifyData(AtaBlock data);

/// 0 for a block with a right checksum, 255 for one without a checksum; otherwise by how much it is wrong,
/// which may be 255 too.
[[nodiscard]] std::uint8_t checkedIdentifyData(const AtaBlock& data);

}  // namespace calorivo
