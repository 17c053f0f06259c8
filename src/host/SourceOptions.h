#pragma once

#include <chrono>
#include <cstdint>
#include <optional>
#include <string>

namespace calorivo {

/// Where the values come from, as the user chose it on the command line. At most one of the first three is
/// given.
struct SourceOptions {
    std::optional<std::string> keysFile;
    std::optional<std::uint64_t> simulationSeed;
    std::optional<std::string> sys;
    std::optional<std::string> customModel;
    std::optional<std::string> modelTables;
    bool isUsingAllChips = false;
    /// The time between two checks.
    std::chrono::nanoseconds interval = std::chrono::seconds(5);

    friend bool operator==(const SourceOptions&, const SourceOptions&) = default;
};

}  // namespace calorivo
