#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace calorivo {

struct DriveStatus;

/// More about a drive than its dictionary holds; also about one that is left out of the list.
struct DriveDetails {
    std::string model;
    /// Trimmed.
    std::string serial;
    /// As the system calls it: "sda".
    std::string device;
    /// °C, above 0; none when the drive has told none.
    std::optional<std::int32_t> celsius;
    /// Where the temperature came from: "drivetemp", "nvme", "smart", "nvme log" or "udisks2"; empty without
    /// one.
    std::string source;
    /// It sleeps and was not woken: the temperature, if any, is the one before it fell asleep.
    bool isAsleep = false;
    /// It is in the list of drives. One that refuses SMART is there without a temperature.
    bool isListed = false;
    /// Why none is shown; empty where one is.
    std::string trouble;
    friend bool operator==(const DriveDetails&, const DriveDetails&) = default;
};

/// What is known of a drive that was read; none for what is no drive with SMART, as far as one can tell. Not
/// whether it is listed.
[[nodiscard]] std::optional<DriveDetails> detailsOf(const DriveStatus& status);

}  // namespace calorivo
