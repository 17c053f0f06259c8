#pragma once

#include "monitor/FanModel.h"
#include "monitor/Preferences.h"
#include "sensors/SensorLists.h"
#include "sensors/SensorNaming.h"

#include <span>
#include <string>

namespace calorivo {

/// The first line of the log, without its line end: what the fields of the rows below it are.
[[nodiscard]] std::string logHeader(const SensorLists& lists, const SensorNaming& naming,
                                    std::span<const FanModel> fans, const Preferences& preferences);

}  // namespace calorivo
