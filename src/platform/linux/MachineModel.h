#pragma once

#include <optional>
#include <string>

namespace calorivo {

/// The machine's model identifier: the product's name by its firmware, the board's where the product has only
/// a filler for a name, the device tree's where there is no such firmware. None when nothing tells it.
[[nodiscard]] std::optional<std::string> machineModel(const std::string& sys);

}  // namespace calorivo
