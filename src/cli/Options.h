#pragma once

#include <chrono>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace calorivo {

enum class Command { list, watch, keys, fans, row, why };

/// What the user asked for.
struct Options {
    Command command = Command::list;

    // Where the values come from; at most one of the first three is given.
    std::optional<std::string> keysFile;
    std::optional<std::uint64_t> simulationSeed;
    std::optional<std::string> sys;
    std::optional<std::string> customModel;
    std::optional<std::string> modelTables;
    bool isUsingAllChips = false;

    bool isFahrenheit = false;
    bool isJSON = false;
    /// list: only the area of this tag.
    std::optional<std::int32_t> areaTag;
    /// watch: the time between two checks; 0 for no pause at all.
    std::chrono::nanoseconds interval = std::chrono::seconds(5);
    /// watch: how many checks; 0 for no end.
    std::uint64_t cycles = 0;
    bool isQuiet = false;
    bool isWithFans = false;
    /// why: four characters.
    std::string key;

    friend bool operator==(const Options&, const Options&) = default;
};

/// What came of the arguments: options, or a text to print instead (help, version), or what is wrong.
struct ParsedOptions {
    Options options;
    std::string text;
    std::string problem;
};

/// `arguments` are those after the program's name. The command may stand anywhere among the options; without
/// one it is `list`.
[[nodiscard]] ParsedOptions parseOptions(const std::vector<std::string>& arguments);

/// Each command's name, in the order of the enumeration.
[[nodiscard]] const char* nameOf(Command command);

}  // namespace calorivo
