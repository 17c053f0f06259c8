#pragma once

#include "monitor/GPUState.h"
#include "monitor/Preferences.h"
#include "sensors/SensorLists.h"

#include <optional>
#include <string>
#include <unordered_map>
#include <utility>

namespace calorivo {

/// Reads temperatures, live and from a cache of the last readings, and turns them into the user's unit.
/// Degrees Celsius inside; an unreadable sensor reads 0.0. Main thread; the conversions from any thread.
class TemperatureReader {
  public:
    /// The arguments must outlive this object. `retainingGPUModel` is the one model on which a powered-down
    /// discrete GPU keeps its last plausible value; empty for none.
    TemperatureReader(const SensorLists& lists, const Preferences& preferences, const GPUState& gpu,
                      std::string retainingGPUModel = {})
        : lists_(lists),
          preferences_(preferences),
          gpu_(gpu),
          retainingGPUModel_(std::move(retainingGPUModel)) {}

    /// Reads now and caches what it read, valid or not. No key reads 0.0 and is not cached.
    double getTemperatureForSensor(std::optional<SensorKey> key);
    /// The last reading, however old; reads now only a sensor that was never read.
    double getCachedTemperatureForSensor(SensorKey key);

    /// In the user's unit; 0.0 for an invalid temperature.
    [[nodiscard]] double convertDegrees(double celsius) const;
    /// Whole degrees with unit, or "N/A" for an invalid temperature.
    [[nodiscard]] std::string convertDegreesToString(double celsius) const;
    /// The degree sign and the unit's letter.
    [[nodiscard]] std::string degreesLabelString() const;

    [[nodiscard]] const std::unordered_map<SensorKey, double>& cachedSensorToTemperatureMap() const {
        return cache_;
    }

  private:
    [[nodiscard]] double valueFromKeysFile(SensorKey key) const;
    [[nodiscard]] double valueFromSMC(SensorKey key) const;
    /// The reading, or the last one where the discrete GPU is switched off and the reading is implausible.
    [[nodiscard]] double retained(SensorKey key, double celsius) const;

    const SensorLists& lists_;
    const Preferences& preferences_;
    const GPUState& gpu_;
    std::string retainingGPUModel_;
    std::unordered_map<SensorKey, double> cache_;
};

}  // namespace calorivo
