#pragma once

#include "smc/SmcClient.h"

#include <cstdint>
#include <span>

// The value types as numbers: functions of their bytes alone, most significant byte first.

namespace calorivo {

/// The bytes of a value that there really are: `dataSize` of them, 32 at most.
[[nodiscard]] std::span<const std::uint8_t> smcDataBytes(const SmcValue& value);

/// Big-endian unsigned over at most 32 bytes; what does not fit in 32 bits is lost at the top.
[[nodiscard]] std::uint32_t smcUnsignedFromBytes(std::span<const std::uint8_t> bytes);

/// Unsigned fixed point with `fractionBits` fraction bits, which are dropped: whole revolutions per minute
/// for "fpe2". Bytes that are no speed (more than three of them) may give a number that is not finite.
[[nodiscard]] float smcFpe2FromBytes(std::span<const std::uint8_t> bytes, int fractionBits);

/// Signed fixed point with 8 fraction bits, of which the upper 6 count: degrees Celsius.
[[nodiscard]] double smcSp78FromBytes(std::uint8_t high, std::uint8_t low);

}  // namespace calorivo
