#pragma once

#include <cstddef>
#include <cstdint>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace calorivo {

/// One drive that has a temperature.
struct DriveDictionary {
    std::string model;
    /// As the drive tells it, white space and all.
    std::string serial;
    /// Whole degrees Celsius; 0 when it could not be read.
    std::int32_t temp = 0;
    friend bool operator==(const DriveDictionary&, const DriveDictionary&) = default;
};

/// Without white space and line ends at both ends.
[[nodiscard]] std::string_view trimmed(std::string_view text);

// The readers of a drive's dictionary. A null one is a drive that there is not.

/// Trimmed; none for no drive.
[[nodiscard]] std::optional<std::string> driveModelFromDictionary(const DriveDictionary* drive);
/// "model (serial)", both trimmed; empty for no drive.
[[nodiscard]] std::string driveDescriptionFromDictionary(const DriveDictionary* drive);
/// °C; 0.0 for no drive.
[[nodiscard]] float driveTemperatureFromDictionary(const DriveDictionary* drive);

/// The drives as they were last read. Any thread: each call is whole, and nobody waits while drives are read.
class SmartInfo {
  public:
    SmartInfo() = default;
    SmartInfo(const SmartInfo&) = delete;
    SmartInfo& operator=(const SmartInfo&) = delete;

    void assign(std::vector<DriveDictionary> drives);
    void clear() { assign({}); }

    [[nodiscard]] std::size_t count() const;
    /// None past the last drive: the list may have changed since it was counted.
    [[nodiscard]] std::optional<DriveDictionary> drive(std::size_t index) const;
    [[nodiscard]] std::vector<DriveDictionary> drives() const;
    /// The temperature of the drive with exactly this serial number, the last one where several have it.
    [[nodiscard]] std::optional<std::int32_t> temperatureOfDriveWithSerial(std::string_view serial) const;

  private:
    mutable std::mutex monitor_;
    std::vector<DriveDictionary> drives_;
};

}  // namespace calorivo
