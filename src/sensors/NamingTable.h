#pragma once

#include "sensors/KeyPattern.h"
#include "sensors/SensorLists.h"

#include <cstdint>
#include <span>
#include <string_view>

// The fixed decision list that names sensors.

namespace calorivo {

/// How a row turns its text into a name.
enum class Wording : std::uint8_t {
    /// The text as it stands.
    fixed,
    /// Filled with the instance number as it is shown.
    withIndex,
    /// Filled with the character at position 2 as it stands.
    withInstance,
    /// Filled with the whole key.
    withKey,
    /// `knownText` filled with that GPU's name; the plain text when the names are not known.
    discreteGPU,
    integratedGPU,
    /// `knownText` on machines with two GPUs; either is filled with the instance number.
    analogGPUDiode,
    /// `knownText` when the machine has one battery sensor only.
    battery,
};

struct NamingRow {
    int number;
    KeyPattern pattern;
    Wording wording;
    std::string_view text;
    std::string_view knownText{};
    /// Must hold as well, unless it is null.
    bool (*condition)(const SensorLists&, SensorKey) = nullptr;
};

/// All rows in order, numbered from 1; the first that matches names the key, and the last matches every key.
[[nodiscard]] std::span<const NamingRow> namingRows();

/// The row that names the key.
[[nodiscard]] const NamingRow& namingRowFor(SensorKey key, const SensorLists& lists);

}  // namespace calorivo
