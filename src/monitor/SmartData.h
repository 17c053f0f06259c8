#pragma once

#include "platform/AtaSmart.h"

#include <cstdint>
#include <optional>

namespace calorivo {

/// The temperature in a drive's SMART data, °C, 0 included: attribute 194 or 231, whichever comes first in
/// the table. None without either.
[[nodiscard]] std::optional<std::uint8_t> temperatureInSMARTData(const AtaBlock& data);

}  // namespace calorivo
