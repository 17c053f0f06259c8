#pragma once

#include "platform/AtaSmart.h"

#include <string_view>

// The 512-byte blocks in which drives tell who they are and how they are. Pure functions.

namespace calorivo {

/// True when all bytes add up to 0.
[[nodiscard]] bool isChecksumRight(const AtaBlock& data);

/// Identify data for a drive whose own is not to be had: these texts, cut to the 40 and 20 characters that
/// have room, and SMART supported and switched on.
[[nodiscard]] AtaBlock identifyBlock(std::string_view model, std::string_view serial);

/// True when the drive says that its SMART commands are switched on.
[[nodiscard]] bool isSmartSwitchedOn(const AtaBlock& identify);

/// SMART data of one attribute, 194, with this temperature. Below 0 and above 255 °C it counts as 0: no
/// temperature.
[[nodiscard]] AtaBlock temperatureBlock(int celsius);

/// The SMART data without an attribute 231 that tells the life that is left rather than a temperature: such a
/// one is on a drive without moving parts, and its raw value is its normalised value. Attribute 190, the
/// temperature of the air around, then stands in where there is no 194. Everything else is as it was; damaged
/// data stays damaged.
[[nodiscard]] AtaBlock withoutWearAttribute(const AtaBlock& identify, AtaBlock smart);

}  // namespace calorivo
