#pragma once

#include "sensors/SensorLists.h"

// Small questions about a temperature or a key.

namespace calorivo {

/// A temperature is valid strictly between 0 and 120 degrees Celsius.
[[nodiscard]] constexpr bool isTempValid(double celsius) { return celsius > 0.0 && celsius < 120.0; }

/// The machine has both an integrated and a discrete GPU sensor.
[[nodiscard]] bool hasDualGPUSensors(const SensorLists& lists);
[[nodiscard]] bool isSensorIntegratedGPU(const SensorLists& lists, SensorKey key);
[[nodiscard]] bool isSensorIntegratedGPU_Proximity(const SensorLists& lists, SensorKey key);
[[nodiscard]] bool isSensorDiscreteGPU(const SensorLists& lists, SensorKey key);
[[nodiscard]] bool isSensorDiscreteGPU_Proximity(const SensorLists& lists, SensorKey key);
/// The value is relative to the processor's limit, not an absolute temperature.
[[nodiscard]] bool isSensorRelativeCPU(SensorKey key);

}  // namespace calorivo
