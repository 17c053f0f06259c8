#pragma once

#include <cstdint>
#include <limits>
#include <string>

namespace calorivo {

/// One fan: its name, limits and current speed in revolutions per minute.
struct FanModel {
    /// Position of the fan, from 0.
    std::int32_t fanNumber = 0;
    std::string name;
    std::int32_t minRPM = 0;
    std::int32_t maxRPM = 0;
    std::int32_t actualRPM = 0;
    float warningRPM = 0.0F;
    float criticalRPM = 0.0F;
    /// Held for fan control, which Calorivo does not have: nothing changes these two.
    std::int32_t userSetMinRPM = std::numeric_limits<std::int32_t>::max();
    bool isUserControlEnabled = false;
    std::string minRPMAsString;
    std::string maxRPMAsString;
    std::string actualRPMAsString;
    /// The key of the fan's current speed, by the fan's number in the controller.
    std::string actualRPMSensorName;

    friend bool operator==(const FanModel&, const FanModel&) = default;
};

}  // namespace calorivo
