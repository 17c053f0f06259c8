#pragma once

#include <array>
#include <cstdint>
#include <span>
#include <string_view>

// Readings of the kernel as bytes of the controller's types.

namespace calorivo {

/// Up to 32 bytes, most significant first.
struct EncodedValue {
    std::array<std::uint8_t, 32> bytes{};
    std::uint32_t size = 0;
};

/// False for what no sensor measures: below −40 or above 150 °C, and the bare error numbers that some drivers
/// print in place of a value. `milli` is in thousandths of a degree Celsius.
[[nodiscard]] bool isPlausibleTemperature(long milli);

/// "sp78" bytes that the readers decode to the nearest quarter degree, allowing for their signed low byte.
/// Rounding never makes a valid temperature invalid: what lies between 0 and 120 °C stays there. From −40 to
/// 127 °C.
[[nodiscard]] EncodedValue encodeCompensatedSp78(long milli);
/// "sp78" bytes as the controller itself held them: the upper ten bits of its value.
[[nodiscard]] EncodedValue encodeFaithfulSp78(long milli);
/// "fpe2" bytes that the readers decode to exactly this speed: two up to 8191 rpm, three above. Speeds below
/// 0 count as 0, above 500,000 as that.
[[nodiscard]] EncodedValue encodeFpe2(long rpm);
/// The fan's identification: four bytes that are not part of the name, then the name and a NUL. The name is
/// cut at a character boundary so that everything fits into 32 bytes.
[[nodiscard]] EncodedValue encodeFanName(std::string_view name);
/// Big-endian, `size` bytes (1, 2 or 4).
[[nodiscard]] EncodedValue encodeUnsigned(std::uint32_t value, std::uint32_t size);

}  // namespace calorivo
