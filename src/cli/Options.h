#pragma once

#include "host/SourceOptions.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace calorivo {

enum class Command { list, watch, keys, fans, drives, row, log, why };

/// What the user asked for. For `watch`, an interval of 0 means no pause at all; `log` has none of 0.
struct Options : SourceOptions {
    Command command = Command::list;

    bool isFahrenheit = false;
    bool isJSON = false;
    /// list: only the area of this tag.
    std::optional<std::int32_t> areaTag;
    /// watch and log: how many checks; 0 for no end.
    std::uint64_t cycles = 0;
    bool isQuiet = false;
    bool isWithFans = false;
    bool isWithDrives = false;
    /// log: where to; none for the usual name in the current folder.
    std::optional<std::string> logFile;
    /// log: to the standard output instead of a file.
    bool isPrinting = false;
    /// why: four characters; empty when what was asked for is too long to be a key.
    std::string key;
    /// why: what was asked for as it was given, which may be the serial number of a drive.
    std::string serial;

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
