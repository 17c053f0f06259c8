#pragma once

#include "sensors/SensorKey.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace calorivo {

/// One temperature of a keys file, in whole degrees Celsius.
struct KeysFileEntry {
    SensorKey key;
    int temperature = 0;
    friend bool operator==(const KeysFileEntry&, const KeysFileEntry&) = default;
};

/// A line, counted from 1, that looks like a temperature but could not be used as it stands. Its value counts
/// as 0, which only GPU sensors may have; without a proper key it is passed over.
struct KeysFileProblem {
    std::size_t line;
    std::string reason;
    friend bool operator==(const KeysFileProblem&, const KeysFileProblem&) = default;
};

struct KeysFile {
    std::vector<KeysFileEntry> entries;
    std::vector<KeysFileProblem> problems;
};

/// Reads the temperature lines of a dump of values, in order: "T" at the front, "[sp78]", and hexadecimal
/// bytes between "bytes " and ")". Every other line is passed over, and so is a temperature that is not valid
/// unless it is that of a GPU. Any bytes may be given, in time proportional to their number.
[[nodiscard]] KeysFile parseKeysFile(std::string_view text);

/// A keys file longer than this is not read.
inline constexpr std::size_t keysFileLimit = std::size_t{4} * 1024 * 1024;

}  // namespace calorivo
