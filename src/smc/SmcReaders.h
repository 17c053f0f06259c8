#pragma once

#include <cstdint>
#include <string_view>

// The ready-made readers. None reports an error except by its sentinel; a wrong type code counts as a failed
// read. Each reads afresh. Main thread.

namespace calorivo {

/// The number of keys that the controller holds; 0 when it cannot be read, negative from 2 to the 31st on.
[[nodiscard]] int smcKeyCount();
/// Degrees Celsius; 0.0 when the key cannot be read or is not of type "sp78".
[[nodiscard]] double smcTemperature(std::string_view key);
/// 0 when it cannot be read. Negative for a count above 127: the byte is signed.
[[nodiscard]] int smcFanCount();
/// Revolutions per minute, truncated toward zero; −1 when the key cannot be read or is not of type "fpe2".
[[nodiscard]] int smcFanSpeed(std::string_view key);
/// Nothing in the program calls this: Calorivo only reads the hardware.
void smcSetFanSpeed(std::string_view key, int rpm);

}  // namespace calorivo
