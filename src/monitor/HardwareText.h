#pragma once

#include <cstdint>
#include <span>
#include <string>

namespace calorivo {

/// A text that a device gave, fit for a row of the log and for a terminal: the bytes up to the first NUL as
/// UTF-8, without white space and line ends at both ends. A control character or line end within the text
/// becomes a blank, a byte that is not UTF-8 becomes U+FFFD.
[[nodiscard]] std::string textFromHardware(std::span<const std::uint8_t> bytes);

}  // namespace calorivo
