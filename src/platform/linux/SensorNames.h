#pragma once

#include "platform/linux/HwmonChip.h"
#include "platform/linux/NamingRules.h"
#include "platform/linux/PciNames.h"

#include <string>
#include <vector>

namespace calorivo {

/// A channel whose name is to be found, and the rule that says how.
struct NameRequest {
    const HwmonChip* chip = nullptr;
    const HwmonChannel* channel = nullptr;
    const NamingRule* rule = nullptr;
};

/// The names of all channels, in the same order: readable, one line each, and different, except that a fan
/// without a label has none.
[[nodiscard]] std::vector<std::string> sensorNames(const std::vector<NameRequest>& requests,
                                                   PciNames& pciNames);

}  // namespace calorivo
