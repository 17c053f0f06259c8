#pragma once

#include <string>

namespace calorivo {

/// Where the temperature of a drive comes from.
struct DriveExplanation {
    /// As the system calls it: "sda".
    std::string device;
    /// "drivetemp", "nvme", "smart", "nvme log" or "udisks2"; empty where there is no temperature.
    std::string source;
    /// It sleeps and was not woken: its temperature is the one before it fell asleep.
    bool isAsleep = false;
    /// Why none is shown; empty where one is.
    std::string trouble;
};

}  // namespace calorivo
