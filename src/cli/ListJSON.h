#pragma once

#include "cli/Snapshot.h"

#include <cstdint>
#include <optional>
#include <string>

namespace calorivo {

/// The snapshot as one JSON object with a line end: always valid JSON and valid UTF-8. Names are exact. With
/// `areaTag` only the sensors of that area; averages and fans are the machine's.
[[nodiscard]] std::string listJSON(const Snapshot& snapshot, std::optional<std::int32_t> areaTag);

}  // namespace calorivo
